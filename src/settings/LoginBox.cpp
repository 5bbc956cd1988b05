#include "settings/LoginBox.h"

#include "base/Text.h"
#include "notices/Alerts.h"
#include "platform/LoginItem.h"

namespace brindlecam {

LoginBox::LoginBox(LoginItem& item, Alerts& alerts)
    : QCheckBox(brindlecam::text("Abrir Brindlecam al iniciar sesión"))
    , m_item(item)
    , m_alerts(alerts)
{
    setToolTip(brindlecam::text("Brindlecam se inicia junto con tu sesión"));
    connect(this, &QAbstractButton::clicked, this, [this] { toggleLogin(); });
}

void LoginBox::refresh()
{
    m_item.ask(this, [this, change = m_change](bool enabled) {
        // What was asked before a change may be answered after it.
        if (!m_changing && change == m_change)
            setChecked(enabled);
    });
}

// One after the other: the session might carry out two changes in any order.
void LoginBox::toggleLogin()
{
    if (m_changing)
        return;
    m_changing = true;
    ++m_change;
    m_item.set(isChecked(), this, [this, wanted = isChecked()](const std::optional<Error>& failed) {
        m_changing = false;
        if (failed) {
            refresh();
            m_alerts.show(
                {.message = brindlecam::text("No se pudo cambiar la apertura al iniciar sesión"),
                 .informative = failed->message});
        } else if (isChecked() != wanted) {
            toggleLogin();
        }
    });
}

} // namespace brindlecam
