#include "Landscape.h"
#include "PaintedWindow.h"
#include "Report.h"
#include "Terminal.h"
#include "Theme.h"
#include "TopBar.h"
#include "WindowFrame.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>

#include <cstdio>
#include <vector>

using namespace brindlecam::sample;

namespace {

/// A part of `area`, given in shares of its size.
QRect part(const QRect& area, qreal x, qreal y, qreal width, qreal height)
{
    return {area.x() + qRound(area.width() * x), area.y() + qRound(area.height() * y),
            qRound(area.width() * width), qRound(area.height() * height)};
}

void paintPhoto(QPainter& painter, QSize size, const Theme& theme)
{
    paintFrame(painter, size, QStringLiteral("playa.jpg"), theme);
    const QRect content = contentOf(size);
    painter.setClipRect(content);
    painter.translate(content.topLeft());
    paintBeach(painter, content.size());
}

/// Whoever waits for this line finds every window painted.
void sayReady()
{
    QGuiApplication::sync();
    std::puts("ready");
    std::fflush(stdout);
}

} // namespace

/// Usage: sample_desktop [light|dark].
int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const bool dark = QApplication::arguments().value(1) == QLatin1String("dark");
    const Theme theme = dark ? darkTheme() : lightTheme();
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QRect free = screen.adjusted(0, kTopBarHeight, 0, 0);

    PaintedWindow wallpaper(screen, theme.night ? paintNight : paintDawn);
    wallpaper.setKind(Qt::WA_X11NetWmWindowTypeDesktop);
    PaintedWindow photo(part(free, 0.53, 0.1, 0.42, 0.52),
                        [&](QPainter& painter, QSize size) { paintPhoto(painter, size, theme); });
    photo.setWindowTitle(QStringLiteral("playa.jpg"));
    PaintedWindow terminal(part(free, 0.56, 0.52, 0.38, 0.37), paintTerminal);
    terminal.setWindowTitle(QStringLiteral("Terminal"));
    PaintedWindow report(part(free, 0.05, 0.17, 0.49, 0.72),
                         [&](QPainter& painter, QSize size) { paintReport(painter, size, theme); });
    report.setWindowTitle(QStringLiteral("Informe de visitas"));
    PaintedWindow topBar(QRect(screen.topLeft(), QSize(screen.width(), kTopBarHeight)),
                         paintTopBar);
    topBar.setKind(Qt::WA_X11NetWmWindowTypeDock);

    // From the bottom up; each casts its shadow on all below.
    PaintedWindow* const order[] = {&wallpaper, &photo, &terminal, &report};
    for (std::size_t above = 1; above < std::size(order); ++above) {
        for (std::size_t below = 0; below < above; ++below)
            order[below]->coverWith(*order[above]);
    }
    std::vector<PaintedWindow*> windows(std::begin(order), std::end(order));
    windows.push_back(&topBar);
    std::size_t unpainted = windows.size();
    for (PaintedWindow* window : windows) {
        window->onPainted = [&] {
            if (--unpainted == 0)
                QMetaObject::invokeMethod(&application, sayReady, Qt::QueuedConnection);
        };
        window->show();
    }
    return QApplication::exec();
}
