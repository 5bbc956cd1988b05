#include "x11/ports/Monitors.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

namespace brindlecam::test {

namespace {

const QString kNameOfLeft = QStringLiteral("LEFT");
const QString kNameOfRight = QStringLiteral("RIGHT");

bool qtHasScreens(const QStringList& names)
{
    QStringList present;
    for (const QScreen* screen : QGuiApplication::screens())
        present.append(screen->name());
    present.sort();
    return present == names;
}

} // namespace

Monitors::Monitors()
{
    m_hardware.setMonitors({{kNameOfLeft, kLeft}, {kNameOfRight, kRight}});
    if (!QTest::qWaitFor([] { return qtHasScreens({kNameOfLeft, kNameOfRight}); }))
        qFatal("Qt does not see the monitors");
}

Monitors::~Monitors()
{
    m_hardware.removeMonitor(kNameOfRight);
    m_hardware.removeMonitor(kNameOfLeft);
    if (!QTest::qWaitFor([] { return qtHasScreens({QStringLiteral("screen")}); }))
        qFatal("Qt still sees the monitors");
}

} // namespace brindlecam::test
