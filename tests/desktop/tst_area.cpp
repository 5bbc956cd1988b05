#include "desktop/support/CaptureTest.h"

#include <QRegion>

#include <array>

namespace brindlecam::desktop {

/// Area captures: the frozen overlay, the selection by real drags, and where the picture goes.
class TestArea final : public CaptureTest {
    Q_OBJECT

private:
    static constexpr QPoint kFrom{300, 250};
    static constexpr QPoint kTo{700, 550};
    static constexpr QRect kDragged{300, 250, 400, 300};

    /// A session without the loupe, whose pictures can be compared everywhere.
    void useSession(bool autoCopy = true, const DesktopOptions& desktop = {})
    {
        usePatternedDesktop(desktop);
        program().writeSettings(
            {{QStringLiteral("showLoupe"), false}, {QStringLiteral("autoCopy"), autoCopy}});
        startProgram();
        input().moveTo({640, 600});
        m_before = screen().grabAtRest();
    }

    /// Ends the session by Return and tells whether exactly this part of the screen was taken.
    bool returnTakes(const QRect& pixels)
    {
        input().tap(Qt::Key_Return);
        return sessionIsOver() && isPasted(m_before.copy(pixels)) &&
               isOnlyCapture(m_before.copy(pixels)) && isOnlyInHistory(m_before.copy(pixels));
    }

    /// Where the hint at the top may be.
    [[nodiscard]] QRegion hint() const { return {0, 50, m_before.width(), 50}; }

