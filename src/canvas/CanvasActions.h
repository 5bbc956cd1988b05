#pragma once

#include "canvas/Outcome.h"
#include "canvas/TextReading.h"
#include "canvas/Toolbar.h"

#include <QSizeF>
#include <QString>

#include <functional>
#include <optional>

namespace brindlecam {

class CanvasModel;
class Hud;
class TextRecognizer;

/// What a session can end with, each for the present selection. Nothing happens while nothing is
/// selected. Main thread; borrows all it is made with.
class CanvasActions final {
public:
    /// `canvas` is who asks for text.
    CanvasActions(CanvasModel& model, Hud& hud, TextRecognizer& recognizer, QObject& canvas);

    /// What is still being typed is to become a mark before the picture is made.
    std::function<void()> onBeforePicture;
    /// The session ends.
    std::function<void(const Outcome&)> onFinish;

    /// The button of the actions bar.
    void perform(Toolbar::Action action);

    /// The selection with its marks; none when nothing is selected.
    [[nodiscard]] std::optional<Rendered> render();

    /// Ends the session with the text in the selection, read from the screen and not from marks;
    /// without text, or when it can't be read, a message says so.
    void recognizeText();
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
    TextReading m_reading;
};

} // namespace brindlecam
