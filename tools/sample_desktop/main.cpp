#include "PaintedWindow.h"
#include "Scenes.h"

#include <QApplication>
#include <QScreen>

#include <cstdio>

using namespace brindlecam::sample;

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();

    PaintedWindow wallpaper(paintWallpaper);
    wallpaper.setAttribute(Qt::WA_X11NetWmWindowTypeDesktop);
    wallpaper.setGeometry(screen);
    wallpaper.show();

    PaintedWindow landscape(paintLandscape);
    landscape.setWindowTitle(QStringLiteral("Vacaciones.jpg"));
    landscape.setGeometry(screen.x() + screen.width() / 2, screen.y() + screen.height() / 9,
                          screen.width() * 2 / 5, screen.height() / 2);
    landscape.show();

    PaintedWindow report(paintReport);
    report.setWindowTitle(QStringLiteral("Informe"));
    report.setGeometry(screen.x() + screen.width() / 12, screen.y() + screen.height() / 4,
                       screen.width() / 2, screen.height() * 3 / 5);
    report.show();

    // Whoever waits for this line finds every window painted.
    QMetaObject::invokeMethod(
        &application,
        [] {
            std::puts("ready");
            std::fflush(stdout);
        },
        Qt::QueuedConnection);
    return QApplication::exec();
}
