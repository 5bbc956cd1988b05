#pragma once

#include <QPointer>
#include <QRect>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

class QDialog;

namespace brindlecam {

class Panels;

/// What an alert says and offers.
struct AlertContent {
    QString message;          ///< bold
    QString informative = {}; ///< plain, below
    QStringList buttons = {}; ///< in order; empty: the one default button, "Aceptar"
    int defaultButton = 0;    ///< index of the one that Return takes
    /// The open dialog it asks about: takes no input meanwhile, and takes the alert with it.
    QDialog* over = nullptr;
    /// In the middle of which it is shown, in Qt's points of the desktop. Empty: of the dialog's,
    /// or the pointer's screen.
    QRect within = {};
};

/// Dialogs that stay on top without blocking the loop. While a capture runs they are hidden and
/// afterwards brought back, so that none lies over the frozen screen or in the picture. Main
/// thread.
class Alerts final {
public:
    explicit Alerts(Panels& panels);
    ~Alerts();

    /// Shows an alert; `done` receives the index of the chosen button, or nothing when it was
    /// closed otherwise. Whoever deletes it, because there is nothing to answer any more, hears
    /// nothing; it deletes itself when it closes.
    QDialog* show(const AlertContent& content, std::function<void(std::optional<int>)> done = {});

    /// Shows any dialog under the same rules and takes it over: it is deleted when it closes.
    void show(QDialog* dialog);

    /// Hides every open dialog for the time of a session.
    void suspend();
    /// Brings them back, with the focus only the one that had it.
    void resume();

    /// Brings an open dialog to the front with the focus, as the user has just asked for it, and
    /// what it asks over it.
    void bringForward(QDialog& dialog);

    /// Whether one is on a screen.
    [[nodiscard]] bool visible() const;

private:
    Panels& m_panels;
    std::vector<QPointer<QDialog>> m_open;
    QPointer<QDialog> m_active; ///< had the focus when the session began
    bool m_suspended = false;
};

} // namespace brindlecam
