#include "desktop/support/CaptureTest.h"

#include <QRegion>

namespace brindlecam::desktop {

/// Sessions on several screens and at fractional scales: one pixel of the screen is one pixel of
/// the overlay and of the picture.
class TestScreens final : public CaptureTest {
    Q_OBJECT

private:
    static constexpr QRect kLeft{0, 0, 800, 600};
    static constexpr QRect kRight{800, 0, 1366, 768};

    /// Two screens side by side at scales 1 and 1.5.
    void useTwoScreens()
    {
        usePatternedDesktop({.screen = {.pixels = {2166, 768},
                                        .monitors = {{QStringLiteral("LEFT"), kLeft},
                                                     {QStringLiteral("RIGHT"), kRight}}}});
        program().environment().insert(QStringLiteral("QT_SCREEN_SCALE_FACTORS"),
                                       QStringLiteral("LEFT=1;RIGHT=1.5"));
        program().writeSettings({{QStringLiteral("showLoupe"), false}});
        startProgram();
        input().moveTo({400, 500});
        m_before = screen().grabAtRest();
    }

    /// The focused window's screen, null when the program has not got the keyboard.
    QRect screenWithKeyboard()
    {
        for (const SeenWindow& overlay : overlays()) {
            if (overlay.id == windows().focused())
                return overlay.pixels;
        }
        return {};
    }

    bool isBright(const QRect& pixels)
    {
        return waitUntil([&] { return difference(screen().grab(), m_before, pixels) == 0; });
    }

