#include "capture/ResultToast.h"

#include "base/Text.h"

namespace brindlecam::ResultToast {

namespace {

QString takenMessage(Kind kind, Fate::Copy file)
{
    const bool area = kind == Kind::area;
    switch (file) {
    case Fate::Copy::done:
        return area ? text("Copiado y guardado") : text("Pantalla completa copiada y guardada");
    case Fate::Copy::failed:
        return area ? text("Copiado, pero no se pudo guardar en la carpeta")
                    : text("Copiada, pero no se pudo guardar en la carpeta");
    case Fate::Copy::notWanted:
        break;
    }
    return area ? text("Copiado al portapapeles") : text("Pantalla completa copiada");
}

QString refusedMessage(Fate::Copy file)
{
    switch (file) {
    case Fate::Copy::done:
        return text("Guardada, pero no se pudo copiar");
    case Fate::Copy::failed:
        return text("No se pudo copiar ni guardar la captura");
    case Fate::Copy::notWanted:
        break;
    }
    return notCopied();
}

} // namespace

QString notCopied()
{
    return text("No se pudo copiar la captura");
}

std::optional<QString> message(Kind kind, const Fate& fate)
{
    switch (fate.clipboard.value_or(ClipboardFate::overtaken)) {
    case ClipboardFate::taken:
        return takenMessage(kind, fate.file);
    case ClipboardFate::refused:
        return refusedMessage(fate.file);
    case ClipboardFate::overtaken:
        break;
    }
    return saveMessage(fate);
}

std::optional<QString> saveMessage(const Fate& fate)
{
    if (fate.file != Fate::Copy::failed)
        return std::nullopt;
    return text("No se pudo guardar la captura");
}

std::optional<QString> textMessage(const QString& recognised, ClipboardFate fate)
{
    switch (fate) {
    case ClipboardFate::refused:
        return text("No se pudo copiar el texto");
    case ClipboardFate::overtaken:
        return std::nullopt;
    case ClipboardFate::taken:
        break;
    }
    const auto lines = recognised.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size();
    if (lines == 1)
        return text("Texto copiado (1 línea)");
    return text("Texto copiado (%1 líneas)").arg(lines);
}

} // namespace brindlecam::ResultToast
