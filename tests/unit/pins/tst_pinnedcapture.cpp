// Covers PinnedView.
#include "PinnedFixture.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QPointer>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace brindlecam {

using test::kPinned;
using test::kPinnedDenseScreen;
using test::kPinnedScreen;
using test::PinnedFixture;

namespace {

/// Red under this colour.
QColor onRed(QColor colour, qreal coverage)
{
    const qreal alpha = colour.alphaF() * coverage;
    return QColor::fromRgbF(static_cast<float>(1 - alpha + colour.redF() * alpha),
                            static_cast<float>(colour.greenF() * alpha),
                            static_cast<float>(colour.blueF() * alpha));
}

/// Whether a red picture has a border so many pixels wide in the middle of each side: whole pixels
/// of its colour, a share of the next one, and nothing of those behind.
bool hasBorder(const QImage& image, qreal width, QColor colour)
{
    const QPoint middle = image.rect().center();
    const QPoint last = image.rect().bottomRight();
    for (int depth = 0; depth < qCeil(width) + 2; ++depth) {
        const QColor wanted = onRed(colour, std::clamp(width - depth, 0.0, 1.0));
        for (const QPoint at : {QPoint(middle.x(), depth), QPoint(middle.x(), last.y() - depth),
                                QPoint(depth, middle.y()), QPoint(last.x() - depth, middle.y())}) {
            const QColor seen = image.pixelColor(at);
            if (std::abs(seen.red() - wanted.red()) > 2 ||
                std::abs(seen.green() - wanted.green()) > 2 ||
                std::abs(seen.blue() - wanted.blue()) > 2) {
                qWarning() << at << "is" << seen << "instead of" << wanted;
                return false;
            }
        }
    }
    return true;
}

} // namespace