    QImage m_before;

private Q_SLOTS:
    void everyPixelIsSharpAtEveryScale_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("scale");
        for (const QSize size : {QSize(1366, 768), QSize(1920, 1080)}) {
            for (const char* scale : {"1", "1.25", "1.5", "1.75", "2"}) {
                QTest::addRow("%d x %d at %s", size.width(), size.height(), scale)
                    << size << QString::fromLatin1(scale);
            }
        }
    }
    void everyPixelIsSharpAtEveryScale()
    {
        QFETCH(QSize, size);
        QFETCH(QString, scale);
        usePatternedDesktop({.screen = {.pixels = size}});
        program().setScales(scale);
        program().writeSettings({{QStringLiteral("showLoupe"), false}});
        startProgram();
        const QImage board = checkerboard(size, 1, QColor(40, 40, 40), QColor(220, 220, 220));
        desktop().hangWallpaper(board);
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(), board); }));
        QVERIFY(openArea());
        QCOMPARE(overlays().front().pixels, QRect(QPoint(), size));
        const QImage dark = dimmed(board);
        const QRegion belowTheHint(0, 200, size.width(), size.height() - 200);
        QVERIFY(waitUntil([&] { return difference(screen().grab(), dark, belowTheHint) <= 1; }));

        // Up to the last pixel, which Qt's rounded points do not name.
        const QPoint from(300, 300);
        input().drag(from, {size.width() - 1, size.height() - 1}, 3);
        const QRegion inside(320, 320, size.width() - 340, size.height() - 340);
        const QRegion beside(0, 200, 200, size.height() - 200); // left of the tools bar
        const auto sharp = [&] {
            const QImage now = screen().grab();
            return difference(now, board, inside) == 0 && difference(now, dark, beside) <= 1;
        };
        QVERIFY(waitUntil(sharp));
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(toastComes());
        const QImage picture = pasted();
        // Whole points: at most a point more than was dragged.
        const QRect taken(QPoint(size.width() - picture.width(), size.height() - picture.height()),
                          picture.size());
        QVERIFY(taken.x() > from.x() - 2 * scale.toDouble() && taken.x() <= from.x());
        QVERIFY(taken.y() > from.y() - 2 * scale.toDouble() && taken.y() <= from.y());
        QVERIFY(samePixels(picture, board.copy(taken)));
        QVERIFY(isOnlyInHistory(picture));
    }

    void overlaysCoverBothScreens()
    {
        useTwoScreens();
        QVERIFY(openArea(2));
        const auto all = overlays();
        QVERIFY(std::any_of(all.begin(), all.end(),
                            [](const SeenWindow& overlay) { return overlay.pixels == kLeft; }));
        QVERIFY(std::any_of(all.begin(), all.end(),
                            [](const SeenWindow& overlay) { return overlay.pixels == kRight; }));
        const QImage dark = dimmed(m_before);
        const QRegion belowTheHints = QRegion(0, 200, 800, 400) | QRegion(800, 200, 1366, 568);
        QVERIFY(waitUntil([&] { return difference(screen().grab(), dark, belowTheHints) <= 1; }));
    }

    void overlayUnderThePointerHasTheKeyboard_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QRect>("native");
        QTest::newRow("left") << QPoint(799, 300) << kLeft;
        QTest::newRow("right") << QPoint(800, 300) << kRight;
        QTest::newRow("far right") << QPoint(2165, 767) << kRight;
    }
    void overlayUnderThePointerHasTheKeyboard()
    {
        QFETCH(QPoint, pointer);
        QFETCH(QRect, native);
        useTwoScreens();
        input().moveTo(pointer);
        QVERIFY(openArea(2));
        QVERIFY(waitUntil([&] { return screenWithKeyboard() == native; }));
    }

    void selectionOnOneScreenClearsTheOthers()
    {
        useTwoScreens();
        QVERIFY(openArea(2));
        const QRect onLeft(100, 200, 300, 300);
        select(onLeft);
        QVERIFY(isBright(onLeft.adjusted(6, 6, -6, -6)));
        QVERIFY(isPasted(m_before.copy(onLeft)));

        // At 1.5 these are whole points.
        const QRect onRight(800 + 300, 300, 600, 330);
        select(onRight);
        QVERIFY(isPasted(m_before.copy(onRight)));
        QVERIFY(isBright(onRight.adjusted(9, 9, -9, -9)));
        const QImage dark = dimmed(m_before);
        QVERIFY(waitUntil([&] {
            return difference(screen().grab(), dark, onLeft.adjusted(-8, -40, 8, 8)) <= 1;
        }));
        QCOMPARE(screenWithKeyboard(), kRight);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isPasted(m_before.copy(onRight)));
        QVERIFY(isOnlyCapture(m_before.copy(onRight)));
        QVERIFY(toastComes());
        QVERIFY(kRight.contains(toasts().front().pixels));
    }

    void keysActOnTheSelectionFromEitherOverlay()
    {
        useTwoScreens();
        QVERIFY(openArea(2));
        const QRect onRight(800 + 300, 300, 600, 330);
        select(onRight);
        QVERIFY(isPasted(m_before.copy(onRight)));
        // Another overlay takes the keyboard without any press, as a window manager may do.
        for (const SeenWindow& overlay : overlays()) {
            if (overlay.pixels == kLeft)
                desktop().pager().focus(overlay.id);
        }
        QVERIFY(waitUntil([this] { return screenWithKeyboard() == kLeft; }));
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyCapture(m_before.copy(onRight)));
    }

    void escapeEndsTheSessionFromEitherScreen_data()
    {
        QTest::addColumn<QPoint>("press");
        QTest::newRow("left") << QPoint(100, 300);
        QTest::newRow("right") << QPoint(1500, 300);
    }
    void escapeEndsTheSessionFromEitherScreen()
    {
        QFETCH(QPoint, press);
        useTwoScreens();
        QVERIFY(openArea(2));
        select({press, QSize(60, 60)});
        QVERIFY(waitUntil([&] { return screenWithKeyboard().contains(press); }));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return samePixels(screen().grab(), m_before); }));
    }

    void windowAcrossBothScreensIsTakenToTheEdge()
    {
        useTwoScreens();
        const auto window = desktop().open(
            {.pixels = QRect(600, 250, 500, 200), .kind = WindowKind::normal, .colour = Qt::red});
        QVERIFY(becomesActive(*window));
        const QRect frame = window->framePixels();
        m_before = screen().grabAtRest();
        QVERIFY(openArea(2));
        input().click({700, 300});
        QVERIFY(isPasted(m_before.copy(frame & kLeft)));
        input().click({1000, 300});
        QVERIFY(isPasted(m_before.copy(frame & kRight)));
    }

    void takenWindowKeepsItsPixelsWhenItIsMoved_data()
    {
        QTest::addColumn<QString>("scale");
        for (const char* scale : {"1.25", "1.5", "2"})
            QTest::newRow(scale) << QString::fromLatin1(scale);
    }
    void takenWindowKeepsItsPixelsWhenItIsMoved()
    {
        QFETCH(QString, scale);
        usePatternedDesktop();
        program().setScales(scale);
        program().writeSettings({{QStringLiteral("showLoupe"), false}});
        startProgram();
        const auto window = desktop().open({.pixels = QRect(303, 211, 301, 203)});
        QVERIFY(becomesActive(*window));
        const QRect frame = window->framePixels();
        input().moveTo({20, 780});
        m_before = screen().grabAtRest();
        QVERIFY(openArea());
        input().click(frame.center());
        QVERIFY(isPasted(m_before.copy(frame)));
        QRect at = frame;
        for (const QPoint step : {QPoint(1, 1), QPoint(-3, 2), QPoint(1, -1), QPoint(2, 5)}) {
            input().drag(at.center(), at.center() + step, 2);
            at.translate(step);
            QVERIFY(isPasted(m_before.copy(at)));
        }
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyCapture(m_before.copy(at)));
    }

    void screenThatGoesEndsTheSessionThatWasOnIt_data()
    {
        QTest::addColumn<QPoint>("press");
        QTest::addColumn<std::size_t>("left");
        QTest::newRow("selection on the one that goes") << QPoint(1500, 300) << std::size_t(0);
        QTest::newRow("selection on the other") << QPoint(100, 300) << std::size_t(1);
    }
    void screenThatGoesEndsTheSessionThatWasOnIt()
    {
        QFETCH(QPoint, press);
        QFETCH(std::size_t, left);
        useTwoScreens();
        QVERIFY(openArea(2));
        const QRect area(press, QSize(90, 90));
        select(area);
        QVERIFY(waitUntil([this] { return clipboardIsTaken(); }));
        desktop().removeMonitor(QStringLiteral("RIGHT"));
        QTRY_COMPARE(overlays().size(), left);
        if (left > 0) {
            input().tap(Qt::Key_Return);
            QVERIFY(sessionIsOver());
            QVERIFY(isOnlyCapture(m_before.copy(area)));
        }
        input().moveTo({400, 400});
        QVERIFY(openArea());
        QCOMPARE(overlays().front().pixels, kLeft);
    }

    void screenThatComesIsCoveredNextTime()
    {
        usePatternedDesktop(
            {.screen = {.pixels = {2166, 768}, .monitors = {{QStringLiteral("LEFT"), kLeft}}}});
        startProgram();
        QVERIFY(openArea());
        desktop().setMonitor({QStringLiteral("RIGHT"), kRight});
        select({100, 200, 300, 300});
        QVERIFY(waitUntil([this] { return clipboardIsTaken(); }));
        QCOMPARE(overlays().size(), std::size_t(1));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(openArea(2));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestScreens)

#include "tst_screens.moc"
