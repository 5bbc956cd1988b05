#pragma once

#include "desktop/support/x11/Connection.h"

#include <QByteArray>
#include <QString>

namespace brindlecam::desktop {

/// A clipboard manager as desktops have one: a program that is about to quit asks it to keep the
/// clipboard's picture. Call serve() as long as that may happen.
class ClipboardManager final {
public:
    explicit ClipboardManager(const QString& display);

    /// Answers what has been asked so far.
    void serve();
    /// The PNG it was asked to keep; empty while nobody asked.
    [[nodiscard]] const QByteArray& kept() const { return m_kept; }

private:
    void answer(const xcb_selection_request_event_t& request);

    QString m_display;
    Connection m_connection;
    xcb_window_t m_window = 0;
    QByteArray m_kept;
};

} // namespace brindlecam::desktop
