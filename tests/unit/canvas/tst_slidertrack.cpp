// Covers SliderTrackAccess.
#include "canvas/SliderTrack.h"
#include "support/TestCase.h"

#include <QAccessible>
#include <QImage>

namespace brindlecam {

namespace {

constexpr SliderTrack::Range kTrackOpacities{.lower = 0.1, .upper = 1, .step = 0.05};
constexpr SliderTrack::Range kTrackWidths{.lower = 1, .upper = 20, .step = 1};
constexpr QSize kTrackSize(130, 30);
const QColor kTrackBlue(20, 40, 240);

/// A slider that notes what it reports.
struct Slider {
    SliderTrack track;
    std::vector<double> reported;

    explicit Slider(SliderTrack::Range range, SliderTrack::Shape shape = SliderTrack::Shape::plain)
        : track(shape, range, QStringLiteral("Opacidad"))
    {
        track.resize(kTrackSize);
        track.setColor(kTrackBlue);
        track.onChange = [this](double value) { reported.push_back(value); };
    }

    void press(int x) { QTest::mousePress(&track, Qt::LeftButton, {}, {x, 15}); }
    void drag(int x)
    {
        QMouseEvent move(QEvent::MouseMove, QPointF(x, 15), track.mapToGlobal(QPointF(x, 15)),
                         Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&track, &move);
    }
    void release(int x) { QTest::mouseRelease(&track, Qt::LeftButton, {}, {x, 15}); }

    [[nodiscard]] QImage painted()
    {
        QImage image(kTrackSize, QImage::Format_RGB32);
        image.fill(Qt::black);
        track.render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }
};

} // namespace

class TestSliderTrack final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPressChoosesTheValueUnderIt()
    {
        Slider slider(kTrackOpacities);
        slider.press(8 + 57); // half way: 0.55
        QCOMPARE(slider.track.value(), 0.55);
        QCOMPARE(slider.reported, std::vector<double>{0.55});
    }

    void aDragBeyondTheEndsStopsAtTheRange()
    {
        Slider slider(kTrackWidths);
        slider.press(60);
        slider.drag(5000);
        QCOMPARE(slider.track.value(), 20.0);
        slider.drag(-5000);
        QCOMPARE(slider.track.value(), 1.0);
        QCOMPARE(slider.reported.back(), 1.0);
    }

    void aDragThatKeepsTheSteppedValueReportsNothing()
    {
        Slider slider(kTrackWidths);
        slider.press(8 + 30); // 1 + 19 × 30/114 = 6
        QCOMPARE(slider.reported, std::vector<double>{6});
        for (const int x : {39, 40, 41, 42, 43})
            slider.drag(x);
        QCOMPARE(slider.reported, std::vector<double>{6});
        slider.drag(44);
        QCOMPARE(slider.reported, (std::vector<double>{6, 7}));
    }

    void opacityMovesInStepsOf5PercentAndNeverBelow10()
    {
        Slider slider(kTrackOpacities);
        slider.track.setValue(0.4);
        slider.press(129);
        for (int x = 130; x >= -20; --x)
            slider.drag(x);
        QCOMPARE(slider.reported.size(), 19U);
        for (std::size_t i = 0; i < slider.reported.size(); ++i)
            QCOMPARE(slider.reported.at(i), (100 - 5 * static_cast<int>(i)) / 100.0);
    }

    void everyKnobIsPressedAtItsOwnValue()
    {
        for (int percent = 10; percent <= 100; percent += 5) {
            Slider slider(kTrackOpacities);
            slider.track.resize(196, 30); // 180 points for 18 steps: all knobs on whole points
            slider.track.setValue(percent / 100.0);
            slider.press(8 + (percent - 10) * 2);
            QCOMPARE(slider.track.value(), percent / 100.0);
            QVERIFY(slider.reported.empty());
        }
    }

    void onlyTheLeftButtonDragsAndOnlyWhileItIsDown()
    {
        Slider slider(kTrackWidths);
        QTest::mousePress(&slider.track, Qt::RightButton, {}, {60, 15});
        slider.drag(80);
        QVERIFY(slider.reported.empty());
        slider.press(60);
        slider.release(60);
        slider.reported.clear();
        QTest::mouseMove(&slider.track, {100, 15});
        QVERIFY(slider.reported.empty());
    }

    void settingAValueIsNoChoiceOfTheUser()
    {
        Slider slider(kTrackWidths);
        slider.track.setValue(25);
        QCOMPARE(slider.track.value(), 20.0);
        QVERIFY(slider.reported.empty());
    }

