#pragma once

#include "canvas/Outcome.h"
#include "canvas/Toolbar.h"

#include <QSizeF>
#include <QString>

#include <functional>
#include <optional>

namespace brindlecam {

class CanvasModel;
class Hud;

/// What a session can end with, each for the present selection. Nothing happens while nothing is
/// selected. Main thread; borrows model and message.
class CanvasActions final {
public:
    CanvasActions(CanvasModel& model, Hud& hud);

    /// What is still being typed is to become a mark before the picture is made.
    std::function<void()> onBeforePicture;
    /// The session ends.
    std::function<void(const Outcome&)> onFinish;

    /// The button of the actions bar.
    void perform(Toolbar::Action action);

    /// The selection with its marks; none when nothing is selected.
    [[nodiscard]] std::optional<Rendered> render();

    void copy();
    void saveDocument();
    void pin();
    /// Too small a selection for one of these gets a message instead.
    void scrollCapture();
    void recordGif();
    void cancel();

private:
    [[nodiscard]] bool hasRoomFor(QSizeF least, const QString& otherwise);
    void finish(const Outcome& outcome);

    CanvasModel& m_model;
    Hud& m_hud;
};

} // namespace brindlecam
