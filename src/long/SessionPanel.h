#pragma once

#include <QRect>
#include <QString>
#include <QWidget>

#include <functional>

namespace brindlecam {

class Compositing;
class PanelButton;
class Panels;
class StatusLine;

/// The dark strip with what a long capture is at, and the buttons that end it. It never takes the
/// keyboard from the program that is captured, neither when it comes nor by a click. Main thread;
/// borrows the ports.
class SessionPanel final : public QWidget {
    Q_OBJECT

public:
    struct Words {
        QString status;
        QString doneTitle;
    };

    /// `native` is where it stands (pixels of the global desktop), on a screen of this scale.
    SessionPanel(Panels& panels, Compositing& compositing, const QRect& native, qreal scale,
                 const Words& words);

    // Filled by whoever makes it; each may end it.
    std::function<void()> onDone;
    std::function<void()> onCancel;

    void appear();
    void setStatus(const QString& status);
    [[nodiscard]] QString status() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void cut();

    Panels& m_panels;
    Compositing& m_compositing;
    const QRect m_native;
    const qreal m_scale;  ///< pixels per point
    StatusLine* m_status; ///< children, as those below
    PanelButton* m_done;
    PanelButton* m_cancel;
};

} // namespace brindlecam
