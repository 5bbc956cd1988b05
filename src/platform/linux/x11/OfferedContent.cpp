#include "platform/linux/x11/OfferedContent.h"

#include "platform/linux/x11/SelectionAtoms.h"

#include <algorithm>
#include <utility>

namespace brindlecam::x11 {

OfferedContent::OfferedContent(xcb_connection_t* connection, ClipboardContent content,
                               Executor pool, Executor post)
    : m_pool(std::move(pool))
    , m_post(std::move(post))
{
    for (auto& format : content.formats) {
        const State state = format.make ? State::unknown : State::ready;
        m_formats.push_back({internAtom(connection, format.target),
                             internAtom(connection, format.type), std::move(format.bytes),
                             std::move(format.make), state});
    }
    for (const QByteArray& name : content.kept)
        m_kept.push_back(internAtom(connection, name));
}

std::vector<xcb_atom_t> OfferedContent::targets() const
{
    std::vector<xcb_atom_t> targets;
    for (const Format& format : m_formats)
        targets.push_back(format.target);
    return targets;
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
    if (format->state != State::unknown)
        return format->state;
    format->state = State::waiting;
    m_pool([make = std::exchange(format->make, nullptr), post = m_post, madeReady,
            self = shared_from_this(), target]() mutable {
        QByteArray bytes = make();
        make = nullptr;
        post([bytes = std::move(bytes), madeReady, self = std::move(self), target] {
            Format* made = self->find(target);
            made->bytes = bytes;
            made->failed = bytes.isEmpty();
            made->state = State::ready;
            madeReady();
        });
    });
    return State::waiting;
}

OfferedContent::Bytes OfferedContent::bytesOf(xcb_atom_t target) const
{
    const auto found = std::ranges::find(m_formats, target, &Format::target);
    if (found == m_formats.end() || found->failed)
        return {};
    return {found->type, found->bytes};
}

} // namespace brindlecam::x11
