// Covers LinuxFileOpener.
#include "platform/linux/LinuxFileOpener.h"
#include "platform/linux/SessionBus.h"
#include "support/TestCase.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <optional>

namespace brindlecam {

using namespace std::chrono_literals;

/// Another program's file manager on the session bus.
class FakeFileManager final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    enum class Manner { opens, refuses, sleeps };

    explicit FakeFileManager(Manner manner)
        : m_manner(manner)
        , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection))
    {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this,
                             QDBusConnection::ExportAllSlots);
        if (!m_bus.registerService(QStringLiteral("org.freedesktop.FileManager1")))
            qWarning("the file manager's name is taken");
    }
    ~FakeFileManager() override { QDBusConnection::disconnectFromBus(kConnection); }

    QStringList asked;

public Q_SLOTS:
    void ShowFolders(const QStringList& uris, const QString&)
    {
        asked << uris;
        if (m_manner == Manner::refuses)
            sendErrorReply(QDBusError::Failed, QStringLiteral("no window"));
        setDelayedReply(m_manner != Manner::opens);
    }
    void ShowItems(const QStringList& uris, const QString&)
    {
        asked << QStringLiteral("selected") << uris;
        if (m_manner == Manner::refuses)
            sendErrorReply(QDBusError::Failed, QStringLiteral("no window"));
        setDelayedReply(m_manner != Manner::opens);
    }

private:
    static inline const QString kConnection = QStringLiteral("fake file manager");
    const Manner m_manner;
    QDBusConnection m_bus;
};

/// Another program that shows files large, as GNOME has it.
class FakePreviewer final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.NautilusPreviewer")

public:
    FakePreviewer()
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection))
    {
        m_bus.registerObject(QStringLiteral("/org/gnome/NautilusPreviewer"), this,
                             QDBusConnection::ExportAllSlots);
        if (!m_bus.registerService(QStringLiteral("org.gnome.NautilusPreviewer")))
            qWarning("the previewer's name is taken");
    }
    ~FakePreviewer() override { QDBusConnection::disconnectFromBus(kConnection); }

    QStringList asked;

public Q_SLOTS:
    void ShowFile(const QString& uri, int, bool closeIfShown)
    {
        asked << uri << (closeIfShown ? QStringLiteral("or close") : QStringLiteral("stay"));
    }
    void Close() { asked << QStringLiteral("close"); }

private:
    static inline const QString kConnection = QStringLiteral("fake previewer");
    QDBusConnection m_bus;
};

class TestFileOpener final : public test::TestCase {
    Q_OBJECT

private:
    using Manner = FakeFileManager::Manner;

    QTemporaryDir m_folder;
    QByteArray m_path;
    std::optional<bool> m_opened;

