#include "app/Config.h"
#include "app/Toast.h"
#include "recents/PinnedCapture.h"
#include "recents/PinnedCaptures.h"
#include "recents/PinnedView.h"
#include "support/FakeDisplays.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QPointingDevice>
#include <QWheelEvent>

namespace brindlecam {

namespace {

const ScreenInfo kPinnedScreen{QStringLiteral("A"), QRect(0, 0, 1920, 1080), 1,
                               QRect(0, 0, 1920, 1080)};
const ScreenInfo kPinnedDenseScreen{QStringLiteral("B"), QRect(1920, 0, 2880, 1800), 2,
                                    QRect(1920, 0, 2880, 1800)};
constexpr QRect kPinned(500, 400, 200, 100);

/// The owner of the pins with what it works with, and hands on its newest pin.
struct PinnedFixture {
    PinnedFixture()
    {
        displays.all = {kPinnedScreen};
        pins.onCopy = [this](const Rendered& picture, std::function<void()> done) {
            copied.push_back(picture);
            copyDone = std::move(done);
        };
        pins.onSave = [this](const Rendered& picture) { saved.push_back(picture); };
    }

    PinnedCapture& open(const QRect& native = kPinned, QSizeF points = {})
    {
        QImage image(native.size(), QImage::Format_RGB32);
        image.fill(Qt::red);
        pins.pin(Rendered(image, points.isEmpty() ? QSizeF(native.size()) : points), native);
        return *pins.open().back();
    }
    [[nodiscard]] PinnedCapture& pin() const { return *pins.open().back(); }
    [[nodiscard]] PinnedView& view() const { return *pin().findChild<PinnedView*>(); }
    [[nodiscard]] QRect place() const { return panels.nativeRect(pin()); }

    void mouse(QEvent::Type type, QPoint global, Qt::MouseButton button = Qt::LeftButton) const
    {
        const bool down = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, QPointF(global - place().topLeft()), QPointF(global),
                          type == QEvent::MouseMove ? Qt::NoButton : button,
                          down ? button : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view(), &event);
    }
    void wheel(int notches) const { wheel(QPoint(), {0, notches * 120}, nullptr); }
    void wheel(QPoint pixels, QPoint angle, const QPointingDevice* device) const
    {
        QWheelEvent event({}, {}, pixels, angle, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false, Qt::MouseEventNotSynthesized,
                          device ? device : QPointingDevice::primaryPointingDevice());
        QCoreApplication::sendEvent(&view(), &event);
    }
    [[nodiscard]] QImage look() const
    {
        QImage image(place().size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        view().render(&image, {}, {}, QWidget::RenderFlags());
        return image.convertToFormat(QImage::Format_ARGB32);
    }

    test::FakePanels panels;
    test::FakeDisplays displays;
    Toast toast{displays, panels};
    PinnedCaptures pins{panels, displays, toast};
    std::vector<Rendered> copied;
    std::vector<Rendered> saved;
    std::function<void()> copyDone;
};

QMenu* menuOf(const PinnedFixture& f)
{
    return f.view().findChild<QMenu*>();
}

} // namespace

class TestPinnedCapture final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void pinOpensExactlyWhereTheCaptureWasTaken()
    {
        PinnedFixture f;
        f.open();
        QCOMPARE(f.panels.roles, std::vector{PanelRole::pin});
        QCOMPARE(f.panels.shown.back().native, kPinned);
        QVERIFY(f.pin().isVisible());
        QVERIFY(f.panels.focused.empty());
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

    void borderIsPaleAndGreenUnderThePointer()
    {
        PinnedFixture f;
        f.open();
        QCOMPARE(f.look().pixelColor(100, 2), QColor(Qt::red));
        for (const QPoint place : {QPoint(100, 0), QPoint(100, 1), QPoint(0, 50), QPoint(199, 50),
                                   QPoint(100, 98), QPoint(100, 99)}) {
            const QColor pale = f.look().pixelColor(place);
            QCOMPARE(pale.red(), 255);
            QVERIFY(std::abs(pale.green() - 89) <= 1);
        }
        QEnterEvent enter({}, {}, {});
        QCoreApplication::sendEvent(&f.view(), &enter);
        QCOMPARE(f.look().pixel(100, 1), Config::leafGreen.rgb());
        QCOMPARE(f.look().pixelColor(100, 2), QColor(Qt::red));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&f.view(), &leave);
        QVERIFY(std::abs(f.look().pixelColor(100, 1).green() - 89) <= 1);
    }

    void cornersAreTransparentWhereWindowsBlend()
    {
        PinnedFixture f;
        f.open();
        QCOMPARE(f.look().pixelColor(0, 0).alpha(), 0);
        QCOMPARE(f.look().pixelColor(199, 99).alpha(), 0);
        QCOMPARE(f.look().pixelColor(10, 10).alpha(), 255);
        QVERIFY(f.panels.shapes.at(&f.pin()).isEmpty());
    }

    void windowIsCutWhereNothingBlends()
    {
        PinnedFixture f;
        f.panels.blends = false;
        f.open();
        const QRegion shape = f.panels.shapes.at(&f.pin());
        QCOMPARE(shape.boundingRect(), QRect(0, 0, 200, 100));
        QVERIFY(!shape.contains(QPoint(0, 0)));
        QVERIFY(shape.contains(QPoint(6, 0)));
        QCOMPARE(f.look().pixelColor(0, 0).alpha(), 255);
        f.wheel(-20);
        QCOMPARE(f.panels.shapes.at(&f.pin()).boundingRect(), QRect(0, 0, 160, 80));
    }

