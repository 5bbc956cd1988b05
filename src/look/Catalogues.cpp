#include "look/Catalogues.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace brindlecam {

void Catalogues::install(const QString& platformCatalogue)
{
    // The one installed last is asked first.
    if (m_qt.load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_qt);
    if (!platformCatalogue.isEmpty() && m_platform.load(platformCatalogue))
        QCoreApplication::installTranslator(&m_platform);
}

} // namespace brindlecam
