#include "desktop/support/CaptureTest.h"
#include "desktop/support/Launchers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace brindlecam::desktop {

namespace {

enum class Capture { smallArea, area, fullScreen };
enum class Obstacle { readOnly, fileInItsPlace, fullDisk, nearlyFullDisk };

constexpr QRect kWindow(100, 80, 400, 320);
constexpr QRect kArea(150, 120, 300, 200);
constexpr QRect kSmallArea(150, 120, 20, 20); // less than a file's buffer holds

void put(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(path));
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

constexpr auto kLocked = QFile::ReadOwner | QFile::ExeOwner;
constexpr auto kOpen = kLocked | QFile::WriteOwner;

/// A folder nobody may write into, for as long as this lives.
class LockedFolder final {
public:
    explicit LockedFolder(QString path)
        : m_path(std::move(path))
    {
        QDir().mkpath(m_path);
        QFile::setPermissions(m_path, kLocked);
    }
    ~LockedFolder() { QFile::setPermissions(m_path, kOpen); }
    LockedFolder(const LockedFolder&) = delete;
    LockedFolder& operator=(const LockedFolder&) = delete;

private:
    QString m_path;
};

} // namespace

/// Folders and files that are missing, refuse, or hold nonsense.
class TestFaultsFolders final : public CaptureTest {
    Q_OBJECT

private Q_SLOTS:
    void missingCapturesFolderIsMade()
    {
        useNoisyDesktop();
        const QString folder = program().folders().home() + QStringLiteral("/una/dos tres/ñ");
        program().writeSettings({{QStringLiteral("saveFolder"), folder}});
        program().start();
        const QImage taken = take(Capture::area);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(samePixels(onlyPictureIn(folder), taken));
        QVERIFY(QDir(folder).removeRecursively());
        const QImage whole = take(Capture::fullScreen);
        QVERIFY(toastSays(QStringLiteral("Pantalla completa copiada y guardada")));
        QVERIFY(samePixels(onlyPictureIn(folder), whole));
    }

    void unwritableCapturesFolderIsToldAndLosesNothingElse_data()
    {
        QTest::addColumn<Capture>("capture");
        QTest::addColumn<Obstacle>("obstacle");
        QTest::newRow("read-only, area") << Capture::area << Obstacle::readOnly;
        QTest::newRow("read-only, full screen") << Capture::fullScreen << Obstacle::readOnly;
        QTest::newRow("a file in its place, area") << Capture::area << Obstacle::fileInItsPlace;
        QTest::newRow("a file in its place, full screen")
            << Capture::fullScreen << Obstacle::fileInItsPlace;
        QTest::newRow("disk full, area") << Capture::area << Obstacle::fullDisk;
        QTest::newRow("disk full, small area") << Capture::smallArea << Obstacle::fullDisk;
        QTest::newRow("disk full, full screen") << Capture::fullScreen << Obstacle::fullDisk;
        QTest::newRow("disk fills up, area") << Capture::area << Obstacle::nearlyFullDisk;
        QTest::newRow("disk fills up, full screen")
            << Capture::fullScreen << Obstacle::nearlyFullDisk;
    }
    void unwritableCapturesFolderIsToldAndLosesNothingElse()
    {
        QFETCH(Capture, capture);
        QFETCH(Obstacle, obstacle);
        useNoisyDesktop();
        const QString folder = program().folders().captures();
        if (!hinder(folder, obstacle))
            QSKIP("no small disk can be mounted here");
        program().start();
        const QStringList before = namesFor(folder);
        const QImage taken = take(capture);
        QVERIFY(toastSays(capture == Capture::fullScreen
                              ? QStringLiteral("Copiada, pero no se pudo guardar en la carpeta")
                              : QStringLiteral("Copiado, pero no se pudo guardar en la carpeta")));
        QVERIFY(samePixels(pasted(), taken));
        QVERIFY(samePixels(onlyPictureIn(program().folders().history()), taken));
        QCOMPARE(namesFor(folder), before);
        if (obstacle == Obstacle::fileInItsPlace)
            QCOMPARE(contentOf(folder), QByteArray("mine"));
    }

    void unwritableHistoryChangesNothingForTheUser_data()
    {
        QTest::addColumn<Obstacle>("obstacle");
        QTest::newRow("read-only") << Obstacle::readOnly;
        QTest::newRow("a file in its place") << Obstacle::fileInItsPlace;
        QTest::newRow("disk full") << Obstacle::fullDisk;
        QTest::newRow("disk fills up") << Obstacle::nearlyFullDisk;
    }
    void unwritableHistoryChangesNothingForTheUser()
    {
        QFETCH(Obstacle, obstacle);
        useNoisyDesktop();
        const QString folder = program().folders().history();
        if (!hinder(folder, obstacle))
            QSKIP("no small disk can be mounted here");
        program().start();
        const QStringList before = namesFor(folder);
        const QImage taken = take(Capture::area);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(samePixels(pasted(), taken));
        QVERIFY(samePixels(onlyPictureIn(program().folders().captures()), taken));
        QCOMPARE(namesFor(folder), before);
    }

