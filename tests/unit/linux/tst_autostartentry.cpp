// Covers LinuxLoginItem.
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/LinuxLoginItem.h"
#include "support/Files.h"
#include "support/GatedExecutor.h"
#include "support/LockedFolder.h"
#include "support/TestCase.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace brindlecam {

namespace {

const QString kEntryName = QStringLiteral("io.halvick.Brindlecam.desktop");

/// A user's folders and a machine's, and a program that is there.
struct LoginDesk {
    QTemporaryDir folder;
    QString program = folder.filePath(QStringLiteral("un lugar/brindlecam"));
    AutostartEntry::Places places{.own = folder.filePath(QStringLiteral("config/autostart")),
                                  .systems = {folder.filePath(QStringLiteral("xdg/autostart"))},
                                  .program = program};
    AutostartEntry entry{places};

    LoginDesk()
    {
        makeProgram(program);
        QVERIFY(QDir().mkpath(places.systems.front()));
    }
    static void makeProgram(const QString& path)
    {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        test::put(path, "#!/bin/sh\n");
        test::setMode(path, 0755);
    }
    void putOwn(const QByteArray& content) const
    {
        QVERIFY(QDir().mkpath(places.own));
        test::put(entry.path(), content);
    }
    void putMachines(const QByteArray& content) const
    {
        test::put(places.systems.front() + QLatin1Char('/') + kEntryName, content);
    }
    [[nodiscard]] QByteArray starting(const QString& path) const
    {
        return "[Desktop Entry]\nType=Application\nExec=\"" + path.toUtf8() + "\"\n";
    }
};

} // namespace

