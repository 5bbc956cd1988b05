#include "shell/StatusMenu.h"

#include "base/Text.h"
#include "preferences/Prefs.h"

#include <QAction>
#include <QKeySequence>

#include <array>

namespace brindlecam {

namespace {

struct DelayedRow {
    const char* shortName;
    CaptureAction action;
    int seconds;
};

constexpr std::array kDelayed{
    DelayedRow{"Área", CaptureAction::area, 3},
    DelayedRow{"Área", CaptureAction::area, 5},
    DelayedRow{"Pantalla completa", CaptureAction::fullScreen, 3},
    DelayedRow{"Pantalla completa", CaptureAction::fullScreen, 5},
};

constexpr int kCommaKey = 43;

/// A menu shows no more than modifiers and one character: other keys have no sign for it.
bool fitsMenu(const KeyCombo& combo)
{
    return !combo.display.isEmpty() && !KeyCombo::functionKeyName(combo.keyCode) &&
           !KeyCombo::namedKeyName(combo.keyCode);
}

QKeySequence keySequence(const KeyCombo& combo)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ControlModifier, combo.modifiers & controlModifier);
    modifiers.setFlag(Qt::AltModifier, combo.modifiers & optionModifier);
    modifiers.setFlag(Qt::ShiftModifier, combo.modifiers & shiftModifier);
    modifiers.setFlag(Qt::MetaModifier, combo.modifiers & commandModifier);
    const auto key = static_cast<Qt::Key>(combo.display.back().toUpper().unicode());
    return {QKeyCombination(modifiers, key)};
}

/// A menu takes an ampersand for the mark of a mnemonic, beside the title too.
QString literally(QString shown)
{
    return shown.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString titleOf(const QAction& action)
{
    return action.text().section(QLatin1Char('\t'), 0, 0);
}

} // namespace

StatusMenu::StatusMenu(const Prefs& prefs, KeyNaming naming)
    : m_prefs(prefs)
    , m_naming(naming)
{
    addCaptures();
    m_menu.addSeparator();
    addDelayed();
    m_folderItem = add("Abrir carpeta de capturas", onOpenFolder);
    m_settingsItem = add("Configuración…", onSettings);
    m_menu.addSeparator();
    m_updateItem = add("Buscar actualizaciones…", onUpdate);
    m_aboutItem = add("Acerca de Brindlecam", onAbout);
    m_menu.addSeparator();
    m_quitItem = add("Salir", onQuit);
    QObject::connect(&m_menu, &QMenu::aboutToShow, &m_menu, [this] { refresh(); });
}

QAction* StatusMenu::add(const char* title, const std::function<void()>& callback)
{
    // The callbacks are filled later: looked at when the item is chosen.
    return m_menu.addAction(text(title), &m_menu, [&callback] {
        if (callback)
            callback();
    });
}

void StatusMenu::addCaptures()
{
    for (const CaptureAction action : kAllCaptureActions) {
        QAction* item = m_menu.addAction(title(action));
        item->setData(rawValue(action));
        QObject::connect(item, &QAction::triggered, &m_menu, [this, item] {
            if (onCapture)
                onCapture(item->data().toString());
        });
        m_captureItems.emplace(action, item);
    }
}

void StatusMenu::addDelayed()
{
    m_delayed.setTitle(text("Capturar con retraso"));
    for (const DelayedRow& row : kDelayed) {
        QAction* item = m_delayed.addAction(
            text("%1 en %2 segundos").arg(text(row.shortName)).arg(row.seconds));
        item->setData(QStringLiteral("%1|%2").arg(rawValue(row.action)).arg(row.seconds));
        QObject::connect(item, &QAction::triggered, &m_delayed, [this, item] {
            if (onCaptureDelayed)
                onCaptureDelayed(item->data().toString());
        });
    }
    m_menu.addMenu(&m_delayed);
}

void StatusMenu::refresh()
{
    const auto available = [this](CaptureAction action) {
        return !isAvailable || isAvailable(action);
    };
    for (const auto& [action, item] : m_captureItems)
        item->setEnabled(onCapture && available(action));
    const QList<QAction*> delayed = m_delayed.actions();
    for (std::size_t i = 0; i < kDelayed.size(); ++i) {
        delayed.at(static_cast<qsizetype>(i))
            ->setEnabled(onCaptureDelayed && available(kDelayed.at(i).action));
    }
    m_folderItem->setEnabled(bool(onOpenFolder));
    m_settingsItem->setEnabled(bool(onSettings));
    m_updateItem->setEnabled(bool(onUpdate));
    m_aboutItem->setEnabled(bool(onAbout));
    m_quitItem->setEnabled(bool(onQuit));
    refreshShortcuts();
}

void StatusMenu::refreshShortcuts()
{
    for (const auto& [action, item] : m_captureItems)
        show(*item, m_prefs.combo(action));
    show(*m_settingsItem, KeyCombo{kCommaKey, commandModifier, QStringLiteral("⌘,")});
}

void StatusMenu::show(QAction& action, const std::optional<KeyCombo>& combo) const
{
    const QString plain = titleOf(action);
    const bool shown = combo && fitsMenu(*combo);
    // A host that draws the menu takes a tab as part of the text, but knows shortcuts and writes
    // them its own way. In our own menu Qt would write them with the names of its own.
    const bool drawnByHost = const_cast<QMenu&>(m_menu).platformMenu() != nullptr;
    action.setShortcutContext(Qt::WidgetShortcut); // never live in our windows
    action.setShortcut(shown && drawnByHost ? keySequence(*combo) : QKeySequence());
    action.setText(shown && !drawnByHost
                       ? plain + QLatin1Char('\t') + literally(combo->shown(m_naming))
                       : plain);
}

void StatusMenu::setUpdateTitle(const QString& title)
{
    m_updateItem->setText(title);
}

} // namespace brindlecam
