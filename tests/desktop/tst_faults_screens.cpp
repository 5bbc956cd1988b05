#include "desktop/support/CaptureTest.h"

#include <QFile>

namespace brindlecam::desktop {

namespace {

constexpr QRect kLeft(0, 0, 800, 600);
constexpr QRect kRight(800, 0, 800, 600);

Monitor left(const QRect& pixels = kLeft)
{
    return {QStringLiteral("LEFT"), pixels};
}

Monitor right(const QRect& pixels = kRight)
{
    return {QStringLiteral("RIGHT"), pixels};
}

} // namespace

/// Screens that come, go and change while a session is open, and screens of an unusual kind.
class TestFaultsScreens final : public CaptureTest {
    Q_OBJECT

private Q_SLOTS:
    void screenWithoutTheSelectionMayGo_data()
    {
        QTest::addColumn<bool>("pointerOnIt");
        QTest::newRow("keys go to the other screen") << false;
        QTest::newRow("keys went to it") << true;
    }
    void screenWithoutTheSelectionMayGo()
    {
        QFETCH(bool, pointerOnIt);
        useTwoScreens();
        const QRect area(100, 100, 300, 200);
        const QImage before = screen().grab(area);
        input().moveTo(pointerOnIt ? kRight.center() : kLeft.center());
        QVERIFY(openArea(2));
        if (!pointerOnIt)
            select(area);
        desktop().removeMonitor(QStringLiteral("RIGHT"));
        QVERIFY(sessionIsReady());
        QCOMPARE(overlays().front().pixels, kLeft);
        if (pointerOnIt)
            select(area);
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(samePixels(pasted(), before));
        verifyCaptureOn({kLeft});
    }

    void screenWithTheSelectionEndsTheSessionWhenItChanges_data()
    {
        QTest::addColumn<QRect>("becomes");
        QTest::newRow("removed") << QRect();
        QTest::newRow("resized") << kRight.adjusted(0, 0, -160, -120);
        QTest::newRow("moved") << kRight.translated(0, 40);
    }
    void screenWithTheSelectionEndsTheSessionWhenItChanges()
    {
        QFETCH(QRect, becomes);
        useTwoScreens();
        const QRect area(900, 100, 300, 200);
        const QImage before = screen().grab(area);
        QVERIFY(openArea(2));
        select(area);
        QVERIFY(isPasted(before));
        change(becomes);
        QVERIFY(sessionIsOver());
        // Like Escape: what is on the clipboard stays there and in the history, no file is made.
        QVERIFY(isOnlyInHistory(before));
        QVERIFY(samePixels(pasted(), before));
        QCOMPARE(filesIn(program().folders().captures()), QStringList());
        if (becomes.isNull())
            verifyCaptureOn({kLeft});
        else
            verifyCaptureOn({kLeft, becomes});
    }

    void resizedScreenWithoutTheSelectionJustLosesItsOverlay()
    {
        useTwoScreens();
        const QRect area(100, 100, 300, 200);
        const QImage before = screen().grab(area);
        QVERIFY(openArea(2));
        select(area);
        const QRect becomes = kRight.adjusted(0, 0, -160, -120);
        change(becomes);
        QVERIFY(sessionIsReady());
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(samePixels(pasted(), before));
        verifyCaptureOn({kLeft, becomes});
    }

