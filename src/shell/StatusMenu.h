#pragma once

#include "base/KeyCombo.h"

#include <QMenu>
#include <QString>

#include <optional>
#include <vector>

namespace brindlecam {

struct Action;
struct Actions;

/// A menu of the status item: built once, afterwards only titles, shortcuts and what is enabled
/// change. What can't run is disabled. Main thread.
class StatusMenu final {
public:
    /// The actions outlive it.
    StatusMenu(const Actions& actions, KeyNaming naming);

    /// Brings shortcuts and enabled items up to date; also done whenever the menu opens. Hosts that
    /// draw the menu themselves keep a copy, so call it when anything changes.
    void refresh();
    /// The same for shortcuts alone, when the hot keys are reloaded.
    void refreshShortcuts();
    void setUpdateTitle(const QString& title);

    [[nodiscard]] QMenu& menu() { return m_menu; }

private:
    struct Item {
        QAction* shown; ///< owned by its menu
        const Action& action;
    };

    QAction* add(QMenu& menu, const Action& action);
    void showKey(const Item& item) const;

    const KeyNaming m_naming;
    QMenu m_menu;
    QMenu m_delayed;
    std::vector<Item> m_items;
    QAction* m_updateItem = nullptr; ///< owned by the menu; null where nobody can be asked
};

} // namespace brindlecam
