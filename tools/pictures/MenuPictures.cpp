#include "MenuPictures.h"

#include "Photographer.h"
#include "shell/StatusMenu.h"

#include <QAction>

namespace brindlecam::pictures {

void takeMenuPictures(Photographer& photographer, StatusMenu& status)
{
    QMenu& menu = status.menu();
    menu.popup(QPoint(40, 40));
    photographer.take(QStringLiteral("menu"));
    menu.setActiveAction(menu.actions().first());
    photographer.take(QStringLiteral("menu-active"));
    for (QAction* action : menu.actions()) {
        if (action->menu()) {
            menu.setActiveAction(action);
            const QRect place = menu.actionGeometry(action);
            action->menu()->popup(menu.mapToGlobal(place.topRight()));
            action->menu()->setActiveAction(action->menu()->actions().first());
            photographer.take(QStringLiteral("menu-delayed"));
            action->menu()->close();
        }
    }
    menu.close();
    photographer.rest();
}

} // namespace brindlecam::pictures
