#include "settings/PrivacySettings.h"

#include "base/Text.h"
#include "history/History.h"
#include "history/HistoryNames.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/SettingsLook.h"
#include "settings/SmallButton.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace brindlecam {

namespace {

// Points.
constexpr int kToCount = 4;
constexpr int kHistoryRowSpacing = 8;
constexpr int kHistoryLabelWidth = 300; // at least

QString counted(qsizetype entries)
{
    if (entries == 0)
        return text("No hay capturas guardadas en el historial.");
    if (entries == 1)
        return text("1 captura guardada (máximo %1).").arg(HistoryNames::kMostEntries);
    return text("%1 capturas guardadas (máximo %2).").arg(entries).arg(HistoryNames::kMostEntries);
}

} // namespace

PrivacySettings::PrivacySettings(const Prefs& prefs, const History& history, Alerts& alerts,
                                 const Executor& executor)
    : m_prefs(prefs)
    , m_history(history)
    , m_background(executor)
    , m_clearing(history, alerts, executor)
    , m_historyBox(
          SettingsLook::box(text("Guardar historial para el cajón de capturas recientes"),
                            text("Las últimas capturas se guardan aparte, y solo para ti")))
    , m_historyLabel(SettingsLook::note())
    , m_clear(new SmallButton(text("Vaciar ahora…"),
                              text("Borrar definitivamente todas las capturas recientes")))
{
    m_historyLabel->setMinimumWidth(kHistoryLabelWidth);
    connect(m_historyBox, &QAbstractButton::clicked, this, [this] { toggleHistory(); });
    connect(m_clear, &QAbstractButton::clicked, this, [this] { clearHistory(); });

    auto* row = new QHBoxLayout;
    row->setSpacing(kHistoryRowSpacing);
    row->addWidget(m_historyLabel);
    row->addWidget(m_clear);
    row->addStretch();
    auto* keeping = new QVBoxLayout;
    keeping->setSpacing(kToCount);
    keeping->addWidget(m_historyBox);
    keeping->addLayout(row);
    QVBoxLayout* column = SettingsLook::column(this);
    column->addWidget(SettingsLook::header(text("Privacidad")));
    column->addLayout(keeping);
}

void PrivacySettings::showHistory()
{
    m_historyBox->setChecked(m_prefs.keepHistory());
    m_background.run([folders = m_history.folders()] { return History(folders).items().size(); },
                     [this, count = ++m_count](qsizetype entries) {
                         if (count == m_count)
                             m_historyLabel->setText(counted(entries));
                     });
}

void PrivacySettings::toggleHistory()
{
    const bool keep = m_historyBox->isChecked();
    m_prefs.defaults().setBoolean(QStringLiteral("keepHistory"), keep);
    if (keep)
        showHistory();
    else
        clearHistory();
}

void PrivacySettings::clearHistory()
{
    if (m_asks)
        return;
    m_asks = true;
    m_clearing.confirmAndClear([this](bool) {
        m_asks = false;
        showHistory();
    });
}

} // namespace brindlecam
