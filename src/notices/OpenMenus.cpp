#include "notices/OpenMenus.h"

#include <QApplication>
#include <QWidget>

namespace brindlecam::OpenMenus {

bool close()
{
    bool any = false;
    QWidget* popup = QApplication::activePopupWidget();
    while (popup && popup->close()) {
        any = true;
        popup = QApplication::activePopupWidget();
    }
    return any;
}

} // namespace brindlecam::OpenMenus
