#include "desktop/support/x11/X11Hardware.h"
#include "desktop/support/x11/XServer.h"
#include "support/TestCase.h"
#include "x11/ServerForMyself.h"
#include "x11/ports/Frames.h"

#include <linux/sockios.h>
#include <signal.h>
#include <sys/ioctl.h>

#include <QDir>

#include <optional>
#include <set>

namespace brindlecam {

using namespace std::chrono_literals;

namespace {

constexpr QRect kOnTheRight(900, 200, 300, 200);
constexpr QRect kOnTheLeft(100, 100, 300, 200);
constexpr std::chrono::milliseconds kForEver = 24h;

/// Another X server than Qt's, which may come to harm. Frames that are opened while this lives are
/// of it.
class DoomedServer final {
public:
    DoomedServer() { qputenv("DISPLAY", m_server.display().toLatin1()); }
    ~DoomedServer()
    {
        resume(); // it could not end otherwise
        qputenv("DISPLAY", m_usual);
    }
    DoomedServer(const DoomedServer&) = delete;
    DoomedServer& operator=(const DoomedServer&) = delete;

    [[nodiscard]] QString display() const { return m_server.display(); }
    /// It reads and answers nothing any more.
    void halt() { send(SIGSTOP); }
    void resume() { send(SIGCONT); }
    void die() { send(SIGKILL); }

private:
    void send(int signal) { ::kill(static_cast<pid_t>(m_server.pid()), signal); }

    const QByteArray m_usual = qgetenv("DISPLAY");
    desktop::XServer m_server{{.pixels = {1600, 900}}};
};

std::set<int> openFiles()
{
    std::set<int> files;
    const QDir folder(QStringLiteral("/proc/self/fd"));
    for (const QString& name : folder.entryList(QDir::NoDotAndDotDot | QDir::System))
        files.insert(name.toInt());
    return files;
}

/// Frames whose questions can be seen on their way.
class WatchedFrames final {
public:
    explicit WatchedFrames(std::chrono::milliseconds patience)
    {
        const std::set<int> before = openFiles();
        frames = test::openFrames(kOnTheLeft, patience);
        for (const int file : openFiles()) {
            if (!before.contains(file))
                m_added.insert(file);
        }
    }

    std::unique_ptr<RegionFrames> frames;

    /// Whether the server has yet to read something.
    [[nodiscard]] bool isAsking() const
    {
        for (const int file : m_added) {
            int bytes = 0;
            if (::ioctl(file, SIOCOUTQ, &bytes) == 0 && bytes > 0)
                return true;
        }
        return false;
    }

private:
    std::set<int> m_added;
};

/// An error that says something.
bool failed(const test::NextFrame& next)
{
    return !next && !next.error().message.isEmpty();
}

bool came(const test::NextFrame& next)
{
    return next && next.value() && !next.value()->image.isNull();
}

bool wasStopped(const test::NextFrame& next)
{
    return next && !next.value();
}

} // namespace

/// What becomes of frames when a screen, the server or whoever wants them goes.
class TestRegionFramesEnd final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void screenThatGoesIsAnErrorUntilItIsBack()
    {
        const DoomedServer server;
        desktop::X11Hardware hardware(server.display());
        const desktop::Monitor left{QStringLiteral("LEFT"), {0, 0, 800, 600}};
        const desktop::Monitor right{QStringLiteral("RIGHT"), {800, 100, 640, 480}};
        hardware.setMonitors({left, right});
        const auto frames = test::openFrames(kOnTheRight);
        QVERIFY(frames);
        QVERIFY(came(test::awaitNext(*frames)));
        hardware.removeMonitor(right.name);
        QVERIFY(failed(test::awaitNext(*frames)));
        hardware.setMonitor(right);
        QVERIFY(came(test::awaitNext(*frames)));
    }

    void desktopThatShrinksIsAnErrorWhereItIsGone()
    {
        const DoomedServer server;
        const auto lost = test::openFrames(kOnTheRight);
        const auto kept = test::openFrames(kOnTheLeft);
        QVERIFY(lost && kept);
        QVERIFY(came(test::awaitNext(*lost)));
        desktop::X11Hardware(server.display()).setMode({800, 600});
        QVERIFY(failed(test::awaitNext(*lost)));
        QVERIFY(failed(test::awaitNext(*lost)));
        QVERIFY(came(test::awaitNext(*kept)));
    }

