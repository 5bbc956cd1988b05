#pragma once

#include "base/Background.h"
#include "history/History.h"
#include "pictures/Thumbnail.h"

#include <QDateTime>
#include <QString>

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace brindlecam {

/// What the drawer shows, read where it may take its time: the list of the history's entries, then
/// the thumbnails that are kept of them, and in the end those that have to be made, in sight first.
/// What comes after this is gone is dropped. Main thread.
class TileLoader final {
public:
    struct Entry {
        QString path;
        QDateTime written;
    };
    /// Of entries that may be gone by then, newest first.
    using Listed = std::function<void(std::vector<Entry>)>;
    /// Of the entry at this index; none where nothing is kept of it, or it can't be decoded.
    using Loaded = std::function<void(std::size_t index, std::optional<Thumbnail>)>;

    TileLoader(History::Folders folders, Executor executor);
    /// What has not begun by then is not done any more: the next drawer must not wait for it.
    ~TileLoader();
    TileLoader(const TileLoader&) = delete;
    TileLoader& operator=(const TileLoader&) = delete;

    /// All answers come later.
    void list(Listed listed);
    /// What is kept of each of these, at most so large (pixels), in their order as far as threads
    /// are free. Once.
    void load(std::vector<Entry> entries, QSize most, Loaded loaded);
    /// Makes those that load() does not find, which takes both time and the processor: once the
    /// drawer is there.
    void decodeMissing();

private:
    [[nodiscard]] Executor keeping() const;
    void found(std::size_t index, std::optional<Thumbnail> kept);
    void decode(std::size_t index);

    std::vector<Entry> m_entries;
    QSize m_most;
    Loaded m_loaded;
    std::vector<std::size_t> m_missing; ///< nobody has asked to decode them yet
    bool m_decodes = false;

    const History::Folders m_folders;
    const std::shared_ptr<std::atomic<bool>> m_wanted = std::make_shared<std::atomic<bool>>(true);
    const Executor m_executor;
    const Background m_background;
};

} // namespace brindlecam
