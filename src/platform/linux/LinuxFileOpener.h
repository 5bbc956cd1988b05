#pragma once

#include "platform/FileOpener.h"

#include <QObject>

#include <chrono>

class QDBusMessage;
class QDBusServiceWatcher;

namespace brindlecam {

/// Asks the file manager on the session bus first, which shows the folder in a window it has open
/// already; where none answers, xdg-open knows what the desktop has. Previews are those of GNOME's
/// file manager, which others show, too.
class LinuxFileOpener final : public QObject, public FileOpener {
    Q_OBJECT

public:
    struct Timing {
        std::chrono::milliseconds answer{5000}; ///< a file manager may have to be started first
        std::chrono::milliseconds start{10000}; ///< xdg-open still runs: it waits for its program
    };

    LinuxFileOpener();
    explicit LinuxFileOpener(Timing timing);

    void openFolder(const QString& path, QObject* context, Done done) override;
    void openFile(const QString& path, QObject* context, Done done) override;
    void openPage(const QUrl& page, QObject* context, Done done) override;
    void reveal(const QString& path, QObject* context, Done done) override;
    void preview(const QString& path, QObject* context, Done done) override;
    void endPreview() override;

private:
    /// Answers at most once, and only as long as somebody wants to know.
    using Answer = std::function<void(bool opened)>;

    [[nodiscard]] static Answer answerOnce(QObject* context, Done done);
    /// Has the file manager show these by `method`; who can't reach one does `otherwise`.
    void askFileManager(const QString& method, const QString& path, const Answer& answer,
                        const std::function<void()>& otherwise);
    /// Sends a call and tells whether it was carried out.
    void call(const QDBusMessage& message, const Answer& answer);
    void startOpener(const QString& path, const Answer& answer);

    void previewAnswered(bool shown);
    void closePreview();
    void previewerIsGone();

    const Timing m_timing;
    bool m_previewWanted = false;     ///< since the latest call of preview(), until endPreview()
    bool m_previewed = false;         ///< something may be shown
    std::function<void()> m_tellGone; ///< whoever is interested in what is shown
    QDBusServiceWatcher* m_previewer = nullptr; ///< a child; made for the first preview
};

} // namespace brindlecam
