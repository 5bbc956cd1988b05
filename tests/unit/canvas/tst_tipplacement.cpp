#include "canvas/BarPlacement.h"
#include "canvas/TipPlacement.h"
#include "support/TestCase.h"

#include <vector>

namespace brindlecam {

namespace {

using TipPlacement::Surroundings;

constexpr QSizeF kScreen(1000, 700);
constexpr QSize kTip(80, 25);
constexpr QSize kLongTip(280, 25);
constexpr QSize kTallTip(305, 42);
constexpr int kMargin = 4;
constexpr int kGap = 6;

constexpr int kTools = 12;
constexpr int kActions = 7;
constexpr int kPace = 32;
constexpr QSize kToolsBar(38, kTools* kPace + 6);
constexpr QSize kActionsBar(kActions* kPace + 6, 38);
constexpr QSize kSizePopup(198, 38);
constexpr QSize kPalettePopup(198, 70);

QRect nth(const QRect& bar, int button)
{
    const QPoint along = bar.height() > bar.width() ? QPoint(0, kPace) : QPoint(kPace, 0);
    return {bar.topLeft() + QPoint(4, 4) + along * button, QSize(30, 30)};
}

/// The bars around a selection, and a popup at one of the tools.
struct Bars {
    QRectF selection;
    QSizeF canvas;
    QRect tools = BarPlacement::toolsBar(selection, canvas, kToolsBar);
    QRect actions = BarPlacement::actionsBar(selection, canvas, kActionsBar);
    QRect popup{};

    Bars with(QSize size, int tool) const
    {
        Bars more = *this;
        more.popup = BarPlacement::popup(tools, nth(tools, tool).y() + 15, size, canvas);
        return more;
    }
    [[nodiscard]] QRect minus() const { return {popup.x() + 4, bottomRow(), 30, 30}; }
    [[nodiscard]] QRect track() const { return {popup.x() + 34, bottomRow(), 130, 30}; }
    [[nodiscard]] QRect plus() const { return {popup.x() + 164, bottomRow(), 30, 30}; }

    [[nodiscard]] Surroundings around(const QRect& control, const QRect& bar) const
    {
        Surroundings all{.control = control,
                         .bar = bar,
                         .shown = {tools, actions},
                         .selection = selection,
                         .canvas = canvas};
        if (!popup.isEmpty())
            all.shown.push_back(popup);
        return all;
    }
    [[nodiscard]] Surroundings tool(int index) const { return around(nth(tools, index), tools); }
    [[nodiscard]] Surroundings action(int index) const
    {
        return around(nth(actions, index), actions);
    }
    /// Every control that is shown.
    [[nodiscard]] std::vector<Surroundings> all() const
    {
        std::vector<Surroundings> each;
        each.reserve(kTools + kActions + 3);
        for (int i = 0; i < kTools; ++i)
            each.push_back(tool(i));
        for (int i = 0; i < kActions; ++i)
            each.push_back(action(i));
        if (popup.isEmpty())
            return each;
        for (const QRect& control : {minus(), track(), plus()})
            each.push_back(around(control, popup));
        return each;
    }

private:
    [[nodiscard]] int bottomRow() const { return popup.y() + popup.height() - 34; }
};

/// What is wrong with a tip, in words; nothing when it stands as it must.
QString fault(const std::optional<QRect>& tip, const Surroundings& around)
{
    if (!tip)
        return QStringLiteral("none");
    const QRectF free =
        QRectF(QPointF(), around.canvas).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    if (!free.contains(QRectF(*tip)))
        return QStringLiteral("off the canvas");
    for (const QRect& bar : around.shown) {
        if (bar.adjusted(-kGap, -kGap, kGap, kGap).intersects(*tip))
            return QStringLiteral("too near a bar");
    }
    return {};
}

} // namespace

class TestTipPlacement final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void tipsStandBesideTheirControls_data()
    {
        QTest::addColumn<Surroundings>("around");
        QTest::addColumn<QSize>("tip");
        QTest::addColumn<QPoint>("expected");

        const Bars middle{.selection = {300, 100, 300, 450}, .canvas = kScreen};
        // Tools at 608, 100; actions at 370, 558.
        QTest::newRow("a tool's: right of the bar, centred")
            << middle.tool(2) << kTip << QPoint(652, 170);
        QTest::newRow("the first tool's") << middle.tool(0) << kTip << QPoint(652, 106);
        QTest::newRow("just room on the right")
            << middle.tool(2) << QSize(344, 25) << QPoint(652, 170);
        QTest::newRow("a point too little: over the selection")
            << middle.tool(2) << QSize(345, 25) << QPoint(257, 170);
        QTest::newRow("an action's: below the bar, centred")
            << middle.action(3) << kTip << QPoint(445, 602);
        QTest::newRow("of half a point: centred to the left")
            << middle.action(3) << QSize(81, 25) << QPoint(445, 602);

        const Bars right{.selection = {600, 100, 400, 450}, .canvas = kScreen};
        // Tools at 554, 100.
        QTest::newRow("left bar: left of it") << right.tool(2) << kTip << QPoint(468, 170);

        const Bars low{.selection = {300, 200, 300, 490}, .canvas = kScreen};
        // Actions at 370, 154.
        QTest::newRow("upper bar: above it") << low.action(3) << kTip << QPoint(445, 123);

