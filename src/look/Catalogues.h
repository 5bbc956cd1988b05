#pragma once

#include <QString>
#include <QTranslator>

namespace brindlecam {

/// The texts that replace those in the code: Qt's own dialogs in Spanish, and what reads
/// differently on this system. The interface is Spanish in every locale that has no catalogue of
/// its own, the C locale included. Needs the application object and must not outlive it. Main
/// thread.
class Catalogues final {
public:
    /// `platformCatalogue` is a resource, such as ":/i18n/brindlecam_linux.qm"; empty: none.
    void install(const QString& platformCatalogue);

private:
    QTranslator m_qt;
    QTranslator m_platform;
};

} // namespace brindlecam
