#include "desktop/support/PinTest.h"

#include <algorithm>
#include <array>

#include <QElapsedTimer>
#include <QTest>

namespace brindlecam::desktop {

namespace {

// Points: where the bar lies below the selection, and the pin's button in it.
constexpr int kBarGap = 8;
constexpr int kBarWidth = 230;
constexpr int kPinButton = 36 + 15;
constexpr int kMiddle = 19;

constexpr int kItems = 3;          // of the menu
constexpr int kMenuOpens = 3000;   // ms
constexpr int kMenuAnswer = 1000;  // ms in which a menu with the keyboard has followed a key
constexpr int kMenuMargin = 6;     // pixels from its edge, where no item has letters
constexpr int kBetweenClicks = 80; // ms

constexpr int kBorder = 2;
constexpr int kRadius = 7; // of the border's outer edge

/// How far below the upper edge of a menu as high as this the middle of an item lies; items are
/// counted from one.
int middleOf(int item, int menuHeight)
{
    return menuHeight * (2 * item - 1) / (2 * kItems);
}

} // namespace

void PinTest::addSurroundings()
{
    QTest::addColumn<WindowManager>("windowManager");
    QTest::addColumn<Compositor>("compositor");
    QTest::newRow("openbox") << WindowManager::openbox << Compositor::none;
    QTest::newRow("openbox and picom") << WindowManager::openbox << Compositor::picom;
    QTest::newRow("bare") << WindowManager::none << Compositor::none;
    QTest::newRow("picom alone") << WindowManager::none << Compositor::picom;
}

void PinTest::addCompositors()
{
    QTest::addColumn<Compositor>("compositor");
    QTest::newRow("plain") << Compositor::none;
    QTest::newRow("picom") << Compositor::picom;
}

void PinTest::useSurroundings()
{
    QFETCH(WindowManager, windowManager);
    QFETCH(Compositor, compositor);
    usePins({.windowManager = windowManager, .compositor = compositor});
    QVERIFY(pinArea());
}

void PinTest::usePins(const DesktopOptions& options)
{
    usePatternedDesktop(options);
    program().writeSettings({{QStringLiteral("showLoupe"), false}});
    startProgram();
    input().moveTo(kAside);
    m_before = screen().grabAtRest();
}

bool PinTest::pinArea(const QRect& area)
{
    const std::size_t earlier = pins().size();
    if (!openArea())
        return false;
    pressPinButton(area);
    input().moveTo(kAside);
    return sessionIsOver() && waitUntil([&] {
               const auto all = pins();
               return all.size() == earlier + 1 &&
                      std::ranges::any_of(
                          all, [&](const SeenWindow& pin) { return pin.pixels == area; });
           });
}

void PinTest::pressPinButton(const QRect& area)
{
    const QPoint end(area.x() + area.width(), area.y() + area.height());
    input().drag(area.topLeft(), end);
    input().click({end.x() - kBarWidth + kPinButton, end.y() + kBarGap + kMiddle});
}

std::vector<SeenWindow> PinTest::pins()
{
    return windows().shown(program().pid(), Role::pin);
}

bool PinTest::isOnlyPin(const QRect& place)
{
    if (waitUntil([&] {
            const auto all = pins();
            return all.size() == 1 && all.front().pixels == place;
        }))
        return true;
    for (const SeenWindow& pin : pins())
        qWarning() << "there is a pin at" << pin.pixels;
    return false;
}

bool PinTest::pinsAreGone()
{
    return waitUntil([this] { return pins().empty(); });
}

bool PinTest::shows(const QRect& place, const QImage& picture)
{
    return waitUntil(
        [&] { return difference(screen().grab(place), picture, inside(place.size())) == 0; });
}

bool PinTest::liesAbove(QColor around, const QRect& place)
{
    return waitUntil([&] { return screen().pixel(place.topLeft() - QPoint(3, 3)) == around; }) &&
           shows(place, captured());
}

bool PinTest::isRoundOver(QColor beneath, const QRect& place)
{
    const int right = place.width() - 1;
    const int bottom = place.height() - 1;
    const std::array corners{QPoint(0, 0),     QPoint(1, 0),      QPoint(right, 0),
                             QPoint(right, 1), QPoint(0, bottom), QPoint(right, bottom)};
    const std::array edges{QPoint(20, 0), QPoint(0, 20), QPoint(right, 20), QPoint(20, bottom)};
    return waitUntil([&] {
        const QImage now = screen().grab(place);
        const auto isBeneath = [&](QPoint at) { return now.pixelColor(at) == beneath; };
        return std::ranges::all_of(corners, isBeneath) && std::ranges::none_of(edges, isBeneath);
    });
}

QRegion PinTest::inside(QSize pin)
{
    QRegion region = QRect(QPoint(), pin).adjusted(kBorder, kBorder, -kBorder, -kBorder);
    for (const int x : {0, pin.width() - kRadius}) {
        for (const int y : {0, pin.height() - kRadius})
            region -= QRect(x, y, kRadius, kRadius);
    }
    return region;
}

void PinTest::doubleClickPin(QPoint place)
{
    input().click(place);
    QTest::qWait(kBetweenClicks);
    input().click(place);
}

bool PinTest::openMenu(QPoint place)
{
    // The click may come while the pin's window is made anew; another one too soon would close the
    // menu again.
    return waitUntil([&] {
        input().click(place, Button::right);
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < kMenuOpens; QTest::qWait(kMenuOpens / 100)) {
            if (menus().size() == 1)
                return true;
        }
        return false;
    });
}

bool PinTest::clickInMenu(int item)
{
    const auto all = menus();
    if (all.empty())
        return false;
    const QRect place = all.front().pixels;
    input().click({place.center().x(), place.top() + middleOf(item, place.height())});
    return waitUntil([this] { return menus().empty(); });
}

int PinTest::litItem()
{
    const auto all = menus();
    if (all.empty())
        return 0;
    const QImage menu = screen().grab(all.front().pixels); // all items at one moment
    const auto margin = [&](int item) {
        return menu.pixel(kMenuMargin, middleOf((item - 1) % kItems + 1, menu.height()));
    };
    for (int item = 1; item <= kItems; ++item) {
        if (margin(item) != margin(item + 1) && margin(item + 1) == margin(item + 2))
            return item;
    }
    return 0;
}

void PinTest::choose(int item)
{
    // Mapped is not served: keys that come before the menu has the keyboard are lost.
    const auto reached = [&] {
        const int before = litItem();
        input().tap(Qt::Key_Down);
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < kMenuAnswer; QTest::qWait(kMenuAnswer / 50)) {
            if (const int now = litItem(); now != before)
                return now == item;
        }
        return false;
    };
    if (waitUntil(reached))
        input().tap(Qt::Key_Return);
}

std::vector<SeenWindow> PinTest::menus()
{
    return windows().shown(program().pid(), Role::menu);
}

bool PinTest::activate(const ClientWindow& window)
{
    desktop().pager().activate(window.id());
    return becomesActive(window);
}

} // namespace brindlecam::desktop
