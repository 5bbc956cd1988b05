#pragma once

#include "desktop/support/CaptureTest.h"

#include <QColor>
#include <QSize>

#include <vector>

namespace brindlecam::desktop {

/// Base of the tests of the drawer: what a person does with it and sees of it. Rectangles are
/// native pixels of the whole screen, whose points are pixels.
class DrawerTest : public CaptureTest {
    Q_OBJECT

protected:
    static constexpr Qt::Key kRecentsKey = Qt::Key_0;
    /// What lies in the history, newest first.
    static constexpr std::array kColours{Qt::red, Qt::green, Qt::blue};
    static constexpr QSize kEntry{300, 200};
    /// Where the pointer is out of the drawer's way.
    static constexpr QPoint kAside{640, 20};

    /// A desktop with a program on it that has these three captures.
    void useDrawer(const DesktopOptions& options = {});
    /// Puts a file into the history that comes before all others there.
    void addEntry(const QByteArray& bytes);
    void addEntry(const QColor& colour, QSize size = kEntry);

    /// The drawers that can be seen now.
    [[nodiscard]] std::vector<SeenWindow> drawers();
    /// There is one drawer, and it stands still at the lower edge of the screen.
    [[nodiscard]] bool drawerIsOpen();
    [[nodiscard]] bool drawerIsGone();
    /// Presses the hot key and waits for it.
    [[nodiscard]] bool openDrawer();

    /// Where the tile is, counted from the left, while nothing is scrolled.
    [[nodiscard]] QRect tile(int index);
    /// The picture in the middle of this tile is of this colour.
    [[nodiscard]] bool shows(int index, const QColor& colour);
    /// Opens the menu of a tile and chooses the item of this name.
    [[nodiscard]] bool choose(int index, const char* item);
    /// Gives this window the keyboard without a press.
    [[nodiscard]] bool turnsTo(ClientWindow& window);
    /// What is pasted is the entry of this colour.
    [[nodiscard]] bool isPastedEntry(const QColor& colour);
};

} // namespace brindlecam::desktop
