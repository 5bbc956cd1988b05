#include "platform/factory/ForcedPorts.h"

#include "base/Text.h"

#include <QProcessEnvironment>

namespace brindlecam {

namespace {

const auto kPrefix = QStringLiteral("BRINDLECAM_PORT_");
const auto kComma = QStringLiteral(", ");

} // namespace

ForcedPorts forcedByEnvironment()
{
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    ForcedPorts forced;
    for (const QString& variable : environment.keys()) {
        const QString maker = environment.value(variable);
        if (variable.startsWith(kPrefix) && !maker.isEmpty())
            forced.emplace(variable.mid(kPrefix.size()), maker);
    }
    return forced;
}

QString variableEnd(const char* port)
{
    return QString::fromLatin1(port).toUpper();
}

Error nothingOfferedBy(const QString& variableEnd, const QString& maker, const QStringList& offered)
{
    return Error{text("%1: aquí no hay “%2”. Hay: %3.")
                     .arg(kPrefix + variableEnd, maker, offered.join(kComma))};
}

Error noPortFor(const QString& variableEnd, const QStringList& known)
{
    return Error{text("%1: no hay ningún puerto que se llame así. Hay: %2.")
                     .arg(kPrefix + variableEnd, known.join(kComma))};
}

} // namespace brindlecam
