#pragma once

#include "Eyes.h"
#include "FrameCopy.h"

#include "desktop/support/Desktop.h"
#include "desktop/support/HotKeys.h"
#include "desktop/support/ProgramUnderTest.h"

#include <QJsonObject>

#include <memory>

namespace brindlecam::bench {

/// So long does a person wait before going on.
constexpr unsigned long kUnhurried = 400; // milliseconds
/// So many moves make a drag that is not measured itself.
constexpr int kDragMoves = 2;

enum class Page { interface, photo };

[[nodiscard]] QString name(Page page);

/// A desktop of one size with a few ordinary windows below a page that covers the screen, and the
/// program on it. Native pixels.
class Stage final {
public:
    Stage(QSize pixels, Page page);

    [[nodiscard]] QSize pixels() const { return m_pixels; }
    [[nodiscard]] Page shownPage() const { return m_shown; }
    /// What the screen shows when nothing of ours is on it.
    [[nodiscard]] const QImage& page() const { return m_page; }
    [[nodiscard]] desktop::Desktop& desktop() { return *m_desktop; }
    [[nodiscard]] Eyes& eyes() { return m_eyes; }
    /// Hands that hurry: the clock starts where an event is sent, and runs while nobody waits.
    [[nodiscard]] desktop::Input& input() { return m_desktop->input(); }
    [[nodiscard]] const FrameCopy& frameCopy() const { return *m_frameCopy; }

    /// Starts the program anew, with these settings, and waits until its hot keys work.
    void start(const QJsonObject& settings = {});
    void quit();
    [[nodiscard]] desktop::ProgramUnderTest& program() { return *m_program; }

    /// Presses the keys, the last of them once the others are down; all stay down until the hands
    /// let go. Returns the moment just before the last one's press was sent.
    Clock::time_point strike(const QList<Qt::Key>& keys);
    Clock::time_point strikeArea() { return strike(desktop::hotKey(desktop::kAreaKey)); }
    Clock::time_point strikeFullScreen()
    {
        return strike(desktop::hotKey(desktop::kFullScreenKey));
    }
    /// Waits until the overlay hides the page.
    void awaitOverlay();
    /// Opens a session at leisure; nothing is down afterwards.
    void openSession();
    /// Selects this area of it, in a few moves.
    void select(const QRect& area);
    /// Ends the session by Esc and waits until the page is back.
    void endSession();
    /// Waits until the page is back, all toasts gone.
    void awaitPage();
    /// Where the pointer is in nobody's way: neither on the hint nor in a corner.
    [[nodiscard]] QPoint aside() const;
    /// Puts the page below the ordinary windows, for surfaces that lie among these; from then on
    /// the page is never whole again.
    void lowerPage();

private:
    const QSize m_pixels;
    const Page m_shown;
    const std::unique_ptr<desktop::Desktop> m_desktop;
    const QImage m_page;
    std::vector<std::unique_ptr<desktop::ClientWindow>> m_windows;
    Eyes m_eyes;
    std::unique_ptr<FrameCopy> m_frameCopy;
    std::unique_ptr<desktop::ProgramUnderTest> m_program;
};

} // namespace brindlecam::bench
