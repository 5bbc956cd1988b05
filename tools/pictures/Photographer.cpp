#include "Photographer.h"

#include "platform/Platform.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <utility>

namespace brindlecam::pictures {

namespace {

constexpr int kPatience = 10000; // ms
constexpr int kBetweenLooks = 40;

void runLoop(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

Photographer::Photographer(Platform& platform, QString folder)
    : m_platform(platform)
    , m_folder(std::move(folder))
{
    if (!QDir().mkpath(m_folder))
        qFatal("cannot make %s", qPrintable(m_folder));
}

ScreenInfo Photographer::screen() const
{
    const auto screens = m_platform.displays->screens();
    if (screens.empty())
        qFatal("no display");
    return screens.front();
}

QImage Photographer::look(const QRect& native)
{
    const ScreenInfo primary = screen();
    QImage whole;
    QObject context;
    m_platform.grabber->grabScreens({primary}, &context, [&whole](const auto& grabbed) {
        if (!grabbed || grabbed.value().empty())
            qFatal("no picture: %s", grabbed ? "" : qPrintable(grabbed.error().message));
        whole = grabbed.value().front().image;
    });
    return whole.copy(native.translated(-primary.native.topLeft()));
}

void Photographer::await(const QString& what, const std::function<bool()>& condition)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!condition()) {
        if (elapsed.hasExpired(kPatience))
            qFatal("waited in vain: %s", qPrintable(what));
        runLoop(kBetweenLooks);
    }
}

void Photographer::rest()
{
    runLoop(kBetweenLooks);
    QImage last = look(screen().native);
    await(QStringLiteral("the screen at rest"), [&] {
        runLoop(kBetweenLooks);
        QImage next = look(screen().native);
        const bool equal = next == last;
        last = std::move(next);
        return equal;
    });
}

void Photographer::take(const QString& name)
{
    rest();
    takeNow(name, screen().native);
}

void Photographer::takeNow(const QString& name, const QRect& native)
{
    keep(name, look(native));
}

void Photographer::keep(const QString& name, const QImage& image)
{
    const QString path = QDir(m_folder).filePath(name + QStringLiteral(".png"));
    if (!image.save(path))
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace brindlecam::pictures