    void onlyScreenThatChangesItsModeEndsTheSession()
    {
        useDesktop({.screen = {.pixels = {1600, 640}}});
        startProgram();
        QVERIFY(openArea());
        desktop().setMode({800, 600});
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return screen().pixels().size() == QSize(800, 600); }));
        QVERIFY(openArea());
        QCOMPARE(overlays().front().pixels, kLeft);
        const QRect area(600, 400, 150, 120);
        select(area);
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QCOMPARE(pasted().size(), area.size());
    }

    void screenAddedInASessionStaysLive()
    {
        useScreens({left()});
        const QRect area(100, 100, 300, 200);
        const QImage before = screen().grab(area);
        QVERIFY(openArea());
        desktop().setMonitor(right());
        // What lies on the new screen takes clicks as ever.
        m_onRight->forget();
        input().click(m_onRight->pixels().center());
        QVERIFY(waitUntil([&] { return !m_onRight->clicks().empty(); }));
        QCOMPARE(overlays().size(), std::size_t(1));
        select(area);
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(samePixels(pasted(), before));
        verifyCaptureOn({kLeft, kRight});
    }

    void everyScreenIsSharpAtItsOwnScale_data()
    {
        QTest::addColumn<QString>("scales");
        QTest::newRow("1 and 1.5") << QStringLiteral("LEFT=1;RIGHT=1.5");
        QTest::newRow("1.5 and 1") << QStringLiteral("LEFT=1.5;RIGHT=1");
        QTest::newRow("1.25 and 2") << QStringLiteral("LEFT=1.25;RIGHT=2");
    }
    void everyScreenIsSharpAtItsOwnScale()
    {
        QFETCH(QString, scales);
        useDesktop({.screen = {.pixels = {1600, 600}, .monitors = {left(), right()}},
                    .windowManager = WindowManager::none});
        const QImage board = checkerboard({1600, 600}, 1, Qt::black, Qt::white);
        const auto window = desktop().open(
            {.pixels = QRect(0, 0, 1600, 600), .kind = WindowKind::unmanaged, .picture = board});
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(), board); }));
        program().setScales(scales);
        program().environment().insert(QStringLiteral("QT_SCALE_FACTOR_ROUNDING_POLICY"),
                                       QStringLiteral("PassThrough"));
        startProgram();
        for (const QRect& display : {kLeft, kRight}) {
            // Whole points at each of these scales: 60 pixels are 60, 48, 40 and 30 points.
            const QRect area(display.topLeft() + QPoint(120, 60), QSize(300, 240));
            QVERIFY(openArea(2));
            select(area);
            const QRect inner = area.adjusted(30, 30, -30, -30);
            QVERIFY(waitUntil([&] { return samePixels(screen().grab(inner), board.copy(inner)); }));
            input().tap(Qt::Key_Return);
            QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
            QVERIFY(samePixels(pasted(), board.copy(area)));
            QVERIFY(nothingIsShown());

            input().moveTo(display.center());
            pressHotKey(kFullScreenKey);
            QVERIFY(toastSays(QStringLiteral("Pantalla completa copiada y guardada")));
            QVERIFY(samePixels(pasted(), board.copy(display)));
            QVERIFY(nothingIsShown());
        }
    }

    void keysMeanTheSelectionOnWhicheverScreen()
    {
        useTwoScreens();
        const QRect area(100, 100, 300, 200);
        const QImage before = screen().grab(area);
        QVERIFY(openArea(2));
        select(area);
        QVERIFY(isPasted(before));
        for (const SeenWindow& overlay : overlays()) {
            if (overlay.pixels == kRight)
                desktop().pager().focus(overlay.id);
        }
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(samePixels(pasted(), before));
    }

    void sixteenBitsAreEnough_data()
    {
        QTest::addColumn<Compositor>("compositor");
        QTest::newRow("composited") << Compositor::picom;
        QTest::newRow("not composited") << Compositor::none;
    }
    void sixteenBitsAreEnough()
    {
        QFETCH(Compositor, compositor);
        useDesktop({.screen = {.pixels = {640, 480}, .depth = 16}, .compositor = compositor});
        const auto window = openSample(QRect(50, 50, 400, 300));
        startProgram();
        const QRect area(window->pixels().topLeft() + QPoint(30, 20), QSize(250, 200));
        const QImage before = screen().grabAtRest();
        QVERIFY(openArea());
        select(area);
        const QRect inner = area.adjusted(20, 20, -20, -20);
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(inner), before.copy(inner)); }));
        // Around the selection everything is there, only darker.
        const QPoint outside = window->pixels().bottomRight() - QPoint(20, 20);
        QVERIFY(waitUntil([&] {
            const int shown = qGray(screen().pixel(outside).rgb());
            const int full = qGray(before.pixel(outside));
            return shown > 0 && shown < full;
        }));
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(samePixels(pasted(), before.copy(area)));
        QVERIFY(nothingIsShown());
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(), before); }));
        pressHotKey(kFullScreenKey);
        QVERIFY(toastSays(QStringLiteral("Pantalla completa copiada y guardada")));
        QVERIFY(samePixels(pasted(), before));
    }

private:
    void useScreens(const std::vector<Monitor>& monitors)
    {
        useDesktop({.screen = {.pixels = {1600, 640}, .monitors = monitors},
                    .windowManager = WindowManager::none});
        m_onLeft = openSample(QRect(50, 50, 400, 300), WindowKind::unmanaged);
        m_onRight = openSample(QRect(850, 50, 400, 300), WindowKind::unmanaged);
        input().moveTo(kLeft.center());
        startProgram();
    }
    void useTwoScreens() { useScreens({left(), right()}); }

    /// The right screen is another one from now on; a null rectangle unplugs it.
    void change(const QRect& becomes)
    {
        if (becomes.isNull())
            desktop().removeMonitor(QStringLiteral("RIGHT"));
        else
            desktop().setMonitor(right(becomes));
    }

    /// The next capture knows exactly these screens.
    void verifyCaptureOn(const std::vector<QRect>& screens)
    {
        QVERIFY(nothingIsShown());
        input().moveTo(kLeft.center());
        const QRect area(60, 60, 90, 70);
        const QImage before = screen().grab(area);
        QVERIFY(openArea(screens.size()));
        for (const SeenWindow& overlay : overlays())
            QVERIFY(std::ranges::count(screens, overlay.pixels) == 1);
        select(area);
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QVERIFY(samePixels(pasted(), before));
    }

    std::unique_ptr<ClientWindow> m_onLeft;
    std::unique_ptr<ClientWindow> m_onRight;
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestFaultsScreens)

#include "tst_faults_screens.moc"
