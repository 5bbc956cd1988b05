#include "desktop/support/x11/SelectionReader.h"
#include "x11/PasteboardTest.h"
#include "x11/ThisDesktop.h"

#include <QSemaphore>

#include <thread>

namespace brindlecam {

using desktop::SelectionReader;
using test::display;

namespace {

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
        SelectionReader client(display());
        client.own("CLIPBOARD_MANAGER");
        m_owns.release();
        const auto event = client.await(XCB_SELECTION_REQUEST);
        if (!event)
            return;
        const auto& request = reinterpret_cast<xcb_selection_request_event_t&>(*event);
        const desktop::Connection& connection = client.connection();
        for (const xcb_atom_t target :
             connection.property32(request.requestor, connection.atomName(request.property)))
            asked.push_back(connection.atomName(target));
        if (!asked.isEmpty())
            kept = client.read(asked.front());
        client.own("CLIPBOARD");
        xcb_selection_notify_event_t notice{};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.requestor = request.requestor;
        notice.selection = request.selection;
        notice.target = request.target;
        notice.property = request.property;
        xcb_send_event(connection.raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&notice));
        xcb_flush(connection.raw());
        // Gone, and with it the clipboard, only when the last request was answered.
        connection.sync();
    }

    QSemaphore m_owns;
    std::thread m_thread;
};

} // namespace

/// What a clipboard manager gets when the program ends.
class TestX11ClipboardManager final : public test::PasteboardTest {
    Q_OBJECT

private:
    static inline const QString kHandedOver = QStringLiteral("handed over");
    static inline const QString kNext = QStringLiteral("next");

    /// Hands over, and copies something without waiting for that; in what order both end.
    [[nodiscard]] QStringList handedOverAndCopied()
    {
        QStringList order;
        m_pasteboard->handOver(this, [&order] { order << kHandedOver; });
        m_pasteboard->set(ClipboardContent::picture("next", nothing), this,
                          [&order](ClipboardFate) { order << kNext; });
        (void)QTest::qWaitFor([&order] { return order.size() == 2; });
        return order;
    }

private Q_SLOTS:
    void managerKeepsThePictureAndIsAskedForNothingThatMustBeMade()
    {
        const QByteArray png = QByteArray(5 * 1024 * 1024, 'p');
        QVERIFY(setPicture(png, nothing));
        FakeManager manager;
        QVERIFY(handOver());
        // The manager has answered, so its thread is at its end.
        QTRY_VERIFY(manager.kept.has_value());
        QCOMPARE(manager.asked, QList<QByteArray>{"image/png"});
        QVERIFY(manager.kept == png);
    }

    void managerIsAskedForEveryFormOfAGif()
    {
        const auto gif = ClipboardContent::gif("GIF89a", QStringLiteral("/a.gif"));
        QCOMPARE(fateOf(gif), ClipboardFate::taken);
        FakeManager manager;
        QVERIFY(handOver());
        QTRY_VERIFY(manager.kept.has_value());
        QCOMPARE(manager.asked,
                 QList<QByteArray>({"text/uri-list", "x-special/gnome-copied-files", "image/gif"}));
        QCOMPARE(manager.kept, QByteArray("file:///a.gif\r\n"));
    }

    void managerIsHandedWhatWasConcealedALittleBefore()
    {
        QVERIFY(setConcealed("png"));
        FakeManager manager;
        m_pasteboard->reveal();
        QVERIFY(handOver());
        QTRY_VERIFY(manager.kept.has_value());
        QCOMPARE(manager.asked, QList<QByteArray>{"image/png"});
        QCOMPARE(manager.kept, QByteArray("png"));
    }

    void whatCameALittleBeforeIsHeldForThoseWhoOnlyLookOn_data()
    {
        QTest::addColumn<bool>("concealed");
        QTest::newRow("revealed") << true;
        QTest::newRow("never concealed") << false;
    }
    void whatCameALittleBeforeIsHeldForThoseWhoOnlyLookOn()
    {
        QFETCH(const bool, concealed);
        QVERIFY(concealed ? setConcealed("png") : setPicture("png", nothing));
        m_pasteboard->reveal();
        QCOMPARE(handedOverAndCopied(), QStringList({kNext, kHandedOver}));
    }

    void handingOverWaitsForNobodyWhereNobodyKeepsAnything()
    {
        QVERIFY(setPicture("earlier", nothing)); // its time to be seen is nobody's any more
        QVERIFY(setConcealed("png"));
        QCOMPARE(handedOverAndCopied(), QStringList({kHandedOver, kNext}));
        SelectionReader reader(display());
        QCOMPARE(reader.read("image/png"), QByteArray("next"));
    }

    void aSilentManagerIsWaitedForButNotForever()
    {
        QVERIFY(setPicture("png", nothing));
        SelectionReader manager(display());
        QVERIFY(manager.own("CLIPBOARD_MANAGER"));
        QCOMPARE(handedOverAndCopied(), QStringList({kNext, kHandedOver}));
    }
};

BRINDLECAM_TEST(TestX11ClipboardManager);

} // namespace brindlecam

#include "tst_x11_clipboardmanager.moc"
