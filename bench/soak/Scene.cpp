#include "Scene.h"

#include "Chance.h"
#include "Failure.h"
#include "Person.h"

#include "desktop/support/Pictures.h"

#include <QPainter>

#include <algorithm>

namespace brindlecam::soak {

namespace {

constexpr QRect kFramed{40, 60, 240, 150};
constexpr QRect kPage{420, 60, 330, 110};
constexpr QPoint kSentence{34, 64};
constexpr int kLetters = 17; // pixels

QImage painted(const QString& sentence)
{
    QImage picture(kPage.size(), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(kLetters);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(kSentence, sentence);
    return picture;
}

} // namespace

Scene::Scene(Person& person)
    : m_person(person)
    , m_wallpaper(desktop::pattern(kScreen.size()))
    , m_page(person.desktop().open({.pixels = kPage,
                                    .kind = desktop::WindowKind::unmanaged,
                                    .picture = painted(sentence())}))
{
    openFramed();
}

void Scene::openFramed()
{
    m_framed = m_person.desktop().open({.pixels = kFramed});
    m_framed->takeFocus();
}

QString Scene::sentence()
{
    return QStringLiteral("La acción rápida");
}

bool Scene::isCovered(const QRect& place) const
{
    const auto all = m_person.pins();
    return std::ranges::any_of(all, [&](const auto& pin) { return pin.pixels.intersects(place); });
}

// A toast over the plain wallpaper can be thought away.
void Scene::awaitOpenSight() const
{
    const auto isOpen = [this] {
        const auto all = m_person.toasts();
        return std::ranges::none_of(all, [this](const auto& toast) {
            return toast.pixels.intersects(m_framed->framePixels()) ||
                   toast.pixels.intersects(page()) || isCovered(toast.pixels);
        });
    };
    require(desktop::waitUntil(isOpen), QStringLiteral("a message stays"));
}

void Scene::straighten()
{
    if (m_framed->pixels().bottom() > kForPins.top())
        openFramed();
}

Picture Scene::freeze(Chance& chance, const QRect& monitor)
{
    constexpr QPoint kAside{20, -20};
    m_person.input().moveTo(monitor.bottomLeft() + kAside);
    straighten();
    const QColor colour(chance.below(256), chance.below(256), chance.below(256));
    m_framed->paint(colour);
    const QPoint middle = m_framed->pixels().center();
    require(isCovered(m_framed->pixels()) ||
                desktop::waitUntil([&] { return m_person.screen().pixel(middle) == colour; }),
            QStringLiteral("the scene: a window does not show its colour"));
    awaitOpenSight();

    // The pictures with a toast in them differ while it fades.
    Picture frozen;
    const auto rests = [&] {
        const auto toasts = m_person.toasts();
        QImage now = m_person.screen().grab();
        QPainter painter(&now);
        for (const auto& toast : toasts)
            painter.drawImage(toast.pixels.topLeft(), m_wallpaper, toast.pixels);
        painter.end();
        const bool equal = now == frozen.pixels && toasts.size() == m_person.toasts().size();
        frozen.pixels = now;
        return equal;
    };
    require(desktop::waitUntil(rests), QStringLiteral("the screen never comes to rest"));
    frozen.certain = QRegion(kScreen) - m_framed->framePixels() + m_framed->pixels();
    for (const auto& pin : m_person.pins()) // whose borders light up under the pointer
        frozen.certain -= QRegion(pin.pixels) -
                          Person::inside(pin.pixels.size()).translated(pin.pixels.topLeft());
    return frozen;
}

} // namespace brindlecam::soak
