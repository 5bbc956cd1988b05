#include "drawer/TileLoader.h"

#include <QFileInfo>

#include <utility>

namespace brindlecam {

TileLoader::TileLoader(History::Folders folders, Executor executor)
    : m_folders(std::move(folders))
    , m_background(std::move(executor))
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

void TileLoader::load(const std::vector<Entry>& entries, QSize most, const Loaded& loaded)
{
    for (std::size_t index = 0; index < entries.size(); ++index) {
        m_background.run(
            [folders = m_folders, path = entries[index].path, most, wanted = m_wanted] {
                return *wanted ? History(folders).thumbnail(path, most) : std::nullopt;
            },
            [loaded, index](std::optional<Thumbnail> thumbnail) {
                loaded(index, std::move(thumbnail));
            });
    }
}

} // namespace brindlecam