    QImage m_before;

private Q_SLOTS:
    void desktopIsFrozenAndDimmedOutsideTheSelection()
    {
        useSession(true, {.accessibility = Accessibility::on});
        QVERIFY(openArea());
        QCOMPARE(overlays().front().pixels, m_before.rect());
        QVERIFY(!overlays().front().managed);
        const QRegion whole(m_before.rect());
        const QImage dark = dimmed(m_before);
        QVERIFY(waitUntil([&] { return difference(screen().grab(), dark, whole - hint()) <= 1; }));
        QVERIFY(difference(screen().grab(), dark, hint()) > 1);

        select(kDragged);
        const QMargins edge(4, 4, 4, 4);
        const QRegion bars = QRegion(placeOf("Herramientas").marginsAdded(edge)) |
                             QRegion(placeOf("Acciones").marginsAdded(edge));
        // Border, handles and size label lie on the selection's edge and above it.
        const QRegion inside = kDragged.adjusted(5, 5, -5, -5);
        const QRegion outside = whole - QRegion(kDragged.adjusted(-6, -40, 6, 6)) -
                                QRegion(0, 560, m_before.width(), 60) - bars;
        const auto bright = [&] {
            const QImage now = screen().grab();
            return difference(now, m_before, inside) == 0 && difference(now, dark, outside) <= 1;
        };
        QVERIFY(waitUntil(bright));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(), m_before); }));
    }

    void whatChangesBelowIsNotSeen()
    {
        useSession();
        const auto below = desktop().open({.pixels = QRect(320, 270, 200, 200), .colour = Qt::red});
        QVERIFY(becomesActive(*below)); // its frame changes with that
        m_before = screen().grabAtRest();
        QCOMPARE(m_before.pixelColor(below->pixels().center()), QColor(Qt::red));
        QVERIFY(openArea());
        below->paint(Qt::green);
        select(kDragged);
        QVERIFY(
            waitUntil([&] { return screen().pixel(below->pixels().center()) == QColor(Qt::red); }));
        QVERIFY(returnTakes(kDragged));
        QVERIFY(waitUntil(
            [&] { return screen().pixel(below->pixels().center()) == QColor(Qt::green); }));
    }

    void selectionGoesEverywherePixelForPixel_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QRect>("taken");
        QTest::newRow("down and right") << kFrom << kTo << kDragged;
        QTest::newRow("up and left") << kTo << kFrom << kDragged;
        QTest::newRow("to the last pixel")
            << QPoint(900, 600) << QPoint(1279, 799) << QRect(900, 600, 380, 200);
        QTest::newRow("to the first pixel")
            << QPoint(200, 200) << QPoint(0, 0) << QRect(0, 0, 200, 200);
    }
    void selectionGoesEverywherePixelForPixel()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(QRect, taken);
        useSession();
        QVERIFY(openArea());
        input().drag(from, to);
        QVERIFY(returnTakes(taken));
        QVERIFY(toastComes());
    }

    void sessionWithTheLoupeTakesTheSamePicture()
    {
        usePatternedDesktop();
        startProgram();
        m_before = screen().grabAtRest();
        QVERIFY(openArea());
        select(kDragged);
        QVERIFY(returnTakes(kDragged));
    }

    void keysThatCopyEndTheSession_data()
    {
        QTest::addColumn<QList<Qt::Key>>("keys");
        QTest::newRow("Return") << QList{Qt::Key_Return};
        QTest::newRow("Enter of the keypad") << QList{Qt::Key_Enter};
        QTest::newRow("Ctrl+C") << QList{Qt::Key_Control, Qt::Key_C};
    }
    void keysThatCopyEndTheSession()
    {
        QFETCH(QList<Qt::Key>, keys);
        useSession(false);
        QVERIFY(openArea());
        select(kDragged);
        QVERIFY(!clipboardIsTaken());
        input().chord(keys);
        QVERIFY(sessionIsOver());
        QVERIFY(isPasted(m_before.copy(kDragged)));
        QVERIFY(isOnlyCapture(m_before.copy(kDragged)));
        QVERIFY(isOnlyInHistory(m_before.copy(kDragged)));
    }

    void pictureIsCopiedRightAfterTheDragAndCancelKeepsIt()
    {
        useSession();
        QVERIFY(openArea());
        select(kDragged);
        QVERIFY(isPasted(m_before.copy(kDragged)));
        QVERIFY(captures().isEmpty());
        QVERIFY(history().isEmpty());
        QCOMPARE(overlays().size(), std::size_t(1));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyInHistory(m_before.copy(kDragged)));
        QVERIFY(isPasted(m_before.copy(kDragged)));
        QVERIFY(captures().isEmpty());
        QVERIFY(toasts().empty());
    }

    void cancelWithoutAnAutomaticCopyLeavesNothing_data()
    {
        QTest::addColumn<bool>("drags");
        QTest::newRow("nothing selected") << false;
        QTest::newRow("automatic copy off") << true;
    }
    void cancelWithoutAnAutomaticCopyLeavesNothing()
    {
        QFETCH(bool, drags);
        useSession(!drags);
        QVERIFY(openArea());
        if (drags)
            select(kDragged);
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(), m_before); }));
        // Quitting waits for everything on its way.
        QCOMPARE(program().quit(), 0);
        QVERIFY(!clipboardIsTaken());
        QVERIFY(history().isEmpty());
        QVERIFY(captures().isEmpty());
    }

    void clickTakesExactlyTheWindowWithItsFrame()
    {
        useSession();
        const auto window =
            desktop().open({.pixels = QRect(420, 260, 300, 200),
                            .picture = checkerboard({64, 64}, 1, Qt::yellow, Qt::black)});
        QVERIFY(becomesActive(*window));
        const QRect frame = window->framePixels();
        const int title = window->pixels().top() - frame.top();
        QVERIFY(title > 0);
        m_before = screen().grabAtRest();
        QVERIFY(openArea());
        input().moveTo(window->pixels().center());
        // Hovering lights the whole frame up, title bar included.
        const QRegion titleBar(frame.x() + 4, frame.y() + 4, frame.width() - 8, title - 5);
        QVERIFY(waitUntil([&] { return difference(screen().grab(), m_before, titleBar) == 0; }));
        input().click(window->pixels().center());
        QVERIFY(returnTakes(frame));
    }

    void clickTakesTheFrontmostWindowThere()
    {
        useSession();
        const auto back = desktop().open({.pixels = QRect(300, 200, 400, 300)});
        const auto front = desktop().open({.pixels = QRect(400, 300, 400, 300), .colour = Qt::red});
        m_before = screen().grabAtRest();
        QVERIFY(openArea());
        input().click({500, 400});
        input().tap(Qt::Key_Return);
        QVERIFY(waitUntil([this] { return !history().isEmpty(); }));
        QVERIFY(waitUntil([&] { return pasted().width() >= 400; }));
        QCOMPARE(pasted().convertToFormat(QImage::Format_RGB32).pixelColor(200, 200),
                 QColor(Qt::red));
    }

    void clickOnNothingSelectsNothing()
    {
        useSession();
        QVERIFY(openArea());
        input().click({500, 400});
        input().tap(Qt::Key_Return); // has nothing to copy
        select(kDragged);
        QVERIFY(isPasted(m_before.copy(kDragged)));
        QVERIFY(history().isEmpty());
        QCOMPARE(overlays().size(), std::size_t(1));
    }

    void selectionIsMovedAndResizedByDrags_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QRect>("taken");
        const QPoint middle(500, 400);
        QTest::newRow("moved") << middle << middle + QPoint(50, -60)
                               << kDragged.translated(50, -60);
        QTest::newRow("moved against the edge")
            << middle << QPoint(1279, 799) << QRect(880, 500, 400, 300);
        QTest::newRow("right edge")
            << QPoint(700, 400) << QPoint(800, 430) << QRect(300, 250, 500, 300);
        QTest::newRow("lower left corner")
            << QPoint(300, 550) << QPoint(260, 600) << QRect(260, 250, 440, 350);
        QTest::newRow("left edge past the right one")
            << QPoint(300, 400) << QPoint(900, 400) << QRect(700, 250, 200, 300);
        QTest::newRow("upper left corner past the lower right one")
            << QPoint(300, 250) << QPoint(1000, 650) << QRect(700, 550, 300, 100);
        QTest::newRow("pressed outside: a new one")
            << QPoint(100, 100) << QPoint(200, 180) << QRect(100, 100, 100, 80);
    }
    void selectionIsMovedAndResizedByDrags()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(QRect, taken);
        useSession();
        QVERIFY(openArea());
        select(kDragged);
        QVERIFY(isPasted(m_before.copy(kDragged)));
        input().drag(from, to);
        QVERIFY(isPasted(m_before.copy(taken)));
        QVERIFY(returnTakes(taken));
    }

    void triggersDuringASessionAreDropped()
    {
        useSession();
        pressHotKey(kAreaKey);
        pressHotKey(kAreaKey);
        QVERIFY(sessionIsReady());
        pressHotKey(kFullScreenKey);
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 4);
        select(kDragged);
        QVERIFY(isPasted(m_before.copy(kDragged)));
        QCOMPARE(overlays().size(), std::size_t(1));
        QVERIFY(returnTakes(kDragged));
        QVERIFY(openArea()); // and not a second one was waiting
    }

    void sessionsFollowEachOther()
    {
        useSession();
        for (int round = 0; round < 3; ++round) {
            QVERIFY(openArea());
            const QRect rect(100 + 50 * round, 200, 200, 150);
            select(rect);
            input().tap(Qt::Key_Return);
            QVERIFY(sessionIsOver());
            QVERIFY(isPasted(m_before.copy(rect)));
            QVERIFY(waitUntil([&] { return history().size() == round + 1; }));
        }
    }

    void sessionNeedsNoWindowManagerAndSharesTheScreenWithACompositor_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::addColumn<bool>("compositor");
        QTest::newRow("bare") << false << false;
        QTest::newRow("compositor") << true << true;
    }
    void sessionNeedsNoWindowManagerAndSharesTheScreenWithACompositor()
    {
        QFETCH(bool, windowManager);
        QFETCH(bool, compositor);
        usePatternedDesktop(
            {.windowManager = windowManager ? WindowManager::openbox : WindowManager::none,
             .compositor = compositor ? Compositor::picom : Compositor::none});
        const auto window =
            desktop().open({.pixels = QRect(0, 0, 1280, 800),
                            .kind = windowManager ? WindowKind::normal : WindowKind::unmanaged,
                            .picture = pattern({1280, 800})});
        startProgram();
        m_before = screen().grabAtRest();
        QVERIFY(openArea());
        select(kDragged);
        QVERIFY(returnTakes(kDragged));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestArea)

#include "tst_area.moc"
