#include "base/Listeners.h"

#include <algorithm>
#include <utility>

namespace brindlecam {

void Listeners::add(QObject* context, Heard heard)
{
    std::erase_if(m_all, [](const Listener& listener) { return !listener.context; });
    m_all.push_back({context, std::move(heard)});
}

void Listeners::tell()
{
    for (const Listener& listener : std::vector(m_all)) {
        if (listener.context)
            listener.heard();
    }
}

bool Listeners::any() const
{
    return std::ranges::any_of(m_all,
                               [](const Listener& listener) { return !listener.context.isNull(); });
}

} // namespace brindlecam
