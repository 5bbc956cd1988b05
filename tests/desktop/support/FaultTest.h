#pragma once

#include "desktop/support/ClientWindow.h"
#include "desktop/support/DesktopTest.h"
#include "desktop/support/Pictures.h"
#include "desktop/support/Windows.h"

#include <QImage>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

namespace brindlecam::desktop {

/// Base of tests that take captures where something is wrong: what a user does and sees, as verbs.
/// Rectangles are native pixels of the whole screen. Verbs that wait answer whether it came.
class FaultTest : public DesktopTest {
    Q_OBJECT

protected:
    /// Super+Mayús+9, and Super+Mayús+8.
    void pressAreaKey() { input().chord({Qt::Key_Super_L, Qt::Key_Shift, Qt::Key_9}); }
    void pressFullScreenKey() { input().chord({Qt::Key_Super_L, Qt::Key_Shift, Qt::Key_8}); }
    [[nodiscard]] bool awaitHotKeys();

    /// The overlays that are up.
    [[nodiscard]] std::vector<SeenWindow> overlays();
    /// The overlays cover the screen, take keys, and Escape is held.
    [[nodiscard]] bool awaitSession(std::size_t overlayCount = 1);
    /// No overlay is left and Escape is free again.
    [[nodiscard]] bool awaitSessionEnd();
    /// Selects exactly this rectangle in a session.
    void select(const QRect& pixels);

    /// A toast with this text shows up; one that was awaited before does not count.
    [[nodiscard]] bool awaitToast(const QString& text);

    /// No window of the program is left on the screen.
    [[nodiscard]] bool awaitNothingShown();

    /// What another program would paste; null when there is no picture.
    [[nodiscard]] QImage pastedPicture();
    /// Names in a folder, all kinds of files, sorted.
    [[nodiscard]] static QStringList namesIn(const QString& folder);
    [[nodiscard]] QStringList captures() { return namesIn(program().folders().captures()); }
    [[nodiscard]] QStringList history() { return namesIn(program().folders().history()); }
    /// How many whole pictures are in the history, whatever is being written beside them.
    [[nodiscard]] qsizetype taken();
    /// The picture in a folder that holds nothing but this one file; null when it does not decode
    /// or there is any other file.
    [[nodiscard]] static QImage onlyPictureIn(const QString& folder);

    /// A window full of a picture in which no place looks like another, on every depth.
    [[nodiscard]] std::unique_ptr<ClientWindow> showSample(const QRect& pixels,
                                                           WindowKind kind = WindowKind::normal);

private:
    std::pair<qint64, WindowId> m_lastToast; ///< process and window
};

} // namespace brindlecam::desktop
