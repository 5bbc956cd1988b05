#pragma once

#include "base/Executor.h"
#include "platform/ClipboardContent.h"

#include <QByteArray>

#include <xcb/xcb.h>

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam::x11 {

/// A ClipboardContent as an X server's clients ask for it: a format has an atom, text has several,
/// and what must be made is made when first asked for. The selection's thread; shared with the
/// requests that wait for it. Outlives the connection it was made on.
class OfferedContent final : public std::enable_shared_from_this<OfferedContent> {
public:
    enum class State { unknown, waiting, ready };

    /// `pool` runs what makes bytes; `post` runs a task on the selection's thread.
    OfferedContent(xcb_connection_t* connection, ClipboardContent content, Executor pool,
                   Executor post);

    /// Atoms of the formats in order.
    [[nodiscard]] std::vector<xcb_atom_t> targets() const;
    /// What a clipboard manager is asked to keep: nothing that would first have to be made, as long
    /// as there is something else.
    [[nodiscard]] std::vector<xcb_atom_t> kept() const;

    /// Whether the bytes of a target are there. Begins to make them when they are not; `madeReady`
    /// is then called once, later, on the selection's thread.
    [[nodiscard]] State prepare(xcb_atom_t target, const std::function<void()>& madeReady);

    [[nodiscard]] bool isConcealed() const { return m_concealed; }
    /// Says no longer that it is concealed; false when it did not, or is to stay so.
    bool reveal();
    /// It stays concealed for good.
    void keepConcealed() { m_staysConcealed = true; }

    struct Bytes {
        xcb_atom_t type = XCB_ATOM_NONE; ///< none: this target can't be had
        QByteArray bytes;
    };
    [[nodiscard]] Bytes bytesOf(xcb_atom_t target) const;

private:
    struct Format {
        xcb_atom_t target;
        xcb_atom_t type;
        QByteArray bytes;
        std::function<QByteArray()> make;
        State state;
        std::vector<std::function<void()>> waiting; ///< for the bytes
        bool failed = false;
    };
    [[nodiscard]] Format* find(xcb_atom_t target);

    std::vector<Format> m_formats;
    bool m_concealed; ///< as the last format says
    bool m_staysConcealed = false;
    Executor m_pool;
    Executor m_post;
};

} // namespace brindlecam::x11