    void arrowsStepTheValueAndAreConsumed()
    {
        Slider slider(kTrackOpacities);
        slider.track.setValue(0.4);
        QTest::keyClick(&slider.track, Qt::Key_Right);
        QTest::keyClick(&slider.track, Qt::Key_Up);
        QTest::keyClick(&slider.track, Qt::Key_Left);
        QTest::keyClick(&slider.track, Qt::Key_Down);
        QTest::keyClick(&slider.track, Qt::Key_Home);
        QTest::keyClick(&slider.track, Qt::Key_Left);
        QTest::keyClick(&slider.track, Qt::Key_End);
        QCOMPARE(slider.reported, (std::vector<double>{0.45, 0.5, 0.45, 0.4, 0.1, 1}));
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
            QKeyEvent press(QEvent::KeyPress, key, {});
            QCoreApplication::sendEvent(&slider.track, &press);
            QVERIFY(press.isAccepted());
        }
    }

    void arrowsFromBetweenTwoStepsGoToTheNextOne()
    {
        Slider slider({.lower = 4, .upper = 40, .step = 2});
        slider.track.setValue(17);
        QTest::keyClick(&slider.track, Qt::Key_Right);
        slider.track.setValue(17);
        QTest::keyClick(&slider.track, Qt::Key_Left);
        QCOMPARE(slider.reported, (std::vector<double>{18, 16}));
    }

    void keysThatAreTheCanvassBubble()
    {
        Slider slider(kTrackWidths);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Delete}) {
            QKeyEvent press(QEvent::KeyPress, key, {});
            QCoreApplication::sendEvent(&slider.track, &press);
            QVERIFY(!press.isAccepted());
        }
    }

    void theWheelIsTheCanvass()
    {
        Slider slider(kTrackWidths);
        QWheelEvent wheel({60, 15}, {60, 15}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&slider.track, &wheel);
        QVERIFY(!wheel.isAccepted());
        QVERIFY(slider.reported.empty());
    }

    void aPlainTrackIsFilledUpToTheKnob()
    {
        Slider slider(kTrackOpacities);
        slider.track.setValue(0.55); // knob at 65
        const QImage image = slider.painted();
        const QRgb dim = qRgb(56, 56, 56); // white at 0.22 on black
        QCOMPARE(image.pixel(30, 15), kTrackBlue.rgb());
        QCOMPARE(image.pixel(30, 13), kTrackBlue.rgb());
        QCOMPARE(image.pixel(30, 12), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(30, 16), kTrackBlue.rgb());
        QCOMPARE(image.pixel(30, 17), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(100, 15), dim);
        QCOMPARE(image.pixel(4, 15), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(125, 15), qRgb(0, 0, 0));
        // The knob is white, its dot the colour at the value's opacity.
        QCOMPARE(image.pixel(60, 15), qRgb(255, 255, 255));
        const QColor dot = image.pixelColor(65, 15);
        QVERIFY(std::abs(dot.red() - qRound(20 * 0.55 + 255 * 0.45)) <= 2);
        QVERIFY(std::abs(dot.blue() - qRound(240 * 0.55 + 255 * 0.45)) <= 2);
        QCOMPARE(image.pixel(65, 8), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(65, 9), image.pixel(65, 20));
    }

    void aTaperedTrackGrowsToTheRightAndItsDotWithTheValue()
    {
        Slider slider(kTrackWidths, SliderTrack::Shape::tapered);
        slider.track.setValue(1);
        QImage image = slider.painted();
        const auto heightAt = [&image](int x) {
            int rows = 0;
            for (int y = 0; y < image.height(); ++y)
                rows += qRed(image.pixel(x, y)) > 28 ? 1 : 0;
            return rows;
        };
        QVERIFY(heightAt(20) <= 4);
        QCOMPARE(heightAt(121), 10);
        QCOMPARE(image.pixel(122, 15), qRgb(0, 0, 0));
        const auto dotWidth = [&image](int centre) {
            int columns = 0;
            for (int x = centre - 6; x < centre + 6; ++x)
                columns += qRed(image.pixel(x, 15)) < 128 ? 1 : 0;
            return columns;
        };
        QCOMPARE(dotWidth(8), 2);
        slider.track.setValue(20);
        image = slider.painted();
        QVERIFY(dotWidth(122) >= 8);
        QCOMPARE(image.pixel(122, 15), kTrackBlue.rgb());
    }

    void assistiveTechnologySeesASlider()
    {
        Slider slider(kTrackOpacities);
        slider.track.setValue(0.4);
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&slider.track);
        QVERIFY(face);
        QCOMPARE(face->role(), QAccessible::Slider);
        QCOMPARE(face->text(QAccessible::Name), QStringLiteral("Opacidad"));
        QAccessibleValueInterface* value = face->valueInterface();
        QVERIFY(value);
        QCOMPARE(value->currentValue().toDouble(), 0.4);
        QCOMPARE(value->minimumValue().toDouble(), 0.1);
        QCOMPARE(value->maximumValue().toDouble(), 1.0);
        QCOMPARE(value->minimumStepSize().toDouble(), 0.05);
        value->setCurrentValue(0.7);
        QCOMPARE(slider.reported, std::vector<double>{0.7});
    }
};

BRINDLECAM_TEST(TestSliderTrack);

} // namespace brindlecam

#include "tst_slidertrack.moc"
