#pragma once

#include <QObject>
#include <QPointer>
#include <QRegion>
#include <QWidget>

#include <functional>

namespace brindlecam {

/// Keeps a widget from painting itself when its window comes to the screen with a first frame in
/// it, so that Qt's own copy of those pixels is never made, nor the memory for it touched. Once Qt
/// knows that the window is on the screen, the widget paints what it asks for, and what the server
/// has lost meanwhile or loses later. Drop it when a widget can tell Qt that its window shows the
/// right pixels already. Main thread.
class PaintHold final : public QObject {
    Q_OBJECT

public:
    /// Before the widget is shown. `mayPaint` runs when the hold is over; not if the widget is gone
    /// from the screen by then.
    PaintHold(QWidget& widget, std::function<void()> mayPaint);
    ~PaintHold() override;

    /// The frame could not be shown: the widget paints all of itself.
    void paintAll();
    /// The server asks for this part of the window (points). Qt would send it what nobody painted.
    void repaint(const QRect& part);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setPainting(bool on);
    void paintLost();
    void end();

    const QPointer<QWidget> m_widget;
    const std::function<void()> m_mayPaint;
    QRegion m_lost; ///< points; what must be painted when the hold is over
    bool m_paintsAll = false;
    bool m_held = false;
    bool m_ending = false;
};

} // namespace brindlecam
