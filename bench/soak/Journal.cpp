#include "Journal.h"

#include "Growth.h"

#include <algorithm>

namespace brindlecam::soak {

namespace {

constexpr double kSecond = 1000; // ms
constexpr int kNameColumn = 46;

const char* word(Journal::Kind kind)
{
    switch (kind) {
    case Journal::Kind::step:
        return "";
    case Journal::Kind::fault:
        return "FAULT ";
    case Journal::Kind::mending:
        return "mended: ";
    }
    return "";
}

QString seconds(qint64 milliseconds)
{
    return QStringLiteral("%1 s").arg(double(milliseconds) / kSecond, 0, 'f', 2);
}

} // namespace

Journal::Journal(std::uint32_t seed, int steps)
    : m_seed(seed)
    , m_steps(steps)
{
    m_begun.start();
}

void Journal::begin(int step, Kind kind, const QString& name)
{
    m_entries.push_back({.step = step, .kind = kind, .name = name});
    m_since.start();
}

void Journal::end()
{
    m_entries.back().milliseconds = m_since.elapsed();
}

QString Journal::story() const
{
    constexpr std::size_t kMost = 60;
    const std::size_t first = m_entries.size() > kMost ? m_entries.size() - kMost : 0;
    const int step = m_entries.empty() ? 0 : m_entries.back().step;
    QString text = QStringLiteral("Seed %1, step %2 of %3. The steps before it:\n")
                       .arg(m_seed)
                       .arg(step)
                       .arg(m_steps);
    for (std::size_t i = first; i < m_entries.size(); ++i) {
        const Entry& entry = m_entries[i];
        text +=
            QStringLiteral("%1  %2%3%4\n")
                .arg(entry.step, 6)
                .arg(QString::fromLatin1(word(entry.kind)), entry.name,
                     entry.milliseconds < 0 ? QStringLiteral("  <- here")
                                            : QStringLiteral(", ") + seconds(entry.milliseconds));
    }
    return text;
}

QString Journal::rows(Kind kind) const
{
    QMap<QString, Sum> sums;
    for (const Entry& entry : m_entries) {
        if (entry.kind != kind)
            continue;
        Sum& sum = sums[entry.name];
        ++sum.count;
        sum.slowest = std::max(sum.slowest, entry.milliseconds);
    }
    QString text;
    for (auto sum = sums.begin(); sum != sums.end(); ++sum) {
        text += QStringLiteral("%1%2%3\n")
                    .arg(sum.key(), -kNameColumn)
                    .arg(sum->count, 6)
                    .arg(seconds(sum->slowest), 10);
    }
    for (const QString& name : m_leftOut.keys()) {
        if (kind == Kind::fault)
            text += QStringLiteral("%1  not on this machine\n").arg(name, -kNameColumn);
    }
    return text;
}

QString Journal::table(const Growth& growth) const
{
    const QString doings = QStringLiteral("%1 count   slowest\n%2\n%3 struck  slowest\n%4\n")
                               .arg(QStringLiteral("step"), -kNameColumn + 1)
                               .arg(rows(Kind::step))
                               .arg(QStringLiteral("fault survived"), -kNameColumn + 1)
                               .arg(rows(Kind::fault));
    const Growth::Stretch& run = growth.longest();
    const QString costs =
        QStringLiteral("At rest, %1 runs of the program, the longest of %2 looks\n"
                       "  it begins with: %3\n  it ends with:   %4\n  the most of all: %5\n"
                       "  memory from one look to the next, over all runs: %6 KiB\n")
            .arg(growth.runs())
            .arg(run.looks)
            .arg(run.first.text(), run.last.text(), growth.most().text())
            .arg(growth.paceKibibytes(), 0, 'f', 1);
    return doings + costs +
           QStringLiteral("Seed %1, %2 steps, %3: everything held\n")
               .arg(m_seed)
               .arg(m_steps)
               .arg(seconds(m_begun.elapsed()));
}

} // namespace brindlecam::soak
