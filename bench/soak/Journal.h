#pragma once

#include <QElapsedTimer>
#include <QMap>
#include <QString>

#include <cstdint>
#include <vector>

namespace brindlecam::soak {

class Growth;

/// What has been done so far, and how long it took.
class Journal final {
public:
    enum class Kind : std::uint8_t { step, fault, mending };

    Journal(std::uint32_t seed, int steps);

    /// Written down before it is done: should it end everything, its name stands there.
    void begin(int step, Kind kind, const QString& name);
    void end();
    /// A fault that this machine cannot have.
    void leaveOut(const QString& fault) { m_leftOut.insert(fault, true); }

    /// Seed, step and the steps before it, latest last.
    [[nodiscard]] QString story() const;
    /// Steps and faults by name, how many and the slowest; what the program took of the machine.
    [[nodiscard]] QString table(const Growth& growth) const;

private:
    struct Entry {
        int step;
        Kind kind;
        QString name;
        qint64 milliseconds = -1;
    };
    struct Sum {
        int count = 0;
        qint64 slowest = 0;
    };

    [[nodiscard]] QString rows(Kind kind) const;

    const std::uint32_t m_seed;
    const int m_steps;
    std::vector<Entry> m_entries;
    QMap<QString, bool> m_leftOut;
    QElapsedTimer m_since;
    QElapsedTimer m_begun;
};

} // namespace brindlecam::soak