    [[nodiscard]] QString inside(const char* name) const
    {
        return m_folder.filePath(QString::fromUtf8(name));
    }
    /// What the stand-in for xdg-open does; it notes what it was given first.
    void installOpener(const QByteArray& then)
    {
        QFile script(inside("bin/xdg-open"));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s' \"$1\" > '" + inside("given").toLocal8Bit() + "'\n" +
                     then + '\n');
        QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    [[nodiscard]] QByteArray given() const
    {
        QFile file(inside("given"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void open(LinuxFileOpener& opener)
    {
        m_opened.reset();
        opener.openFolder(inside("mis capturas"), this, [this](bool answer) { m_opened = answer; });
        QVERIFY2(!m_opened, "later, not at once");
    }
    [[nodiscard]] QString picture() const { return inside("mis capturas/una foto.png"); }
    void putPicture() const
    {
        QFile file(picture());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("PNG");
    }
    [[nodiscard]] static QString urlOf(const QString& path)
    {
        return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
    }
    [[nodiscard]] FileOpener::Done noting()
    {
        m_opened.reset();
        return [this](bool answer) { m_opened = answer; };
    }
    static bool hasBus() { return QDBusConnection::sessionBus().isConnected(); }

private Q_SLOTS:
    void initTestCase()
    {
        SessionBus::neverLaunch();
        m_path = qgetenv("PATH");
        cleanup();
    }
    void cleanup()
    {
        m_folder = QTemporaryDir();
        QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("bin")));
        QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("mis capturas")));
        qputenv("PATH", inside("bin").toLocal8Bit());
    }
    void cleanupTestCase() { qputenv("PATH", m_path); }

    void theFileManagerOnTheBusIsAskedFirst()
    {
        if (!hasBus())
            QSKIP("no session bus");
        installOpener("exit 0");
        FakeFileManager manager(Manner::opens);
        LinuxFileOpener opener;
        open(opener);
        QTRY_COMPARE(m_opened, std::optional(true));
        QCOMPARE(manager.asked, QStringList(QString::fromLatin1(
                                    QUrl::fromLocalFile(inside("mis capturas")).toEncoded())));
        QVERIFY(given().isEmpty());
    }

    void whereItDoesNotOpenTheDesktopsProgramDoes_data()
    {
        QTest::addColumn<Manner>("manner");
        QTest::newRow("refuses") << Manner::refuses;
        QTest::newRow("sleeps") << Manner::sleeps;
    }
    void whereItDoesNotOpenTheDesktopsProgramDoes()
    {
        if (!hasBus())
            QSKIP("no session bus");
        QFETCH(Manner, manner);
        installOpener("exit 0");
        FakeFileManager manager(manner);
        LinuxFileOpener opener({.answer = 100ms});
        open(opener);
        QTRY_COMPARE(m_opened, std::optional(true));
        QCOMPARE(manager.asked.size(), 1);
        QCOMPARE(given(), inside("mis capturas").toLocal8Bit());
    }

    void withoutOneTheDesktopsProgramIsTaken_data()
    {
        QTest::addColumn<QByteArray>("then");
        QTest::addColumn<bool>("opened");
        QTest::newRow("opens") << QByteArray("exit 0") << true;
        QTest::newRow("has nothing that could") << QByteArray("exit 3") << false;
        QTest::newRow("dies") << QByteArray("kill -9 $$") << false;
    }
    void withoutOneTheDesktopsProgramIsTaken()
    {
        QFETCH(QByteArray, then);
        QFETCH(bool, opened);
        installOpener(then);
        LinuxFileOpener opener;
        open(opener);
        QTRY_VERIFY(m_opened);
        QCOMPARE(*m_opened, opened);
        QCOMPARE(given(), inside("mis capturas").toLocal8Bit());
    }

    void withoutAnyProgramItIsSaid()
    {
        LinuxFileOpener opener;
        open(opener);
        QTRY_COMPARE(m_opened, std::optional(false));
    }

    void missingFoldersAreOfferedToNobody()
    {
        installOpener("exit 0");
        QVERIFY(QDir(m_folder.path()).rmdir(QStringLiteral("mis capturas")));
        LinuxFileOpener opener;
        open(opener);
        QTRY_COMPARE(m_opened, std::optional(false));
        QVERIFY(given().isEmpty());
    }

    void filesAreOpenedByTheProgramForTheirKind()
    {
        installOpener("exit 0");
        putPicture();
        LinuxFileOpener opener;
        opener.openFile(picture(), this, noting());
        QVERIFY(!m_opened);
        QTRY_COMPARE(m_opened, std::optional(true));
        QCOMPARE(given(), picture().toLocal8Bit());
        QVERIFY(QFile::remove(picture()));
        opener.openFile(picture(), this, noting());
        QTRY_COMPARE(m_opened, std::optional(false));
    }

    void filesAreShownSelectedInTheirFolder()
    {
        if (!hasBus())
            QSKIP("no session bus");
        installOpener("exit 0");
        putPicture();
        FakeFileManager manager(Manner::opens);
        LinuxFileOpener opener;
        opener.reveal(picture(), this, noting());
        QTRY_COMPARE(m_opened, std::optional(true));
        QCOMPARE(manager.asked, (QStringList{QStringLiteral("selected"), urlOf(picture())}));
        QVERIFY(given().isEmpty());
    }

    void whereNobodySelectsThemTheirFolderIsOpened()
    {
        installOpener("exit 0");
        putPicture();
        LinuxFileOpener opener;
        opener.reveal(picture(), this, noting());
        QTRY_COMPARE(m_opened, std::optional(true));
        QCOMPARE(given(), inside("mis capturas").toLocal8Bit());
        opener.reveal(inside("none.png"), this, noting());
        QTRY_COMPARE(m_opened, std::optional(false));
    }

    void previewsAreTheDesktopsWhereItHasAny()
    {
        if (!hasBus())
            QSKIP("no session bus");
        putPicture();
        FakePreviewer previewer;
        LinuxFileOpener opener;
        opener.endPreview();
        opener.preview(picture(), this, noting());
        QTRY_COMPARE(m_opened, std::optional(true));
        const QStringList shown{urlOf(picture()), QStringLiteral("stay")};
        QCOMPARE(previewer.asked, shown);
        opener.endPreview();
        QTRY_COMPARE(previewer.asked, shown + QStringList{QStringLiteral("close")});
        opener.endPreview();
        opener.preview(picture(), this, noting());
        QTRY_COMPARE(m_opened, std::optional(true));
        QCOMPARE(previewer.asked.size(), 5); // closed once
    }

    void aPreviewThatNobodyWantsAnyMoreIsClosedWhenItComes()
    {
        if (!hasBus())
            QSKIP("no session bus");
        putPicture();
        FakePreviewer previewer;
        LinuxFileOpener opener;
        opener.preview(picture(), this, noting());
        opener.endPreview();
        QTRY_COMPARE(previewer.asked.size(), 3);
        QCOMPARE(previewer.asked.back(), QStringLiteral("close"));
        // Not where another one has been asked for since.
        previewer.asked.clear();
        opener.preview(picture(), this, noting());
        opener.endPreview();
        opener.preview(picture(), this, noting());
        QTRY_COMPARE(m_opened, std::optional(true));
        QVERIFY(!previewer.asked.contains(QStringLiteral("close")));
        opener.endPreview();
        QTRY_COMPARE(previewer.asked.back(), QStringLiteral("close"));
    }

    void itIsSaidWhenThePreviewerGoes()
    {
        if (!hasBus())
            QSKIP("no session bus");
        putPicture();
        LinuxFileOpener opener;
        {
            const FakePreviewer previewer;
            opener.preview(picture(), this, noting());
            QTRY_COMPARE(m_opened, std::optional(true));
        }
        QTRY_COMPARE(m_opened, std::optional(false));
        FakePreviewer another;
        opener.endPreview(); // there is none to be closed
        opener.preview(picture(), this, noting());
        QTRY_COMPARE(m_opened, std::optional(true));
        QCOMPARE(another.asked.size(), 2);
    }

    void withoutAPreviewerItIsSaid()
    {
        putPicture();
        LinuxFileOpener opener;
        opener.preview(picture(), this, noting());
        QVERIFY(!m_opened);
        QTRY_COMPARE(m_opened, std::optional(false));
        opener.endPreview();
    }

    void aProgramThatStaysOpenOutlivesUs()
    {
        installOpener("echo $$ > \"${0%/*}/../pid\"\nread forever < \"${0%/*}/../pipe\"");
        QCOMPARE(mkfifo(inside("pipe").toLocal8Bit().constData(), 0600), 0);
        QFile note(inside("pid"));
        {
            LinuxFileOpener opener({.start = 200ms});
            open(opener);
            QTRY_COMPARE(m_opened, std::optional(true));
            QTRY_VERIFY(note.exists() && note.size() > 1);
        }
        QVERIFY(note.open(QIODevice::ReadOnly));
        const pid_t pid = note.readAll().trimmed().toInt();
        QVERIFY(pid > 1);
        QCOMPARE(kill(pid, 0), 0);
        QCOMPARE(getsid(pid), pid);
        kill(pid, SIGKILL);
    }

    void whoeverIsGoneHearsNothing()
    {
        installOpener("exit 0");
        LinuxFileOpener opener;
        bool heard = false;
        {
            QObject asker;
            opener.openFolder(inside("mis capturas"), &asker, [&heard](bool) { heard = true; });
        }
        open(opener); // by then the first answer would be there
        QTRY_VERIFY(m_opened);
        QVERIFY(!heard);
    }
};

BRINDLECAM_TEST(TestFileOpener);

} // namespace brindlecam

#include "tst_file_opener.moc"
