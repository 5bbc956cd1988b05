#include "settings/ShortcutSettings.h"

#include "base/Text.h"
#include "look/Appearance.h"
#include "look/InterfaceFont.h"
#include "preferences/Prefs.h"
#include "settings/SettingsHost.h"
#include "settings/SettingsLook.h"
#include "settings/ShortcutRecorder.h"
#include "settings/WrappedText.h"

#include <QAccessible>
#include <QGridLayout>
#include <QVBoxLayout>

namespace brindlecam {

namespace {

// Points.
constexpr int kShortcutRowSpacing = 10;
constexpr int kShortcutColumnSpacing = 12;
constexpr int kShortcutTitleSize = 13;
constexpr int kShortcutWarningSize = 11;

WrappedText* makeWarning()
{
    auto* warning = new WrappedText(QString(), SettingsLook::kColumnWidth);
    warning->setFont(InterfaceFont::medium(kShortcutWarningSize));
    QPalette palette = warning->palette();
    palette.setColor(QPalette::WindowText, Appearance::warningText(palette));
    warning->setPalette(palette);
    warning->hide();
    return warning;
}

} // namespace

ShortcutSettings::ShortcutSettings(const Rooms& rooms)
    : m_rooms(rooms)
    , m_warning(makeWarning())
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(kShortcutColumnSpacing);
    grid->setVerticalSpacing(kShortcutRowSpacing);
    int row = 0;
    for (const CaptureAction action : kAllCaptureActions) {
        auto* label = new QLabel(text("%1:").arg(title(action)));
        label->setTextFormat(Qt::PlainText);
        label->setFont(InterfaceFont::regular(kShortcutTitleSize));
        auto* recorder = new ShortcutRecorder(rooms.keys, rooms.naming, title(action));
        recorder->onChange = [this, action](const auto& combo) { changed(action, combo); };
        recorder->onRecording = [this] { m_rooms.host.releaseHotKeys(); };
        recorder->onStopped = [this] { m_rooms.host.reloadHotKeys(); };
        grid->addWidget(label, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(recorder, row, 1, Qt::AlignLeft | Qt::AlignVCenter);
        ++row;
        m_recorders.emplace(action, recorder);
    }
    grid->setColumnStretch(1, 1);

    QVBoxLayout* column = SettingsLook::column(this);
    column->addWidget(SettingsLook::header(text("Atajos de teclado")));
    column->addLayout(grid);
    column->addWidget(SettingsLook::help(
        text("Haz clic en un atajo y presiona la combinación nueva. Esc cancela y ⌫ lo quita. Debe "
             "incluir ⌘, ⌥ o ⌃, salvo teclas de función (F13 = Impr Pant).")));
    column->addWidget(m_warning);
}

void ShortcutSettings::refresh()
{
    for (const auto& [action, recorder] : m_recorders)
        recorder->setCombo(m_rooms.prefs.combo(action));
    showFailures();
}

void ShortcutSettings::hotKeysAnswered()
{
    if (!m_warnsOfDuplicate)
        showFailures();
}

std::optional<CaptureAction> ShortcutSettings::otherWith(const KeyCombo& combo,
                                                         CaptureAction action) const
{
    for (const CaptureAction other : kAllCaptureActions) {
        if (other == action)
            continue;
        const std::optional<KeyCombo> taken = m_rooms.prefs.combo(other);
        if (taken && !taken->display.isEmpty() && taken->keyCode == combo.keyCode &&
            taken->modifiers == combo.modifiers)
            return other;
    }
    return std::nullopt;
}

void ShortcutSettings::changed(CaptureAction action, const std::optional<KeyCombo>& combo)
{
    const auto other = combo ? otherWith(*combo, action) : std::nullopt;
    if (!other) {
        store(action, combo);
        return;
    }
    recorder(action).setCombo(m_rooms.prefs.combo(action));
    warn(text("%1 ya se usa para “%2”.").arg(combo->shown(m_rooms.naming), title(*other)));
    m_warnsOfDuplicate = true;
}

void ShortcutSettings::store(CaptureAction action, const std::optional<KeyCombo>& combo)
{
    m_rooms.prefs.setCombo(combo, action);
    m_rooms.host.reloadHotKeys();
    showFailures();
}

void ShortcutSettings::showFailures()
{
    QStringList titles;
    for (const CaptureAction action : m_rooms.host.failedHotKeys())
        titles << title(action);
    titles.sort();
    warn(titles.isEmpty() ? QString()
                          : text("No se pudo registrar el atajo de: %1. Probablemente lo usa otra "
                                 "app; elige otra combinación.")
                                .arg(titles.join(QLatin1String(", "))));
}

void ShortcutSettings::warn(const QString& words)
{
    m_warnsOfDuplicate = false;
    m_warning->setText(words);
    m_warning->setVisible(!words.isEmpty());
    if (!words.isEmpty()) {
        QAccessibleEvent alert(m_warning, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

} // namespace brindlecam
