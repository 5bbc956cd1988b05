#include "platform/factory/PortChoice.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace brindlecam {

namespace {

/// Who serves one port: one, or those that do so side by side.
template <typename Port>
using Servers = std::vector<Maker<Port>>;

template <typename Port>
Servers<Port> allOffered(const PortList<Port>& list, const Session& session)
{
    Servers<Port> offered;
    std::ranges::copy_if(list.makers, std::back_inserter(offered),
                         [&](const Maker<Port>& maker) { return maker.offered(session); });
    return offered;
}

/// Asks no maker behind the first that is offered: the answer may have to be waited for.
template <typename Port>
Servers<Port> firstOffered(const PortList<Port>& list, const Session& session)
{
    const auto first = std::ranges::find_if(
        list.makers, [&](const Maker<Port>& maker) { return maker.offered(session); });
    return first == list.makers.end() ? Servers<Port>() : Servers<Port>{*first};
}

template <typename Port>
Result<Servers<Port>> forcedTo(const QString& name, const PortList<Port>& list,
                               const Session& session)
{
    Servers<Port> offered = allOffered(list, session);
    offered.push_back(list.null);
    QStringList names;
    for (const Maker<Port>& maker : offered) {
        names << QString::fromLatin1(maker.name);
        if (names.back() == name)
            return Servers<Port>{maker};
    }
    return nothingOfferedBy(variableEnd(list.name), name, names);
}

template <typename Port>
Servers<Port> bestFor(const PortList<Port>& list, const Session& session)
{
    Servers<Port> servers = list.join ? allOffered(list, session) : firstOffered(list, session);
    if (servers.empty())
        servers.push_back(list.null);
    return servers;
}

template <typename Port>
ServedPort described(const PortList<Port>& list, const Servers<Port>& servers)
{
    QStringList classes;
    for (const Maker<Port>& maker : servers)
        classes << QString::fromLatin1(maker.serves);
    return {QString::fromLatin1(list.name), classes.join(QLatin1Char('+'))};
}

template <typename Port>
std::unique_ptr<Port> made(const PortList<Port>& list, const Servers<Port>& servers)
{
    if (servers.size() == 1)
        return servers.front().make();
    typename PortList<Port>::Several several;
    for (const Maker<Port>& maker : servers)
        several.push_back(maker.make());
    return list.join(std::move(several));
}

/// Goes through the lists and keeps what is chosen.
class Chooser final {
public:
    Chooser(const Session& session, ForcedPorts forced)
        : m_session(session)
        , m_forced(std::move(forced))
    {
    }

    template <typename Port>
    void choose(const PortList<Port>& list)
    {
        m_variables << variableEnd(list.name);
        const auto forced = m_forced.extract(m_variables.back());
        Result<Servers<Port>> servers =
            forced ? forcedTo(forced.mapped(), list, m_session) : bestFor(list, m_session);
        if (!servers) {
            m_error = m_error.value_or(servers.error());
            return;
        }
        m_chosen.served.push_back(described(list, servers.value()));
        m_steps.push_back([list, servers = std::move(servers).value()](Platform& platform) {
            platform.*list.member = made(list, servers);
        });
    }

    [[nodiscard]] Result<ChosenPorts> chosen() &&
    {
        if (!m_forced.empty())
            return noPortFor(m_forced.begin()->first, m_variables);
        if (m_error)
            return *m_error;
        m_chosen.make = [steps = std::move(m_steps)] {
            Platform platform;
            for (const auto& step : steps)
                step(platform);
            return platform;
        };
        return std::move(m_chosen);
    }

private:
    const Session& m_session;
    ForcedPorts m_forced;    ///< what no list has answered to yet
    QStringList m_variables; ///< of all lists so far
    ChosenPorts m_chosen;
    std::vector<std::function<void(Platform&)>> m_steps;
    std::optional<Error> m_error; ///< the first
};

} // namespace

Result<ChosenPorts> choosePorts(PortOffers offers, const Session& session, ForcedPorts forced)
{
    Chooser chooser(session, std::move(forced));
    offers.forEach([&](const auto& list) { chooser.choose(list); });
    return std::move(chooser).chosen();
}

} // namespace brindlecam
