// Covers SettingsWindow.
#include "desktop/support/CaptureTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace brindlecam::desktop {

namespace {

constexpr QRect kTaken{10, 10, 160, 100}; ///< beside the window
constexpr Qt::KeyboardModifiers kControlAlt = Qt::ControlModifier | Qt::AltModifier;
/// The server repeats a held key after 660 ms.
constexpr int kPastRepeat = 1100;

} // namespace

/// The settings window with hands on it: what is changed there counts at once.
class TestSettings final : public CaptureTest {
    Q_OBJECT

private:
    /// A desktop with the program on it, and its settings open.
    void useSettings(WindowManager windowManager = WindowManager::openbox)
    {
        usePatternedDesktop({.windowManager = windowManager, .accessibility = Accessibility::on});
        startProgram();
        openSettings();
        // The last thing that it finds out.
        QVERIFY(placeOf("No hay capturas guardadas en el historial.").isValid());
        if (windowManager == WindowManager::openbox)
            QVERIFY(waitUntil([this] { return windows().active() == settings().front().id; }));
    }
    void openSettings()
    {
        QCOMPARE(program().command({QStringLiteral("settings")}).exitCode, 0);
        QVERIFY(windowHasKeyboard());
    }
    [[nodiscard]] std::vector<SeenWindow> settings()
    {
        std::vector<SeenWindow> all = windows().shown(program().pid());
        std::erase_if(all, [](const SeenWindow& each) {
            return each.title != QStringLiteral("Configuración de Brindlecam");
        });
        return all;
    }
    [[nodiscard]] QRect window() { return settings().front().pixels; }
    [[nodiscard]] bool windowHasKeyboard()
    {
        return waitUntil([this] {
            const auto all = settings();
            return all.size() == 1 && windows().focused() == all.front().id;
        });
    }
    /// Clicks the box of this name; false when it is not as it should be by then.
    [[nodiscard]] bool click(const char* name, bool on)
    {
        input().click(placeOf(name).center());
        return waitUntil([&] {
            const auto box = controls().look(QString::fromUtf8(name));
            return box && box->on == on;
        });
    }
    [[nodiscard]] bool isStored(const char* key, const QJsonValue& value)
    {
        return waitUntil([&] { return program().settings().value(QLatin1String(key)) == value; });
    }
    /// The recorder of this name shows that it records: it is filled with green.
    [[nodiscard]] bool records(const char* name)
    {
        const QRect field = placeOf(name, ControlKind::button);
        return waitUntil([&] {
            const QColor ground = screen().grab(field).pixelColor(8, field.height() / 2);
            return ground.green() > ground.red() + 10;
        });
    }
    [[nodiscard]] QString autostartFile()
    {
        return QFileInfo(program().folders().settingsFile()).path() +
               QStringLiteral("/../autostart/io.halvick.Brindlecam.desktop");
    }

private Q_SLOTS:
    void itComesUpInTheMiddleWithTheKeyboard_data()
    {
        QTest::addColumn<WindowManager>("windowManager");
        QTest::newRow("window manager") << WindowManager::openbox;
        QTest::newRow("bare") << WindowManager::none;
    }
    void itComesUpInTheMiddleWithTheKeyboard()
    {
        QFETCH(WindowManager, windowManager);
        useSettings(windowManager);
        const QPoint off = window().center() - screen().pixels().center();
        QVERIFY2(std::abs(off.x()) <= 2, qPrintable(QString::number(off.x())));
        QVERIFY2(std::abs(off.y()) <= 30, qPrintable(QString::number(off.y()))); // a title bar
        const QRect before = window();
        input().tap(Qt::Key_Escape);
        QVERIFY(nothingIsShown());
        openSettings();
        QVERIFY(waitUntil([&] { return window() == before; }));
        // Asked for once more, it is the same window, brought to the front.
        const auto other = desktop().open({.pixels = before});
        openSettings();
        QVERIFY(waitUntil([&] {
            return screen().grab(before).pixelColor(before.width() / 2, 4) != QColor(Qt::blue);
        }));
    }

