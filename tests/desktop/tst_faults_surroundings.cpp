#include "desktop/support/CaptureTest.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

namespace brindlecam::desktop {

namespace {

/// A client that fills a window with one colour after the other and never rests.
class RestlessPainter final {
public:
    explicit RestlessPainter(ClientWindow& window)
        : m_thread([this, &window] { paint(window); })
    {
    }
    ~RestlessPainter()
    {
        m_stop = true;
        m_thread.join();
    }

private:
    void paint(ClientWindow& window) const
    {
        for (QRgb colour = 0x400000; !m_stop; colour = (colour + 0x10507) & 0xffffff)
            window.paint(QColor::fromRgb(colour));
    }

    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

} // namespace

/// Parts of a desktop that are not there, or that are in the way: everything but that part works.
class TestFaultsSurroundings final : public CaptureTest {
    Q_OBJECT

private Q_SLOTS:
    void capturesWorkWithoutEachPartOfADesktop_data()
    {
        QTest::addColumn<WindowManager>("windowManager");
        QTest::addColumn<Compositor>("compositor");
        QTest::addColumn<MessageBus>("bus");
        QTest::addColumn<Tray>("tray");
        QTest::newRow("everything there")
            << WindowManager::openbox << Compositor::picom << MessageBus::session << Tray::tint2;
        QTest::newRow("no tray host")
            << WindowManager::openbox << Compositor::picom << MessageBus::session << Tray::none;
        QTest::newRow("no window manager")
            << WindowManager::none << Compositor::picom << MessageBus::session << Tray::trayer;
        QTest::newRow("no message bus")
            << WindowManager::openbox << Compositor::picom << MessageBus::none << Tray::tint2;
        QTest::newRow("no compositor")
            << WindowManager::openbox << Compositor::none << MessageBus::session << Tray::tint2;
        QTest::newRow("none of them")
            << WindowManager::none << Compositor::none << MessageBus::none << Tray::none;
    }
    void capturesWorkWithoutEachPartOfADesktop()
    {
        QFETCH(WindowManager, windowManager);
        QFETCH(Compositor, compositor);
        QFETCH(MessageBus, bus);
        QFETCH(Tray, tray);
        useDesktop(
            {.windowManager = windowManager, .compositor = compositor, .bus = bus, .tray = tray});
        const auto window = openSample(QRect(200, 150, 500, 400));
        window->takeFocus();
        startProgram();

        pressHotKey(kAreaKey);
        verifyAreaCapture(*window, QRect(40, 30, 300, 200));
        if (QTest::currentTestFailed())
            return;
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        verifyAreaCapture(*window, QRect(7, 9, 123, 45));
        if (QTest::currentTestFailed())
            return;

        pressHotKey(kFullScreenKey);
        verifyFullScreenCapture(*window);
        if (QTest::currentTestFailed())
            return;
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        verifyFullScreenCapture(*window);
    }

    void noSessionBusIsLaunchedWhereThereIsNone()
    {
        useDesktop({.windowManager = WindowManager::none, .tray = Tray::trayer});
        const QTemporaryDir folder;
        const QString trace = folder.filePath(QStringLiteral("launched"));
        writeScript(folder.filePath(QStringLiteral("dbus-launch")),
                    QStringLiteral("echo run >> '%1'").arg(trace));
        QProcessEnvironment& environment = program().environment();
        environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
        environment.insert(QStringLiteral("PATH"),
                           folder.path() + QLatin1Char(':') + qEnvironmentVariable("PATH"));
        // Whatever asks for the bus, also what only the desktop's own helpers would.
        environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        const auto window = openSample(QRect(200, 150, 500, 400));
        startProgram();
        pressHotKey(kFullScreenKey);
        verifyFullScreenCapture(*window);
        QCOMPARE(program().quit(), 0);
        QVERIFY(!QFileInfo::exists(trace));
        // Where the real one is installed, the library prefers it to the stand-in.
        QVERIFY(!QFileInfo::exists(program().folders().home() + QStringLiteral("/.dbus")));
    }

