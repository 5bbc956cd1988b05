#include "drawer/TileLoader.h"

#include <QFileInfo>

#include <utility>

namespace brindlecam {

TileLoader::TileLoader(History::Folders folders, Executor executor)
    : m_folders(std::move(folders))
    , m_executor(std::move(executor))
    , m_background(m_executor)
{
}

TileLoader::~TileLoader()
{
    *m_wanted = false;
}

void TileLoader::list(Listed listed)
{
    m_background.run(
        [folders = m_folders] {
            std::vector<Entry> entries;
            for (const QString& item : History(folders).items()) {
                const QDateTime written = QFileInfo(item).lastModified();
                entries.push_back(
                    {item, written.isValid() ? written : QDateTime::currentDateTime()});
            }
            return entries;
        },
        std::move(listed));
}

// What is made is kept when all have been read, unless this is gone by then.
Executor TileLoader::keeping() const
{
    return [executor = m_executor, wanted = m_wanted](const auto& keep) {
        executor([keep, wanted] {
            if (*wanted)
                keep();
        });
    };
}

void TileLoader::load(std::vector<Entry> entries, QSize most, Loaded loaded)
{
    m_entries = std::move(entries);
    m_most = most;
    m_loaded = std::move(loaded);
    for (std::size_t index = 0; index < m_entries.size(); ++index) {
        m_background.run(
            [folders = m_folders, path = m_entries[index].path, most, wanted = m_wanted,
             keeping = keeping()] {
                return *wanted ? History(folders).keptThumbnail(path, most, keeping) : std::nullopt;
            },
            [this, index](std::optional<Thumbnail> kept) { found(index, std::move(kept)); });
    }
}

void TileLoader::found(std::size_t index, std::optional<Thumbnail> kept)
{
    if (!kept && m_decodes)
        decode(index);
    else if (!kept)
        m_missing.push_back(index);
    m_loaded(index, std::move(kept));
}

void TileLoader::decodeMissing()
{
    m_decodes = true;
    for (const std::size_t index : std::exchange(m_missing, {}))
        decode(index);
}

void TileLoader::decode(std::size_t index)
{
    m_background.run(
        [folders = m_folders, path = m_entries[index].path, most = m_most, wanted = m_wanted,
         keeping = keeping()] {
            return *wanted ? History(folders).thumbnail(path, most, keeping) : std::nullopt;
        },
        [this, index](std::optional<Thumbnail> made) { m_loaded(index, std::move(made)); });
}

} // namespace brindlecam
