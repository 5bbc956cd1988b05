#include "RuntimeFolders.h"
#include "shell/InstanceProtocol.h"
#include "support/TestCase.h"

#include <array>

namespace brindlecam {

namespace {

QByteArray displayId(const char* display)
{
    std::array<char, BRINDLECAM_DISPLAY_ID_ROOM> id{};
    brindlecam_display_id(display, id.data());
    return id.data();
}

/// Where the copies would meet, as a program in C prints it.
QString paths(const test::RuntimeFolders& around)
{
    return around.run(QStringLiteral(BRINDLECAM_MEETING_PATHS)).output;
}

/// The folder alone; empty for nowhere.
QString folder(const test::RuntimeFolders& around)
{
    const QString printed = paths(around);
    return printed == QLatin1String("nowhere\n")
               ? QString()
               : printed.section(QLatin1String("/brindlecam-:"), 0, 0);
}

} // namespace

class TestInstanceProtocol final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aDisplayIsNamedWithoutItsScreen_data()
    {
        QTest::addColumn<QByteArray>("display");
        QTest::addColumn<QByteArray>("id");
        QTest::newRow("local") << QByteArray(":1") << QByteArray(":1");
        QTest::newRow("its first screen") << QByteArray(":1.0") << QByteArray(":1");
        QTest::newRow("another screen") << QByteArray(":1.12") << QByteArray(":1");
        QTest::newRow("another display") << QByteArray(":12") << QByteArray(":12");
        QTest::newRow("the long form of local") << QByteArray("unix:1.0") << QByteArray(":1");
        QTest::newRow("remote") << QByteArray("host:1.0") << QByteArray("host:1");
        QTest::newRow("with a domain") << QByteArray("a.example:0") << QByteArray("a.example:0");
        QTest::newRow("by address") << QByteArray("127.0.0.1:10.0") << QByteArray("127.0.0.1:10");
        QTest::newRow("version 6") << QByteArray("[::1]:0.0") << QByteArray("%5B::1%5D:0");
        QTest::newRow("with a transport") << QByteArray("tcp/host:1") << QByteArray("tcp%2Fhost:1");
        QTest::newRow("a path") << QByteArray("/a/org.x:0") << QByteArray("%2Fa%2Forg.x:0");
        QTest::newRow("a path and screen") << QByteArray("/a/b:0.1") << QByteArray("%2Fa%2Fb:0");
        QTest::newRow("a path alone") << QByteArray("/a/X1.0") << QByteArray("%2Fa%2FX1.0");
        QTest::newRow("Wayland's") << QByteArray("wayland-0") << QByteArray("wayland-0");
        QTest::newRow("no number before the dot") << QByteArray("a:b.0") << QByteArray("a:b.0");
        QTest::newRow("no screen after it") << QByteArray(":1.") << QByteArray(":1.");
        QTest::newRow("no display") << QByteArray() << QByteArray();
        QTest::newRow("way up") << QByteArray("../../x") << QByteArray("..%2F..%2Fx");
        QTest::newRow("odd bytes") << QByteArray("a b\n\xff#:1") << QByteArray("a%20b%0A%FF%23:1");
        QTest::newRow("just short enough")
            << QByteArray(30, 'a') + ":1" << QByteArray(30, 'a') + ":1";
    }
    void aDisplayIsNamedWithoutItsScreen()
    {
        QFETCH(QByteArray, display);
        QTEST(displayId(display.constData()), "id");
    }

    void longNamesOfDisplaysStayShortAndDiffer()
    {
        const QByteArray longName = "/private/var/folders/zz/org.xquartz:0";
        const QByteArray id = displayId(longName.constData());
        QCOMPARE(id.size(), 17);
        QVERIFY(id.startsWith('#'));
        QCOMPARE(displayId((longName + ".0").constData()), id);
        QVERIFY(displayId((longName + "1").constData()) != id);
        // Short, but not once it is escaped.
        QCOMPARE(displayId(QByteArray(11, '/').constData()).size(), 17);
        QCOMPARE(displayId(QByteArray(31, 'a') + ":1").size(), 17);
        // FNV-1a is a fixed function: other programs have to find the same name.
        QCOMPARE(displayId(QByteArray(33, 'a')), QByteArray("#c0c1caa84f11146c"));
    }

    void theFilesLieInTheRuntimeFolder()
    {
        test::RuntimeFolders around;
        around.set("DISPLAY", QStringLiteral(":2.0"));
        QCOMPARE(paths(around), QStringLiteral("%1/brindlecam-:2.socket\n%1/brindlecam-:2.lock\n")
                                    .arg(around.runtime()));
        around.unset("DISPLAY");
        QVERIFY(paths(around).startsWith(around.runtime() + QStringLiteral("/brindlecam-.socket")));
    }

    void aRuntimeFolderThatWillNotDoIsReplaced_data()
    {
        QTest::addColumn<QString>("runtime");
        QTest::newRow("not set") << QString();
        QTest::newRow("empty") << QStringLiteral("");
        QTest::newRow("missing") << QStringLiteral("%1/missing");
        QTest::newRow("relative") << QStringLiteral("run");
        QTest::newRow("a file") << QStringLiteral("%1/file");
        QTest::newRow("writable by others") << QStringLiteral("%1/open");
        QTest::newRow("somebody else's") << QStringLiteral("%1/theirs");
        QTest::newRow("too long") << QStringLiteral("%1/") + QString(90, QLatin1Char('l'));
    }
    void aRuntimeFolderThatWillNotDoIsReplaced()
    {
        QFETCH(QString, runtime);
        test::RuntimeFolders around;
        const QString path =
            runtime.contains(QLatin1String("%1")) ? runtime.arg(around.temporary()) : runtime;
        if (path.endsWith(QLatin1String("theirs"))) {
            constexpr uid_t kNobody = 65534;
            test::RuntimeFolders::makeFolder(path, 0755);
            if (::chown(QFile::encodeName(path).constData(), kNobody, kNobody) != 0)
                QSKIP("only root can give a folder away");
        } else if (path.endsWith(QLatin1String("file"))) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
        } else if (path.endsWith(QLatin1String("open"))) {
            test::RuntimeFolders::makeFolder(path, 0770);
        } else if (path.endsWith(QLatin1Char('l'))) {
            test::RuntimeFolders::makeFolder(path, 0700);
        }
        if (runtime.isNull())
            around.unset("XDG_RUNTIME_DIR");
        else
            around.set("XDG_RUNTIME_DIR", path);
        QCOMPARE(folder(around), around.fallback());
        QCOMPARE(QFile::permissions(around.fallback()) & QFile::Permissions(0x77),
                 QFile::Permissions());
    }

    void aTemporaryFolderThatIsNotOursAloneIsNotUsed_data()
    {
        QTest::addColumn<bool>("link");
        QTest::newRow("others may write there") << false;
        QTest::newRow("a link in its place") << true;
    }
    void aTemporaryFolderThatIsNotOursAloneIsNotUsed()
    {
        QFETCH(bool, link);
        test::RuntimeFolders around;
        around.unset("XDG_RUNTIME_DIR");
        if (link)
            QVERIFY(QFile::link(around.runtime(), around.fallback()));
        else
            test::RuntimeFolders::makeFolder(around.fallback(), 0777);
        QCOMPARE(folder(around), QString());
    }
};

BRINDLECAM_TEST(TestInstanceProtocol);

} // namespace brindlecam

#include "tst_instanceprotocol.moc"
