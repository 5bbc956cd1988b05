// Covers ScreenGrabber.
#include "capture/CaptureFixture.h"
#include "pins/PinnedCapture.h"
#include "support/TestCase.h"
#include "support/ToolTips.h"

#include <QFileDialog>
#include <QLineEdit>

namespace brindlecam {

using Fixture = test::CaptureFixture;
using test::kLeft;
using test::kRight;

class TestCaptureController final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void areaCaptureCoversEveryScreenAndFocusesTheOneUnderThePointer()
    {
        Fixture f;
        f.controller.begin();
        const auto overlays = f.overlays();
        QCOMPARE(overlays.size(), 2U);
        QCOMPARE(f.panels.shown.at(0).native, kLeft.native);
        QCOMPARE(f.panels.shown.at(1).native, kRight.native);
        QCOMPARE(f.panels.focused.back().data(), static_cast<QWidget*>(overlays.at(1)));
        QVERIFY(f.activity.capture);
    }

    void twoTriggersInQuickSuccessionOpenOneSession()
    {
        Fixture f;
        f.controller.begin();
        f.controller.begin();
        f.controller.captureFullScreen();
        QCOMPARE(f.grabber.calls, 1);
        QCOMPARE(f.overlays().size(), 2U);
        QCOMPARE(f.front.remembered, 1);
    }

    void aTriggerWhileTheScreensAreBeingGrabbedIsDropped()
    {
        Fixture f;
        f.grabber.waits = true;
        f.controller.begin();
        f.controller.begin();
        f.grabber.answer();
        QCOMPARE(f.grabber.calls, 1);
        QCOMPARE(f.overlays().size(), 2U);
    }

    void nothingStartsWhileALongCaptureRuns()
    {
        Fixture f;
        f.activity.scrollCapture = true;
        f.controller.begin();
        f.activity.scrollCapture = false;
        f.activity.recording = true;
        f.controller.captureFullScreen();
        QCOMPARE(f.grabber.calls, 0);
    }

