#include "platform/linux/x11/X11Pasteboard.h"
#include "support/TestCase.h"
#include "x11/InputClient.h"
#include "x11/SelectionReader.h"

#include "platform/linux/x11/X11.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSemaphore>
#include <QThreadPool>

#include <atomic>
#include <memory>
#include <thread>

namespace brindlecam {

using test::run;
using test::SelectionReader;

namespace {

constexpr qsizetype kMega = 1024 * 1024;

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator generator(17);
    auto* words = reinterpret_cast<quint32*>(bytes.data());
    generator.fillRange(words, size / 4);
    return bytes;
}

void onThePool(std::function<void()> work)
{
    QThreadPool::globalInstance()->start(std::move(work));
}

QByteArray nothing()
{
    return {};
}

QByteArray pastedByXclip(const QString& target)
{
    QProcess xclip;
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-out"),
                 QStringLiteral("-target"), target});
    xclip.waitForFinished();
    return xclip.readAllStandardOutput();
}

bool copiedByXclip(const QString& text)
{
    return run(
        QStringLiteral("sh"),
        {QStringLiteral("-c"),
         QStringLiteral("printf %s '%1' | xclip -selection clipboard > /dev/null 2>&1").arg(text)});
}

/// Wake-ups so far of the thread that owns the clipboard.
int wakeUps()
{
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile name(tasks.filePath(task + QStringLiteral("/comm")));
        QFile status(tasks.filePath(task + QStringLiteral("/status")));
        if (!name.open(QIODevice::ReadOnly) || name.readAll().trimmed() != "clipboard" ||
            !status.open(QIODevice::ReadOnly))
            continue;
        static const QRegularExpression count(
            QStringLiteral("\nvoluntary_ctxt_switches:\\s*(\\d+)"));
        return count.match(QString::fromLatin1(status.readAll())).captured(1).toInt();
    }
    return -1;
}

/// Private memory in bytes.
qint64 privateMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    static const QRegularExpression size(QStringLiteral("RssAnon:\\s*(\\d+) kB"));
    return size.match(QString::fromLatin1(status.readAll())).captured(1).toLongLong() * 1024;
}

/// A clipboard manager that keeps what it is asked to keep: on its own thread, because the program
/// that quits waits for it.
class FakeManager final {
public:
    FakeManager()
    {
        m_thread = std::thread([this] { serve(); });
        m_owns.acquire();
    }
    ~FakeManager() { m_thread.join(); }

    QList<QByteArray> asked;
    std::optional<QByteArray> kept;

private:
    void serve()
    {
        SelectionReader client;
        client.own("CLIPBOARD_MANAGER");
        m_owns.release();
        const x11::Owned<xcb_generic_event_t> event(
            client.waitFor(XCB_SELECTION_REQUEST, [](auto*) { return true; }));
        if (!event)
            return;
        const auto& request = reinterpret_cast<xcb_selection_request_event_t&>(*event);
        for (const xcb_atom_t target : client.atomsOf(request.requestor, request.property))
            asked.push_back(client.nameOf(target));
        if (!asked.isEmpty())
            kept = client.read(asked.front().constData());
        client.own("CLIPBOARD");
        xcb_selection_notify_event_t notice{};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.requestor = request.requestor;
        notice.selection = request.selection;
        notice.target = request.target;
        notice.property = request.property;
        xcb_send_event(client.connection(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&notice));
        xcb_flush(client.connection());
        // Gone, and with it the clipboard, only when the last request was answered.
        (void)client.atom("CLIPBOARD");
    }

    QSemaphore m_owns;
    std::thread m_thread;
};

} // namespace

class TestX11Pasteboard final : public test::TestCase {
    Q_OBJECT

private:
    std::unique_ptr<X11Pasteboard> m_pasteboard;

private Q_SLOTS:
    void initTestCase() { m_pasteboard = std::make_unique<X11Pasteboard>(onThePool); }
    void cleanupTestCase() { m_pasteboard.reset(); }

    void pictureIsReadByOthers_data()
    {
        QTest::addColumn<qsizetype>("size");
        QTest::newRow("20 bytes") << qsizetype(20);
        QTest::newRow("one chunk exactly") << qsizetype(256 * 1024);
        QTest::newRow("a byte more") << qsizetype(256 * 1024 + 4);
        QTest::newRow("whole chunks") << 2 * kMega;
        QTest::newRow("30 MB") << 30 * kMega;
    }
    void pictureIsReadByOthers()
    {
        QFETCH(qsizetype, size);
        const QByteArray png = noise(size);
        QVERIFY(m_pasteboard->setPicture(png, nothing));
        SelectionReader reader;
        QVERIFY(reader.read("image/png") == png);
        QVERIFY(pastedByXclip(QStringLiteral("image/png")) == png);
    }

