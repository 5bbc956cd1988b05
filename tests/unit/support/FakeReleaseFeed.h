#pragma once

#include "settings/ReleaseFeed.h"

#include <QObject>
#include <QPointer>

#include <utility>

namespace brindlecam::test {

/// JSON with single quotes for double ones, which moc (6.4) loses track of in raw strings.
inline QByteArray json(const char* text)
{
    return QByteArray(text).replace('\'', '"');
}

/// Announces what the test wants, once it wants to.
class FakeReleaseFeed final : public ReleaseFeed {
public:
    enum class Place { known, none };

    explicit FakeReleaseFeed(Place place = Place::known)
        : m_place(place)
    {
    }

    int asked = 0;

    [[nodiscard]] bool exists() const override { return m_place == Place::known; }
    void fetch(QObject* context, std::function<void(std::optional<QByteArray>)> done) override
    {
        ++asked;
        m_context = context;
        m_done = std::move(done);
    }
    void answer(const std::optional<QByteArray>& body)
    {
        const auto done = std::exchange(m_done, {});
        if (m_context && done)
            done(body);
    }
    void announce(const char* version)
    {
        answer(json("{'url': 'https://x.org/es', 'url_en': 'https://x.org/en', "
                    "'notes': {'es': 'Novedades.', 'en': 'News.'}, 'version': '") +
               version + json("'}"));
    }

private:
    const Place m_place;
    QPointer<QObject> m_context;
    std::function<void(std::optional<QByteArray>)> m_done;
};

} // namespace brindlecam::test
