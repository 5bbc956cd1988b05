#include "desktop/support/CaptureTest.h"

namespace brindlecam::desktop {

/// Saving a selection under a name: the panel, the keyboard, and what follows.
class TestSave final : public CaptureTest {
    Q_OBJECT

private:
    static constexpr QRect kDragged{300, 250, 200, 150};

    /// A session whose save panel is open and has the keyboard.
    void openPanel(bool windowManager)
    {
        usePatternedDesktop(
            {.windowManager = windowManager ? WindowManager::openbox : WindowManager::none});
        m_below = desktop().open({.pixels = QRect(100, 100, 300, 300)});
        QVERIFY(worksIn(*m_below));
        program().writeSettings({{QStringLiteral("autoCopy"), false}});
        startProgram();
        m_picture = screen().grabAtRest().copy(kDragged);
        QVERIFY(openArea());
        select(kDragged);
        input().chord({Qt::Key_Control, Qt::Key_S});
        QVERIFY(dialogOpens());
        QVERIFY(overlays().empty());
        QVERIFY(dialogHasKeyboard());
        m_below->forget();
    }

    std::unique_ptr<ClientWindow> m_below;
    QImage m_picture;

private Q_SLOTS:
    void typedNameIsSaved_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::newRow("window manager") << true;
        QTest::newRow("bare") << false;
    }
    void typedNameIsSaved()
    {
        QFETCH(bool, windowManager);
        openPanel(windowManager);
        input().type("mi captura");
        input().tap(Qt::Key_Return);
        QVERIFY(dialogsAreGone());
        QVERIFY(isOnlyCapture(m_picture));
        QCOMPARE(filesIn(program().folders().captures()),
                 QStringList(QStringLiteral("mi captura.png")));
        QVERIFY(isOnlyInHistory(m_picture));
        QVERIFY(getsFocus(*m_below));
        QVERIFY(!clipboardIsTaken());
        QVERIFY(toasts().empty());
        QVERIFY(m_below->keys().empty());
        QVERIFY(openArea());
    }

    void proposedNameIsSaved()
    {
        openPanel(true);
        input().tap(Qt::Key_Return);
        QVERIFY(isOnlyCapture(m_picture));
        static const QRegularExpression name(
            QStringLiteral("^Brindlecam \\d{4}-\\d\\d-\\d\\d \\d\\d\\.\\d\\d\\.\\d\\d\\.png$"));
        QVERIFY(name.match(filesIn(program().folders().captures()).front()).hasMatch());
    }

    void cancelledPanelLeavesTheHistoryOnly_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::newRow("window manager") << true;
        QTest::newRow("bare") << false;
    }
    void cancelledPanelLeavesTheHistoryOnly()
    {
        QFETCH(bool, windowManager);
        openPanel(windowManager);
        input().tap(Qt::Key_Escape);
        QVERIFY(dialogsAreGone());
        QVERIFY(getsFocus(*m_below));
        QVERIFY(isOnlyInHistory(m_picture));
        QVERIFY(filesIn(program().folders().captures()).isEmpty());
        QVERIFY(!clipboardIsTaken());
        QVERIFY(openArea());
        QVERIFY(program().isRunning());
    }

    void otherCapturesWaitForThePanelToClose()
    {
        openPanel(true);
        pressHotKey(kAreaKey);
        pressHotKey(kFullScreenKey);
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 4);
        QCOMPARE(dialogs().size(), std::size_t(1));
        input().tap(Qt::Key_Escape);
        QVERIFY(dialogsAreGone() && getsFocus(*m_below));
        QVERIFY(openArea());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QCOMPARE(program().quit(), 0);
        QCOMPARE(history().size(), 1);
    }

    void refusedStartBringsThePanelBackToThisDesktop()
    {
        openPanel(true);
        const WindowId panel = dialogs().front().id;
        desktop().pager().iconify(panel);
        QVERIFY(dialogsAreGone() && getsFocus(*m_below));
        pressHotKey(kAreaKey);
        QVERIFY(dialogOpens() && dialogHasKeyboard());

        desktop().pager().sendToDesktop(panel, 1);
        QVERIFY(dialogsAreGone() && getsFocus(*m_below));
        pressHotKey(kFullScreenKey);
        QVERIFY(dialogOpens() && dialogHasKeyboard());
        QCOMPARE(desktop().pager().currentDesktop(), 0);

        input().type("vuelta");
        input().tap(Qt::Key_Return);
        QVERIFY(isOnlyCapture(m_picture));
        QCOMPARE(filesIn(program().folders().captures()),
                 QStringList(QStringLiteral("vuelta.png")));
    }

    void heldShortcutNeverReachesTheWindowBelow()
    {
        usePatternedDesktop();
        m_below = desktop().open({});
        QVERIFY(worksIn(*m_below));
        startProgram();
        QVERIFY(openArea());
        select(kDragged);
        m_below->forget();
        input().press(Qt::Key_Control);
        input().press(Qt::Key_S);
        QVERIFY(dialogOpens());
        QTest::qWait(1500); // the server repeats after 0.66 s
        input().release(Qt::Key_S);
        input().release(Qt::Key_Control);
        QCOMPARE(dialogs().size(), std::size_t(1));
        QVERIFY(m_below->keys().empty());
        input().tap(Qt::Key_Escape);
        QVERIFY(dialogsAreGone() && getsFocus(*m_below));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestSave)

#include "tst_save.moc"
