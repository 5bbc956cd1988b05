#include "desktop/support/PinTest.h"
#include "desktop/support/Windows.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace brindlecam::desktop {

/// Pins among windows, desktops, screens and scales.
class TestPinsSurroundings final : public PinTest {
    Q_OBJECT

private:
    static constexpr QRect kLeft{0, 0, 800, 600};
    static constexpr QRect kRight{800, 0, 1366, 768};
    static constexpr QRect kOnRight{1001, 300, 450, 300};

    /// Two screens side by side at these scales.
    void useTwoScreens(const char* scales = "LEFT=1;RIGHT=1.5")
    {
        usePatternedDesktop({.screen = {.pixels = {2166, 768},
                                        .monitors = {{QStringLiteral("LEFT"), kLeft},
                                                     {QStringLiteral("RIGHT"), kRight}}},
                             .accessibility = Accessibility::on});
        program().setScales(QString::fromLatin1(scales));
        program().writeSettings({{QStringLiteral("showLoupe"), false}});
        startProgram();
    }

    /// Takes an area of the right screen, at 1.5 pixels per point.
    [[nodiscard]] bool pinOnTheRight()
    {
        if (!openArea(2) || !pressPinButton(kOnRight))
            return false;
        input().moveTo({20, 580});
        return sessionIsOver() && isOnlyPin(kOnRight);
    }

    /// Whether the pin there shows this picture as well as its size allows: pixel for pixel, or
    /// drawn smaller once, with nothing moved.
    [[nodiscard]] bool isSharp(const QRect& place, const QImage& picture)
    {
        constexpr int kEdge = 12; // border and corners
        constexpr int kRounding = 2;
        QImage expected(place.size(), QImage::Format_RGB32);
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, picture.size() != place.size());
        painter.drawImage(expected.rect(), picture);
        painter.end();
        const QRect inside = expected.rect().adjusted(kEdge, kEdge, -kEdge, -kEdge);
        return waitUntil([&] {
            return difference(screen().grab(place), expected, inside) <=
                   (picture.size() == place.size() ? 0 : kRounding);
        });
    }

    /// Whether its window ends at the corners.
    [[nodiscard]] bool isCut()
    {
        const auto all = pins();
        if (all.empty())
            return false;
        return all.front().shaped;
    }
    /// Whether its window has an alpha channel.
    [[nodiscard]] bool isTranslucent()
    {
        const auto all = pins();
        return !all.empty() && all.front().translucent;
    }
    [[nodiscard]] QImage corner() { return screen().grab(QRect(kDragged.topLeft(), QSize(6, 6))); }

