#pragma once

#include "desktop/support/x11/Connection.h"

#include <QHash>

namespace brindlecam::bench {

/// What a process costs while nothing happens, read from outside.
class Rest final {
public:
    Rest(const QString& display, qint64 pid);

    /// Context switches of all threads so far, voluntary or not, by thread.
    using Switches = QHash<QByteArray, qint64>;
    [[nodiscard]] Switches switches() const;
    /// Those that came between two readings; a thread that began or ended counts what is known.
    [[nodiscard]] static qint64 between(const Switches& before, const Switches& after);

    struct Memory {
        double anonymous = 0; ///< RssAnon, MiB
        double shared = 0;    ///< RssShmem, MiB
        double segments = 0;  ///< shared segments of its own beyond what RssShmem counts, MiB
        double pixmaps = 0;   ///< in the X server, MiB
        [[nodiscard]] double all() const { return anonymous + shared + segments + pixmaps; }
    };
    [[nodiscard]] Memory memory() const;

private:
    [[nodiscard]] double pixmapMebibytes() const;
    [[nodiscard]] double untouchedSegmentMebibytes() const;

    desktop::Connection m_connection;
    const qint64 m_pid;
};

} // namespace brindlecam::bench
