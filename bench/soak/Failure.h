#pragma once

#include <QImage>
#include <QString>

namespace brindlecam::soak {

/// Something did not hold: thrown where it is seen, it ends the walk.
struct Failure {
    QString what;
    QImage wanted{}; ///< where pictures tell more than words
    QImage found{};
};

inline void require(bool holds, const QString& what)
{
    if (!holds)
        throw Failure{.what = what};
}

} // namespace brindlecam::soak
