#include "Chance.h"

namespace brindlecam::soak {

Chance::Chance(std::uint32_t seed)
    : m_seed(seed)
    , m_engine(seed)
{
}

// The library's distributions differ from one library to the next.
int Chance::below(int limit)
{
    return static_cast<int>(m_engine() % static_cast<std::uint32_t>(limit));
}

int Chance::between(int least, int most)
{
    return least + below(most - least + 1);
}

QPoint Chance::pointIn(const QRect& where)
{
    const int x = between(where.left(), where.right());
    return {x, between(where.top(), where.bottom())};
}

QRect Chance::rectIn(const QRect& where, QSize least, QSize most)
{
    const int width = between(least.width(), std::min(most.width(), where.width()));
    const int height = between(least.height(), std::min(most.height(), where.height()));
    const int x = where.x() + below(where.width() - width + 1);
    return {x, where.y() + below(where.height() - height + 1), width, height};
}

} // namespace brindlecam::soak
