#include "SettingsPictures.h"

#include "OpenDialog.h"
#include "Photographer.h"
#include "base/WorkPool.h"
#include "history/History.h"
#include "look/Appearance.h"
#include "notices/Alerts.h"
#include "pictures/PngWriter.h"
#include "platform/Platform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/BehaviourSettings.h"
#include "settings/FolderRow.h"
#include "settings/LoginBox.h"
#include "settings/MarkerSettings.h"
#include "settings/PrivacySettings.h"
#include "settings/SettingsHost.h"
#include "settings/SettingsWindowController.h"
#include "settings/ShortcutRecorder.h"
#include "settings/SmallButton.h"
#include "settings/WrappedText.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMetaObject>
#include <QSlider>
#include <QTemporaryDir>

#include <utility>

namespace brindlecam::pictures {

namespace {

constexpr int kMostEntries = 20;

/// A shell whose system refuses what it is told to refuse.
class ToldHost final : public SettingsHost {
public:
    void reloadHotKeys() override {}
    void releaseHotKeys() override {}
    [[nodiscard]] const std::set<CaptureAction>& failedHotKeys() const override { return failed; }
    [[nodiscard]] bool offersUpdates() const override { return true; }
    void openCapturesFolder() override {}

    std::set<CaptureAction> failed;
};

/// A session that starts no program by itself, and can't be made to.
class RefusingLogin final : public LoginItem {
public:
    void ask(QObject* context, Known known) override
    {
        QMetaObject::invokeMethod(
            context, [known = std::move(known)] { known(false); }, Qt::QueuedConnection);
    }
    void set(bool, QObject* context, Done done) override
    {
        const Error error{QStringLiteral(
            "No se pudo escribir ~/.config/autostart/io.halvick.Brindlecam.desktop.")};
        QMetaObject::invokeMethod(
            context, [done = std::move(done), error] { done(error); }, Qt::QueuedConnection);
    }
};

/// The settings window in one theme, with settings and a history of its own.
class World final {
public:
    World(Photographer& photographer, QString prefix)
        : m_photographer(photographer)
        , m_prefix(std::move(prefix))
    {
        m_defaults.setString(QStringLiteral("saveFolder"),
                             QDir::home().filePath(QStringLiteral("Pictures/Brindlecam")));
    }

    void open()
    {
        m_controller.show();
        m_photographer.await(QStringLiteral("the settings"),
                             [this] { return window().isActiveWindow(); });
        m_photographer.rest();
    }
    void close()
    {
        m_controller.close();
        m_photographer.rest();
    }
    [[nodiscard]] SettingsWindow& window() { return *m_controller.window(); }
    [[nodiscard]] Defaults& defaults() { return m_defaults; }
    [[nodiscard]] ToldHost& host() { return m_host; }
    [[nodiscard]] History& history() { return m_history; }

    [[nodiscard]] ShortcutRecorder& recorder(CaptureAction action)
    {
        return window().shortcuts().recorder(action);
    }
    /// As if these keys had been pressed while it records.
    void choose(CaptureAction action, const std::optional<KeyCombo>& combo)
    {
        recorder(action).setCombo(combo);
        recorder(action).onChange(combo);
    }
    void await(const char* what, const std::function<bool()>& condition)
    {
        m_photographer.await(QLatin1String(what), condition);
    }

    /// As who walks through it with Tab.
    void focus(QWidget& control)
    {
        window().setAttribute(Qt::WA_KeyboardFocusChange);
        control.setFocus(Qt::TabFocusReason);
    }

    void take(const char* name) { m_photographer.take(named(name)); }
    void takeDialog(const char* name)
    {
        takeOpenDialog(m_photographer, named(name).toLatin1().constData());
    }

private:
    [[nodiscard]] QString named(const char* name) const { return m_prefix + QLatin1String(name); }