    void dragMovesThePinByTheSameWay()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {550, 450});
        QCOMPARE(f.panels.focused.back(), &f.pin());
        f.mouse(QEvent::MouseMove, {560, 451});
        QCOMPARE(f.place(), kPinned.translated(10, 1));
        f.mouse(QEvent::MouseMove, {650, 350});
        f.mouse(QEvent::MouseButtonRelease, {650, 350});
        QCOMPARE(f.place(), kPinned.translated(100, -100));
        f.mouse(QEvent::MouseMove, {700, 300});
        QCOMPARE(f.place(), kPinned.translated(100, -100));
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
        QVERIFY(f.copied.empty());
        const QPointer<PinnedCapture> pin = &f.pin();
        f.mouse(QEvent::MouseButtonDblClick, {550, 450});
        QVERIFY(f.pins.open().empty());
        QVERIFY(!pin->isVisible());
        QTRY_VERIFY(!pin);
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
        f.mouse(QEvent::MouseMove, {1500, 500});
        QCOMPARE(f.place(), QRect(1450, 450, 200, 100));
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
        f.pins.stayReachable();
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
        f.pins.stayReachable();
        QCOMPARE(f.place(), kPinned);
        f.displays.all = {};
        f.pins.stayReachable();
        QCOMPARE(f.place(), kPinned);
    }

    void menuHasItsThreeEntriesAsTheyAre()
    {
        PinnedFixture f;
        f.open();
        QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 50}, {550, 450});
        QCoreApplication::sendEvent(&f.view(), &event);
        QVERIFY(menuOf(f)->isVisible());
        QStringList titles;
        for (const QAction* action : menuOf(f)->actions()) {
            titles << action->text();
            QVERIFY(action->shortcut().isEmpty());
        }
        QCOMPARE(titles, QStringList({QStringLiteral("Copiar"), QStringLiteral("Guardar…"),
                                      QStringLiteral("Cerrar")}));
        menuOf(f)->actions().at(2)->trigger();
        QVERIFY(f.pins.open().empty());
    }

    void keysOpenTheMenuOnce()
    {
        PinnedFixture f;
        f.open();
        QTest::keyClick(&f.view(), Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY(menuOf(f)->isVisible());
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {50, 50}, {550, 450});
        QCoreApplication::sendEvent(&f.view(), &event);
        QCOMPARE(f.view().findChildren<QMenu*>().size(), 1);
        menuOf(f)->close();
        QTRY_VERIFY(!menuOf(f));
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

    void copyTellsOnThePinsScreen()
    {
        PinnedFixture f;
        f.displays.all = {kPinnedScreen, kPinnedDenseScreen};
        f.open(QRect(2400, 400, 400, 200), QSizeF(200, 100));
        f.pin().copyImage();
        QVERIFY(f.copied.front().isSame(f.pin().rendered()));
        QVERIFY(!f.toast.visible());
        f.copyDone();
        QVERIFY(f.toast.visible());
        QVERIFY(kPinnedDenseScreen.native.contains(f.panels.shown.back().native));
        QVERIFY(f.saved.empty());
    }

    void copyOfAPinThatIsGoneTellsOnThePrimaryScreen()
    {
        PinnedFixture f;
        f.displays.all = {kPinnedScreen, kPinnedDenseScreen};
        f.open(QRect(2400, 400, 400, 200), QSizeF(200, 100));
        const QPointer<PinnedCapture> pin = &f.pin();
        f.pin().copyImage();
        f.pin().dismiss();
        QTRY_VERIFY(!pin);
        f.copyDone();
        QVERIFY(kPinnedScreen.native.contains(f.panels.shown.back().native));
    }

    void saveHandsOverThePicture()
    {
        PinnedFixture f;
        f.open();
        f.pin().saveImage();
        QVERIFY(f.saved.front().isSame(f.pin().rendered()));
        QVERIFY(f.copied.empty());
        QVERIFY(f.pin().isVisible());
    }

    void closingOneOfTwoPinsLeavesTheOther()
    {
        PinnedFixture f;
        PinnedCapture& first = f.open();
        PinnedCapture& second = f.open(QRect(10, 10, 50, 50));
        QCOMPARE(f.pins.open().front().get(), &first);
        QCOMPARE(f.pins.open().back().get(), &second);
        first.dismiss();
        QCOMPARE(f.pins.open().size(), std::size_t(1));
        QCOMPARE(f.pins.open().front().get(), &second);
        QVERIFY(second.isVisible());
    }

    void windowClosedByTheSystemIsDismissed()
    {
        PinnedFixture f;
        f.open();
        f.pin().close();
        QVERIFY(f.pins.open().empty());
    }

    void pictureIsGivenBackWithThePin()
    {
        PinnedFixture f;
        QImage image(400, 300, QImage::Format_RGB32);
        image.fill(Qt::red);
        f.pins.pin(Rendered(image, QSizeF(400, 300)), kPinned);
        const QPointer<PinnedCapture> pin = &f.pin();
        QVERIFY(!image.isDetached());
        f.pin().dismiss();
        QTRY_VERIFY(!pin);
        QVERIFY(image.isDetached());
    }
};

BRINDLECAM_TEST(TestPinnedCapture);

} // namespace brindlecam

#include "tst_pinnedcapture.moc"
