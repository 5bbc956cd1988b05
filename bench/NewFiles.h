#pragma once

#include <QString>

#include <optional>

namespace brindlecam::bench {

/// Watches a folder for finished pictures, asleep until the kernel reports one.
class NewFiles final {
public:
    explicit NewFiles(const QString& folder);
    ~NewFiles();
    NewFiles(const NewFiles&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;

    /// The path of the next PNG that is there whole, to its last chunk; none within the patience.
    [[nodiscard]] std::optional<QString> awaitPng();

private:
    const QString m_folder;
    int m_watch = -1;
};

} // namespace brindlecam::bench
