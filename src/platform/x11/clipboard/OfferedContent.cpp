#include "platform/x11/clipboard/OfferedContent.h"

#include "platform/x11/clipboard/SelectionAtoms.h"

#include <algorithm>
#include <utility>

namespace brindlecam::x11 {

namespace {

/// A format under one of the names that clients ask for it by.
struct Target {
    QByteArray name;
    QByteArray type;
    QByteArray bytes;
};

std::vector<Target> targetsOf(const ClipboardContent::Format& format)
{
    if (format.mimeType != "text/plain;charset=utf-8")
        return {{format.mimeType, format.mimeType, format.bytes}};
    const QByteArray utf8Name = QByteArrayLiteral("UTF8_STRING");
    const QByteArray plainName = QByteArrayLiteral("text/plain");
    const QByteArray latinName = QByteArrayLiteral("STRING");
    return {{utf8Name, utf8Name, format.bytes},
            {format.mimeType, format.mimeType, format.bytes},
            {plainName, plainName, format.bytes},
            {latinName, latinName, QString::fromUtf8(format.bytes).toLatin1()},
            {QByteArrayLiteral("TEXT"), utf8Name, format.bytes}};
}

/// Clipboard managers that know this format (Klipper's; others have followed) don't keep what says
/// "secret" in it.
constexpr char kConcealment[] = "x-kde-passwordManagerHint";

} // namespace

OfferedContent::OfferedContent(xcb_connection_t* connection, ClipboardContent content,
                               Executor pool, Executor post)
    : m_concealed(content.concealed)
    , m_pool(std::move(pool))
    , m_post(std::move(post))
{
    if (m_concealed)
        content.formats.push_back({kConcealment, QByteArrayLiteral("secret"), nullptr});
    for (auto& format : content.formats) {
        const State state = format.make ? State::unknown : State::ready;
        for (Target& target : targetsOf(format)) {
            m_formats.push_back({internAtom(connection, target.name),
                                 internAtom(connection, target.type),
                                 std::move(target.bytes),
                                 format.make,
                                 state,
                                 {}});
        }
    }
}

std::vector<xcb_atom_t> OfferedContent::targets() const
{
    std::vector<xcb_atom_t> targets;
    for (const Format& format : m_formats)
        targets.push_back(format.target);
    return targets;
}

std::vector<xcb_atom_t> OfferedContent::kept() const
{
    std::vector<xcb_atom_t> kept;
    for (const Format& format : m_formats) {
        if (format.state == State::ready)
            kept.push_back(format.target);
    }
    if (kept.empty() && !m_formats.empty())
        kept.push_back(m_formats.front().target);
    return kept;
}

OfferedContent::Format* OfferedContent::find(xcb_atom_t target)
{
    const auto found = std::ranges::find(m_formats, target, &Format::target);
    return found == m_formats.end() ? nullptr : &*found;
}

OfferedContent::State OfferedContent::prepare(xcb_atom_t target,
                                              const std::function<void()>& madeReady)
{
    Format* format = find(target);
    if (!format)
        return State::ready;
    if (format->state == State::ready)
        return State::ready;
    format->waiting.push_back(madeReady);
    if (std::exchange(format->state, State::waiting) == State::waiting)
        return State::waiting;
    m_pool([make = std::exchange(format->make, nullptr), post = m_post, self = shared_from_this(),
            target]() mutable {
        QByteArray bytes = make();
        make = nullptr;
        post([bytes = std::move(bytes), self = std::move(self), target] {
            Format* made = self->find(target);
            made->bytes = bytes;
            made->failed = bytes.isEmpty();
            made->state = State::ready;
            for (const auto& tell : std::exchange(made->waiting, {}))
                tell();
        });
    });
    return State::waiting;
}

bool OfferedContent::reveal()
{
    if (m_staysConcealed || !m_concealed)
        return false;
    m_formats.pop_back();
    m_concealed = false;
    return true;
}

OfferedContent::Bytes OfferedContent::bytesOf(xcb_atom_t target) const
{
    const auto found = std::ranges::find(m_formats, target, &Format::target);
    if (found == m_formats.end() || found->failed)
        return {};
    return {found->type, found->bytes};
}

} // namespace brindlecam::x11
