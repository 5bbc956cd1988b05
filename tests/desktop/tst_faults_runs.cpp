#include "desktop/support/CaptureTest.h"
#include "desktop/support/ClipboardManager.h"
#include "desktop/support/Launchers.h"

#include <QDir>
#include <QFile>

#include <array>
#include <csignal>

namespace brindlecam::desktop {

namespace {

enum class Runtime { missing, unset, locked, file, tooLong };

} // namespace

/// Runs of the program that begin at once, end in the middle, or have nowhere to meet.
class TestFaultsRuns final : public CaptureTest {
    Q_OBJECT

private Q_SLOTS:
    void copiesStartedAtOnceAllActAndOneStays()
    {
        useSmallDesktop();
        program().writeSettings({});
        for (int round = 0; round < 3; ++round) {
            const qsizetype before = history().size();
            std::array<std::unique_ptr<Process>, 2> copies;
            for (auto& copy : copies)
                copy = program().another({QStringLiteral("fullScreen")});
            QVERIFY(waitUntil([&] { return history().size() == before + 2; }));
            QVERIFY(waitUntil([&] { return copies[0]->isRunning() != copies[1]->isRunning(); }));
            Process& stayed = copies[0]->isRunning() ? *copies[0] : *copies[1];
            const Process& left = copies[0]->isRunning() ? *copies[1] : *copies[0];
            QCOMPARE(left.exitCode(), 0);
            QCOMPARE(history().size(), before + 2);
            const CommandResult third = program().command({QStringLiteral("fullScreen")});
            QVERIFY2(third.exitCode == 0, qPrintable(third.error));
            QVERIFY(waitUntil([&] { return history().size() == before + 3; }));
            QVERIFY(stayed.end());
            QCOMPARE(stayed.exitCode(), 0);
            QCOMPARE(filesIn(program().folders().history()).size(), before + 3); // and nothing else
        }
    }

    void killedInASessionNothingStays_data()
    {
        QTest::addColumn<WindowManager>("windowManager");
        QTest::addColumn<bool>("inADrag");
        QTest::newRow("managed, at rest") << WindowManager::openbox << false;
        QTest::newRow("managed, in a drag") << WindowManager::openbox << true;
        QTest::newRow("unmanaged, at rest") << WindowManager::none << false;
        QTest::newRow("unmanaged, in a drag") << WindowManager::none << true;
    }
    void killedInASessionNothingStays()
    {
        QFETCH(WindowManager, windowManager);
        QFETCH(bool, inADrag);
        useDesktop({.screen = {.pixels = {640, 480}}, .windowManager = windowManager});
        const auto window = desktop().open({.pixels = QRect(100, 100, 300, 200)});
        window->takeFocus();
        startProgram();
        const QPoint inWindow = window->pixels().center();
        input().moveTo(inWindow);
        QVERIFY(openArea());
        if (inADrag) {
            input().press(Button::left);
            input().glideTo(inWindow + QPoint(40, 30));
        }

        const qint64 pid = program().pid();
        program().kill();
        if (inADrag)
            input().release(Button::left);
        const auto rival = desktop().rival();
        QVERIFY(waitUntil([&] { return windows().shown(pid).empty(); }));
        QVERIFY(!rival->isHotKeyTaken(Qt::Key_Escape, {}));
        for (const Qt::Key key : {kAreaKey, kFullScreenKey})
            QVERIFY(!rival->isHotKeyTaken(key, kHotKeyModifiers));
        window->forget();
        input().click(inWindow);
        QVERIFY(waitUntil([&] { return window->clicks().size() == 1; }));
        // The window manager gives the focus a moment after the click.
        QVERIFY(
            waitUntil([&] { return windowManager == WindowManager::none || window->hasFocus(); }));
        input().tap(Qt::Key_A);
        QVERIFY(waitUntil([&] { return window->keys().size() == 1; }));

        startProgram();
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        QVERIFY(sessionIsReady());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }

