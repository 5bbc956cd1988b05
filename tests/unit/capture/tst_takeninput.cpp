#include "capture/CaptureFixture.h"
#include "support/TestCase.h"

namespace brindlecam {

using Fixture = test::CaptureFixture;
using Answer = InputGrabs::Answer;

/// Captures that start while another program has pointer or keyboard.
class TestTakenInput final : public test::TestCase {
    Q_OBJECT

private:
    static bool takesEscape(const Fixture& f)
    {
        return f.hotKeys.registered.contains({KeyCodes::kEscape, 0});
    }

private Q_SLOTS:
    void sessionOpensOncePointerAndKeyboardAreFree()
    {
        Fixture f;
        f.inputGrabs.held = true;
        f.controller.begin();
        QCOMPARE(f.grabber.calls, 1); // what holds them is in the picture
        QVERIFY(f.overlays().empty());
        QVERIFY(!takesEscape(f));
        QVERIFY(f.controller.busy());
        f.inputGrabs.answer(Answer::free);
        QCOMPARE(f.overlays().size(), 2U);
        QVERIFY(takesEscape(f));
        QCOMPARE(f.grabber.calls, 1);
    }

    void escapeIsTheSessionsAlsoWhereItIsAHotKey()
    {
        Fixture f;
        QStringList heard;
        QObject context;
        const HotKeyWish wish{QStringLiteral("area"), {}, KeyCodes::kEscape, 0};
        f.hotKeys.bind(
            {wish}, &context, [&heard](const QString& name) { heard << name; },
            [](const QStringList&) {});
        f.controller.begin();
        f.pressEscape();
        QVERIFY(!f.controller.busy());
        QVERIFY(heard.isEmpty());
        f.pressEscape();
        QCOMPARE(heard, QStringList(QStringLiteral("area")));
    }

    void sessionWithoutInputEndsWithAMessage()
    {
        Fixture f;
        f.inputGrabs.held = true;
        f.controller.begin();
        QVERIFY(!f.toast.visible());
        f.inputGrabs.answer(Answer::taken);
        QVERIFY(f.overlays().empty());
        QVERIFY(!takesEscape(f));
        QVERIFY(!f.controller.busy());
        QVERIFY(!f.activity.capture);
        QVERIFY(f.toast.visible());

        f.inputGrabs.held = false;
        f.controller.begin();
        QTRY_COMPARE(f.overlays().size(), 2U);
        QVERIFY(!f.toast.visible());
    }

    void liveTestsStaySilentAboutIt()
    {
        Fixture f;
        CaptureFailure silent(*f.platform.captureAccess, f.alerts, f.defaults,
                              CaptureFailure::Voice::silent);
        CaptureController controller({f.platform, f.prefs, f.results, f.toast, f.alerts, f.activity,
                                      silent, f.countdown, f.pins, f.longCaptures, f.cover});
        f.inputGrabs.held = true;
        controller.begin();
        f.inputGrabs.answer(Answer::taken);
        QVERIFY(!controller.busy());
        QVERIFY(!f.toast.visible());
    }

    void theProgramsEndWaitsForNobodyAndSaysNothing()
    {
        Fixture f;
        f.inputGrabs.held = true;
        f.controller.begin();
        bool wrappedUp = false;
        f.controller.wrapUp([&wrappedUp] { wrappedUp = true; });
        QVERIFY(wrappedUp);
        QVERIFY(!f.controller.busy());
        f.inputGrabs.answer(Answer::taken);
        QVERIFY(!f.toast.visible());
    }

    void nothingElseStartsMeanwhile()
    {
        Fixture f;
        f.inputGrabs.held = true;
        f.controller.begin();
        f.controller.begin();
        f.controller.captureFullScreen();
        QCOMPARE(f.grabber.calls, 1);
        QCOMPARE(f.inputGrabs.requests, 1);
    }

    void displaysThatChangeMeanwhileAreGrabbedAnew()
    {
        Fixture f;
        f.inputGrabs.held = true;
        f.controller.begin();
        f.displays.all = {test::kLeft};
        f.inputGrabs.held = false;
        f.inputGrabs.answer(Answer::free);
        QCOMPARE(f.grabber.calls, 2);
        QCOMPARE(f.overlays().size(), 1U);
    }

    /// Nothing of theirs waits for a key or the mouse: the menu stays open.
    void fullScreenCapturesNeedNoInput()
    {
        Fixture f;
        f.inputGrabs.held = true;
        f.controller.captureFullScreen();
        QCOMPARE(f.inputGrabs.requests, 0);
        QTRY_COMPARE(f.kept(), 1);
    }
};

BRINDLECAM_TEST(TestTakenInput);

} // namespace brindlecam

#include "tst_takeninput.moc"
