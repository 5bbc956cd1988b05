#pragma once

#include <QCheckBox>

namespace brindlecam {

class Alerts;
class LoginItem;

/// The box that says whether the program opens with the user's session, as the session has it. Main
/// thread.
class LoginBox final : public QCheckBox {
    Q_OBJECT

public:
    /// Both outlive it.
    LoginBox(LoginItem& item, Alerts& alerts);

    /// Asks the session; the answer is shown when it comes.
    void refresh();

private:
    void toggleLogin();

    LoginItem& m_item;
    Alerts& m_alerts;
    bool m_changing = false; ///< what was asked for is not there yet
    int m_change = 0;        ///< which one, or which was the last
};

} // namespace brindlecam
