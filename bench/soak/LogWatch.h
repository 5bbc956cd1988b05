#pragma once

#include <QString>

namespace brindlecam::soak {

/// What the program says to nobody in particular: nothing, but for what is known and harmless.
class LogWatch final {
public:
    /// Looks at what has come since the last time. Throws Failure.
    void verify(const QString& log);

private:
    qsizetype m_read = 0;
};

} // namespace brindlecam::soak
