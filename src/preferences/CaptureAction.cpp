#include "preferences/CaptureAction.h"

#include "base/Text.h"

namespace brindlecam {

namespace {

struct ActionRow {
    CaptureAction action;
    const char* rawValue;
    const char* title;
    int keyCode;
    const char* display;
};

constexpr std::array kRows{
    ActionRow{CaptureAction::area, "area", "Capturar área", 25, "⇧⌘9"},
    ActionRow{CaptureAction::fullScreen, "fullScreen", "Capturar pantalla completa", 28, "⇧⌘8"},
    ActionRow{CaptureAction::recents, "recents", "Capturas recientes", 29, "⇧⌘0"},
};

const ActionRow& row(CaptureAction action)
{
    return kRows.at(static_cast<std::size_t>(action));
}

} // namespace

QString rawValue(CaptureAction action)
{
    return QString::fromLatin1(row(action).rawValue);
}

std::optional<CaptureAction> captureAction(const QString& rawValue)
{
    for (const ActionRow& candidate : kRows) {
        if (rawValue == QLatin1String(candidate.rawValue))
            return candidate.action;
    }
    return std::nullopt;
}

QString title(CaptureAction action)
{
    return text(row(action).title);
}

KeyCombo defaultCombo(CaptureAction action)
{
    return {.keyCode = row(action).keyCode,
            .modifiers = shiftModifier | commandModifier,
            .display = QString::fromUtf8(row(action).display)};
}

} // namespace brindlecam
