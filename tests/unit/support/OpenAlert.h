#pragma once

#include "support/FakePanels.h"
#include "support/GatedExecutor.h"

#include <QMessageBox>
#include <QPushButton>

namespace brindlecam::test {

/// The alert that was shown last, if one is open; else null.
[[nodiscard]] inline QMessageBox* openAlert(const FakePanels& panels)
{
    for (auto shown = panels.shown.rbegin(); shown != panels.shown.rend(); ++shown) {
        auto* const box = qobject_cast<QMessageBox*>(shown->widget.data());
        if (box && box->isVisible())
            return box;
    }
    return nullptr;
}

/// Presses its button of this title.
inline void answerAlert(const FakePanels& panels, const char* title)
{
    for (QPushButton* button : openAlert(panels)->findChildren<QPushButton*>()) {
        if (button->text() == QString::fromUtf8(title))
            button->click();
    }
    sendAllPostedEvents();
}

} // namespace brindlecam::test
