#include "desktop/support/PinTest.h"

#include "desktop/support/Buttons.h"

#include <algorithm>
#include <array>

#include <QElapsedTimer>
#include <QTest>

namespace brindlecam::desktop {

namespace {

constexpr int kMenuOpens = 3000;  // ms
constexpr int kMenuAnswer = 1000; // ms in which a menu with the keyboard has followed a key
constexpr int kMargin = 2;        // pixels from the edge of an item, where it has no letters

constexpr int kBorder = 2;
constexpr int kRadius = 7; // of the border's outer edge

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
    DesktopOptions named = options;
    named.accessibility = Accessibility::on;
    usePatternedDesktop(named);
    program().writeSettings({{QStringLiteral("showLoupe"), false}});
    startProgram();
    input().moveTo(kAside);
    m_before = screen().grabAtRest();
}

bool PinTest::pinArea(const QRect& area)
{
    const std::size_t earlier = pins().size();
    if (!openArea() || !pressPinButton(area))
        return false;
    input().moveTo(kAside);
    return sessionIsOver() && waitUntil([&] {
               const auto all = pins();
               return all.size() == earlier + 1 &&
                      std::ranges::any_of(
                          all, [&](const SeenWindow& pin) { return pin.pixels == area; });
           });
}

bool PinTest::pressPinButton(const QRect& area)
{
    select(area);
    return press(Buttons::kPin);
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

bool PinTest::openMenu(QPoint place)
{
    m_menuPlace = place;
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

bool PinTest::clickInMenu(const char* item)
{
    // Qt closes a menu when it hears late that the program has lost the focus.
    std::optional<Control> found;
    const auto isDecided = [&] {
        found = controls().look(QString::fromUtf8(item), ControlKind::menuItem);
        return found || menus().empty();
    };
    if (!waitUntil(isDecided) || !found)
        return false;
    input().click(found->pixels.center());
    return waitUntil([this] { return menus().empty(); });
}

QString PinTest::litItem()
{
    std::vector<Control> items = controls().shown();
    std::erase_if(items,
                  [](const Control& control) { return control.kind != ControlKind::menuItem; });
    const QImage now = screen().grab(); // all items at one moment
    const auto margin = [&now](const Control& item) {
        return now.pixel(item.pixels.left() + kMargin, item.pixels.center().y());
    };
    for (const Control& item : items) {
        const auto looksLikeIt = [&](const Control& other) {
            return margin(other) == margin(item);
        };
        if (item.focused && std::ranges::count_if(items, looksLikeIt) == 1)
            return item.name;
    }
    return {};
}

void PinTest::choose(const char* item)
{
    // Mapped is not served: keys that come before the menu has the keyboard are lost. Qt also
    // closes a menu when it hears late that the program has lost the focus; a person opens it
    // again.
    const auto reached = [&] {
        if (menus().empty() && !openMenu(m_menuPlace))
            return false;
        const QString before = litItem();
        input().tap(Qt::Key_Down);
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < kMenuAnswer; QTest::qWait(kMenuAnswer / 50)) {
            if (const QString now = litItem(); !now.isEmpty() && now != before)
                return now == QString::fromUtf8(item);
        }
        return false;
    };
    if (waitUntil(reached))
        input().tap(Qt::Key_Return);
}

bool PinTest::activate(const ClientWindow& window)
{
    desktop().pager().activate(window.id());
    return becomesActive(window);
}

} // namespace brindlecam::desktop
