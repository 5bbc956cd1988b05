#pragma once

#include <QCoreApplication>
#include <QString>

namespace brindlecam {

/// Looks a text of the interface up in the installed catalogues. The Spanish text is the key, and
/// what is shown when no catalogue has it. All our texts share one context, so a text reads the
/// same wherever it stands.
inline QString text(const char* spanish)
{
    return QCoreApplication::translate("Brindlecam", spanish);
}

/// The language of the interface: that of the installed catalogue, "es" without one.
inline QString language()
{
    return text("es");
}

} // namespace brindlecam
