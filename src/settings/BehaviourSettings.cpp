#include "settings/BehaviourSettings.h"

#include "base/Text.h"
#include "platform/Platform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/FolderRow.h"
#include "settings/LoginBox.h"
#include "settings/SettingsHost.h"
#include "settings/SettingsLook.h"
#include "settings/WrappedText.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace brindlecam {

namespace {

// Points.
constexpr int kToHelp = 4;
constexpr int kBetweenSaves = 6;
constexpr int kToFolder = 4;

} // namespace

BehaviourSettings::BehaviourSettings(const Prefs& prefs, Platform& platform, Alerts& alerts,
                                     SettingsHost& host, const Executor& executor)
    : m_prefs(prefs)
    , m_autoCopyBox(SettingsLook::box(text("Copiar al portapapeles automáticamente al seleccionar"),
                                      text("La selección se copia sin esperar a que termines")))
    , m_autoSaveBox(
          SettingsLook::box(text("Guardar también la pantalla completa como archivo PNG"),
                            text("Cada captura de la pantalla completa se guarda en tu carpeta")))
    , m_autoSaveAreaBox(
          SettingsLook::box(text("Guardar también las capturas de área (Enter o Copiar)"),
                            text("Cada captura de área se guarda en tu carpeta")))
    , m_folderRow(new FolderRow(prefs, alerts, host, executor))
    , m_loupeBox(SettingsLook::box(text("Mostrar lupa de píxeles al elegir el área"),
                                   text("Amplía los píxeles que están junto al puntero")))
    , m_lightGifsBox(SettingsLook::box(text("GIF más ligeros (menor resolución)"),
                                       text("Pesan menos para mandarlos por chat, pero el texto se "
                                            "ve menos nítido.")))
    , m_loginBox(new LoginBox(*platform.loginItem, alerts))
    , m_updatesBox(SettingsLook::box(text("Avisarme cuando haya una versión nueva"),
                                     text("Busca una versión nueva una vez al día")))
{
    m_loginBox->setFont(m_updatesBox->font());
    m_updatesBox->setHidden(!host.offersUpdates());
    connect(m_autoCopyBox, &QAbstractButton::clicked, this,
            [this] { store("autoCopy", *m_autoCopyBox); });
    for (QCheckBox* box : {m_autoSaveBox, m_autoSaveAreaBox, m_loupeBox})
        connect(box, &QAbstractButton::clicked, this, [this] { toggleAutoSave(); });
    connect(m_lightGifsBox, &QAbstractButton::clicked, this,
            [this] { store("lightGifs", *m_lightGifsBox); });
    connect(m_updatesBox, &QAbstractButton::clicked, this,
            [this] { store("checkUpdates", *m_updatesBox); });
    layOut();
}

void BehaviourSettings::layOut()
{
    auto* copying = new QVBoxLayout;
    copying->setSpacing(kToHelp);
    copying->addWidget(m_autoCopyBox);
    copying->addWidget(
        SettingsLook::help(text("La captura queda lista para pegar en cuanto sueltas el ratón y se "
                                "actualiza con cada anotación. La pantalla completa siempre se "
                                "copia.")));
    auto* saving = new QVBoxLayout;
    saving->setSpacing(0);
    saving->addWidget(m_autoSaveBox);
    saving->addSpacing(kBetweenSaves);
    saving->addWidget(m_autoSaveAreaBox);
    saving->addSpacing(kToFolder);
    saving->addWidget(m_folderRow);

    QVBoxLayout* column = SettingsLook::column(this);
    column->addWidget(SettingsLook::header(text("Comportamiento")));
    column->addLayout(copying);
    column->addLayout(saving);
    column->addWidget(m_loupeBox);
    column->addWidget(m_lightGifsBox);
    column->addWidget(m_loginBox);
    column->addWidget(m_updatesBox);
}

void BehaviourSettings::refresh()
{
    m_autoCopyBox->setChecked(m_prefs.autoCopy());
    m_autoSaveBox->setChecked(m_prefs.autoSaveFullScreen());
    m_autoSaveAreaBox->setChecked(m_prefs.autoSaveArea());
    m_loupeBox->setChecked(m_prefs.showLoupe());
    m_lightGifsBox->setChecked(m_prefs.lightGifs());
    m_loginBox->refresh();
    m_updatesBox->setChecked(m_prefs.checkUpdates());
    m_folderRow->showFolder();
}

void BehaviourSettings::store(const char* key, const QCheckBox& box) const
{
    m_prefs.defaults().setBoolean(QString::fromLatin1(key), box.isChecked());
}

void BehaviourSettings::toggleAutoSave() const
{
    store("autoSaveFullScreen", *m_autoSaveBox);
    store("autoSaveArea", *m_autoSaveAreaBox);
    store("showLoupe", *m_loupeBox);
}

} // namespace brindlecam
