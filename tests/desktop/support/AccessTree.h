#pragma once

#include "desktop/support/AccessBus.h"

#include <QRect>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace brindlecam::desktop {

/// What a program tells of one of its objects.
struct AccessNode {
    QString name;
    std::uint32_t role = 0;   ///< a number of AT-SPI
    std::uint64_t states = 0; ///< bits with numbers of AT-SPI
    QRect points;             ///< in Qt's global points
    std::size_t window = 0;   ///< index of the window that it is in; of itself, if it is one

    [[nodiscard]] bool is(std::uint32_t state) const { return (states >> state & 1U) != 0; }
};

/// What assistive technology sees of one process. A look asks about everything on a level at once,
/// and about nothing below what is hidden: it takes some milliseconds.
class AccessTree final {
public:
    AccessTree(const AccessBus& bus, qint64 pid);

    [[nodiscard]] bool isOf(const AccessBus& bus, qint64 pid) const
    {
        return &bus == &m_bus && pid == m_pid;
    }
    /// Everything that is shown, windows and menus before what is in them. Empty as long as the
    /// program has not announced itself.
    [[nodiscard]] std::vector<AccessNode> shown();

private:
    [[nodiscard]] QStringList windows() const;
    [[nodiscard]] QStringList menus();

    const AccessBus& m_bus;
    const qint64 m_pid;
    QString m_program; ///< its name on the bus
    // Paths of what was shown once: each is asked only once what it is.
    QSet<QString> m_menus;
    QSet<QString> m_others;
};

} // namespace brindlecam::desktop
