#include "settings/SettingsWindow.h"

#include "base/Text.h"
#include "platform/Platform.h"
#include "settings/BehaviourSettings.h"
#include "settings/LoginBox.h"
#include "settings/MarkerSettings.h"
#include "settings/PrivacySettings.h"
#include "settings/SettingsLook.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace brindlecam {

namespace {

// Points.
constexpr QMargins kWindowMargins{24, 20, 24, 22};
constexpr int kBetweenColumns = 24;

QWidget* column(QWidget* above, QWidget* below)
{
    auto* column = new QWidget;
    column->setMinimumWidth(SettingsLook::kColumnWidth);
    QVBoxLayout* layout = SettingsLook::column(column);
    layout->addWidget(above);
    layout->addWidget(SettingsLook::separator(Qt::Horizontal));
    layout->addWidget(below);
    layout->addStretch();
    return column;
}

} // namespace

SettingsWindow::SettingsWindow(const Rooms& rooms)
    : m_shortcuts(new ShortcutSettings(
          {rooms.prefs, rooms.host, *rooms.platform.hotKeys, rooms.platform.keyNaming}))
    , m_marker(new MarkerSettings(rooms.prefs))
    , m_behaviour(new BehaviourSettings(rooms.prefs, rooms.platform, rooms.alerts, rooms.host,
                                        rooms.executor))
    , m_privacy(new PrivacySettings(rooms.prefs, rooms.history, rooms.alerts, rooms.executor))
{
    setWindowTitle(text("Configuración de Brindlecam"));
    // No resizing, and no way to minimise it to nowhere.
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(kWindowMargins);
    columns->setSpacing(kBetweenColumns);
    columns->setSizeConstraint(QLayout::SetFixedSize);
    columns->addWidget(column(m_shortcuts, m_marker), 0, Qt::AlignTop);
    columns->addWidget(SettingsLook::separator(Qt::Vertical));
    columns->addWidget(column(m_behaviour, m_privacy), 0, Qt::AlignTop);
}

void SettingsWindow::refresh()
{
    m_shortcuts->refresh();
    m_marker->refresh();
    m_behaviour->refresh();
    m_privacy->showHistory();
}

void SettingsWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel) || event->matches(QKeySequence::Close))
        close();
    else
        QWidget::keyPressEvent(event);
}

void SettingsWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    onClosed();
}

// What others may have changed while the user was with them.
void SettingsWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow())
        return;
    m_marker->refresh();
    m_behaviour->loginBox().refresh();
    m_privacy->showHistory();
}

} // namespace brindlecam
