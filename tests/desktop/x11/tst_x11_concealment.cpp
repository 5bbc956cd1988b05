#include "desktop/support/x11/SelectionReader.h"
#include "x11/PasteboardTest.h"
#include "x11/ServerForMyself.h"
#include "x11/ThisDesktop.h"

#include <cstring>

namespace brindlecam {

using desktop::SelectionReader;
using test::display;

namespace {

constexpr char kHint[] = "x-kde-passwordManagerHint";
constexpr std::chrono::milliseconds kLongEnough{100}; ///< for what must not happen

/// When the clipboard was last taken, in the server's time; 0 when nobody says.
xcb_timestamp_t takenAt(SelectionReader& reader)
{
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    const auto bytes = reader.read("TIMESTAMP");
    if (bytes && bytes->size() == sizeof time)
        std::memcpy(&time, bytes->constData(), sizeof time);
    return time;
}

} // namespace

/// What clipboard managers are asked to leave alone for a while.
class TestX11Concealment final : public test::PasteboardTest {
    Q_OBJECT

private:
    /// Everything that was asked of the clipboard's thread so far has been begun.
    [[nodiscard]] bool threadHasHeard() { return handOver(); }

private Q_SLOTS:
    void concealedContentSaysSoAndIsPastedAllTheSame()
    {
        QVERIFY(setConcealed("png"));
        SelectionReader reader(display());
        QVERIFY(reader.targets().contains(kHint));
        QCOMPARE(reader.read(kHint), QByteArray("secret"));
        QCOMPARE(reader.read("image/png"), QByteArray("png"));
        QCOMPARE(reader.read("image/tiff"), QByteArray("tiff"));
    }

    void otherContentSaysNothing()
    {
        QVERIFY(setConcealed("png"));
        QVERIFY(setPicture("plain", nothing));
        SelectionReader reader(display());
        QVERIFY(!reader.targets().contains(kHint));
        QVERIFY(!reader.read(kHint));
    }

    void revealedContentIsOfferedOnceMoreWithTheSameBytes()
    {
        QVERIFY(setConcealed("png"));
        SelectionReader reader(display());
        const xcb_timestamp_t before = takenAt(reader);
        QTest::qWait(20); // the server's clock goes on
        m_pasteboard->reveal();
        QTRY_VERIFY(takenAt(reader) > before);
        QVERIFY(!reader.targets().contains(kHint));
        QVERIFY(!reader.read(kHint));
        QCOMPARE(reader.read("image/png"), QByteArray("png"));
        QCOMPARE(reader.read("image/tiff"), QByteArray("tiff"));
    }

    void whoAskedBeforeItWasRevealedIsServedAllTheSame()
    {
        QVERIFY(setConcealed("png"));
        SelectionReader reader(display());
        const xcb_timestamp_t before = takenAt(reader);
        QTest::qWait(20);
        m_pasteboard->reveal();
        QTRY_VERIFY(takenAt(reader) > before);
        reader.ask("image/png", before);
        QCOMPARE(reader.answer(), QByteArray("png"));
    }

    void whatIsNotConcealedIsNotOfferedOnceMore()
    {
        QVERIFY(setPicture("png", nothing));
        SelectionReader reader(display());
        const xcb_timestamp_t before = takenAt(reader);
        QTest::qWait(20);
        m_pasteboard->reveal();
        QVERIFY(threadHasHeard());
        QCOMPARE(takenAt(reader), before);
    }

    void whatIsStillToBeTakenIsRevealedToo()
    {
        auto content = ClipboardContent::picture("png", nothing);
        content.concealed = true;
        std::optional<ClipboardFate> fate;
        m_pasteboard->set(content, this, [&fate](ClipboardFate told) { fate = told; });
        m_pasteboard->reveal();
        QTRY_COMPARE(fate, ClipboardFate::taken);
        SelectionReader reader(display());
        QTRY_VERIFY(!reader.targets().contains(kHint));
        QCOMPARE(reader.read("image/png"), QByteArray("png"));
    }

    void whatAnotherProgramHasCopiedMeanwhileStaysOnTheClipboard()
    {
        QVERIFY(setConcealed("ours"));
        SelectionReader other(display());
        xcb_grab_server(other.connection().raw()); // so that the server hears of ours after theirs
        other.connection().sync();
        m_pasteboard->reveal();
        QTest::qWait(20);
        QVERIFY(other.own("CLIPBOARD"));
        xcb_ungrab_server(other.connection().raw());
        QVERIFY(!other.await(XCB_SELECTION_CLEAR, kLongEnough));
    }

    void whatCouldNotBeHiddenIsNotRevealed()
    {
        QVERIFY(setConcealed("shown"));
        auto hidden = ClipboardContent::picture("hidden", nothing);
        hidden.concealed = true;
        {
            const test::ServerForMyself nobodyElse;
            QCOMPARE(fateOf(hidden), ClipboardFate::refused);
        }
        QVERIFY(threadHasHeard());
        m_pasteboard->reveal();
        QVERIFY(threadHasHeard());
        SelectionReader reader(display());
        QCOMPARE(reader.read("image/png"), QByteArray("shown"));
        QCOMPARE(reader.read(kHint), QByteArray("secret"));
    }

    void aLostConnectionKeepsItConcealed()
    {
        QVERIFY(setConcealed("png"));
        SelectionReader reader(display());
        xcb_kill_client(reader.connection().raw(), reader.owner());
        QTRY_COMPARE(reader.read(kHint), QByteArray("secret"));
        m_pasteboard->reveal();
        QTRY_VERIFY(!reader.targets().contains(kHint));
        QCOMPARE(reader.read("image/png"), QByteArray("png"));
    }
};

BRINDLECAM_TEST(TestX11Concealment);

} // namespace brindlecam

#include "tst_x11_concealment.moc"
