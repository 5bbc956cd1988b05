// Covers MarkerPreview.
#include "SettingsFixture.h"
#include "preferences/Config.h"
#include "settings/MarkerPreview.h"
#include "support/TestCase.h"

#include <QSlider>

namespace brindlecam {

using test::SettingsFixture;

class TestMarkerSettings final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theSliderWorksInStepsOfFivePerCent_data()
    {
        QTest::addColumn<int>("place");
        QTest::addColumn<double>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("a little more") << 52 << 0.5 << QStringLiteral("50 %");
        QTest::newRow("halves away from zero") << 53 << 0.55 << QStringLiteral("55 %");
        QTest::newRow("the least") << 10 << 0.1 << QStringLiteral("10 %");
        QTest::newRow("less than the least") << 1 << 0.1 << QStringLiteral("10 %");
        QTest::newRow("the most") << 100 << 1.0 << QStringLiteral("100 %");
    }
    void theSliderWorksInStepsOfFivePerCent()
    {
        QFETCH(int, place);
        QFETCH(double, stored);
        QFETCH(QString, shown);
        SettingsFixture desk;
        MarkerSettings& marker = desk.open().marker();
        marker.opacitySlider().setValue(place);
        QCOMPARE(desk.prefs.markerOpacity(), stored);
        QCOMPARE(marker.opacityLabel().text(), shown);
        QCOMPARE(marker.markerPreview().opacity(), stored);
    }

    void anOpacityThatWasChosenElsewhereIsShownNextTime()
    {
        SettingsFixture desk;
        MarkerSettings& marker = desk.open().marker();
        QCOMPARE(marker.opacitySlider().value(), 40);
        QCOMPARE(marker.opacityLabel().text(), QStringLiteral("40 %"));
        QVERIFY(!desk.defaults.contains(QStringLiteral("markerOpacity")));
        desk.prefs.setMarkerOpacity(0.75);
        desk.open();
        QCOMPARE(marker.opacitySlider().value(), 75);
        QCOMPARE(marker.markerPreview().opacity(), 0.75);
    }

    void whatLiesBetweenTwoStepsBecomesOne()
    {
        SettingsFixture desk;
        desk.prefs.setMarkerOpacity(0.42);
        MarkerSettings& marker = desk.open().marker();
        QCOMPARE(marker.opacityLabel().text(), QStringLiteral("40 %"));
        QCOMPARE(desk.prefs.markerOpacity(), 0.4);
    }

    void theArrowKeysMoveByAStep()
    {
        SettingsFixture desk;
        QSlider& slider = desk.open().marker().opacitySlider();
        QTest::keyClick(&slider, Qt::Key_Right);
        QCOMPARE(desk.prefs.markerOpacity(), 0.45);
    }

    void thePreviewCoversItsTextAsTheMarkerDoes()
    {
        MarkerPreview preview;
        preview.resize(412, 40);
        preview.setOpacity(0.5);
        const QImage shown = preview.grab().toImage();
        const QColor ground = preview.palette().color(QPalette::Base);
        const QColor ink = Config::palette.front();
        const auto mixed = [](int below, int above) { return (below + above) / 2; };
        // On the stroke, beside the text.
        const QColor covered = shown.pixelColor(298, 13);
        QVERIFY(std::abs(covered.red() - mixed(ground.red(), ink.red())) <= 2);
        QVERIFY(std::abs(covered.green() - mixed(ground.green(), ink.green())) <= 2);
        QVERIFY(std::abs(covered.blue() - mixed(ground.blue(), ink.blue())) <= 2);
        // It is 16 points wide, and ends round 110 points before the edge.
        QCOMPARE(shown.pixelColor(298, 10), ground);
        QCOMPARE(shown.pixelColor(298, 29), ground);
        QCOMPARE(shown.pixelColor(311, 20), ground);
        QVERIFY(shown.pixelColor(308, 20) != ground);
        QCOMPARE(preview.sizeHint(), QSize(412, 40));
    }
};

BRINDLECAM_TEST(TestMarkerSettings);

} // namespace brindlecam

#include "tst_markersettings.moc"