    void offersPngBeforeTiff()
    {
        QVERIFY(m_pasteboard->setPicture("png", nothing));
        SelectionReader reader;
        const QList<QByteArray> expected{"TARGETS",      "TIMESTAMP", "MULTIPLE",
                                         "SAVE_TARGETS", "image/png", "image/tiff"};
        QCOMPARE(reader.targets(), expected);
        QVERIFY(m_pasteboard->setPicture({}, nothing));
        QVERIFY(!reader.targets().contains("image/png"));
        QVERIFY(!reader.read("image/png"));
        QVERIFY(!reader.read("UTF8_STRING"));
    }

    void newestContentWins()
    {
        SelectionReader reader;
        for (int i = 0; i < 50; ++i) {
            const QByteArray png = "picture " + QByteArray::number(i);
            QVERIFY(m_pasteboard->setPicture(png, nothing));
            QCOMPARE(reader.read("image/png"), png);
        }
    }

    void takesOverFromAnotherProgramAndLosesToIt()
    {
        SelectionReader reader;
        for (int i = 0; i < 5; ++i) {
            QVERIFY(copiedByXclip(QStringLiteral("theirs")));
            QTRY_COMPARE(reader.read("UTF8_STRING"), QByteArray("theirs"));
            QVERIFY(m_pasteboard->setPicture("ours", nothing));
            QCOMPARE(reader.read("image/png"), QByteArray("ours"));
        }
    }

    void textIsReadInEveryKind_data()
    {
        QTest::addColumn<QByteArray>("target");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray utf8("ma\u00f1ana \u2192 5 \u20ac");
        QTest::newRow("UTF8_STRING") << QByteArray("UTF8_STRING") << utf8;
        QTest::newRow("text/plain") << QByteArray("text/plain") << utf8;
        QTest::newRow("with charset") << QByteArray("text/plain;charset=utf-8") << utf8;
        QTest::newRow("TEXT") << QByteArray("TEXT") << utf8;
        QTest::newRow("Latin 1 as far as it goes") << QByteArray("STRING")
                                                   << QByteArray("ma\xf1"
                                                                 "ana ? 5 ?");
    }
    void textIsReadInEveryKind()
    {
        QFETCH(QByteArray, target);
        QVERIFY(m_pasteboard->setText(QStringLiteral("mañana → 5 €")));
        SelectionReader reader;
        QTEST(reader.read(target.constData()).value_or("refused"), "bytes");
    }

    void tiffIsMadeOnceWhenFirstAskedForAndNobodyWaitsForIt()
    {
        auto gate = std::make_shared<QSemaphore>();
        auto made = std::make_shared<std::atomic_int>(0);
        QVERIFY(m_pasteboard->setPicture("png", [gate, made] {
            ++*made;
            gate->acquire();
            return QByteArray("tiff");
        }));
        SelectionReader first;
        SelectionReader second;
        SelectionReader third;
        QCOMPARE(third.read("image/png"), QByteArray("png"));
        QCOMPARE(made->load(), 0);
        first.ask("image/tiff");
        second.ask("image/tiff");
        QCOMPARE(third.read("image/png"), QByteArray("png"));
        QTRY_COMPARE(made->load(), 1);
        gate->release();
        QCOMPARE(first.answer(), QByteArray("tiff"));
        QCOMPARE(second.answer(), QByteArray("tiff"));
        QCOMPARE(third.read("image/tiff"), QByteArray("tiff"));
        QCOMPARE(made->load(), 1);
    }

    void tiffThatCannotBeMadeIsRefused()
    {
        QVERIFY(m_pasteboard->setPicture("png", nothing));
        SelectionReader reader;
        QVERIFY(!reader.read("image/tiff"));
        QVERIFY(!reader.read("image/tiff"));
    }

    void tiffAskedForBeforeALossStillComes()
    {
        auto gate = std::make_shared<QSemaphore>();
        QVERIFY(m_pasteboard->setPicture("png", [gate] {
            gate->acquire();
            return QByteArray("tiff");
        }));
        SelectionReader reader;
        reader.ask("image/tiff");
        SelectionReader other;
        QCOMPARE(other.read("image/png"), QByteArray("png"));
        QVERIFY(m_pasteboard->setText(QStringLiteral("newer")));
        gate->release();
        QCOMPARE(reader.answer(), QByteArray("tiff"));
    }

