#pragma once

#include "desktop/support/Process.h"

#include <QString>
#include <QTemporaryFile>

#include <memory>

namespace brindlecam::desktop {

/// A message bus of one desktop's own, seen to be ready.
class BusDaemon final {
public:
    enum class Services {
        installed, ///< as on a session's bus: those that the machine has are started when asked for
        none       ///< nobody is there but who comes by himself
    };

    BusDaemon(Services services, const QProcessEnvironment& environment);

    [[nodiscard]] const QString& address() const { return m_address; }

private:
    QTemporaryFile m_configuration;
    std::unique_ptr<Process> m_process;
    QString m_address;
};

} // namespace brindlecam::desktop
