#pragma once

#include "desktop/support/CaptureTest.h"

#include <QRegion>

#include <optional>

namespace brindlecam::desktop {

/// Base of the tests about pins: how a user makes one, finds it on the screen and opens its menu.
/// Native pixels of the whole screen.
class PinTest : public CaptureTest {
    Q_OBJECT

protected:
    static constexpr QRect kDragged{300, 250, 400, 300};
    /// Where no test's pin lies.
    static constexpr QPoint kAside{20, 780};

    /// A red window that a pin of kDragged lies over.
    [[nodiscard]] static ClientWindowOptions beneath()
    {
        return {.pixels = QRect(200, 150, 700, 500), .colour = Qt::red};
    }

    /// Rows of a test, and what stands on the desktop in them: every mix of with and without a
    /// window manager and a compositor, or the compositor alone.
    static void addSurroundings();
    static void addCompositors();
    /// Puts up the row's surroundings and a pin.
    void useSurroundings();

    /// A desktop with the program running and the pointer aside; before() is what it looks like.
    void usePins(const DesktopOptions& options = {});
    [[nodiscard]] const QImage& before() const { return m_before; }
    /// What the pin at kDragged was taken of.
    [[nodiscard]] QImage captured() const { return before().copy(kDragged); }

    /// Takes an area by real drags and presses the bar's button; the pointer goes aside. False when
    /// there is not one pin more, which covers the area.
    [[nodiscard]] bool pinArea(const QRect& area = kDragged);
    /// The same in a session that is open already: drags over the area and presses the button.
    [[nodiscard]] bool pressPinButton(const QRect& area);
    /// Waits until there is exactly one pin, in this place.
    [[nodiscard]] bool isOnlyPin(const QRect& place);
    [[nodiscard]] bool pinsAreGone();

    /// Waits until the pin in this place shows the picture pixel for pixel inside its border.
    [[nodiscard]] bool shows(const QRect& place, const QImage& picture);
    /// Waits until it does, and a window of this colour lies around it.
    [[nodiscard]] bool liesAbove(QColor around, const QRect& place = kDragged);
    /// Waits until the four corners of the pin show this colour from beneath, and its edges do not.
    [[nodiscard]] bool isRoundOver(QColor beneath, const QRect& place = kDragged);
    /// What lies inside the border of a pin as large as this, which has round corners.
    [[nodiscard]] static QRegion inside(QSize pin);

    /// Opens the menu there with the right button and waits for it.
    [[nodiscard]] bool openMenu(QPoint place);
    /// Chooses the item of this name with the mouse; false when the menu does not close.
    [[nodiscard]] bool clickInMenu(const char* item);
    /// Chooses the item of this name with the keyboard.
    void choose(const char* item);
    /// The name of the menu's item that is told to be the one, and is seen to be lit; or none.
    [[nodiscard]] QString litItem();

    /// Gives another program's window the focus through the window manager and waits for it.
    [[nodiscard]] bool activate(const ClientWindow& window);

private:
    QImage m_before;
    QPoint m_menuPlace; ///< where a menu was opened last
};

} // namespace brindlecam::desktop
