#include "Ledger.h"

#include "Failure.h"

#include "desktop/support/Clipboard.h"
#include "desktop/support/Patience.h"
#include "desktop/support/PrivateFolders.h"

namespace brindlecam::soak {

namespace {

constexpr int kHistory = 20; // entries

} // namespace

Ledger::Ledger(const desktop::PrivateFolders& folders)
    : m_files(folders.captures(), QStringLiteral("the captures folder"))
    , m_history(folders.history(), QStringLiteral("the history"), kHistory)
{
}

void Ledger::takes(const Picture& picture, Places places)
{
    const auto shared = std::make_shared<Picture>(picture);
    if (places.clipboard)
        m_clipboard = shared;
    if (places.file && !m_filesRefused)
        m_files.await(shared);
    if (places.history && !m_historyRefused)
        m_history.await(shared);
}

void Ledger::mayTake(const Picture& picture)
{
    const auto shared = std::make_shared<Picture>(picture);
    if (!m_filesRefused)
        m_files.allow(shared);
    if (!m_historyRefused)
        m_history.allow(shared);
}

void Ledger::programEnds()
{
    if (programHasClipboard())
        m_clipboard = Nothing{};
}

bool Ledger::programHasClipboard() const
{
    const auto* text = std::get_if<Text>(&m_clipboard);
    return std::holds_alternative<Shared>(m_clipboard) || (text && text->owner == Owner::program);
}

void Ledger::verify(desktop::Clipboard& clipboard, int patience)
{
    if (const auto* text = std::get_if<Text>(&m_clipboard))
        verifyText(clipboard, text->text, patience);
    else if (const auto* picture = std::get_if<Shared>(&m_clipboard))
        verifyPicture(clipboard, **picture, patience);
    else
        verifyNothing(clipboard, patience);
    m_files.verify(patience);
    m_history.verify(patience);
}

void Ledger::verifyNothing(const desktop::Clipboard& clipboard, int patience)
{
    require(desktop::waitUntil([&] { return !clipboard.isTaken(); }, patience),
            QStringLiteral("the clipboard: somebody still offers something"));
}

void Ledger::verifyText(desktop::Clipboard& clipboard, const QString& text, int patience)
{
    std::optional<QString> found;
    const auto isThere = [&] {
        found = clipboard.text();
        return found == text;
    };
    const bool isRight = desktop::waitUntil(isThere, patience);
    require(isRight, QStringLiteral("the clipboard: \"%1\" instead of \"%2\"")
                         .arg(found.value_or(QStringLiteral("no text")), text));
}

void Ledger::verifyPicture(desktop::Clipboard& clipboard, Picture& picture, int patience)
{
    QImage found;
    const auto isThere = [&] {
        found = clipboard.picture();
        return picture.isShownBy(found);
    };
    if (!desktop::waitUntil(isThere, patience)) {
        throw Failure{.what = QStringLiteral("the clipboard: %1")
                                  .arg(found.isNull() ? QStringLiteral("no picture")
                                                      : QStringLiteral("another picture")),
                      .wanted = picture.pixels,
                      .found = found};
    }
    // File and history must show the same, also where it could not be told before.
    picture = Picture::exactly(found);
}

} // namespace brindlecam::soak
