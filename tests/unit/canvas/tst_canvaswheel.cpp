#include "EditingFixture.h"
#include "support/TestCase.h"

namespace brindlecam {

/// Sizes and opacity by the wheel.
class TestCanvasWheel final : public test::TestCase {
    Q_OBJECT

private:
    using Editor = test::EditingFixture;

private Q_SLOTS:
    void theWheelChangesSizesByTheToolsStep_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<int>("notches");
        QTest::addColumn<double>("size");
        QTest::newRow("pen by 1") << Tool::pen << 1 << 4.0;
        QTest::newRow("pen down") << Tool::pen << -1 << 2.0;
        QTest::newRow("pen stops at 20") << Tool::pen << 50 << 20.0;
        QTest::newRow("pen stops at 1") << Tool::pen << -50 << 1.0;
        QTest::newRow("number by 2") << Tool::number << 2 << 30.0;
        QTest::newRow("ten thousand notches") << Tool::rect << 10000 << 20.0;
        QTest::newRow("ten thousand back") << Tool::rect << -10000 << 1.0;
        QTest::newRow("none") << Tool::rect << 0 << 3.0;
        QTest::newRow("pixelate has no size") << Tool::pixelate << 3 << 3.0;
    }
    void theWheelChangesSizesByTheToolsStep()
    {
        QFETCH(Tool, tool);
        QFETCH(int, notches);
        Editor e;
        e.choose(tool);
        e.turnWheel(notches * 120);
        QTEST(e.prefs.size(tool), "size");
    }

    void theWheelChangesTheMarkersOpacityInStepsOfFivePercent()
    {
        Editor e;
        e.choose(Tool::marker);
        e.turnWheel(120);
        QCOMPARE(e.prefs.markerOpacity(), 0.45);
        e.turnWheel(-100 * 120);
        QCOMPARE(e.prefs.markerOpacity(), 0.1);
        e.turnWheel(100 * 120);
        QCOMPARE(e.prefs.markerOpacity(), 1.0);
        QCOMPARE(e.prefs.size(Tool::marker), 16.0);
    }

    void aTouchpadCountsTwelvePointsAsAStep()
    {
        QPointingDevice touchpad(QStringLiteral("touchpad"), 7, QInputDevice::DeviceType::TouchPad,
                                 QPointingDevice::PointerType::Finger,
                                 QInputDevice::Capability::Scroll, 2, 0);
        Editor e;
        e.choose(Tool::pen);
        for (int i = 0; i < 2; ++i)
            e.turnWheel(5, &touchpad);
        QCOMPARE(e.prefs.size(Tool::pen), 3.0);
        e.turnWheel(5, &touchpad); // 15 points by now
        QCOMPARE(e.prefs.size(Tool::pen), 4.0);
    }

    void theWheelDoesNothingInPointerMode()
    {
        Editor e;
        const QImage before = e.canvas->grab().toImage();
        const QByteArray stored = e.stored();
        e.turnWheel(120);
        QCOMPARE(e.canvas->grab().toImage(), before);
        QCOMPARE(e.stored(), stored);
    }

    void theWheelDoesNothingWhereNothingIsSelected()
    {
        Editor e;
        e.choose(Tool::pen);
        e.canvas->clearSelection();
        e.turnWheel(120);
        QCOMPARE(e.prefs.size(Tool::pen), 3.0);
    }

    void messagesTellTheNewValue_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<QString>("message");
        QTest::newRow("size") << Tool::pen << QStringLiteral("Grosor del lápiz: 4 px");
        QTest::newRow("badge") << Tool::number << QStringLiteral("Tamaño del número: 28 px");
        QTest::newRow("opacity") << Tool::marker << QStringLiteral("Opacidad del marcador: 45 %");
    }
    void messagesTellTheNewValue()
    {
        QFETCH(Tool, tool);
        Editor e;
        e.choose(tool);
        e.turnWheel(120);
        QTEST(e.message(), "message");
    }

    void messagesTellWhyALongCaptureDoesNotBegin()
    {
        test::EditingFixture e;
        e.canvas->clearSelection();
        e.drag({10, 10}, {40, 200});
        e.canvas->actions().scrollCapture();
        QCOMPARE(e.message(), QStringLiteral("Selecciona un área más grande para la captura con "
                                             "desplazamiento"));
        e.canvas->actions().recordGif();
        QCOMPARE(e.message(), QStringLiteral("Selecciona un área más grande para grabar"));
        e.canvas->clearSelection();
        QCOMPARE(e.message(), QString());
    }
};

BRINDLECAM_TEST(TestCanvasWheel);

} // namespace brindlecam

#include "tst_canvaswheel.moc"
