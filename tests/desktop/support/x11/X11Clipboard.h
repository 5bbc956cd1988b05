#pragma once

#include "desktop/support/Clipboard.h"
#include "desktop/support/x11/Connection.h"

namespace brindlecam::desktop {

/// Asks the owner of a selection for its contents, in pieces (INCR) where the owner chooses so.
class X11Clipboard final : public Clipboard {
public:
    explicit X11Clipboard(const QString& display, QByteArray selection = "CLIPBOARD");

    [[nodiscard]] std::uint64_t owner() const override
    {
        return m_connection.selectionOwner(m_selection);
    }
    [[nodiscard]] QByteArrayList formats() override;
    [[nodiscard]] std::optional<QByteArray> read(const QByteArray& format) override;
    [[nodiscard]] bool lastCameInPieces() const override { return m_pieces; }
    [[nodiscard]] std::optional<QString> text() override;
    void cutOwnersConnection() override;

private:
    [[nodiscard]] bool convert(const QByteArray& format);
    [[nodiscard]] std::optional<QByteArray> takeProperty();
    [[nodiscard]] std::optional<QByteArray> takePieces();
    template <typename Accept>
    [[nodiscard]] bool awaitEvent(Accept accept) const;

    Connection m_connection;
    QByteArray m_selection;
    xcb_window_t m_window = 0;
    xcb_atom_t m_property = 0;
    xcb_atom_t m_type = 0; ///< of the last property taken
    bool m_pieces = false;
};

} // namespace brindlecam::desktop