    void quittingDuringAnEncodeLosesNothing_data()
    {
        QTest::addColumn<bool>("area");
        QTest::newRow("area") << true;
        QTest::newRow("full screen") << false;
    }
    void quittingDuringAnEncodeLosesNothing()
    {
        QFETCH(bool, area);
        const QSize size(1600, 1200);
        useDesktop({.screen = {.pixels = size}, .windowManager = WindowManager::none});
        const QImage picture = noise(size);
        const auto window = desktop().open({.pixels = QRect({}, size), .picture = picture});
        QVERIFY(waitUntil([&] { return screen().grab() == picture; }));
        // Nothing of the picture is made before Return.
        program().writeSettings({{QStringLiteral("autoCopy"), false}});
        startProgram();
        const auto manager = desktop().startClipboardManager(KeepsBy::handing);
        if (area) {
            QVERIFY(openArea());
            select(QRect({}, size));
            input().tap(Qt::Key_Return);
            QVERIFY(sessionIsOver());
        } else {
            QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        }
        // Who comes meanwhile waits and takes its place.
        QCOMPARE(::kill(static_cast<pid_t>(program().pid()), SIGTERM), 0);
        const auto next = program().another({});
        QVERIFY(program().waitForEnd());
        QCOMPARE(program().exitCode(), 0);
        // A command would take the place itself if it came first.
        QVERIFY(waitUntil([&] { return program().isAnswering() || !next->isRunning(); }));
        QCOMPARE(program().command({QStringLiteral("recents")}).exitCode, 0);
        QVERIFY(next->isRunning());
        const auto kept = manager->handedOver();
        QVERIFY(kept.has_value());
        const QImage expected =
            area ? picture.copy(0, 0, size.width() - 1, size.height() - 1) : picture;
        const QImage pasted = QImage::fromData(*kept, "PNG");
        const QRect inner(QPoint(), pasted.size());
        QVERIFY(pasted.width() >= expected.width() && pasted.height() >= expected.height());
        QVERIFY(samePixels(pasted, picture.copy(inner)));
        QVERIFY(samePixels(onlyPictureIn(program().folders().captures()), pasted));
        QVERIFY(samePixels(onlyPictureIn(program().folders().history()), pasted));
    }

    void quittingInASessionKeepsTheLiveCopyInTheHistory()
    {
        useSmallDesktop();
        const auto window = openSample(QRect(100, 100, 300, 200));
        startProgram();
        const auto manager = desktop().startClipboardManager(KeepsBy::handing);
        const QRect area(120, 120, 200, 100);
        const QImage before = screen().grab(area);
        QVERIFY(openArea());
        select(area);
        QVERIFY(isPasted(before));
        QCOMPARE(program().quit(), 0);
        const auto kept = manager->handedOver();
        QVERIFY(kept.has_value());
        QVERIFY(samePixels(QImage::fromData(*kept, "PNG"), before));
        QVERIFY(samePixels(onlyPictureIn(program().folders().history()), before));
    }

    void copiesFindEachOtherWithoutARuntimeFolder_data()
    {
        QTest::addColumn<Runtime>("runtime");
        QTest::newRow("missing") << Runtime::missing;
        QTest::newRow("not set") << Runtime::unset;
        QTest::newRow("unwritable") << Runtime::locked;
        QTest::newRow("a file in its place") << Runtime::file;
        QTest::newRow("too long for a socket") << Runtime::tooLong;
    }
    void copiesFindEachOtherWithoutARuntimeFolder()
    {
        QFETCH(Runtime, runtime);
        useSmallDesktop();
        program().setLauncher(Launchers::withoutPrivileges());
        const QString temporary = program().folders().home() + QStringLiteral("/tmp");
        QDir().mkpath(temporary);
        program().environment().insert(QStringLiteral("TMPDIR"), temporary);
        spoil(runtime);
        program().launch();
        QVERIFY(hotKeysAreTaken());
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        QVERIFY(sessionIsReady());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(program().isRunning());
        // Qt may complain; we have nothing to.
        QVERIFY(!program().log().contains(QLatin1String("Brindlecam")));
    }

    void programWithoutAnyPlaceToMeetWorksAlone()
    {
        useSmallDesktop();
        const QString nowhere = program().folders().home() + QStringLiteral("/no/such/folder");
        program().environment().insert(QStringLiteral("XDG_RUNTIME_DIR"), nowhere);
        program().environment().insert(QStringLiteral("TMPDIR"), nowhere);
        program().launch();
        QVERIFY(hotKeysAreTaken());
        pressHotKey(kFullScreenKey);
        QVERIFY(toastSays(QStringLiteral("Pantalla completa copiada y guardada")));
        QVERIFY(program().log().contains(
            QStringLiteral("Brindlecam funciona, pero no puede recibir órdenes: no hay dónde abrir "
                           "su socket.\n")));
    }

private:
    void useSmallDesktop()
    {
        useDesktop({.screen = {.pixels = {640, 480}}, .windowManager = WindowManager::none});
    }

    void spoil(Runtime runtime)
    {
        const QString name = QStringLiteral("XDG_RUNTIME_DIR");
        const QString inHome = program().folders().home() + QStringLiteral("/no/such/folder");
        switch (runtime) {
        case Runtime::missing:
            program().environment().insert(name, inHome);
            return;
        case Runtime::unset:
            program().environment().remove(name);
            return;
        case Runtime::locked:
            QFile::setPermissions(program().folders().runtime(),
                                  QFile::ReadOwner | QFile::ExeOwner);
            return;
        case Runtime::file: {
            const QString path = program().folders().home() + QStringLiteral("/file");
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            program().environment().insert(name, path);
            return;
        }
        case Runtime::tooLong: {
            const QString path =
                program().folders().runtime() + QLatin1Char('/') + QString(100, QLatin1Char('l'));
            QDir().mkpath(path);
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            program().environment().insert(name, path);
            return;
        }
        }
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestFaultsRuns)

#include "tst_faults_runs.moc"