    void aRecordedShortcutCapturesAndTheOldOneDoesNot()
    {
        useSettings();
        QVERIFY(press("Capturar área"));
        QVERIFY(records("Capturar área"));
        input().chord({Qt::Key_Control, Qt::Key_Alt, Qt::Key_5});
        const auto rival = desktop().rival();
        QVERIFY(waitUntil([&] { return rival->isHotKeyTaken(Qt::Key_5, kControlAlt); }));
        QVERIFY(!rival->isHotKeyTaken(kAreaKey, kHotKeyModifiers));
        input().tap(Qt::Key_Escape);
        QVERIFY(nothingIsShown());
        input().chord({Qt::Key_Control, Qt::Key_Alt, Qt::Key_5});
        QVERIFY(sessionIsReady());
    }

    void whileItRecordsNoHotKeyCaptures()
    {
        useSettings();
        QVERIFY(press("Capturas recientes"));
        QVERIFY(records("Capturas recientes"));
        pressHotKeyAtOnce(kAreaKey); // which is the area's: refused, and told
        QVERIFY(waitUntil([&] {
            return controls()
                .look(QStringLiteral("Mayús+Super+9 ya se usa para “Capturar área”."))
                .has_value();
        }));
        QVERIFY(overlays().empty());
        QVERIFY(hotKeysAreTaken());
        QVERIFY(!program().settings().contains(QLatin1String("hotkey.recents")));
        pressHotKey(kAreaKey);
        QVERIFY(sessionIsReady());
    }

    void aShortcutThatIsStillHeldDownDoesNotCapture()
    {
        useSettings();
        QVERIFY(press("Capturar área"));
        QVERIFY(records("Capturar área"));
        for (const Qt::Key key : {Qt::Key_Control, Qt::Key_Alt, Qt::Key_5})
            input().press(key);
        const auto rival = desktop().rival();
        QVERIFY(waitUntil([&] { return rival->isHotKeyTaken(Qt::Key_5, kControlAlt); }));
        QTest::qWait(kPastRepeat);
        input().letGo();
        QVERIFY(overlays().empty());
        input().chord({Qt::Key_Control, Qt::Key_Alt, Qt::Key_5});
        QVERIFY(sessionIsReady());
    }

    void anotherWindowEndsTheRecordingAndHotKeysWorkAgain()
    {
        useSettings();
        const auto other = openSample(QRect(10, 10, 120, 120));
        QVERIFY(press("Capturar área"));
        QVERIFY(records("Capturar área"));
        const auto rival = desktop().rival();
        QVERIFY(waitUntil([&] { return !rival->isHotKeyTaken(kAreaKey, kHotKeyModifiers); }));
        input().click(other->pixels().center());
        QVERIFY(hotKeysAreTaken());
        pressHotKey(kAreaKey);
        QVERIFY(sessionIsReady());
    }

