#include "x11/ports/Monitors.h"

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QTest>

namespace brindlecam::test {

namespace {

void xrandr(const QString& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xrandr"), arguments.split(QLatin1Char(' ')));
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("xrandr %s: %s", qPrintable(arguments), process.readAllStandardError().constData());
}

bool qtHasScreens(const QStringList& names)
{
    QStringList present;
    for (const QScreen* screen : QGuiApplication::screens())
        present.append(screen->name());
    present.sort();
    return present == names;
}

void add(const QString& name, const QRect& native, const QString& output)
{
    xrandr(QStringLiteral("--setmonitor %1 %2/200x%3/150+%4+%5 %6")
               .arg(name)
               .arg(native.width())
               .arg(native.height())
               .arg(native.x())
               .arg(native.y())
               .arg(output));
}

} // namespace

Monitors::Monitors()
{
    add(QStringLiteral("LEFT"), kLeft, QStringLiteral("screen"));
    add(QStringLiteral("RIGHT"), kRight, QStringLiteral("none"));
    if (!QTest::qWaitFor([] {
            return qtHasScreens({QStringLiteral("LEFT"), QStringLiteral("RIGHT")});
        }))
        qFatal("Qt does not see the monitors");
}

Monitors::~Monitors()
{
    xrandr(QStringLiteral("--delmonitor RIGHT"));
    xrandr(QStringLiteral("--delmonitor LEFT"));
    if (!QTest::qWaitFor([] { return qtHasScreens({QStringLiteral("screen")}); }))
        qFatal("Qt still sees the monitors");
}

} // namespace brindlecam::test
