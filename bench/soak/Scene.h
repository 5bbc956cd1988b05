#pragma once

#include "Picture.h"

#include "desktop/support/ClientWindow.h"

#include <QRect>
#include <QString>

#include <memory>

namespace brindlecam::soak {

class Chance;
class Person;

/// What lies on the desktop before the program comes: a wallpaper on which every shift shows, a
/// window that changes its colour and one with a sentence. Native pixels.
class Scene final {
public:
    static constexpr QRect kScreen{0, 0, 1280, 800};
    /// Where pins are put: nothing of the scene lies there, and no toast.
    static constexpr QRect kForPins{320, 240, 640, 340};

    explicit Scene(Person& person);

    /// Puts the window back that every new window manager moves by a frame's width; for which it
    /// needs one that answers.
    void straighten();
    /// Changes the colour, so that no two captures look alike, and waits until nothing moves.
    /// Answers what a capture would show now: the program's messages are no part of it. The pointer
    /// stands in the lower left corner of a monitor afterwards.
    [[nodiscard]] Picture freeze(Chance& chance, const QRect& monitor);

    [[nodiscard]] QRect page() const { return m_page->pixels(); }
    [[nodiscard]] static QString sentence();
    /// The window that the window manager has put into a frame, if there is one.
    [[nodiscard]] const desktop::ClientWindow& framed() const { return *m_framed; }

private:
    void openFramed();
    [[nodiscard]] bool isCovered(const QRect& place) const;
    void awaitOpenSight() const;

    Person& m_person;
    const QImage m_wallpaper;
    std::unique_ptr<desktop::ClientWindow> m_framed;
    std::unique_ptr<desktop::ClientWindow> m_page;
};

} // namespace brindlecam::soak