    void aCommandEndsTheRecordingAndHotKeysWorkAgain_data()
    {
        itComesUpInTheMiddleWithTheKeyboard_data();
    }
    void aCommandEndsTheRecordingAndHotKeysWorkAgain()
    {
        QFETCH(WindowManager, windowManager);
        useSettings(windowManager);
        QVERIFY(press("Capturar área"));
        QVERIFY(records("Capturar área"));
        const auto rival = desktop().rival();
        QVERIFY(waitUntil([&] { return !rival->isHotKeyTaken(kAreaKey, kHotKeyModifiers); }));
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        QVERIFY(sessionIsReady());
        QVERIFY(hotKeysAreTaken());
        const QImage shown = pattern(screen().pixels().size()).copy(kTaken);
        select(kTaken);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isPasted(shown));
        QVERIFY(!program().settings().contains(QLatin1String("hotkey.area")));
        pressHotKey(kAreaKey);
        QVERIFY(sessionIsReady());
    }

    void aKeyThatAnotherProgramHoldsIsTold()
    {
        usePatternedDesktop({.accessibility = Accessibility::on});
        const auto rival = desktop().rival();
        QVERIFY(rival->takeHotKey(kFullScreenKey, kHotKeyModifiers));
        program().start();
        openSettings();
        QVERIFY(placeOf("No se pudo registrar el atajo de: Capturar pantalla completa. "
                        "Probablemente lo usa otra app; elige otra combinación.")
                    .isValid());
    }

    void removedShortcutsStayRemoved()
    {
        useSettings();
        QVERIFY(press("Capturar área"));
        QVERIFY(records("Capturar área"));
        input().tap(Qt::Key_Backspace);
        const auto rival = desktop().rival();
        QVERIFY(waitUntil([&] { return rival->isHotKeyTaken(kFullScreenKey, kHotKeyModifiers); }));
        QVERIFY(!rival->isHotKeyTaken(kAreaKey, kHotKeyModifiers));
        QCOMPARE(program().quit(), 0);
        program().start();
        QVERIFY(waitUntil([&] { return rival->isHotKeyTaken(kFullScreenKey, kHotKeyModifiers); }));
        QVERIFY(!rival->isHotKeyTaken(kAreaKey, kHotKeyModifiers));
    }

    void boxesCountForTheNextCapture()
    {
        useSettings();
        QVERIFY(click("Guardar también la pantalla completa como archivo PNG", false));
        QVERIFY(isStored("autoSaveFullScreen", false));
        const QImage shown = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        QVERIFY(isPasted(shown));
        QVERIFY(isOnlyInHistory(shown));
        QVERIFY(captures().isEmpty());
    }

    void theWindowStaysAndIsInThePicture()
    {
        useSettings();
        const QImage shown = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        QVERIFY(isPasted(shown));
        QCOMPARE(settings().size(), std::size_t(1));
        QVERIFY(openArea());
        QCOMPARE(program().command({QStringLiteral("settings")}).exitCode, 4);
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(windowHasKeyboard());
    }

    void capturesGoToTheFolderThatIsChosen()
    {
        useSettings();
        const QString chosen = program().folders().captures() + QStringLiteral("/otra");
        QVERIFY(QDir().mkpath(chosen));
        QVERIFY(press("Cambiar la carpeta de capturas"));
        QVERIFY(dialogOpens() && dialogHasKeyboard());
        input().type("otra");
        input().tap(Qt::Key_Return);
        QVERIFY(dialogsAreGone());
        QVERIFY(isStored("saveFolder", chosen));
        pressHotKey(kFullScreenKey);
        QVERIFY(waitUntil([&] { return !filesIn(chosen).isEmpty(); }));
        QVERIFY(captures().isEmpty());
    }

    void openingAtLoginIsAFileOfTheDesktops()
    {
        useSettings();
        QVERIFY(click("Abrir Brindlecam al iniciar sesión", true));
        QVERIFY(waitUntil([this] { return QFileInfo::exists(autostartFile()); }));
        QFile file(autostartFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("/brindlecam\"\n"));
        // Another program changes it while the user is there.
        QVERIFY(file.remove());
        const auto other = openSample(QRect(10, 10, 120, 120));
        const QString name = QStringLiteral("Abrir Brindlecam al iniciar sesión");
        QVERIFY(worksIn(*other));
        QVERIFY(waitUntil([&] { return !controls().look(name)->inActiveWindow; }));
        input().click(window().topLeft() + QPoint(10, 10));
        QVERIFY(waitUntil([&] { return !controls().look(name)->on; }));
    }

    void anAutostartFolderThatRefusesIsTold()
    {
        usePatternedDesktop({.accessibility = Accessibility::on});
        const QString folder = QFileInfo(autostartFile()).path();
        program().writeSettings({});
        QFile inTheWay(folder);
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        startProgram();
        openSettings();
        input().click(placeOf("Abrir Brindlecam al iniciar sesión").center());
        QVERIFY(dialogOpens() && dialogHasKeyboard());
        QVERIFY(press("Aceptar"));
        QVERIFY(dialogsAreGone());
        const auto box = controls().find(QStringLiteral("Abrir Brindlecam al iniciar sesión"));
        QVERIFY(box && !box->on);
    }

    void theHistoryIsCountedAndEmptied()
    {
        useSettings();
        pressHotKey(kFullScreenKey);
        QVERIFY(waitUntil([this] { return history().size() == 1; }));
        openSettings();
        QVERIFY(placeOf("1 captura guardada").isValid());
        QVERIFY(press("Vaciar ahora…"));
        QVERIFY(dialogOpens() && dialogHasKeyboard());
        QVERIFY(press("Vaciar"));
        QVERIFY(waitUntil([this] { return history().isEmpty(); }));
        QVERIFY(placeOf("No hay capturas guardadas en el historial.").isValid());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestSettings)

#include "tst_settings.moc"
