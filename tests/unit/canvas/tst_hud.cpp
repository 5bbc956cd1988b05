#include "PaintedScale.h"
#include "canvas/Hud.h"
#include "look/InterfaceFont.h"
#include "look/Pill.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

namespace brindlecam {

using namespace std::chrono_literals;

namespace {

const QString kHudText = QStringLiteral("Grosor del lápiz: 4 px");
constexpr QSizeF kHudCanvas(600, 400);

} // namespace

class TestHud final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aTimedMessageGoesByItself()
    {
        Hud hud;
        int changes = 0;
        hud.onChange = [&changes] { ++changes; };
        QElapsedTimer clock;
        clock.start();
        hud.show(kHudText, Hud::Stay::timed, 50ms);
        QCOMPARE(hud.text(), std::optional(kHudText));
        QCOMPARE(changes, 1);
        QTRY_VERIFY(!hud.text());
        QVERIFY(clock.elapsed() >= 45);
        QCOMPARE(changes, 2);
    }

    void aNewMessageStartsItsOwnTime()
    {
        Hud hud;
        hud.show(kHudText, Hud::Stay::timed, 1ms);
        QElapsedTimer clock;
        clock.start();
        hud.show(QStringLiteral("otro"), Hud::Stay::timed, 60ms);
        QTRY_VERIFY(!hud.text());
        QVERIFY(clock.elapsed() >= 55);
    }

    void aStickyMessageOutlivesTheTimeOfTheOneBefore()
    {
        Hud hud;
        hud.show(kHudText, Hud::Stay::timed, 1ms);
        hud.show(QStringLiteral("fijo"), Hud::Stay::sticky);
        Hud later;
        later.show(kHudText, Hud::Stay::timed, 30ms);
        QTRY_VERIFY(!later.text());
        QCOMPARE(hud.text(), std::optional(QStringLiteral("fijo")));
        hud.clear();
        QVERIFY(!hud.text());
    }

    void theSameTextAgainPaintsNothingAnew()
    {
        Hud hud;
        hud.show(kHudText, Hud::Stay::sticky);
        int changes = 0;
        hud.onChange = [&changes] { ++changes; };
        hud.show(kHudText, Hud::Stay::sticky);
        QCOMPARE(changes, 0);
        hud.clear();
        hud.clear();
        QCOMPARE(changes, 1);
    }

    void standsOverTheMiddleOfTheSelection()
    {
        const QRectF selection(200, 100, 250, 200);
        const QRectF rect = Hud::rect(kHudText, selection, kHudCanvas);
        QCOMPARE(rect.center(), selection.center());
        QVERIFY(rect.height() > 28 && rect.height() < 40);
        QVERIFY(rect.width() > 120 && rect.width() < 220);
    }

    void isADarkPanelWithRoomAroundTheText_data() { test::addCanvasScales(); }
    void isADarkPanelWithRoomAroundTheText()
    {
        QFETCH(const qreal, scale);
        const Pill expected{.text = kHudText,
                            .font = InterfaceFont::medium(13),
                            .paddingX = 14,
                            .paddingY = 8,
                            .alpha = 0.88,
                            .radius = 8,
                            .evenDigits = true};
        const QRectF selection(200, 100, 250, 200);
        const QSizeF size = expected.size();
        const QPointF corner = selection.center() - QPointF(size.width(), size.height()) / 2;
        QCOMPARE(Hud::rect(kHudText, selection, kHudCanvas), QRectF(corner, size));
        const QSize canvas = kHudCanvas.toSize();
        QCOMPARE(
            test::paintedCanvas(
                canvas, scale,
                [&](QPainter& p) { Hud::paint(p, kHudText, selection, kHudCanvas); }),
            test::paintedCanvas(canvas, scale, [&](QPainter& p) { expected.paint(p, corner); }));
    }

    void tellsHowLongAMessageStays()
    {
        Hud hud;
        QVERIFY(!hud.stays());
        hud.show(kHudText, Hud::Stay::timed, 1234ms);
        QCOMPARE(hud.stays(), std::optional(1234ms));
        hud.show(kHudText, Hud::Stay::sticky);
        QVERIFY(!hud.stays());
        hud.show(kHudText, Hud::Stay::timed, 1234ms);
        hud.clear();
        QVERIFY(!hud.stays());
    }

    void staysOnTheCanvasAtEveryEdge()
    {
        const QSizeF size = Hud::rect(kHudText, {200, 100, 250, 200}, kHudCanvas).size();
        const auto corner = [](const QRectF& selection) {
            return Hud::rect(kHudText, selection, kHudCanvas).topLeft();
        };
        QCOMPARE(corner({0, 0, 10, 10}), QPointF(4, 4));
        QCOMPARE(corner({590, 390, 10, 10}), QPointF(596 - size.width(), 396 - size.height()));
        // Where there is no room at all, the beginning of the text is seen.
        QCOMPARE(Hud::rect(kHudText, {0, 0, 20, 20}, {20, 20}).topLeft(), QPointF(4, 4));
    }

    void isADarkPanelThatLetsALittleThrough()
    {
        QImage canvas(kHudCanvas.toSize(), QImage::Format_RGB32);
        canvas.fill(Qt::white);
        const QRectF selection(200, 100, 250, 200);
        QPainter painter(&canvas);
        Hud::paint(painter, kHudText, selection, kHudCanvas);
        painter.end();
        const QRect rect = Hud::rect(kHudText, selection, kHudCanvas).toRect();
        const QColor panel = canvas.pixelColor(rect.left() + 6, rect.center().y());
        const int expected = qRound(255 * (0.1 * 0.88 + 1 - 0.88));
        QVERIFY(std::abs(panel.red() - expected) <= 1);
        QCOMPARE(canvas.pixelColor(rect.left() - 1, rect.center().y()), QColor(Qt::white));
        // Rounded by 8: the corner itself is free.
        QCOMPARE(canvas.pixelColor(rect.topLeft()), QColor(Qt::white));
    }
};

BRINDLECAM_TEST(TestHud);

} // namespace brindlecam

#include "tst_hud.moc"
