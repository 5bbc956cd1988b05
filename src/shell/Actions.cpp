#include "shell/Actions.h"

#include "base/Text.h"
#include "preferences/Prefs.h"
#include "shell/AppDelegate.h"

#include <array>

namespace brindlecam {

namespace {

constexpr int kCommaKey = 43;

struct DelayedRow {
    CaptureAction action;
    const char* shortName;
    int seconds;
};

constexpr std::array kDelayed{
    DelayedRow{CaptureAction::area, "Área", 3},
    DelayedRow{CaptureAction::area, "Área", 5},
    DelayedRow{CaptureAction::fullScreen, "Pantalla completa", 3},
    DelayedRow{CaptureAction::fullScreen, "Pantalla completa", 5},
};

std::optional<KeyCombo> noKey()
{
    return std::nullopt;
}

bool always()
{
    return true;
}

Action capture(AppDelegate& delegate, const Prefs& prefs, CaptureAction id)
{
    return {.title = title(id),
            .key = [&prefs, id] { return prefs.combo(id); },
            .canRun = [&delegate] { return delegate.mayBegin(); },
            .run = [&delegate, id] { delegate.perform(id); },
            .runFromMenu = [&delegate, id] { delegate.capture(id); }};
}

Action delayed(AppDelegate& delegate, const DelayedRow& row)
{
    const auto run = [&delegate, row] { delegate.captureDelayed(row.action, row.seconds); };
    return {.title = text("%1 en %2 segundos").arg(text(row.shortName)).arg(row.seconds),
            .key = noKey,
            .canRun = [&delegate] { return delegate.mayBegin(); },
            .run = run,
            .runFromMenu = run};
}

/// What covers nothing on the screen and so need not wait for a menu.
Action simple(const QString& title, const std::function<bool()>& canRun,
              const std::function<void()>& run)
{
    return {.title = title, .key = noKey, .canRun = canRun, .run = run, .runFromMenu = run};
}

Action other(AppDelegate& delegate, ProgramAction id)
{
    const auto mayBegin = [&delegate] { return delegate.mayBegin(); };
    switch (id) {
    case ProgramAction::openFolder:
        return simple(text("Abrir carpeta de capturas"), always,
                      [&delegate] { delegate.openCapturesFolder(); });
    case ProgramAction::settings: {
        Action settings =
            simple(text("Configuración…"), mayBegin, [&delegate] { delegate.showSettings(); });
        settings.key = [] { return KeyCombo{kCommaKey, commandModifier, QStringLiteral("⌘,")}; };
        return settings;
    }
    case ProgramAction::update:
        return simple(AppDelegate::updateTitle(std::nullopt), mayBegin,
                      [&delegate] { delegate.updateFromMenu(); });
    case ProgramAction::about:
        return simple(text("Acerca de Brindlecam"), always, [&delegate] { delegate.showAbout(); });
    case ProgramAction::quit:
        return simple(text("Salir"), always, [&delegate] { delegate.quit(); });
    }
    Q_UNREACHABLE();
}

} // namespace

const Action* Actions::find(ProgramAction id) const
{
    const auto found = others.find(id);
    return found == others.end() ? nullptr : &found->second;
}

Actions makeActions(AppDelegate& delegate, const Prefs& prefs)
{
    Actions all;
    for (const CaptureAction id : kAllCaptureActions)
        all.captures.emplace(id, capture(delegate, prefs, id));
    for (const DelayedRow& row : kDelayed)
        all.delayed.push_back(delayed(delegate, row));
    for (const ProgramAction id : kAllProgramActions) {
        if (id != ProgramAction::update || delegate.offersUpdates())
            all.others.emplace(id, other(delegate, id));
    }
    return all;
}

} // namespace brindlecam
