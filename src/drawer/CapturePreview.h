#pragma once

#include "base/Executor.h"
#include "base/ScreenInfo.h"
#include "capture/ScreenCover.h"

#include <QObject>
#include <QString>

#include <memory>

namespace brindlecam {

class Activity;
class PreviewWindow;
class Toast;
struct Platform;

/// Shows a capture large: in the way of the desktop, or in a window of ours where it has none. One
/// at a time. Main thread; borrows all it works with.
class CapturePreview final : public QObject {
    Q_OBJECT

public:
    CapturePreview(Platform& platform, Toast& toast, const Activity& activity, Executor executor);
    ~CapturePreview() override;

    /// Shows the file at this path, in place of what is shown.
    void show(const QString& path, const ScreenInfo& screen);
    /// Takes it off the screen, with the keyboard if our window has it. Whether there was one.
    bool leave(ScreenCover::Focus focus);

    /// Our own window, or null.
    [[nodiscard]] PreviewWindow* window() const { return m_window.get(); }

private:
    /// The desktop's own preview, as far as we know.
    enum class Elsewhere { none, asked, shown };

    void showHere(const QString& path, const ScreenInfo& screen);
    void failed(const ScreenInfo& screen);
    void closed();
    void discardWindow();

    Platform& m_platform;
    Toast& m_toast;
    const Activity& m_activity;
    const Executor m_executor;
    std::unique_ptr<QObject> m_asked; ///< context of a question to the desktop
    std::unique_ptr<PreviewWindow> m_window;
    Elsewhere m_elsewhere = Elsewhere::none;
};

} // namespace brindlecam
