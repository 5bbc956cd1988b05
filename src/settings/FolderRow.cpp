#include "settings/FolderRow.h"

#include "base/Text.h"
#include "notices/Alerts.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/FolderPanel.h"
#include "settings/SettingsHost.h"
#include "settings/SettingsLook.h"
#include "settings/SmallButton.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>

#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr int kFolderRowSpacing = 8;
constexpr int kFolderLabelWidth = 250;

} // namespace

FolderRow::FolderRow(const Prefs& prefs, Alerts& alerts, SettingsHost& host,
                     const Executor& executor)
    : m_prefs(prefs)
    , m_alerts(alerts)
    , m_background(executor)
    , m_folderLabel(SettingsLook::note())
    , m_change(new SmallButton(text("Cambiar…"), text("Elegir otra carpeta de capturas")))
    , m_open(new SmallButton(text("Abrir"), text("Abrir la carpeta de capturas")))
{
    m_folderLabel->setFixedWidth(kFolderLabelWidth);
    m_change->setAccessibleName(text("Cambiar la carpeta de capturas"));
    m_open->setAccessibleName(text("Abrir la carpeta de capturas"));
    connect(m_change, &QAbstractButton::clicked, this, [this] { chooseFolder(); });
    connect(m_open, &QAbstractButton::clicked, this, [&host] { host.openCapturesFolder(); });

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kFolderRowSpacing);
    row->addWidget(m_folderLabel);
    row->addWidget(m_change);
    row->addWidget(m_open);
    row->addStretch();
}

void FolderRow::showFolder()
{
    const QString folder = m_prefs.saveFolder();
    const QString words = text("Carpeta: %1").arg(abbreviatedPath(folder, QDir::homePath()));
    m_folderLabel->setText(
        m_folderLabel->fontMetrics().elidedText(words, Qt::ElideMiddle, kFolderLabelWidth));
    m_folderLabel->setAccessibleName(words);
    m_folderLabel->setToolTip(folder);
}

void FolderRow::chooseFolder()
{
    if (m_panel) {
        m_alerts.bringForward(*m_panel);
        return;
    }
    if (std::exchange(m_looks, true))
        return;
    m_background.run([folder = m_prefs.saveFolder()] { return FolderPanel::nearestThere(folder); },
                     [this](const QString& there) {
                         m_looks = false;
                         ask(there);
                     });
}

void FolderRow::ask(const QString& from)
{
    m_panel = FolderPanel::open(
        m_alerts, from,
        [row = QPointer(this), &defaults = m_prefs.defaults()](const QString& path) {
            defaults.setString(QStringLiteral("saveFolder"), path);
            if (row)
                row->showFolder();
        });
}

QString abbreviatedPath(const QString& path, const QString& home)
{
    if (path == home)
        return QStringLiteral("~");
    return path.startsWith(home + QLatin1Char('/')) ? QLatin1Char('~') + path.mid(home.size())
                                                    : path;
}

} // namespace brindlecam