        const Bars whole{.selection = {0, 0, 1000, 700}, .canvas = kScreen};
        // Tools at 954, 4; actions at 766, 654.
        QTest::newRow("bars inside: left of the tools") << whole.tool(2) << kTip << QPoint(868, 74);
        QTest::newRow("bars inside: above the actions")
            << whole.action(3) << kTip << QPoint(841, 623);
        QTest::newRow("at the right edge: the margin is kept")
            << whole.action(6) << kTip << QPoint(916, 623);

        const Bars corner{.selection = {0, 0, 50, 50}, .canvas = kScreen};
        // Tools at 58, 4; actions at 4, 58: one lies on the other.
        QTest::newRow("bars on each other: right of the tools")
            << corner.tool(8) << kTip << QPoint(102, 266);
        QTest::newRow("under the tools, the actions: above those")
            << corner.tool(1) << kTip << QPoint(102, 27);

        const Bars sizes = middle.with(kSizePopup, 2);
        // Popup at 652, 164: from 158 to 208 nothing else has room.
        QTest::newRow("its own popup on the right: left of the bar")
            << sizes.tool(2) << kTip << QPoint(522, 170);
        QTest::newRow("a popup one above: moved down a little")
            << sizes.tool(3) << kTip << QPoint(652, 208);
        QTest::newRow("a popup one below: moved up a little")
            << sizes.tool(1) << kTip << QPoint(652, 133);
        QTest::newRow("a popup's slider: below it")
            << sizes.around(sizes.track(), sizes.popup) << kTip << QPoint(711, 208);
        QTest::newRow("a popup's minus: as far as to the tools bar")
            << sizes.around(sizes.minus(), sizes.popup) << kLongTip << QPoint(652, 208);

        const Bars palette = middle.with(kPalettePopup, 9);
        // Palette at 652, 388 to 458.
        QTest::newRow("the palette's slider: below it")
            << palette.around(palette.track(), palette.popup) << kTip << QPoint(711, 464);
        QTest::newRow("beside the palette: left of the bar")
            << palette.tool(10) << kTip << QPoint(522, 426);

        const Bars flat{.selection = {500, 300, 200, 100}, .canvas = kScreen};
        // Tools at 708, 300 to 690; actions at 470, 408, to 700.
        QTest::newRow("beside the tools bar: moved away from it, and still under its control")
            << flat.action(6) << kTip << QPoint(622, 452);
        QTest::newRow("a long one likewise") << flat.action(6) << kLongTip << QPoint(422, 452);
    }
    void tipsStandBesideTheirControls()
    {
        QFETCH(Surroundings, around);
        QFETCH(QSize, tip);
        QFETCH(QPoint, expected);
        const std::optional<QRect> place = TipPlacement::place(tip, around);
        QVERIFY(place);
        QCOMPARE(*place, QRect(expected, tip));
        QCOMPARE(fault(place, around), QString());
    }

    void noneWithoutRoom()
    {
        const Bars bars{.selection = {300, 100, 300, 450}, .canvas = kScreen};
        QVERIFY(!TipPlacement::place({993, 25}, bars.action(0)));
        QVERIFY(!TipPlacement::place({80, 693}, bars.tool(0)));
        const Bars tiny{.selection = {5, 5, 20, 20}, .canvas = {40, 30}};
        QVERIFY(!TipPlacement::place(kTip, tiny.tool(0)));
    }

    void neverOnAnyBarHoweverTheyStand_data()
    {
        QTest::addColumn<QSizeF>("canvas");
        QTest::newRow("1280 × 800") << QSizeF(1280, 800);
        QTest::newRow("1366 × 768 pixels at 1.5") << QSizeF(910 + 2.0 / 3, 512);
        QTest::newRow("1280 × 800 pixels at 2") << QSizeF(640, 400);
        QTest::newRow("upright") << QSizeF(600, 1000);
    }
    void neverOnAnyBarHoweverTheyStand()
    {
        QFETCH(QSizeF, canvas);
        constexpr int kShares = 5;
        const qreal w = canvas.width() / kShares;
        const qreal h = canvas.height() / kShares;
        for (int i = 0; i < kShares * kShares * kShares * kShares; ++i) {
            const int x = i % kShares;
            const int y = i / kShares % kShares;
            const int columns = i / kShares / kShares % kShares + 1;
            const int rows = i / kShares / kShares / kShares + 1;
            if (x + columns > kShares || y + rows > kShares)
                continue;
            const Bars bare{.selection = {x * w, y * h, columns * w, rows * h}, .canvas = canvas};
            std::vector<Bars> all{bare, bare.with(kPalettePopup, 9)};
            for (int tool = 1; tool < 9; ++tool)
                all.push_back(bare.with(kSizePopup, tool));
            for (const Bars& bars : all) {
                for (const Surroundings& around : bars.all()) {
                    for (const QSize tip : {QSize(40, 25), kTip, kLongTip, kTallTip}) {
                        const auto place = TipPlacement::place(tip, around);
                        if (const QString wrong = fault(place, around); !wrong.isEmpty()) {
                            qInfo() << around.selection << around.bar << around.control
                                    << bars.popup << tip << place.value_or(QRect());
                            QFAIL(qPrintable(wrong));
                        }
                    }
                }
            }
        }
    }
};

BRINDLECAM_TEST(TestTipPlacement);

} // namespace brindlecam

#include "tst_tipplacement.moc"
