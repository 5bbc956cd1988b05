#include "notices/Alerts.h"

#include "base/Text.h"
#include "platform/Panels.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace brindlecam {

namespace {

constexpr int kIconPoints = 64;
constexpr int kTextWidth = 340; // points; Qt would break lines much earlier

// Desktops order buttons by their role, each in its own way. Ours stand as they were given: one
// role for all, in the one layout that keeps their order. The message is bold, the rest is not.
const char* const kStyle = "QDialogButtonBox { button-layout: 0; }"
                           "QLabel#qt_msgbox_label { font-weight: bold; font-size: 15px; }";

// Nothing to minimise or to maximise: there is no way back from the tray.
constexpr Qt::WindowFlags kDialogFlags = Qt::Dialog | Qt::CustomizeWindowHint |
                                         Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                                         Qt::WindowStaysOnTopHint;

/// Esc and the window's close button choose nothing. QMessageBox takes them for one of its buttons,
/// or refuses to close when none fits.
class AlertBox final : public QMessageBox {
public:
    using QMessageBox::QMessageBox;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->matches(QKeySequence::Cancel))
            reject();
        else
            QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override { QDialog::closeEvent(event); }
};

QMessageBox* makeBox(const AlertContent& content)
{
    auto* box = new AlertBox(content.over);
    box->setStyleSheet(QString::fromLatin1(kStyle));
    box->setWindowTitle(QStringLiteral("Brindlecam"));
    if (const QIcon icon = QApplication::windowIcon(); !icon.isNull())
        box->setIconPixmap(icon.pixmap(kIconPoints));
    box->setTextFormat(Qt::PlainText);
    box->setText(content.message);
    box->setInformativeText(content.informative);
    // Made by the line above; it would take a detail with angle brackets for markup.
    if (auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(kTextWidth);
    }
    return box;
}

QList<QAbstractButton*> addButtons(QMessageBox& box, const QStringList& titles, int defaultButton)
{
    QList<QAbstractButton*> buttons;
    for (const QString& title : titles)
        buttons.append(box.addButton(title, QMessageBox::NoRole));
    box.setDefaultButton(qobject_cast<QPushButton*>(buttons.at(defaultButton)));
    return buttons;
}

} // namespace

Alerts::Alerts(Panels& panels)
    : m_panels(panels)
{
}

Alerts::~Alerts()
{
    for (const QPointer<QDialog>& dialog : std::exchange(m_open, {}))
        delete dialog.data();
}

QDialog* Alerts::show(const AlertContent& content, std::function<void(std::optional<int>)> done)
{
    QMessageBox* box = makeBox(content);
    const QStringList titles =
        content.buttons.isEmpty() ? QStringList(text("Aceptar")) : content.buttons;
    const QList<QAbstractButton*> buttons = addButtons(*box, titles, content.defaultButton);
    if (!content.within.isEmpty()) {
        QRect place(QPoint(), box->sizeHint());
        place.moveCenter(content.within.center());
        box->move(place.topLeft());
    }
    show(box);
    if (content.over) {
        QObject::connect(content.over, &QDialog::finished, box, [box] {
            if (box->isVisible())
                box->reject();
        });
    }
    // Connected last: `done` may bring dialogs back, and this one is no longer among them by then.
    if (done) {
        QObject::connect(box, &QDialog::finished, box, [box, buttons, done = std::move(done)] {
            const qsizetype index = buttons.indexOf(box->clickedButton());
            done(index < 0 ? std::nullopt : std::optional(static_cast<int>(index)));
        });
    }
    return box;
}

void Alerts::show(QDialog* dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // One over another dialog blocks that alone, never a session.
    dialog->setWindowModality(dialog->parentWidget() ? Qt::WindowModal : Qt::NonModal);
    dialog->setWindowFlags(kDialogFlags);
    m_panels.assume(*dialog, PanelRole::dialog, {});
    m_open.emplace_back(dialog);
    // Not when it is deleted: that is a turn of the loop later, and it must not come back till
    // then.
    QObject::connect(dialog, &QDialog::finished, dialog, [this, dialog] {
        std::erase_if(m_open, [dialog](const auto& open) { return !open || open == dialog; });
    });
    if (!m_suspended)
        bringForward(*dialog);
}

void Alerts::bringForward(QDialog& dialog)
{
    if (!dialog.isVisible()) {
        dialog.setAttribute(Qt::WA_ShowWithoutActivating, false);
        m_panels.show(dialog, {});
    }
    m_panels.focus(dialog);
    // A copy, as below.
    for (const QPointer<QDialog>& open : std::vector(m_open)) {
        if (open && open->parentWidget() == &dialog)
            bringForward(*open);
    }
}

void Alerts::suspend()
{
    m_suspended = true;
    m_active.clear();
    for (const QPointer<QDialog>& dialog : m_open) {
        if (!dialog)
            continue;
        if (dialog->isActiveWindow())
            m_active = dialog;
        dialog->hide();
    }
}

void Alerts::resume()
{
    m_suspended = false;
    // A copy: showing a dialog may run code that opens another.
    const std::vector<QPointer<QDialog>> open = m_open;
    for (const QPointer<QDialog>& dialog : open) {
        if (!dialog || dialog->isVisible())
            continue;
        const bool isNew = !dialog->testAttribute(Qt::WA_WState_ExplicitShowHide);
        if (isNew || dialog == m_active) {
            bringForward(*dialog);
        } else {
            dialog->setAttribute(Qt::WA_ShowWithoutActivating);
            m_panels.show(*dialog, {});
        }
    }
}

bool Alerts::visible() const
{
    return std::ranges::any_of(
        m_open, [](const QPointer<QDialog>& dialog) { return dialog && dialog->isVisible(); });
}

} // namespace brindlecam
