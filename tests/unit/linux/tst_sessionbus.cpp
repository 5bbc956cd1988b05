#include "platform/linux/SessionBus.h"
#include "support/TestCase.h"

#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

namespace brindlecam {

/// What becomes of the bus's address. Changes the environment of this process and puts it back.
class TestSessionBus final : public test::TestCase {
    Q_OBJECT

private:
    static constexpr const char* kAddress = "DBUS_SESSION_BUS_ADDRESS";
    static constexpr const char* kRuntime = "XDG_RUNTIME_DIR";

    QByteArray m_address;
    QByteArray m_runtime;

    static void listenAt(const QByteArray& path)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        QVERIFY(path.size() < qsizetype(sizeof address.sun_path));
        std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        close(socket); // the name stays
    }

    static bool childrenHaveAddress()
    {
        return SessionBus::environmentOfOthers().contains(QString::fromLatin1(kAddress));
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_address = qgetenv(kAddress);
        m_runtime = qgetenv(kRuntime);
    }
    void cleanup()
    {
        for (const auto& [name, value] :
             {std::pair(kAddress, m_address), std::pair(kRuntime, m_runtime)}) {
            if (value.isEmpty())
                qunsetenv(name);
            else
                qputenv(name, value);
        }
    }

    void withoutAnyNobodyFindsOneAndOthersMayDoAsTheyLike_data()
    {
        QTest::addColumn<bool>("empty");
        QTest::addColumn<bool>("file");
        QTest::newRow("unset") << false << false;
        QTest::newRow("empty") << true << false;
        QTest::newRow("file in the socket's place") << false << true;
    }
    void withoutAnyNobodyFindsOneAndOthersMayDoAsTheyLike()
    {
        QFETCH(bool, empty);
        QFETCH(bool, file);
        const QTemporaryDir folder;
        qputenv(kRuntime, folder.path().toLocal8Bit());
        qunsetenv(kAddress);
        if (empty)
            qputenv(kAddress, "");
        QFile other(folder.filePath(QStringLiteral("bus")));
        QVERIFY(!file || other.open(QIODevice::WriteOnly));
        SessionBus::neverLaunch();
        QVERIFY(!qgetenv(kAddress).isEmpty());
        QVERIFY(!childrenHaveAddress());
    }

    void anAddressIsLeftAlone()
    {
        qputenv(kAddress, "unix:path=/somewhere");
        SessionBus::neverLaunch();
        QCOMPARE(qgetenv(kAddress), QByteArray("unix:path=/somewhere"));
        QVERIFY(childrenHaveAddress());
    }

    void theSocketOfTheRuntimeFolderIsLeftToTheLibraries()
    {
        const QTemporaryDir folder;
        qputenv(kRuntime, folder.path().toLocal8Bit());
        qunsetenv(kAddress);
        listenAt(folder.filePath(QStringLiteral("bus")).toLocal8Bit());
        SessionBus::neverLaunch();
        QVERIFY(!qEnvironmentVariableIsSet(kAddress));
    }
};

BRINDLECAM_TEST(TestSessionBus);

} // namespace brindlecam

#include "tst_sessionbus.moc"
