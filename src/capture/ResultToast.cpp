#include "capture/ResultToast.h"

#include "base/Text.h"

namespace brindlecam::ResultToast {

QString message(Kind kind, Fate fate)
{
    const bool area = kind == Kind::area;
    if (fate.saved)
        return area ? text("Copiado y guardado") : text("Pantalla completa copiada y guardada");
    if (fate.requested) {
        return area ? text("Copiado, pero no se pudo guardar en la carpeta")
                    : text("Copiada, pero no se pudo guardar en la carpeta");
    }
    return area ? text("Copiado al portapapeles") : text("Pantalla completa copiada");
}

QString textMessage(const QString& recognised)
{
    const auto lines = recognised.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size();
    if (lines == 1)
        return text("Texto copiado (1 línea)");
    return text("Texto copiado (%1 líneas)").arg(lines);
}

} // namespace brindlecam::ResultToast
