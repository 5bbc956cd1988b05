#pragma once

#include "base/Background.h"

#include <QImage>
#include <QSize>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace brindlecam {

/// A capture as large as fits the screen, where the desktop has no previewer of its own; an
/// animation plays. Space and Esc close it. Main thread; decodes on the executor.
class PreviewWindow final : public QWidget {
    Q_OBJECT

public:
    /// Of the file at this path, on a screen with so much room (pixels) and so many pixels per
    /// point.
    PreviewWindow(const QString& path, QSize room, qreal scale, const Executor& executor);
    ~PreviewWindow() override;

    // Filled by whoever makes it.
    std::function<void()> onReady;  ///< the picture is there
    std::function<void()> onFailed; ///< there is no picture in the file
    std::function<void()> onClosed; ///< by the user; may end it

    /// Reads the picture; onReady or onFailed follows.
    void load();
    /// How many pixels it takes up with its picture.
    [[nodiscard]] QSize pixels() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Reading; ///< the file on the executor's thread
    struct Frame {
        QImage image; ///< as large as it is shown; null: there is none
        std::optional<std::chrono::milliseconds> shownFor; ///< none: for good
    };

    void readFrame();
    void receive(Frame frame);
    void begin(const Frame& first);
    void playOn();
    void present(const Frame& frame);

    const qreal m_scale;
    const std::shared_ptr<Reading> m_reading;
    const Background m_background;
    Frame m_shown;
    std::optional<Frame> m_nextFrame; ///< read ahead
    QTimer m_end;                     ///< of the frame that is shown
    bool m_readsAhead = false;
};

} // namespace brindlecam