    Photographer& m_photographer;
    const QString m_prefix;
    QTemporaryDir m_folder;
    Defaults m_defaults{m_folder.filePath(QStringLiteral("settings.json"))};
    Prefs m_prefs{m_defaults};
    Platform& m_platform = m_photographer.platform();
    Alerts m_alerts{*m_platform.panels};
    History m_history{{m_folder.filePath(QStringLiteral("recientes")), {}}};
    ToldHost m_host;
    SettingsWindowController m_controller{
        {m_platform, m_prefs, m_history, m_alerts, m_host, WorkPool::run}};
};

void addToHistory(const History& history, int captures)
{
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (int i = 0; i < captures; ++i)
        history.add(PngWriter::encode(image, {.cancelled = {}}), QStringLiteral("png"));
}

void takeShortcuts(World& world)
{
    using enum CaptureAction;
    world.focus(world.recorder(area));
    world.take("shortcut-focused");
    world.recorder(area).startRecording();
    world.await("the recorder", [&] { return world.recorder(area).recording(); });
    world.take("shortcut-recording");
    world.recorder(area).stopRecording();

    world.choose(fullScreen, defaultCombo(area));
    world.take("shortcut-of-another");
    world.choose(fullScreen, std::nullopt);
    world.choose(recents,
                 KeyCombo::fromKeyPress(
                     105, commandModifier | shiftModifier | optionModifier | controlModifier, {}));
    world.take("shortcut-none-and-longest");
    world.host().failed = {recents};
    world.window().shortcuts().refresh();
    world.take("shortcut-refused");
    world.host().failed = {area, fullScreen, recents};
    world.window().shortcuts().refresh();
    world.take("shortcuts-refused");
    world.host().failed = {};
    for (const CaptureAction action : kAllCaptureActions)
        world.choose(action, defaultCombo(action));
}

void takeMarker(World& world)
{
    QSlider& slider = world.window().marker().opacitySlider();
    world.focus(slider);
    slider.setValue(slider.minimum());
    world.take("marker-least");
    slider.setValue(slider.maximum());
    world.take("marker-most");
    world.defaults().remove(QStringLiteral("markerOpacity"));
    world.window().marker().refresh();
}

void takeFolder(World& world)
{
    FolderRow& row = world.window().behaviour().folderRow();
    const QString folder =
        world.defaults().string(QStringLiteral("saveFolder")).value_or(QString());
    world.defaults().setString(QStringLiteral("saveFolder"),
                               QStringLiteral("/var/empresa/documentación/manuales de la versión "
                                              "nueva/capturas de pantalla/marzo"));
    row.showFolder();
    world.focus(row.openButton());
    world.take("folder-long");
    world.defaults().setString(QStringLiteral("saveFolder"), folder);
    row.showFolder();

    row.changeButton().click();
    world.await("the folder panel", [&] { return row.panel() && row.panel()->isVisible(); });
    world.take("folder-panel");
    row.panel()->findChild<QLineEdit*>()->setText(QStringLiteral("No existe"));
    const QPointer<QDialog> panel = row.panel();
    row.panel()->accept();
    world.await("the alert over it", [&] { return openDialog() && openDialog() != panel; });
    world.takeDialog("folder-missing");
    delete panel;
}

void takeOthers(World& world)
{
    world.window().behaviour().loginBox().click();
    world.takeDialog("login-refused");
    for (QCheckBox* box : world.window().findChildren<QCheckBox*>())
        box->setChecked(!box->isChecked());
    world.focus(world.window().behaviour().loupeBox());
    world.take("boxes-the-other-way");
    world.window().refresh();

    addToHistory(world.history(), 1);
    world.window().privacy().showHistory();
    world.take("history-one");
    addToHistory(world.history(), kMostEntries);
    world.window().privacy().showHistory();
    world.take("history-full");
    world.window().privacy().clearButton().click();
    world.takeDialog("history-clear");
}

void takeTheme(Photographer& photographer, Appearance::Shade shade, const char* prefix)
{
    QApplication::setPalette(Appearance::palette(shade));
    World world(photographer, QLatin1String(prefix));
    world.open();
    world.take("window");
    takeShortcuts(world);
    takeMarker(world);
    takeFolder(world);
    takeOthers(world);
    world.close();
}

} // namespace

void takeSettingsPictures(Photographer& photographer)
{
    const QPalette before = QApplication::palette();
    auto login =
        std::exchange(photographer.platform().loginItem, std::make_unique<RefusingLogin>());
    takeTheme(photographer, Appearance::Shade::light, "settings-light-");
    takeTheme(photographer, Appearance::Shade::dark, "settings-dark-");
    photographer.platform().loginItem = std::move(login);
    QApplication::setPalette(before);
}

} // namespace brindlecam::pictures
