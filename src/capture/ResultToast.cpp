#include "capture/ResultToast.h"

#include "base/Text.h"

namespace brindlecam::ResultToast {

namespace {

/// What to say of a picture that is on the clipboard.
struct CopiedTexts {
    QString saved;
    QString notSaved;
    QString notToBeSaved;
};

CopiedTexts copiedTexts(Kind kind)
{
    if (kind == Kind::area) {
        return {text("Copiado y guardado"), text("Copiado, pero no se pudo guardar en la carpeta"),
                text("Copiado al portapapeles")};
    }
    return {text("Pantalla completa copiada y guardada"),
            text("Copiada, pero no se pudo guardar en la carpeta"),
            text("Pantalla completa copiada")};
}

QString copiedMessage(const CopiedTexts& texts, Fate::Copy file)
{
    switch (file) {
    case Fate::Copy::done:
        return texts.saved;
    case Fate::Copy::failed:
        return texts.notSaved;
    case Fate::Copy::notWanted:
        break;
    }
    return texts.notToBeSaved;
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

std::optional<QString> told(const CopiedTexts& texts, const Fate& fate)
{
    switch (fate.clipboard.value_or(ClipboardFate::overtaken)) {
    case ClipboardFate::taken:
        return copiedMessage(texts, fate.file);
    case ClipboardFate::refused:
        return refusedMessage(fate.file);
    case ClipboardFate::overtaken:
        break;
    }
    return saveMessage(fate);
}

} // namespace

QString notCopied()
{
    return text("No se pudo copiar la captura");
}

std::optional<QString> message(Kind kind, const Fate& fate)
{
    return told(copiedTexts(kind), fate);
}

std::optional<QString> pageMessage(int rows, const Fate& fate)
{
    return told({text("Captura larga copiada y guardada (%1 px de alto)").arg(rows),
                 text("Copiada, pero no se pudo guardar en la carpeta"),
                 text("Captura larga copiada (%1 px de alto)").arg(rows)},
                fate);
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
