#pragma once

#include "base/Error.h"

#include <QString>
#include <QStringList>

#include <map>

namespace brindlecam {

/// What the environment says about ports, for developers and tests: BRINDLECAM_PORT_GRABBER=null.
/// From the port's name as the variable writes it, GRABBER, to a maker's name. An empty value
/// counts as none.
using ForcedPorts = std::map<QString, QString>;

[[nodiscard]] ForcedPorts forcedByEnvironment();

/// The name of a port as its variable writes it.
[[nodiscard]] QString variableEnd(const char* port);

/// Why the choice can't be made as the environment says.
[[nodiscard]] Error nothingOfferedBy(const QString& variableEnd, const QString& maker,
                                     const QStringList& offered);
[[nodiscard]] Error noPortFor(const QString& variableEnd, const QStringList& known);

} // namespace brindlecam
