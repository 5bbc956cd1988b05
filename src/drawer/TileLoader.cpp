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
void TileLoader::load(const std::vector<Entry>& entries, QSize most, const Loaded& loaded)
{
    const Executor keeping = [executor = m_executor, wanted = m_wanted](const auto& keep) {
        executor([keep, wanted] {
            if (*wanted)
                keep();
        });
    };
    for (std::size_t index = 0; index < entries.size(); ++index) {
        m_background.run(
            [folders = m_folders, path = entries[index].path, most, wanted = m_wanted, keeping] {
                return *wanted ? History(folders).thumbnail(path, most, keeping) : std::nullopt;
            },
            [loaded, index](std::optional<Thumbnail> thumbnail) {
                loaded(index, std::move(thumbnail));
            });
    }
}

} // namespace brindlecam
