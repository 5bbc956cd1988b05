// Covers FloatingPanel.
#include "notices/Toast.h"
#include "support/FakeCompositing.h"
#include "support/FakeDisplays.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace brindlecam {

namespace {

const ScreenInfo kToastPlain{QStringLiteral("A"), QRect(0, 0, 1920, 1080), 1,
                             QRect(0, 0, 1920, 1040)};
const ScreenInfo kToastDense{QStringLiteral("B"), QRect(1920, 100, 2880, 1800), 1.5,
                             QRect(2000, 160, 2800, 1700)};

QColor pixel(QWidget& widget, QPoint place)
{
    return widget.grab().toImage().pixelColor(place);
}

} // namespace

class TestToast final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void appearsOnThePrimaryScreenCentredAboveTheDock()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain, kToastDense};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        toast.show(QStringLiteral("Copiado"));
        QCOMPARE(panels.roles, std::vector{PanelRole::toast});
        const QRect place = panels.shown.at(0).native;
        QCOMPARE(place.y() + place.height(), 1040 - 80);
        QVERIFY(qAbs(place.x() + place.width() / 2.0 - 960) <= 1);
    }

    void pointsAreScaledAndTheWholeScreenCentresIt()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain, kToastDense};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        toast.show(QStringLiteral("Copiado"), kToastPlain);
        toast.show(QStringLiteral("Copiado"), kToastDense);
        const QRect plain = panels.shown.at(0).native;
        const QRect dense = panels.shown.at(1).native;
        QVERIFY(qAbs(dense.width() - plain.width() * 1.5) <= 1);
        QVERIFY(qAbs(dense.height() - plain.height() * 1.5) <= 1);
        QCOMPARE(dense.y() + dense.height(), 160 + 1700 - 120);
        QVERIFY(qAbs(dense.x() + dense.width() / 2.0 - (1920 + 1440)) <= 1);
    }

    void docksThatCameMeanwhileStayFree()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain, kToastDense};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        ScreenInfo earlier = kToastPlain;
        earlier.visibleFrame = earlier.native;
        toast.show(QStringLiteral("Copiado"), earlier);
        const QRect place = panels.shown.at(0).native;
        QCOMPARE(place.y() + place.height(), 1040 - 80);
    }

    void oneThatStaysGoesWhenItIsEndedOrReplaced()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        const auto told = [&panels] { return panels.shown.back().widget->accessibleName(); };
        toast.show(QStringLiteral("Creando"), {}, Toast::Stays::untilEnded);
        QVERIFY(!QTest::qWaitFor([&toast] { return !toast.visible(); }, 1500));
        toast.endLasting();
        QTRY_VERIFY(!toast.visible());

        toast.show(QStringLiteral("Creando"), {}, Toast::Stays::untilEnded);
        toast.show(QStringLiteral("Copiado"));
        toast.endLasting(); // not this one
        QCOMPARE(told(), QStringLiteral("Copiado"));
        QVERIFY(toast.visible());
    }

    void oneThatStaysOutlastsACaptureUnlessItIsEnded()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        toast.show(QStringLiteral("Creando"), {}, Toast::Stays::untilEnded);
        toast.suspend();
        QVERIFY(!toast.visible());
        toast.resume();
        QVERIFY(toast.visible());
        toast.suspend();
        toast.endLasting();
        toast.resume();
        QVERIFY(!toast.visible());
        // A short one is not shown twice.
        toast.show(QStringLiteral("Copiado"));
        toast.suspend();
        toast.resume();
        QVERIFY(!toast.visible());
    }

    void withoutAnyScreenNothingIsShown()
    {
        test::FakeDisplays displays;
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        toast.show(QStringLiteral("Copiado"));
        QVERIFY(panels.shown.empty());
        QVERIFY(!toast.visible());
    }

    void aSecondToastReplacesTheFirstAtOnceAndStaysItsFullTime()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        toast.show(QStringLiteral("primero"));
        // Half into the first one's life: its end must not be the second's.
        QElapsedTimer clock;
        clock.start();
        QTRY_VERIFY_WITH_TIMEOUT(clock.elapsed() >= 500, 3000);
        toast.show(QStringLiteral("segundo"));
        clock.restart();
        panels.strengths.clear(); // on a busy machine the first one has begun to fade
        QCOMPARE(panels.visibleNow(), 1);
        QVERIFY(!panels.shown.at(0).widget);
        QTRY_VERIFY_WITH_TIMEOUT(!panels.strengths.empty(), 3000);
        QVERIFY2(clock.elapsed() >= 990, "fades after a full second only");
        QTRY_VERIFY_WITH_TIMEOUT(!toast.visible(), 3000);
        QVERIFY2(clock.elapsed() >= 1295, "and takes its time for it");
        QCOMPARE(panels.visibleNow(), 0);
        QVERIFY(std::is_sorted(panels.strengths.rbegin(), panels.strengths.rend()));
        QCOMPARE(panels.strengths.back(), 0.0);
    }

    void suspendedToastsWaitAndTheLastOneAppearsAfterwards()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        toast.suspend();
        toast.show(QStringLiteral("uno"));
        toast.show(QStringLiteral("dos"));
        QVERIFY(!toast.visible());
        toast.resume();
        QVERIFY(toast.visible());
        QCOMPARE(panels.shown.size(), 1U);
        QCOMPARE(panels.shown.at(0).widget->accessibleName(), QStringLiteral("dos"));
        toast.resume();
        QCOMPARE(panels.shown.size(), 1U);
    }

    void suspendTakesItOffAtOnce()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        toast.show(QStringLiteral("Copiado"));
        toast.suspend();
        QCOMPARE(panels.visibleNow(), 0);
        QVERIFY(panels.strengths.empty());
    }

    void whereNothingBlendsItPaintsItselfOverWhatLayBeneath()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain};
        test::FakePanels panels;
        test::FakeCompositing compositing;
        compositing.on = false;
        compositing.beneath = Qt::white;
        Toast toast(displays, panels, compositing);
        toast.show(QStringLiteral("Copiado"));
        QWidget& panel = *panels.shown.at(0).widget;
        QVERIFY(!panel.mask().isEmpty());
        QVERIFY(!panel.mask().contains(QPoint(0, 0)));
        QVERIFY(panel.mask().contains(panel.rect().center()));
        QCOMPARE(pixel(panel, {0, 0}), QColor(Qt::white));
        // White 0.1 at alpha 0.92 over white.
        const QColor dark = pixel(panel, {panel.width() / 2, 3});
        QVERIFY2(qAbs(dark.red() - 44) <= 1, qPrintable(dark.name()));

        // The fade blends towards the backdrop and never asks for opacity.
        const QPointer<QWidget> shown(&panel); // it ends with the fade
        const auto shade = [&] { return pixel(*shown, {shown->width() / 2, 3}).red(); };
        int last = dark.red();
        QTRY_VERIFY_WITH_TIMEOUT(!shown || (last = shade()) > dark.red(), 3000);
        QVERIFY(last > dark.red() && last < 255);
        QTRY_VERIFY_WITH_TIMEOUT(!toast.visible(), 3000);
        QVERIFY(panels.strengths.empty());
    }

    void whereTheSystemFadesNothingItPaintsItselfFainter()
    {
        test::FakeDisplays displays;
        displays.all = {kToastPlain};
        test::FakePanels panels;
        panels.fades = false;
        test::FakeCompositing compositing;
        Toast toast(displays, panels, compositing);
        toast.show(QStringLiteral("Copiado"));
        const QPointer<QWidget> shown(panels.shown.at(0).widget);
        const auto strength = [&] {
            QImage image(shown->size(), QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            shown->render(&image, {}, {}, QWidget::RenderFlags());
            return image.pixelColor(shown->width() / 2, 3).alphaF();
        };
        const float whole = strength();
        QVERIFY(whole > 0.9F);
        float last = whole;
        QTRY_VERIFY_WITH_TIMEOUT(!shown || (last = strength()) < 0.9F * whole, 3000);
        QVERIFY(last < 0.9F * whole);
        QTRY_VERIFY_WITH_TIMEOUT(!toast.visible(), 3000);
        QCOMPARE(panels.strengths.back(), 0.0);
    }
};

BRINDLECAM_TEST(TestToast);

} // namespace brindlecam

#include "tst_toast.moc"