class TestPinnedCapture final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void pinOpensExactlyWhereTheCaptureWasTaken()
    {
        PinnedFixture f;
        f.open();
        QCOMPARE(f.place(), kPinned);
        QCOMPARE(f.window().radius, 6.0);
        QVERIFY(f.pin().isVisible());
        QCOMPARE(f.window().grips, 0);
        QCOMPARE(f.view().geometry(), f.pin().rect());
        QCOMPARE(f.view().accessibleName(), QStringLiteral("Captura fijada"));
        QCOMPARE(f.view().toolTip(),
                 QStringLiteral("Arrastra para mover · rueda para cambiar el tamaño · doble clic "
                                "para cerrar · clic derecho para más"));
    }

    void pictureThatCouldNotBeMadeOpensNoPin()
    {
        PinnedFixture f;
        f.pins.pin(Rendered(QSize(10, 10), QSizeF(10, 10), [] { return QImage(); }), kPinned);
        f.pins.pin(Rendered(), kPinned);
        QVERIFY(f.pins.open().empty());
    }

    void borderIsPaleAndGreenUnderThePointer_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<bool>("blends");
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0}) { // at 1, a pixel and a half
            QTest::addRow("%g, blended", scale) << scale << true;
            QTest::addRow("%g, cut", scale) << scale << false;
        }
    }
    void borderIsPaleAndGreenUnderThePointer()
    {
        QFETCH(qreal, scale);
        QFETCH(bool, blends);
        PinnedFixture f;
        f.windows.blends = blends;
        f.displays.all = {kPinnedScreen};
        f.displays.all.front().scale = scale;
        f.open();
        QVERIFY(hasBorder(f.look(), 1.5 * scale, QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.35F)));
        QEnterEvent enter({}, {}, {});
        QCoreApplication::sendEvent(&f.view(), &enter);
        QVERIFY(hasBorder(f.look(), 1.5 * scale, Config::leafGreen));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&f.view(), &leave);
        QVERIFY(hasBorder(f.look(), 1.5 * scale, QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.35F)));
    }

    void cornersAreTransparentWhereWindowsBlend()
    {
        PinnedFixture f;
        f.open();
        QCOMPARE(f.look().pixelColor(0, 0).alpha(), 0);
        QCOMPARE(f.look().pixelColor(199, 99).alpha(), 0);
        QCOMPARE(f.look().pixelColor(10, 10).alpha(), 255);
    }

    void cornersAreLeftToTheWindowWhereNothingBlends()
    {
        PinnedFixture f;
        f.windows.blends = false;
        f.open();
        QCOMPARE(f.look().pixelColor(0, 0).alpha(), 255);
    }

    void openPinTurnsRightWhenACompositorComesAndGoes()
    {
        PinnedFixture f;
        f.windows.blends = false;
        f.open();
        f.windows.change(true);
        QCOMPARE(f.look().pixelColor(0, 0).alpha(), 0);
        f.windows.change(false);
        QCOMPARE(f.look().pixelColor(0, 0).alpha(), 255);
    }

    void dragMovesThePinByTheSameWay()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {550, 450});
        QCOMPARE(f.window().grips, 1);
        f.mouse(QEvent::MouseMove, {560, 451});
        QCOMPARE(f.place(), kPinned.translated(10, 1));
        f.mouse(QEvent::MouseMove, {650, 350});
        QVERIFY(f.window().held);
        f.mouse(QEvent::MouseButtonRelease, {650, 350});
        QVERIFY(!f.window().held);
        QCOMPARE(f.place(), kPinned.translated(100, -100));
        f.mouse(QEvent::MouseMove, {700, 300});
        QCOMPARE(f.place(), kPinned.translated(100, -100));
    }

    void pinMadeAnewForgetsHandAndPointer()
    {
        PinnedFixture f;
        f.open();
        QEnterEvent enter({}, {}, {});
        QCoreApplication::sendEvent(&f.view(), &enter);
        f.mouse(QEvent::MouseButtonPress, {550, 450});
        f.mouse(QEvent::MouseMove, {560, 450});
        f.pin().hide();
        f.pin().show();
        f.mouse(QEvent::MouseMove, {700, 450});
        QCOMPARE(f.place(), kPinned.translated(10, 0));
        QVERIFY(hasBorder(f.look(), 1.5, QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.35F)));
    }

    void tremblingHandDoesNotMoveIt()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {550, 450});
        f.mouse(QEvent::MouseMove, {551, 451});
        f.mouse(QEvent::MouseButtonRelease, {551, 451});
        QCOMPARE(f.place(), kPinned);
    }

    void singleClickDoesNothingAndDoubleClickCloses()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {550, 450});
        f.mouse(QEvent::MouseButtonRelease, {550, 450});
        QCOMPARE(f.pins.open().size(), std::size_t(1));
        QVERIFY(f.delivery.copied.empty());
        const QPointer<PinnedCapture> pin = &f.pin();
        f.mouse(QEvent::MouseButtonDblClick, {550, 450});
        QVERIFY(f.pins.open().empty());
        QVERIFY(!pin->isVisible());
        QTRY_VERIFY(!pin);
    }

    void doubleClickWhosePressWasAnothersDoesNotClose()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonDblClick, {550, 450}); // the first press opened the pin
        f.mouse(QEvent::MouseMove, {600, 450});
        f.mouse(QEvent::MouseButtonRelease, {600, 450});
        QCOMPARE(f.pins.open().size(), std::size_t(1));
        QCOMPARE(f.place(), kPinned);
        QCOMPARE(f.window().grips, 0);
        f.mouse(QEvent::MouseButtonPress, {550, 450}, Qt::LeftButton, 1000);
        f.mouse(QEvent::MouseButtonRelease, {550, 450}, Qt::LeftButton, 1050);
        // Its own press is too long ago to be the first one of this.
        f.mouse(QEvent::MouseButtonDblClick, {550, 450}, Qt::LeftButton, 9000);
        QCOMPARE(f.pins.open().size(), std::size_t(1));
    }

    void otherButtonsNeitherDragNorClose()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {550, 450}, Qt::MiddleButton);
        f.mouse(QEvent::MouseMove, {650, 450}, Qt::MiddleButton);
        f.mouse(QEvent::MouseButtonDblClick, {650, 450}, Qt::RightButton);
        QCOMPARE(f.place(), kPinned);
        QCOMPARE(f.pins.open().size(), std::size_t(1));
    }

    void wheelZoomsAroundTheCentre()
    {
        PinnedFixture f;
        f.open();
        f.wheel(2);
        QCOMPARE(f.place(), QRect(490, 395, 220, 110));
        f.wheel(-100);
        QCOMPARE(f.place().size(), QSize(176, 88));
    }

    void sizeChangedDuringADragStays()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {550, 450});
        f.mouse(QEvent::MouseMove, {650, 450});
        f.wheel(2);
        QCOMPARE(f.place(), QRect(590, 395, 220, 110));
        f.mouse(QEvent::MouseMove, {660, 470});
        QCOMPARE(f.place(), QRect(600, 415, 220, 110));
        f.mouse(QEvent::MouseButtonRelease, {660, 470});
        QCOMPARE(f.place(), QRect(600, 415, 220, 110));
    }

    void sizeChangedBeforeTheHandMovesStays()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {550, 450});
        f.mouse(QEvent::MouseMove, {551, 450}); // no drag yet
        f.wheel(2);
        QCOMPARE(f.place(), QRect(490, 395, 220, 110));
        f.mouse(QEvent::MouseMove, {560, 450});
        QCOMPARE(f.place(), QRect(500, 395, 220, 110));
    }

    void touchpadZoomsByPoints()
    {
        QPointingDevice touchpad(QStringLiteral("touchpad"), 7, QInputDevice::DeviceType::TouchPad,
                                 QPointingDevice::PointerType::Finger,
                                 QInputDevice::Capability::Scroll, 2, 0);
        PinnedFixture f;
        f.open();
        f.wheel({0, 10}, {0, 100}, &touchpad);
        QCOMPARE(f.place().size(), QSize(210, 105));
        f.wheel({40, 0}, {400, 0}, &touchpad); // sideways
        QCOMPARE(f.place().size(), QSize(210, 105));
    }

    void zoomStopsAtAFifthAndAtThreeTimes()
    {
        PinnedFixture f;
        f.open();
        for (int i = 0; i < 60; ++i)
            f.wheel(-1);
        QCOMPARE(f.place(), QRect(580, 440, 40, 20));
        for (int i = 0; i < 80; ++i)
            f.wheel(1);
        QCOMPARE(f.place(), QRect(300, 300, 600, 300));
    }

    void longPinRespectsTheLimits()
    {
        PinnedFixture f;
        f.open(QRect(0, 500, 10000, 100));
        for (int i = 0; i < 60; ++i)
            f.wheel(-1);
        QCOMPARE(f.place().size(), QSize(2000, 20));
        for (int i = 0; i < 80; ++i)
            f.wheel(1);
        QCOMPARE(f.place().size(), QSize(30000, 300));
    }

    void limitsCountInThePointsOfADenseScreen()
    {
        PinnedFixture f;
        f.displays.all = {kPinnedScreen, kPinnedDenseScreen};
        f.open(QRect(2400, 400, 400, 200), QSizeF(200, 100));
        for (int i = 0; i < 80; ++i)
            f.wheel(1);
        QCOMPARE(f.place(), QRect(2000, 200, 1200, 600));
    }

    void pinShrunkAtTheEdgeStaysReachable()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {695, 450});
        f.mouse(QEvent::MouseMove, {30, 450});
        f.mouse(QEvent::MouseButtonRelease, {30, 450});
        QCOMPARE(f.place(), kPinned.translated(-665, 0));
        for (int i = 0; i < 60; ++i)
            f.wheel(-1);
        QVERIFY(f.place().intersected(kPinnedScreen.native).width() >= 24);
    }

    void pinKeepsItsPointsOnAScreenOfAnotherScale()
    {
        PinnedFixture f;
        f.displays.all = {kPinnedDenseScreen, kPinnedScreen};
        f.open(QRect(2000, 400, 400, 200), QSizeF(200, 100));
        f.mouse(QEvent::MouseButtonPress, {2100, 500});
        f.mouse(QEvent::MouseMove, {1930, 500});
        QCOMPARE(f.place(), QRect(1830, 400, 400, 200)); // the pointer is still on the dense one
        QCOMPARE(f.window().places.back().scale, 2.0);
        f.mouse(QEvent::MouseMove, {1500, 500});
        QCOMPARE(f.place(), QRect(1450, 450, 200, 100));
        QCOMPARE(f.window().places.back().scale, 1.0);
        QCOMPARE(f.pin().onScreen(), kPinnedScreen);
        f.mouse(QEvent::MouseMove, {1400, 500});
        QCOMPARE(f.place(), QRect(1350, 450, 200, 100));
        f.mouse(QEvent::MouseMove, {2100, 500});
        QCOMPARE(f.place(), QRect(2000, 400, 400, 200));
    }

    void pinOfARemovedScreenComesBack()
    {
        PinnedFixture f;
        f.displays.all = {kPinnedScreen, kPinnedDenseScreen};
        f.open(QRect(2400, 400, 400, 200), QSizeF(200, 100));
        f.displays.all = {kPinnedScreen};
        f.displays.change();
        QCOMPARE(f.place().size(), QSize(200, 100));
        QVERIFY(kPinnedScreen.native.contains(f.place()));
        QCOMPARE(f.pin().onScreen(), kPinnedScreen);
    }

    void pinsThatCanBeSeenStayWhenScreensChange()
    {
        PinnedFixture f;
        f.displays.all = {kPinnedScreen, kPinnedDenseScreen};
        f.open();
        f.displays.all = {kPinnedScreen};
        f.displays.change();
        QCOMPARE(f.place(), kPinned);
        f.displays.all = {};
        f.displays.change();
        QCOMPARE(f.place(), kPinned);
    }

    void otherKeysDoNothing_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Escape") << Qt::Key_Escape;
        QTest::newRow("Delete") << Qt::Key_Delete;
        QTest::newRow("Return") << Qt::Key_Return;
    }
    void otherKeysDoNothing()
    {
        QFETCH(Qt::Key, key);
        PinnedFixture f;
        f.open();
        QTest::keyClick(&f.view(), key);
        QCOMPARE(f.pins.open().size(), std::size_t(1));
        QVERIFY(f.pin().isVisible());
    }
};

BRINDLECAM_TEST(TestPinnedCapture);

} // namespace brindlecam

#include "tst_pinnedcapture.moc"