    void severalAreAskedForAtOnce()
    {
        QVERIFY(m_pasteboard->setPicture("png", [] { return QByteArray("tiff"); }));
        SelectionReader reader;
        const QList<std::optional<QByteArray>> expected{QByteArray("png"), QByteArray("tiff"),
                                                        std::nullopt};
        QCOMPARE(reader.readMultiple({"image/png", "image/tiff", "image/bmp"}), expected);
    }

    void transferFinishesWithTheContentItBeganWith()
    {
        const QByteArray older = noise(3 * kMega);
        QVERIFY(m_pasteboard->setPicture(older, nothing));
        SelectionReader slow;
        slow.ask("image/png");
        QVERIFY(slow.beginChunks());
        const QByteArray newer = noise(2 * kMega);
        QVERIFY(m_pasteboard->setPicture(newer, nothing));
        SelectionReader quick;
        QVERIFY(quick.read("image/png") == newer);
        QVERIFY(slow.finishChunks() == older);
        QVERIFY(slow.read("image/png") == newer);
    }

    void requestorThatDiesDoesNoHarm()
    {
        const QByteArray png = noise(4 * kMega);
        QVERIFY(m_pasteboard->setPicture(png, nothing));
        for (int i = 0; i < 3; ++i) {
            SelectionReader mortal;
            mortal.ask("image/png");
            QVERIFY(mortal.beginChunks());
            mortal.die();
        }
        // Connected before the other dies: the server gives a new client the dead one's window ids,
        // and with them what was meant for it.
        SelectionReader reader;
        SelectionReader hasty;
        hasty.ask("image/png");
        hasty.die();
        QVERIFY(reader.read("image/png") == png);
    }

    void sleepsWhenNobodyAsks()
    {
        QVERIFY(m_pasteboard->setPicture(noise(2 * kMega), nothing));
        SelectionReader reader;
        QVERIFY(reader.read("image/png"));
        QTest::qWait(200);
        const int before = wakeUps();
        QVERIFY(before > 0);
        QTest::qWait(1000);
        QCOMPARE(wakeUps(), before);
    }

    void memoryIsGivenBackAfterALoss()
    {
        QVERIFY(m_pasteboard->setText(QStringLiteral("small")));
        const qint64 before = privateMemory();
        QVERIFY(m_pasteboard->setPicture(noise(48 * kMega), nothing));
        QVERIFY(privateMemory() > before + 40 * kMega);
        QVERIFY(copiedByXclip(QStringLiteral("theirs")));
        QTRY_VERIFY(privateMemory() < before + 4 * kMega);
    }

    void managerKeepsThePictureAndIsAskedForNothingThatMustBeMade()
    {
        const QByteArray png = noise(5 * kMega);
        QVERIFY(m_pasteboard->setPicture(png, nothing));
        FakeManager manager;
        m_pasteboard->handOver();
        // The manager has answered, so its thread is at its end.
        QTRY_VERIFY(manager.kept.has_value());
        QCOMPARE(manager.asked, QList<QByteArray>{"image/png"});
        QVERIFY(manager.kept == png);
    }

    void withoutAManagerHandingOverTakesNoTime()
    {
        QVERIFY(m_pasteboard->setPicture("png", nothing));
        QElapsedTimer clock;
        clock.start();
        m_pasteboard->handOver();
        QVERIFY(clock.elapsed() < 500);
        SelectionReader reader;
        QCOMPARE(reader.read("image/png"), QByteArray("png"));
    }

    void silentManagerIsWaitedForTwoSeconds()
    {
        QVERIFY(m_pasteboard->setPicture("png", nothing));
        SelectionReader manager;
        QVERIFY(manager.own("CLIPBOARD_MANAGER"));
        QElapsedTimer clock;
        clock.start();
        m_pasteboard->handOver();
        QVERIFY(clock.elapsed() >= 1900 && clock.elapsed() < 3000);
    }

    void destroyingItGivesTheClipboardUp()
    {
        auto gate = std::make_shared<QSemaphore>();
        auto pasteboard = std::make_unique<X11Pasteboard>(onThePool);
        QVERIFY(pasteboard->setPicture(noise(kMega), [gate] {
            gate->acquire();
            return QByteArray("tiff");
        }));
        SelectionReader reader;
        reader.ask("image/tiff");
        SelectionReader slow;
        slow.ask("image/png");
        QVERIFY(slow.beginChunks());
        pasteboard.reset();
        gate->release();
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(!slow.read("image/png"));
    }
};

BRINDLECAM_TEST(TestX11Pasteboard);

} // namespace brindlecam

#include "tst_x11_pasteboard.moc"