class TestAutostartEntry final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isMadeAndRemovedAgain()
    {
        const LoginDesk desk;
        QVERIFY(!desk.entry.isEnabled());
        QVERIFY(desk.entry.enable());
        QVERIFY(desk.entry.isEnabled());
        QCOMPARE(QFileInfo(desk.entry.path()).fileName(), kEntryName);
        const QByteArray content = test::contentOf(desk.entry.path());
        QVERIFY(content.startsWith("[Desktop Entry]\nType=Application\nName=Brindlecam\n"));
        QVERIFY(content.contains("\nExec=\"" + desk.program.toUtf8() + "\"\n"));
        QVERIFY(desk.entry.disable());
        QVERIFY(!desk.entry.isEnabled());
        QVERIFY(!QFileInfo::exists(desk.entry.path()));
        QVERIFY(desk.entry.disable());
    }

    void programsInOddPlacesAreStartedToo_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"un lugar", "100 %", "com\"illas", "$HOME", "barra\\s", "`x`"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void programsInOddPlacesAreStartedToo()
    {
        QFETCH(QString, name);
        LoginDesk desk;
        desk.places.program = desk.folder.filePath(name + QStringLiteral("/brindlecam"));
        LoginDesk::makeProgram(desk.places.program);
        const AutostartEntry entry(desk.places);
        QVERIFY(entry.enable());
        QVERIFY(entry.isEnabled());
        QVERIFY(QFile::remove(desk.places.program));
        QVERIFY(!entry.isEnabled()); // it was this program that was looked for
    }

    void onlyWhatASessionWouldStartCounts_data()
    {
        QTest::addColumn<QByteArray>("more");
        QTest::addColumn<bool>("enabled");
        const auto row = [](const char* name, const char* more, bool enabled) {
            QTest::newRow(name) << QByteArray(more) << enabled;
        };
        row("as it is", "", true);
        row("hidden", "Hidden=true\n", false);
        row("not hidden", "Hidden=false\n", true);
        row("switched off by GNOME", "X-GNOME-Autostart-enabled=false\n", false);
        row("with spaces", "Hidden = true\n", false);
        row("a remark", "#Hidden=true\n", true);
        row("switched off by MATE", "X-MATE-Autostart-enabled=false\n", false);
        row("for this desktop", "OnlyShowIn=KDE;XFCE;\n", true);
        row("for another one", "OnlyShowIn=KDE;\n", false);
        row("not for this one", "NotShowIn=XFCE;\n", false);
        row("not for another one", "NotShowIn=KDE;\n", true);
        row("a program to look for", "TryExec=sh\n", true);
        row("one that is not there", "TryExec=no-program-is-called-so\n", false);
        row("of another group", "[Desktop Action x]\nHidden=true\n", true);
    }
    void onlyWhatASessionWouldStartCounts()
    {
        QFETCH(QByteArray, more);
        QFETCH(bool, enabled);
        qputenv("XDG_CURRENT_DESKTOP", "ubuntu:XFCE");
        const LoginDesk desk;
        desk.putOwn(desk.starting(desk.program) + more);
        QCOMPARE(desk.entry.isEnabled(), enabled);
    }

    void aProgramThatIsGoneOrNoneAtAllIsNotStarted()
    {
        const LoginDesk desk;
        desk.putOwn(desk.starting(QStringLiteral("/nowhere/brindlecam")));
        QVERIFY(!desk.entry.isEnabled());
        desk.putOwn("[Desktop Entry]\nType=Application\n");
        QVERIFY(!desk.entry.isEnabled());
        desk.putOwn(QByteArray());
        QVERIFY(!desk.entry.isEnabled());
        desk.putOwn(QByteArray("\0\xff garbage", 10));
        QVERIFY(!desk.entry.isEnabled());
        desk.putOwn("[Desktop Entry]\nExec=no-program-is-called-so\n");
        QVERIFY(!desk.entry.isEnabled());
        desk.putOwn("[Desktop Entry]\nExec=sh -c x\n"); // by name, as packages do it
        QVERIFY(desk.entry.isEnabled());
    }

    void theUsersFileCountsBeforeTheMachines()
    {
        const LoginDesk desk;
        desk.putMachines(desk.starting(desk.program));
        QVERIFY(desk.entry.isEnabled());
        desk.putOwn("[Desktop Entry]\nHidden=true\n");
        QVERIFY(!desk.entry.isEnabled());
    }

    void theMachinesIsOverruledAndNotRemoved()
    {
        const LoginDesk desk;
        desk.putMachines(desk.starting(desk.program));
        QVERIFY(desk.entry.disable());
        QVERIFY(!desk.entry.isEnabled());
        QVERIFY(test::contentOf(desk.entry.path()).contains("Hidden=true"));
        QVERIFY(desk.entry.enable());
        QVERIFY(desk.entry.isEnabled());
    }

    void aFileInPlaceOfTheFolderIsAFailure()
    {
        const LoginDesk desk;
        QVERIFY(QDir().mkpath(QFileInfo(desk.places.own).path()));
        test::put(desk.places.own);
        QVERIFY(!desk.entry.enable());
        QVERIFY(!desk.entry.isEnabled());
        QVERIFY(desk.entry.disable());
    }

    void aReadOnlyFolderIsAFailure()
    {
        const LoginDesk desk;
        QVERIFY(QDir().mkpath(desk.places.own));
        {
            const test::LockedFolder locked(desk.places.own, desk.folder.path());
            QVERIFY(!desk.entry.enable());
        }
        QVERIFY(!desk.entry.isEnabled());
        QVERIFY(desk.entry.enable());
        {
            const test::LockedFolder locked(desk.places.own, desk.folder.path());
            QVERIFY(!desk.entry.disable());
        }
        QVERIFY(desk.entry.isEnabled());
    }

    void aLinkInItsPlaceIsReplacedAndWhatItPointsAtStays()
    {
        const LoginDesk desk;
        const QString target = desk.folder.filePath(QStringLiteral("somebody's"));
        test::put(target);
        QVERIFY(QDir().mkpath(desk.places.own));
        QVERIFY(QFile::link(target, desk.entry.path()));
        QVERIFY(desk.entry.enable());
        QCOMPARE(test::contentOf(target), QByteArray("by hand"));
        QVERIFY(desk.entry.isEnabled());
    }

    void isAskedAndChangedWhereADiskMayTakeItsTime()
    {
        const LoginDesk desk;
        test::GatedExecutor disk;
        LinuxLoginItem item(desk.places, disk.executor());
        std::optional<bool> enabled;
        std::optional<bool> failed;
        item.set(true, this, [&](const auto& error) { failed = error.has_value(); });
        QVERIFY(!desk.entry.isEnabled());
        disk.run(0);
        QVERIFY(!failed); // later, on the thread that asked
        test::sendAllPostedEvents();
        QCOMPARE(failed, false);
        item.ask(this, [&](bool is) { enabled = is; });
        disk.run(0);
        test::sendAllPostedEvents();
        QCOMPARE(enabled, true);
    }

    void whatCantBeWrittenIsNamed()
    {
        LoginDesk desk;
        QVERIFY(QDir().mkpath(QFileInfo(desk.places.own).path()));
        test::put(desk.places.own);
        LinuxLoginItem item(desk.places, [](const std::function<void()>& job) { job(); });
        QString message;
        item.set(true, this, [&](const auto& error) { message = error->message; });
        test::sendAllPostedEvents();
        QCOMPARE(message, QStringLiteral("No se pudo escribir “%1”.").arg(desk.entry.path()));
    }

    void whoHasGoneIsNotAnswered()
    {
        const LoginDesk desk;
        LinuxLoginItem item(desk.places, [](const std::function<void()>& job) { job(); });
        auto asker = std::make_unique<QObject>();
        bool answered = false;
        item.ask(asker.get(), [&](bool) { answered = true; });
        item.set(true, asker.get(), [&](const auto&) { answered = true; });
        asker.reset();
        test::sendAllPostedEvents();
        QVERIFY(!answered);
    }
};

BRINDLECAM_TEST(TestAutostartEntry);

} // namespace brindlecam

#include "tst_autostartentry.moc"
