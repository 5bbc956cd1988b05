#pragma once

#include <QApplication>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QWidget>

#include <algorithm>

namespace brindlecam::test {

/// What Qt does once the pointer has rested on a widget; whether anybody has shown a tip then.
inline bool restOn(QWidget& widget)
{
    const QPoint at = widget.rect().center();
    QHelpEvent event(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QCoreApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}

/// Whether Qt has opened its own window for a tip.
inline bool qtShowsATip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [](const QWidget* window) {
        return window->isVisible() && window->inherits("QTipLabel");
    });
}

} // namespace brindlecam::test