    void shortcutHeldByAnotherClientLeavesTheOthersWorking()
    {
        useDesktop({.windowManager = WindowManager::none});
        const auto other = desktop().rival();
        QVERIFY(other->takeHotKey(kAreaKey, kHotKeyModifiers));
        const auto window = openSample(QRect(200, 150, 500, 400));
        window->takeFocus();
        startProgram();

        pressHotKey(kAreaKey);
        pressHotKey(kFullScreenKey);
        verifyFullScreenCapture(*window);
        QVERIFY(overlays().empty());
        // Only the key is lost, not what it stands for.
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        verifyAreaCapture(*window, QRect(10, 10, 50, 50));
    }

    void clipboardSurvivesTheLossOfItsConnection()
    {
        useDesktop({});
        const auto window = openSample(QRect(200, 150, 500, 400));
        window->takeFocus();
        startProgram();
        pressHotKey(kFullScreenKey);
        verifyFullScreenCapture(*window);
        if (QTest::currentTestFailed())
            return;
        const QImage before = pasted();
        desktop().clipboard().cutOwnersConnection();
        // The server may give the new window the number of the old one.
        QVERIFY(waitUntil([this] { return clipboardIsTaken(); }));
        QVERIFY(samePixels(pasted(), before));
        pressHotKey(kAreaKey);
        verifyAreaCapture(*window, QRect(7, 9, 123, 45));
    }

    void overlayStaysAboveAClientThatDrawsAllTheTime_data()
    {
        QTest::addColumn<Compositor>("compositor");
        QTest::newRow("composited") << Compositor::picom;
        QTest::newRow("not composited") << Compositor::none;
    }
    void overlayStaysAboveAClientThatDrawsAllTheTime()
    {
        QFETCH(Compositor, compositor);
        useDesktop({.compositor = compositor});
        const QRect place(300, 200, 256, 192);
        const auto window = desktop().open({.pixels = place, .kind = WindowKind::unmanaged});
        const RestlessPainter painter(*window);
        QVERIFY(waitUntil([&] { return screen().pixel(place.center()) != QColor(Qt::blue); }));
        startProgram();

        QVERIFY(openArea());
        select(place);
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QCOMPARE(pasted().size(), place.size());

        // The desktop is frozen: the painter goes on below and is not seen.
        QVERIFY(openArea());
        select(place);
        // Handles and frame lie on the edges.
        const QRect inner = place.adjusted(20, 20, -20, -20);
        const auto shownAsPasted = [&] {
            const QImage live = pasted().copy(inner.translated(-place.topLeft()));
            return samePixels(screen().grab(inner), live);
        };
        QVERIFY(waitUntil(shownAsPasted));
        for (int look = 0; look < 5; ++look)
            QVERIFY(shownAsPasted());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }

private:
    static void writeScript(const QString& path, const QString& line)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + line.toLocal8Bit() + '\n');
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    /// An area session is open or about to: takes a part of the window, in its own pixels.
    void verifyAreaCapture(const ClientWindow& window, const QRect& part)
    {
        const QRect pixels = part.translated(window.pixels().topLeft());
        QVERIFY(sessionIsReady());
        select(pixels);
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(sessionIsOver());
        QVERIFY(samePixels(pasted(), screen().grab(pixels)));
        QVERIFY(getsFocus(window));
    }

    void verifyFullScreenCapture(const ClientWindow& window)
    {
        QVERIFY(toastSays(QStringLiteral("Pantalla completa copiada y guardada")));
        const QImage taken = pasted();
        QCOMPARE(taken.size(), screen().pixels().size());
        const QRect pixels = window.pixels();
        QVERIFY(samePixels(taken.copy(pixels), screen().grab(pixels)));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestFaultsSurroundings)

#include "tst_faults_surroundings.moc"