    void unwritableHomeLeavesTheClipboard()
    {
        useNoisyDesktop();
        program().writeSettings({});
        program().setLauncher(Launchers::withoutPrivileges());
        const QString home = program().folders().home();
        std::vector<std::unique_ptr<LockedFolder>> locked;
        for (const char* folder :
             {"config/brindlecam", "config", "data", "cache", "state", "Pictures", ""})
            locked.push_back(
                std::make_unique<LockedFolder>(QDir(home).filePath(QString::fromLatin1(folder))));
        program().start();
        const QImage taken = take(Capture::area);
        QVERIFY(toastSays(QStringLiteral("Copiado, pero no se pudo guardar en la carpeta")));
        QVERIFY(samePixels(pasted(), taken));
        QVERIFY(!QFileInfo::exists(program().folders().captures()));
        QVERIFY(program().isRunning());
    }

    void nothingIsLeftWhereNoFileMayGrow()
    {
        useNoisyDesktop();
        // Also refuses the shared memory of a quick grab; the signal would end any program.
        program().setLauncher({QStringLiteral("sh"), QStringLiteral("-c"),
                               QStringLiteral("trap '' XFSZ; ulimit -f 16; exec \"$@\""),
                               QStringLiteral("sh")});
        program().start();
        const QImage taken = take(Capture::area);
        QVERIFY(toastSays(QStringLiteral("Copiado, pero no se pudo guardar en la carpeta")));
        QVERIFY(samePixels(pasted(), taken));
        QCOMPARE(filesIn(program().folders().captures()), QStringList());
        QCOMPARE(filesIn(program().folders().history()), QStringList());
    }

    void damagedHistoryEntriesAreInNobodysWay()
    {
        useNoisyDesktop();
        const QString folder = program().folders().history() + QLatin1Char('/');
        for (int i = 10; i < 35; ++i) {
            put(folder + QStringLiteral("20250101-0000%1-000.png").arg(i),
                i % 2 == 0 ? QByteArray() : QByteArray("no picture"));
        }
        put(folder + QStringLiteral("notes.txt"), "mine");
        QDir().mkpath(folder + QStringLiteral("20990101-000000-000.png"));
        program().start();
        const QImage taken = take(Capture::area);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QStringList names = filesIn(folder);
        QVERIFY(names.removeOne(QStringLiteral("notes.txt")));
        QCOMPARE(names.size(), 20);
        QVERIFY(samePixels(QImage(folder + names.last()), taken));
        QCOMPARE(names.first(), QStringLiteral("20250101-000016-000.png"));
    }

private:
    void useNoisyDesktop()
    {
        useDesktop({.screen = {.pixels = {640, 480}}, .windowManager = WindowManager::none});
        m_window = desktop().open({.pixels = kWindow, .picture = noise(kWindow.size())});
        QVERIFY(waitUntil([this] { return screen().grab(kWindow) == noise(kWindow.size()); }));
    }

    /// False where this obstacle cannot be had.
    bool hinder(const QString& folder, Obstacle obstacle)
    {
        switch (obstacle) {
        case Obstacle::readOnly:
            program().setLauncher(Launchers::withoutPrivileges());
            m_locked = std::make_unique<LockedFolder>(folder);
            return true;
        case Obstacle::fileInItsPlace:
            put(folder, "mine");
            return true;
        case Obstacle::fullDisk:
        case Obstacle::nearlyFullDisk: {
            QDir().mkpath(folder);
            const auto launcher =
                Launchers::withSmallDisk(folder, obstacle == Obstacle::fullDisk ? 0 : 8192);
            if (launcher)
                program().setLauncher(*launcher);
            return launcher.has_value();
        }
        }
        return false;
    }

    /// What the program sees in a folder, its own disks included.
    QStringList namesFor(const QString& folder)
    {
        return filesIn(Launchers::insideOf(program().pid(), folder));
    }

    /// Takes a capture and returns what it must show.
    QImage take(Capture capture)
    {
        if (!hotKeysAreTaken() || !nothingIsShown())
            qFatal("the program is not at rest");
        const QImage desktop = screen().grabAtRest();
        if (capture == Capture::fullScreen) {
            pressHotKey(kFullScreenKey);
            return desktop;
        }
        if (!openArea())
            qFatal("no session opens");
        const QRect area = capture == Capture::smallArea ? kSmallArea : kArea;
        select(area);
        input().tap(Qt::Key_Return);
        return desktop.copy(area);
    }

    std::unique_ptr<ClientWindow> m_window;
    std::unique_ptr<LockedFolder> m_locked;
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestFaultsFolders)

#include "tst_faults_folders.moc"