    void aSelectionOnOneScreenClearsThatOfTheOther()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {100, 100});
        QVERIFY(!f.canvas(0).selection().isEmpty());
        f.drag(f.canvas(1), {10, 10}, {100, 100});
        QVERIFY(f.canvas(0).selection().isEmpty());
        QVERIFY(!f.canvas(1).selection().isEmpty());
    }

    void keysActOnTheSelectionWhicheverOverlayHasTheFocus()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        QTest::keyClick(&f.canvas(1), Qt::Key_Return);
        QTRY_COMPARE(f.kept(), 1);
        QCOMPARE(f.pasteboard.picture().size(), QSize(100, 50));
    }

    void theFocusIsGivenBackBeforeTheOverlaysGo()
    {
        Fixture f;
        f.controller.begin();
        std::size_t overlaysThen = 0;
        f.front.onGiveBack = [&] { overlaysThen = f.overlays().size(); };
        f.pressEscape();
        QCOMPARE(overlaysThen, 2U);
        QVERIFY(f.overlays().empty());
    }

    void toastsOfEarlierCapturesWaitForTheEndOfTheSession()
    {
        Fixture f;
        f.controller.begin();
        f.toast.show(QStringLiteral("Copiado"));
        QVERIFY(!f.toast.visible());
        f.pressEscape();
        QVERIFY(f.toast.visible());
    }

    void copyReachesClipboardFolderHistoryAndToast()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        QTest::keyClick(&f.canvas(0), Qt::Key_Return);
        QTRY_COMPARE(f.savedFiles().size(), 1);
        QTRY_COMPARE(f.kept(), 1);
        QCOMPARE(f.pasteboard.picture().size(), QSize(100, 50));
        QVERIFY(f.overlays().empty());
        QCOMPARE(f.front.givenBack, 1);
        QTRY_VERIFY(f.toast.visible());
        QVERIFY(!f.controller.busy());
        QVERIFY(!f.activity.capture);
    }

    void copyWithoutAutoSaveWritesNoFile()
    {
        Fixture f;
        f.defaults.setBoolean(QStringLiteral("autoSaveArea"), false);
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        QTest::keyClick(&f.canvas(0), Qt::Key_Return);
        QTRY_COMPARE(f.kept(), 1);
        QVERIFY(f.savedFiles().isEmpty());
    }

    void cancelAfterAutoCopyKeepsThePictureInTheHistory()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        QTRY_COMPARE(f.pasteboard.changes, 1);
        f.pressEscape();
        QTRY_COMPARE(f.kept(), 1);
        QCOMPARE(f.pasteboard.changes, 1);
        QVERIFY(f.savedFiles().isEmpty());
        QVERIFY(f.overlays().empty());
        QCOMPARE(f.front.givenBack, 1);
    }

    void cancelWithoutAutoCopyKeepsNothing()
    {
        Fixture f;
        f.defaults.setBoolean(QStringLiteral("autoCopy"), false);
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        f.pressEscape();
        QCoreApplication::processEvents();
        QCOMPARE(f.kept(), 0);
        QCOMPARE(f.pasteboard.changes, 0);
        QVERIFY(!f.controller.busy());
    }

    void escapeIsOnlyHeldDuringACapture()
    {
        Fixture f;
        QVERIFY(f.hotKeys.registered.empty());
        f.controller.begin();
        QCOMPARE(f.hotKeys.registered.size(), 1U);
        f.pressEscape();
        QVERIFY(f.hotKeys.registered.empty());
    }

    void aSecondFinishIsHarmless()
    {
        Fixture f;
        f.controller.begin();
        f.controller.finish(outcome::Cancel{});
        f.controller.finish(outcome::Copy{test::onePicture(Qt::red)});
        QCoreApplication::processEvents();
        QCOMPARE(f.front.givenBack, 1);
        QCOMPARE(f.pasteboard.changes, 0);
    }

    void recognisedTextGoesToTheClipboardAsText()
    {
        Fixture f;
        f.controller.begin();
        f.controller.finish(outcome::Text{QStringLiteral("uno\ndos")});
        QCOMPARE(f.pasteboard.plainText, std::optional(QStringLiteral("uno\ndos")));
        QTRY_VERIFY(f.toast.visible());
    }

    void pinIsCopiedKeptAndHandedOn()
    {
        Fixture f;
        f.controller.begin();
        f.controller.finish(outcome::Pin{test::onePicture(Qt::red), QRect(5, 6, 40, 30)});
        QCOMPARE(f.pins.open().size(), std::size_t(1));
        QCOMPARE(f.pinWindows.made.front()->places.front().native, QRect(5, 6, 40, 30));
        QTRY_COMPARE(f.kept(), 1);
        QCOMPARE(f.pasteboard.changes, 1);
        QVERIFY(f.savedFiles().isEmpty());
    }

    void saveKeepsThePictureAndAsksWhere()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        QTest::keyClick(&f.canvas(0), Qt::Key_S, Qt::ControlModifier);
        QTRY_COMPARE(f.kept(), 1);
        const auto panels = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(
            panels, [](QWidget* widget) { return qobject_cast<QFileDialog*>(widget); });
        QVERIFY(found != panels.end());
        auto* panel = qobject_cast<QFileDialog*>(*found);
        QVERIFY(panel->isVisible());
        QVERIFY(f.controller.busy());
        QCOMPARE(f.front.givenBack, 0);
        QVERIFY(QDir(f.prefs.saveFolder()).exists());

        const QString chosen = f.folder.filePath(QStringLiteral("elegida.png"));
        panel->findChild<QLineEdit*>()->setText(chosen);
        QMetaObject::invokeMethod(panel, "accept");
        QVERIFY(!panel->isVisible());
        QTRY_COMPARE(QImage(chosen).size(), QSize(100, 50));
        QVERIFY(!f.controller.busy());
        QCOMPARE(f.front.givenBack, 1);
    }

    void fullScreenTakesTheScreenUnderThePointer()
    {
        Fixture f;
        f.controller.captureFullScreen();
        QTRY_COMPARE(f.savedFiles().size(), 1);
        QCOMPARE(f.pasteboard.picture().size(), kRight.native.size());
        QTRY_COMPARE(f.kept(), 1);
        QVERIFY(!f.controller.busy());
        QCOMPARE(f.front.remembered, 0);
    }

    void fullScreenWithoutAKnownPointerTakesThePrimaryScreen()
    {
        Fixture f;
        f.displays.pointerAt.reset();
        f.controller.captureFullScreen();
        QTRY_COMPARE(f.pasteboard.changes, 1);
        QCOMPARE(f.pasteboard.picture().size(), kLeft.native.size());
    }

    void fullScreenWithoutScreensDoesNothing()
    {
        Fixture f;
        f.displays.all.clear();
        f.controller.captureFullScreen();
        QCOMPARE(f.grabber.calls, 0);
        QVERIFY(!f.controller.busy());
    }

    void aFailedGrabEndsTheCaptureAndSaysWhy()
    {
        Fixture f;
        f.grabber.fails = Error{QStringLiteral("por algo")};
        f.controller.begin();
        QVERIFY(!f.controller.busy());
        QVERIFY(f.alerts.visible());
        QVERIFY(f.overlays().empty());
    }

    void grabWithoutAnyScreenIsAFailure()
    {
        Fixture f;
        f.displays.all.clear();
        f.controller.begin();
        QVERIFY(!f.controller.busy());
        QVERIFY(f.alerts.visible());
    }

    void displaysThatChangeDuringTheGrabAreGrabbedOnceMore()
    {
        Fixture f;
        f.grabber.onGrab = [&f] { f.displays.all = {kLeft}; };
        f.controller.begin();
        QCOMPARE(f.grabber.calls, 2);
        QCOMPARE(f.overlays().size(), 1U);
    }

    void aRemovedScreenClosesItsOverlayOnly()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        f.displays.all = {kLeft};
        f.displays.change();
        QCOMPARE(f.overlays().size(), 1U);
        QTest::keyClick(&f.canvas(0), Qt::Key_Return);
        QTRY_COMPARE(f.pasteboard.picture().size(), QSize(100, 50));
    }

    void removingTheScreenWithTheSelectionEndsTheSessionLikeCancel()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(1), {10, 10}, {110, 60});
        f.displays.all = {kLeft};
        f.displays.change();
        QVERIFY(f.overlays().empty());
        QVERIFY(!f.controller.busy());
        QTRY_COMPARE(f.kept(), 1); // automatic copy was on
    }

    void anAddedScreenStaysLive()
    {
        Fixture f;
        f.displays.all = {kLeft};
        f.controller.begin();
        f.displays.all = {kLeft, kRight};
        f.displays.change();
        QCOMPARE(f.overlays().size(), 1U);
        QVERIFY(f.controller.busy());
    }

    void alertsComeBackWithoutTakingTheFocus()
    {
        Fixture f;
        f.alerts.show({.message = QStringLiteral("Hola"), .informative = {}, .buttons = {}});
        QWidget other; // what the user works in meanwhile
        other.show();
        other.activateWindow();
        QTRY_VERIFY(other.isActiveWindow());
        const std::size_t focusedBefore = f.panels.focused.size();
        f.controller.captureFullScreen();
        QTRY_COMPARE(f.pasteboard.changes, 1);
        QVERIFY(f.alerts.visible());
        QCOMPARE(f.panels.focused.size(), focusedBefore);
    }

    void alertsStepAsideForTheSessionAndComeBack()
    {
        Fixture f;
        f.alerts.show({.message = QStringLiteral("Hola"), .informative = {}, .buttons = {}});
        QVERIFY(f.alerts.visible());
        f.controller.begin();
        QVERIFY(!f.alerts.visible());
        QTRY_COMPARE(f.overlays().size(), 2U); // the desktop repaints first
        f.pressEscape();
        QVERIFY(f.alerts.visible());
    }

    void aToastIsTakenAwayBeforeTheGrab()
    {
        Fixture f;
        f.toast.show(QStringLiteral("Copiado"));
        f.grabber.onGrab = [&f] { QVERIFY(!f.toast.visible()); };
        f.controller.captureFullScreen();
        QTRY_COMPARE(f.grabber.calls, 1);
        QTRY_COMPARE(f.kept(), 1);
    }

    void aPinsToolTipIsTakenAwayBeforeTheGrab()
    {
        Fixture f;
        f.pins.pin(Rendered(QImage(60, 40, QImage::Format_RGB32), QSizeF(60, 40)),
                   QRect(100, 100, 60, 40));
        const auto& pin = *f.pins.open().front();
        QVERIFY(test::restOn(*pin.focusProxy()));
        const QPointer<QWidget> tip = f.panels.shown.back().widget;
        QVERIFY(tip && tip->isVisible());
        f.grabber.onGrab = [&tip] { QVERIFY(!tip); };
        f.controller.captureFullScreen();
        QVERIFY(!tip);
        QCOMPARE(f.grabber.calls, 0); // the desktop repaints first
        const std::size_t shown = f.panels.shown.size();
        QVERIFY(test::restOn(*pin.focusProxy()));
        QCOMPARE(f.panels.shown.size(), shown);
        QTRY_COMPARE(f.grabber.calls, 1);
    }
};

BRINDLECAM_TEST(TestCaptureController);

} // namespace brindlecam

#include "tst_capturecontroller.moc"
