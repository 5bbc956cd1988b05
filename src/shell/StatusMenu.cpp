#include "shell/StatusMenu.h"

#include "base/Text.h"
#include "shell/Actions.h"

#include <QAction>
#include <QKeySequence>

namespace brindlecam {

namespace {

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

QString titleOf(const QAction& item)
{
    return item.text().section(QLatin1Char('\t'), 0, 0);
}

} // namespace

StatusMenu::StatusMenu(const Actions& actions, KeyNaming naming)
    : m_naming(naming)
{
    for (const auto& [id, action] : actions.captures)
        add(m_menu, action);
    m_menu.addSeparator();
    m_delayed.setTitle(text("Capturar con retraso"));
    m_menu.addMenu(&m_delayed);
    for (const Action& action : actions.delayed)
        add(m_delayed, action);
    add(m_menu, *actions.find(ProgramAction::openFolder));
    add(m_menu, *actions.find(ProgramAction::settings));
    m_menu.addSeparator();
    if (const Action* const update = actions.find(ProgramAction::update))
        m_updateItem = add(m_menu, *update);
    add(m_menu, *actions.find(ProgramAction::about));
    m_menu.addSeparator();
    add(m_menu, *actions.find(ProgramAction::quit));
    refresh();
    QObject::connect(&m_menu, &QMenu::aboutToShow, &m_menu, [this] { refresh(); });
}

QAction* StatusMenu::add(QMenu& menu, const Action& action)
{
    QAction* item = menu.addAction(action.title, &menu, action.runFromMenu);
    m_items.push_back({item, action});
    return item;
}

void StatusMenu::refresh()
{
    for (const Item& item : m_items)
        item.shown->setEnabled(item.action.canRun());
    refreshShortcuts();
}

void StatusMenu::refreshShortcuts()
{
    for (const Item& item : m_items)
        showKey(item);
}

void StatusMenu::showKey(const Item& item) const
{
    const std::optional<KeyCombo> combo = item.action.key();
    const QString plain = titleOf(*item.shown);
    const bool shown = combo && fitsMenu(*combo);
    // A host that draws the menu takes a tab as part of the text, but knows shortcuts and writes
    // them its own way. In our own menu Qt would write them with the names of its own.
    const bool drawnByHost = const_cast<QMenu&>(m_menu).platformMenu() != nullptr;
    item.shown->setShortcutContext(Qt::WidgetShortcut); // never live in our windows
    item.shown->setShortcut(shown && drawnByHost ? keySequence(*combo) : QKeySequence());
    item.shown->setText(shown && !drawnByHost
                            ? plain + QLatin1Char('\t') + literally(combo->shown(m_naming))
                            : plain);
}

void StatusMenu::setUpdateTitle(const QString& title)
{
    if (m_updateItem)
        m_updateItem->setText(literally(title));
}

} // namespace brindlecam
