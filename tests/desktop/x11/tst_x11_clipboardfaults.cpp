// Covers ServerClock.
#include "desktop/support/x11/SelectionReader.h"
#include "platform/x11/connection/ServerClock.h"
#include "platform/x11/connection/X11.h"
#include "x11/PasteboardTest.h"
#include "x11/ServerForMyself.h"
#include "x11/ThisDesktop.h"

#include <QSemaphore>

#include <memory>

namespace brindlecam {

using desktop::SelectionReader;
using test::display;
using test::ServerForMyself;

namespace {

/// Ends the connection of whoever owns the clipboard, as a resource manager or a bug might.
void cutOwnerOff(SelectionReader& client)
{
    xcb_kill_client(client.connection().raw(), client.owner());
    client.connection().sync(); // until it has happened
}

/// Where a server would have to be for connections made from now on.
class DisplayVariable final {
public:
    explicit DisplayVariable(const QByteArray& value) { qputenv("DISPLAY", value); }
    ~DisplayVariable() { qputenv("DISPLAY", m_before); }

private:
    QByteArray m_before = qgetenv("DISPLAY");
};

ClipboardContent picture(const QByteArray& png)
{
    return ClipboardContent::picture(png, [] { return QByteArray("tiff"); });
}

} // namespace

/// The clipboard and the server's clock where the server does not play along.
class TestX11ClipboardFaults final : public test::PasteboardTest {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_pasteboard = makePasteboard(); }
    void cleanup() { m_pasteboard.reset(); }

    void aLostConnectionIsMadeAgainAndTheLastPictureOfferedAgain()
    {
        QCOMPARE(fateOf(picture("first")), ClipboardFate::taken);
        SelectionReader reader(display());
        for (int i = 0; i < 3; ++i) {
            cutOwnerOff(reader);
            QTRY_COMPARE(reader.read("image/png"), QByteArray("first"));
            QCOMPARE(reader.read("image/tiff"), QByteArray("tiff"));
        }
        QCOMPARE(fateOf(picture("second")), ClipboardFate::taken);
        QCOMPARE(reader.read("image/png"), QByteArray("second"));
    }

    void aTiffThatIsBeingMadeWhenTheConnectionIsLostIsStillHandedOut()
    {
        const auto gate = std::make_shared<QSemaphore>();
        QVERIFY(setPicture("png", [gate] {
            gate->acquire();
            return QByteArray("tiff");
        }));
        SelectionReader early(display());
        early.ask("image/tiff");
        SelectionReader reader(display());
        QCOMPARE(reader.read("image/png"), QByteArray("png")); // the other is being served by now
        cutOwnerOff(reader);
        QTRY_COMPARE(reader.read("image/png"), QByteArray("png"));
        early.ask("image/tiff");
        QCOMPARE(reader.read("image/png"), QByteArray("png"));
        gate->release();
        QCOMPARE(early.answer(), QByteArray("tiff"));
    }

    void whatAnotherProgramHasCopiedMeanwhileStays()
    {
        QCOMPARE(fateOf(picture("ours")), ClipboardFate::taken);
        SelectionReader other(display());
        xcb_grab_server(other.connection().raw()); // so that it can't be offered again in between
        cutOwnerOff(other);
        QVERIFY(other.own("CLIPBOARD"));
        xcb_ungrab_server(other.connection().raw());
        QVERIFY(handOver()); // the new connection is there
        QCOMPARE(other.owner(), other.window());
        QCOMPARE(fateOf(picture("next")), ClipboardFate::taken);
    }

    void withoutAServerItIsRefusedAndTheNextCopyTriesAgain()
    {
        {
            const DisplayVariable nowhere(":98765");
            cleanup();
            init();
            QCOMPARE(fateOf(picture("lost")), ClipboardFate::refused);
            QCOMPARE(fateOf(picture("lost")), ClipboardFate::refused);
        }
        QCOMPARE(fateOf(picture("there")), ClipboardFate::taken);
        SelectionReader reader(display());
        QCOMPARE(reader.read("image/png"), QByteArray("there"));
    }

    void whatIsConcealedGoesWhereItCouldNotBeRevealed()
    {
        QVERIFY(setConcealed("png"));
        SelectionReader reader(display());
        {
            const DisplayVariable nowhere(":98765");
            cutOwnerOff(reader);
            for (int attempt = 0; attempt < 2; ++attempt)
                QVERIFY(handOver()); // the first may still be the lost connection's
            m_pasteboard->reveal();
        }
        for (int round = 0; round < 2; ++round)
            QVERIFY(handOver()); // the connection is there
        QTest::qWait(100);
        QCOMPARE(reader.owner(), xcb_window_t(XCB_WINDOW_NONE));
    }

    void aServerThatServesSomebodyElseIsNotWaitedForForever()
    {
        QCOMPARE(fateOf(ClipboardContent::text(QStringLiteral("before"))), ClipboardFate::taken);
        {
            const ServerForMyself nobodyElse;
            QCOMPARE(fateOf(picture("too late")), ClipboardFate::refused);
        }
        // What was told as refused does not turn up later. Each answer to the reader is a round
        // of the clipboard's thread.
        QVERIFY(handOver());
        SelectionReader reader(display());
        for (int round = 0; round < 3; ++round)
            QCOMPARE(reader.read("UTF8_STRING"), QByteArray("before"));
        QCOMPARE(fateOf(picture("after")), ClipboardFate::taken);
        QCOMPARE(reader.read("image/png"), QByteArray("after"));
    }

    void theNewerOfTwoOvertakesTheOlder()
    {
        QVERIFY(overtakes(picture("newer"), picture("older")));
        SelectionReader reader(display());
        QCOMPARE(reader.read("image/png"), QByteArray("newer"));
    }

    void nobodyIsToldWhoIsGone()
    {
        bool told = false;
        auto asker = std::make_unique<QObject>();
        m_pasteboard->set(picture("orphan"), asker.get(), [&told](ClipboardFate) { told = true; });
        asker.reset();
        QCOMPARE(fateOf(picture("next")), ClipboardFate::taken);
        QVERIFY(!told);
    }

    void theClockTellsTheServersTime()
    {
        x11::ServerClock clock;
        const xcb_timestamp_t earlier = clock.now();
        QVERIFY(earlier != XCB_CURRENT_TIME);
        QTest::qWait(20);
        QVERIFY(clock.now() > earlier);
    }

    void theClockGivesUpOnASilentServerAndKnowsTheTimeAgainLater()
    {
        x11::ServerClock clock;
        const xcb_timestamp_t before = clock.now();
        {
            const ServerForMyself nobodyElse;
            QCOMPARE(clock.now(), xcb_timestamp_t(XCB_CURRENT_TIME));
        }
        QTest::qWait(20);
        const xcb_timestamp_t after = clock.now();
        QVERIFY(after > before);
        QTest::qWait(20);
        QVERIFY(clock.now() > after); // not an answer to an earlier question
    }
};

BRINDLECAM_TEST(TestX11ClipboardFaults);

} // namespace brindlecam

#include "tst_x11_clipboardfaults.moc"
