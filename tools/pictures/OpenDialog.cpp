#include "OpenDialog.h"

#include "Photographer.h"

#include <QApplication>
#include <QDialog>

namespace brindlecam::pictures {

QDialog* openDialog()
{
    // One that is over another has the keyboard.
    if (auto* const active = qobject_cast<QDialog*>(QApplication::activeWindow()))
        return active;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* const dialog = qobject_cast<QDialog*>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

void takeOpenDialog(Photographer& photographer, const char* name)
{
    photographer.await(QStringLiteral("the dialog"), [] { return openDialog() != nullptr; });
    photographer.take(QLatin1String(name));
    delete openDialog();
    photographer.rest();
}

} // namespace brindlecam::pictures
