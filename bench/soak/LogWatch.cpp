#include "LogWatch.h"

#include "Failure.h"

#include <QStringList>

namespace brindlecam::soak {

void LogWatch::verify(const QString& log)
{
    // A line that is still being written is looked at when it is there.
    const qsizetype end = log.lastIndexOf(QLatin1Char('\n')) + 1;
    const QStringList lines =
        log.mid(m_read, end - m_read).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    m_read = end;
    require(lines.isEmpty(), QStringLiteral("the log: %1").arg(lines.join(QStringLiteral(" | "))));
}

} // namespace brindlecam::soak
