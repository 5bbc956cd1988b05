#include "Eyes.h"

#include <poll.h>

namespace brindlecam::bench {

namespace {

constexpr std::chrono::milliseconds kPatience{10000};
constexpr std::chrono::milliseconds kCalm{150}; // nothing drawn for that long: at rest
constexpr QRgb kColourBits = 0x00ffffff;

} // namespace

Eyes::Eyes(desktop::Desktop& desktop)
    : m_screen(desktop.screen())
    , m_connection(desktop.name())
    , m_damage(xcb_generate_id(m_connection.raw()))
{
    auto* const connection = m_connection.raw();
    const auto* const extension = xcb_get_extension_data(connection, &xcb_damage_id);
    if (!extension || !extension->present)
        qFatal("the X server reports no damage");
    m_damageNotify = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
    const desktop::Owned<xcb_damage_query_version_reply_t> version(xcb_damage_query_version_reply(
        connection, xcb_damage_query_version(connection, 1, 1), nullptr));
    xcb_damage_create(connection, m_damage, m_connection.root(), XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    m_connection.sync();
}

template <typename Condition>
std::optional<Clock::time_point> Eyes::awaitThat(Condition holds)
{
    const auto deadline = Clock::now() + kPatience;
    while (Clock::now() < deadline) {
        // What is drawn from here on is reported anew, so nothing falls between look and sleep.
        xcb_damage_subtract(m_connection.raw(), m_damage, XCB_NONE, XCB_NONE);
        if (holds())
            return Clock::now();
        if (!sleepUntilDamage(kPatience))
            return {};
    }
    return {};
}

std::optional<Clock::time_point> Eyes::await(const std::vector<Sample>& samples)
{
    return awaitThat([&] { return shows(samples); });
}

std::optional<Clock::time_point> Eyes::awaitOther(const Sample& sample)
{
    return awaitThat([&] { return !shows({sample}); });
}

QImage Eyes::grabAtRest()
{
    do
        xcb_damage_subtract(m_connection.raw(), m_damage, XCB_NONE, XCB_NONE);
    while (sleepUntilDamage(kCalm));
    return m_screen.grab();
}

bool Eyes::shows(const std::vector<Sample>& samples) const
{
    std::vector<xcb_get_image_cookie_t> asked;
    for (const Sample& sample : samples)
        asked.push_back(xcb_get_image(m_connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP,
                                      m_connection.root(),
                                      static_cast<std::int16_t>(sample.place.x()),
                                      static_cast<std::int16_t>(sample.place.y()), 1, 1, ~0U));
    bool all = true;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const desktop::Owned<xcb_get_image_reply_t> reply(
            xcb_get_image_reply(m_connection.raw(), asked[i], nullptr));
        if (!reply)
            return false;
        const auto pixel = *reinterpret_cast<const QRgb*>(xcb_get_image_data(reply.get()));
        all = all && (pixel & kColourBits) == (samples[i].colour & kColourBits);
    }
    return all;
}

bool Eyes::sleepUntilDamage(std::chrono::milliseconds patience) const
{
    xcb_flush(m_connection.raw());
    const auto deadline = Clock::now() + patience;
    while (true) {
        bool damaged = false;
        while (
            const desktop::Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())})
            damaged = damaged || (event->response_type & 0x7f) == m_damageNotify;
        if (damaged)
            return true;
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0)
            return false;
        pollfd readable{xcb_get_file_descriptor(m_connection.raw()), POLLIN, 0};
        poll(&readable, 1, static_cast<int>(left));
    }
}

std::vector<Sample> changes(const QImage& before, const QImage& after, const QRect& within,
                            int step)
{
    std::vector<Sample> found;
    const QRect area = within & after.rect();
    for (int y = area.top(); y <= area.bottom(); y += step) {
        for (int x = area.left(); x <= area.right(); x += step) {
            if ((before.pixel(x, y) & kColourBits) != (after.pixel(x, y) & kColourBits))
                found.push_back({{x, y}, after.pixel(x, y)});
        }
    }
    return found;
}

std::vector<Sample> thinned(const std::vector<Sample>& samples, std::size_t most)
{
    if (samples.size() <= most)
        return samples;
    std::vector<Sample> kept;
    for (std::size_t i = 0; i < most; ++i)
        kept.push_back(samples[i * (samples.size() - 1) / (most - 1)]);
    return kept;
}

} // namespace brindlecam::bench
