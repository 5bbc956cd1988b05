#pragma once

#include "platform/FileOpener.h"

#include <QObject>

#include <chrono>

namespace brindlecam {

/// Asks the file manager on the session bus first, which shows the folder in a window it has open
/// already; where none answers, xdg-open knows what the desktop has.
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

private:
    /// Answers at most once, and only as long as somebody wants to know.
    using Answer = std::function<void(bool opened)>;

    void askFileManager(const QString& path, const Answer& answer);
    void startOpener(const QString& path, const Answer& answer);

    const Timing m_timing;
};

} // namespace brindlecam