    void serverThatIsGoneIsAnErrorForGood()
    {
        DoomedServer server;
        const auto frames = test::openFrames(kOnTheLeft);
        QVERIFY(frames);
        QVERIFY(came(test::awaitNext(*frames)));
        server.die();
        QVERIFY(failed(test::awaitNext(*frames)));
        QVERIFY(failed(test::awaitNext(*frames)));
    }

    void serverThatGoesWhileItIsAwaitedIsAnError()
    {
        DoomedServer server;
        const WatchedFrames watched(kForEver);
        QVERIFY(watched.frames);
        server.halt();
        auto next = test::readNext(*watched.frames);
        QTRY_VERIFY(watched.isAsking());
        server.die();
        QVERIFY(failed(next.get()));
    }

    void serverThatIsSilentIsAwaitedForAWhileOnly()
    {
        DoomedServer server;
        const auto frames = test::openFrames(kOnTheLeft, 50ms);
        QVERIFY(frames);
        server.halt();
        QVERIFY(failed(test::awaitNext(*frames)));
        server.resume();
        QVERIFY(failed(test::awaitNext(*frames)));
    }

    void clientThatHasTheServerForItselfIsWaitedFor()
    {
        const WatchedFrames watched(kForEver);
        QVERIFY(watched.frames);
        std::optional<test::ServerForMyself> mine(std::in_place);
        auto next = test::readNext(*watched.frames);
        QTRY_VERIFY(watched.isAsking());
        mine.reset();
        QVERIFY(came(next.get()));
    }

    void noServerIsAnErrorAtOnce()
    {
        const QByteArray usual = qgetenv("DISPLAY");
        qputenv("DISPLAY", "/nonexistent:1");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^no frames: .")));
        const auto frames = test::openFrames(kOnTheLeft);
        qputenv("DISPLAY", usual);
        QVERIFY(!frames);
    }

    void nothingComesOnceItIsStopped()
    {
        const auto frames = test::openFrames(kOnTheLeft);
        QVERIFY(frames);
        QVERIFY(came(test::awaitNext(*frames)));
        frames->stop();
        QVERIFY(wasStopped(test::awaitNext(*frames)));
        frames->stop();
        QVERIFY(wasStopped(test::awaitNext(*frames)));
    }

    void stoppingEndsWhatIsUnderWay()
    {
        DoomedServer server;
        const WatchedFrames watched(kForEver);
        QVERIFY(watched.frames);
        server.halt();
        auto next = test::readNext(*watched.frames);
        QTRY_VERIFY(watched.isAsking());
        watched.frames->stop();
        QVERIFY(wasStopped(next.get()));
    }

    void destroyingEndsWhatIsUnderWay()
    {
        DoomedServer server;
        WatchedFrames watched(kForEver);
        QVERIFY(watched.frames);
        server.halt();
        auto next = test::readNext(*watched.frames);
        QTRY_VERIFY(watched.isAsking());
        watched.frames.reset();
        QVERIFY(wasStopped(next.get()));
    }

    void othersMayDrawAgainOnceItIsDestroyed()
    {
        DoomedServer server;
        WatchedFrames watched(kForEver);
        QVERIFY(watched.frames);
        server.halt(); // what it reads later is a request to have the server alone, and the end
        auto next = test::readNext(*watched.frames);
        QTRY_VERIFY(watched.isAsking());
        watched.frames.reset();
        QVERIFY(wasStopped(next.get()));
        server.resume();
        const auto others = test::openFrames(kOnTheLeft);
        QVERIFY(others);
        QVERIFY(came(test::awaitNext(*others)));
    }

    void framesOutliveTheirSource()
    {
        auto frames = test::openFrames(kOnTheLeft);
        QVERIFY(frames);
        const QImage image = test::nextImage(*frames);
        const QImage copy = image.copy();
        frames.reset();
        QCOMPARE(image, copy);
    }
};

BRINDLECAM_TEST(TestRegionFramesEnd);

} // namespace brindlecam

#include "tst_region_frames_end.moc"
