#include "Figures.h"

#include <QTextStream>

#include <algorithm>
#include <cstdio>

namespace brindlecam::bench {

namespace {

QString number(double value)
{
    return QString::number(value, 'f', value < 100 ? 2 : 0);
}

void say(const QString& line)
{
    QTextStream(stdout) << line << Qt::endl;
}

} // namespace

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::ranges::sort(values);
    const auto middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void Figures::begin(const QString& title)
{
    say(QLatin1Char('\n') + title);
}

void Figures::add(const Figure& figure)
{
    QString line = QStringLiteral("  %1: ").arg(figure.what);
    if (figure.samples.empty()) {
        ++m_missed;
        say(line + QStringLiteral("never seen, NOT MET"));
        return;
    }
    const double middle = median(figure.samples);
    line += QStringLiteral("median %1 %2 (least %3, most %4, %5 times)")
                .arg(number(middle), figure.unit, number(std::ranges::min(figure.samples)),
                     number(std::ranges::max(figure.samples)))
                .arg(figure.samples.size());
    bool met = true;
    if (figure.limit) {
        const double counts = figure.leastCounts ? std::ranges::min(figure.samples) : middle;
        met = counts <= *figure.limit;
        line += (figure.leastCounts ? QStringLiteral(", limit of the least %1")
                                    : QStringLiteral(", limit %1"))
                    .arg(number(*figure.limit));
    }
    if (!figure.yardstickSamples.empty()) {
        const double yard = median(figure.yardstickSamples);
        const double ratio = yard > 0 ? middle / yard : 0;
        line += QStringLiteral(", %1 × %2 (%3)")
                    .arg(QString::number(ratio, 'f', 2), figure.yardstick, number(yard));
        if (figure.ratioLimit) {
            met = met && ratio <= *figure.ratioLimit;
            line += QStringLiteral(", limit %1 ×").arg(number(*figure.ratioLimit));
        }
    }
    if (!figure.limit && !figure.ratioLimit) {
        say(line + QStringLiteral(", no limit"));
        return;
    }
    ++(met ? m_met : m_missed);
    say(line + (met ? QStringLiteral(", met") : QStringLiteral(", NOT MET")));
}

void Figures::note(const QString& words)
{
    say(QStringLiteral("  ") + words);
}

void Figures::conclude()
{
    say(QStringLiteral("\n%1 figures met, %2 not met").arg(m_met).arg(m_missed));
}

} // namespace brindlecam::bench
