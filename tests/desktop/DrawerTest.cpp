#include "desktop/DrawerTest.h"

#include <QBuffer>
#include <QDir>
#include <QFile>

#include <algorithm>

namespace brindlecam::desktop {

namespace {

constexpr int kAboveBottom = 14;
constexpr int kMargin = 16;
constexpr int kRowTop = 46;
constexpr QSize kTile(210, 150);
constexpr int kStep = 222;

} // namespace

void DrawerTest::useDrawer(const DesktopOptions& options)
{
    usePatternedDesktop(options);
    for (auto colour = kColours.rbegin(); colour != kColours.rend(); ++colour)
        addEntry(*colour);
    input().moveTo(kAside);
    startProgram();
}

void DrawerTest::addEntry(const QByteArray& bytes)
{
    const QString folder = program().folders().history();
    QDir().mkpath(folder);
    const auto count = filesIn(folder).size();
    QFile file(folder +
               QStringLiteral("/20260314-0926%1-000.png").arg(count, 2, 10, QLatin1Char('0')));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the history takes no entry");
}

void DrawerTest::addEntry(const QColor& colour, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    addEntry(bytes);
}

// A pin's window is of the same kind.
std::vector<SeenWindow> DrawerTest::drawers()
{
    std::vector<SeenWindow> all = pins();
    std::erase_if(all, [](const SeenWindow& window) {
        return window.title != QStringLiteral("Capturas recientes");
    });
    return all;
}

bool DrawerTest::drawerIsOpen()
{
    return waitUntil([this] {
        const auto all = drawers();
        const auto monitors = screen().monitors();
        return all.size() == 1 && std::ranges::any_of(monitors, [&](const QRect& monitor) {
                   return all.front().pixels.bottom() == monitor.bottom() - kAboveBottom &&
                          monitor.contains(all.front().pixels);
               });
    });
}

bool DrawerTest::drawerIsGone()
{
    return waitUntil([this] { return drawers().empty(); });
}

bool DrawerTest::openDrawer()
{
    pressHotKey(kRecentsKey);
    return drawerIsOpen();
}

QRect DrawerTest::tile(int index)
{
    const auto all = drawers();
    if (all.empty())
        return {};
    const QPoint first = all.front().pixels.topLeft() + QPoint(kMargin, kRowTop);
    return {first + QPoint(index * kStep, 0), kTile};
}

bool DrawerTest::shows(int index, const QColor& colour)
{
    return waitUntil([&] {
        const QRect place = tile(index);
        return !place.isEmpty() && screen().pixel(place.center() - QPoint(0, 10)) == colour;
    });
}

bool DrawerTest::choose(int index, const char* item)
{
    input().click(tile(index).center(), Button::right);
    if (!waitUntil([this] { return menus().size() == 1; }))
        return false;
    const auto found = controls().find(QString::fromUtf8(item), ControlKind::menuItem);
    if (!found)
        return false;
    input().click(found->pixels.center());
    return waitUntil([this] { return menus().empty(); });
}

bool DrawerTest::turnsTo(ClientWindow& window)
{
    if (desktop().hasWindowManager())
        desktop().pager().activate(window.id());
    else
        window.takeFocus();
    return getsFocus(window);
}

bool DrawerTest::isPastedEntry(const QColor& colour)
{
    QImage expected(kEntry, QImage::Format_RGB32);
    expected.fill(colour);
    return isPasted(expected);
}

} // namespace brindlecam::desktop
