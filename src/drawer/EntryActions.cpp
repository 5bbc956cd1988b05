#include "drawer/EntryActions.h"

#include "base/Text.h"
#include "base/WholeFile.h"
#include "capture/Output.h"
#include "capture/ResultToast.h"
#include "history/History.h"
#include "notices/Activity.h"
#include "notices/Toast.h"
#include "platform/FileOpener.h"
#include "preferences/Prefs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <optional>
#include <utility>

namespace brindlecam {

namespace {

/// Copies the entry to a path where nothing is yet. False when that can't be done.
bool copyTo(const QString& target, const QString& entry)
{
    QDir().mkpath(QFileInfo(target).path());
    QFile file(entry);
    if (QFileInfo::exists(target) || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    const std::optional<QByteArray> bytes = readWhole(file);
    return bytes && !bytes->isEmpty() && writeWhole(target, *bytes);
}

} // namespace

EntryActions::EntryActions(Rooms rooms)
    : m_rooms(std::move(rooms))
    , m_background(m_rooms.executor)
{
}

void EntryActions::copy(const QString& path, const ScreenInfo& screen)
{
    m_background.run([path] { return History::clipboardContent(path); },
                     [this, screen](std::optional<ClipboardContent> content) {
                         if (!content) {
                             m_rooms.toast.show(text("No se pudo leer la captura"), screen);
                         } else if (!m_rooms.activity.quitting()) {
                             m_rooms.output.copy(
                                 std::move(*content), [this, screen](ClipboardFate fate) {
                                     using namespace ResultToast;
                                     tell(message(Kind::area, {.clipboard = fate}), screen);
                                 });
                         }
                     });
}

void EntryActions::tell(const std::optional<QString>& message, const ScreenInfo& screen)
{
    if (message)
        m_rooms.toast.show(*message, screen);
}

void EntryActions::openInPreview(const QString& path, const ScreenInfo& screen)
{
    m_rooms.opener.openFile(path, this, [this, screen](bool opened) {
        if (!opened)
            m_rooms.toast.show(text("No se pudo abrir la captura"), screen);
    });
}

void EntryActions::reveal(const QString& path, const ScreenInfo& screen)
{
    m_rooms.opener.reveal(path, this, [this, screen](bool shown) {
        if (!shown)
            m_rooms.toast.show(text("No se pudo abrir la carpeta"), screen);
    });
}

void EntryActions::saveToFolder(const QString& path, const ScreenInfo& screen)
{
    const QString name = Prefs::newFileName(QFileInfo(path).suffix());
    const QString target = QDir(m_rooms.prefs.saveFolder()).filePath(name);
    m_background.run([path, target] { return copyTo(target, path); },
                     [this, target, screen](bool copied) {
                         if (copied)
                             reveal(target, screen);
                         else
                             tell(ResultToast::saveMessage({.file = Fate::Copy::failed}), screen);
                     });
}

void EntryActions::remove(const QString& path, std::function<void()> done)
{
    m_background.run([folders = m_rooms.history.folders(), path] { History(folders).remove(path); },
                     std::move(done));
}

} // namespace brindlecam