private Q_SLOTS:
    void pinLiesAboveTheActiveWindow_data() { addCompositors(); }
    void pinLiesAboveTheActiveWindow()
    {
        QFETCH(Compositor, compositor);
        usePins({.compositor = compositor});
        QVERIFY(pinArea());
        const auto window = desktop().open(beneath());
        QVERIFY(activate(*window));
        QVERIFY(liesAbove(Qt::red));
        QVERIFY(isRoundOver(Qt::red));
        QCOMPARE(isCut(), compositor == Compositor::none);
        input().drag({500, 400}, {520, 430});
        QVERIFY(liesAbove(Qt::red, kDragged.translated(20, 30)));
    }

    void pinStandsAndMovesWithoutAWindowManager()
    {
        usePins({.windowManager = WindowManager::none});
        QVERIFY(pinArea());
        input().drag({500, 400}, {520, 430});
        QVERIFY(isOnlyPin(kDragged.translated(20, 30)));
        QVERIFY(shows(kDragged.translated(20, 30), captured()));
    }

    void pinTakesNoFocusWhenItAppears()
    {
        usePins();
        const auto window =
            desktop().open({.pixels = QRect(800, 100, 300, 300), .colour = Qt::red});
        QVERIFY(activate(*window));
        QVERIFY(pinArea());
        QVERIFY(becomesActive(*window));
        QVERIFY(getsFocus(*window));
        input().click({500, 400});
        QVERIFY(programHasKeyboard());
    }

    void pinStaysOnEveryDesktop()
    {
        usePins();
        desktop().pager().setDesktopCount(3);
        QVERIFY(pinArea());
        input().drag({500, 400}, {520, 430});
        const QRect moved = kDragged.translated(20, 30);
        for (const int number : {2, 1, 0}) {
            desktop().pager().goToDesktop(number);
            QVERIFY(waitUntil([&] { return desktop().pager().currentDesktop() == number; }));
            QVERIFY(isOnlyPin(moved));
            QVERIFY(shows(moved, captured()));
        }
    }

    void everyPixelIsSharpAtEveryScale_data()
    {
        QTest::addColumn<QString>("scale");
        for (const char* scale : {"1.25", "1.5", "1.75", "2", "3"})
            QTest::addRow("%s", scale) << QString::fromLatin1(scale);
    }
    void everyPixelIsSharpAtEveryScale()
    {
        QFETCH(QString, scale);
        usePatternedDesktop(
            {.screen = {.pixels = {1920, 1080}}, .accessibility = Accessibility::on});
        program().setScales(scale);
        program().writeSettings({{QStringLiteral("showLoupe"), false}});
        startProgram();
        input().moveTo({10, 1060});
        const QImage clean = screen().grabAtRest();
        QVERIFY(openArea());
        QVERIFY(pressPinButton({301, 203, 804, 297}));
        const qreal factor = scale.toDouble();
        input().moveTo({10, 1060});
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return pins().size() == 1; }));
        const QRect place = pins().front().pixels;
        const int border = qCeil(1.5 * factor);
        const int radius = qCeil(6.75 * factor); // of the border's outer edge
        QRegion inside = QRect(QPoint(), place.size()).adjusted(border, border, -border, -border);
        for (const int x : {0, place.width() - radius}) {
            for (const int y : {0, place.height() - radius})
                inside -= QRect(x, y, radius, radius);
        }
        QVERIFY(waitUntil(
            [&] { return difference(screen().grab(place), clean.copy(place), inside) == 0; }));
        // The border is as even on the far edges as on the near ones.
        input().moveTo({700, 300});
        const QColor green(46, 179, 77);
        const auto isGreen = [&](int fromEdge) {
            const QPoint far(place.width() - 1 - fromEdge, place.height() - 1 - fromEdge);
            const QImage now = screen().grab(place);
            return std::ranges::all_of(std::array{QPoint(100, fromEdge), QPoint(fromEdge, 100),
                                                  QPoint(100, far.y()), QPoint(far.x(), 100)},
                                       [&](QPoint at) { return now.pixelColor(at) == green; });
        };
        const int wholePixels = qFloor(1.5 * factor);
        for (int fromEdge = 0; fromEdge < wholePixels; ++fromEdge)
            QVERIFY(waitUntil([&] { return isGreen(fromEdge); }));
        QVERIFY(!isGreen(wholePixels));
        input().drag({700, 300}, {723, 317});
        QVERIFY(isOnlyPin(place.translated(23, 17)));
        input().moveTo({10, 1060});
        QVERIFY(waitUntil([&] {
            return difference(screen().grab(place.translated(23, 17)), clean.copy(place), inside) ==
                   0;
        }));
    }

    void pinKeepsItsPointsOnAScreenOfAnotherScale()
    {
        useTwoScreens();
        const QImage picture = screen().grabAtRest().copy(kOnRight);
        QVERIFY(pinOnTheRight());
        input().drag({1100, 400}, {300, 300});
        // 450 × 300 pixels at 1.5 are 300 × 200 at 1, still held at the same place.
        QVERIFY(waitUntil([this] {
            return pins().size() == 1 && pins().front().pixels.size() == QSize(300, 200);
        }));
        QVERIFY(pins().front().pixels.contains(300, 300));
        QVERIFY(kLeft.contains(pins().front().pixels));
        QVERIFY(isSharp(pins().front().pixels, picture));
        input().drag({300, 300}, {1100, 400});
        QVERIFY(waitUntil([this] {
            return pins().size() == 1 && pins().front().pixels.size() == QSize(450, 300);
        }));
        QVERIFY(kRight.contains(pins().front().pixels));
        QVERIFY(isSharp(pins().front().pixels, picture));
    }

    void pinOfARemovedScreenComesBack()
    {
        useTwoScreens();
        const QImage picture = screen().grabAtRest().copy(kOnRight);
        QVERIFY(pinOnTheRight());
        desktop().removeMonitor(QStringLiteral("RIGHT"));
        QVERIFY(waitUntil(
            [this] { return pins().size() == 1 && kLeft.contains(pins().front().pixels); }));
        QCOMPARE(pins().front().pixels.size(), QSize(300, 200));
        QVERIFY(isSharp(pins().front().pixels, picture));
        input().doubleClick(pins().front().pixels.center());
        QVERIFY(pinsAreGone());
    }

    void lateWindowManagerIsWaitedFor()
    {
        usePins();
        QVERIFY(pinArea());
        desktop().pauseWindowManager();
        for (int turn = 0; turn < 4; ++turn) {
            input().click({500, 400}, Button::wheelUp);
            QTest::qWait(200); // so late does it answer
        }
        desktop().resumeWindowManager();
        // 400 × 1.05⁴
        QVERIFY(waitUntil(
            [this] { return pins().size() == 1 && pins().front().pixels.width() == 486; }));
        input().drag({500, 400}, {560, 420});
        QVERIFY(waitUntil([this] {
            const QPoint centre = pins().size() == 1 ? pins().front().pixels.center() : QPoint();
            return (centre - QPoint(560, 420)).manhattanLength() <= 2;
        }));
    }

    void pinIsResizedWhereSomebodyElseHasMovedIt()
    {
        usePins();
        QVERIFY(pinArea());
        QVERIFY(shows(kDragged, captured())); // it has settled
        desktop().pager().move(pins().front().id, {500, 350});
        QVERIFY(isOnlyPin(QRect(500, 350, 400, 300)));
        input().click({700, 500}, Button::wheelUp);
        QVERIFY(isOnlyPin(QRect(490, 343, 420, 315)) || isOnlyPin(QRect(490, 342, 420, 315)));
    }

    void longPinKeepsTheLimits()
    {
        usePins({.screen = {.pixels = {10240, 400}}});
        const QRect area(100, 100, 10000, 100);
        QVERIFY(pinArea(area));
        QVERIFY(shows(area, before().copy(area)));
        const auto becomes = [this](QSize size) {
            return waitUntil(
                [&] { return pins().size() == 1 && pins().front().pixels.size() == size; });
        };
        for (int turn = 0; turn < 60; ++turn)
            input().click({5100, 150}, Button::wheelDown);
        QVERIFY(becomes({2000, 20}));
        for (int turn = 0; turn < 80; ++turn)
            input().click({5100, 150}, Button::wheelUp);
        QVERIFY(becomes({30000, 300}));
    }

    void openPinTurnsRightWhenTheCompositorGoesAndComes()
    {
        usePins({.compositor = Compositor::picom});
        QVERIFY(pinArea());
        const auto page = desktop().open(beneath());
        QVERIFY(activate(*page));
        QVERIFY(liesAbove(Qt::red));
        QVERIFY(isRoundOver(Qt::red));
        QVERIFY(!isCut());
        QVERIFY(isTranslucent());
        const QImage soft = corner();
        desktop().endCompositor();
        QVERIFY(waitUntil([this] { return isCut(); }));
        QVERIFY(waitUntil([&] { return !samePixels(corner(), soft); }));
        QVERIFY(isRoundOver(Qt::red));
        QVERIFY(shows(kDragged, captured()));
        desktop().startCompositor();
        QVERIFY(waitUntil([this] { return !isCut(); }));
        QVERIFY(waitUntil([&] { return samePixels(corner(), soft); }));
        QVERIFY(isRoundOver(Qt::red));
        QVERIFY(shows(kDragged, captured()));
        QVERIFY(isOnlyPin(kDragged));
    }

    void pinThatCannotBlendStaysCutUnderACompositor()
    {
        usePins();
        QVERIFY(pinArea());
        const auto page = desktop().open(beneath());
        QVERIFY(activate(*page));
        QVERIFY(liesAbove(Qt::red));
        QVERIFY(isRoundOver(Qt::red));
        QVERIFY(isCut());
        QVERIFY(!isTranslucent()); // the server would compose it itself, slowly
        desktop().startCompositor();
        QVERIFY(isRoundOver(Qt::red));
        QVERIFY(shows(kDragged, captured()));
        // By the time it has another size, it knows of the compositor.
        input().click({500, 400}, Button::wheelUp);
        QVERIFY(waitUntil(
            [this] { return pins().size() == 1 && pins().front().pixels.width() == 420; }));
        QVERIFY(isRoundOver(Qt::red, pins().front().pixels));
        QVERIFY(isCut());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPinsSurroundings)

#include "tst_pins_surroundings.moc"
