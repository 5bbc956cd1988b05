#include "EditingFixture.h"
#include "canvas/Loupe.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QMouseEvent>

namespace brindlecam {

namespace {

/// Whether the loupe of a pointer at this place is seen: its centre cell has a green edge, and the
/// picture below has no such green.
bool seesLoupe(const test::CanvasFixture& f, QPoint pointer)
{
    const QImage shown = f.canvas->grab().toImage();
    const QRectF place = Loupe::rect(pointer, test::CanvasFixture::kPixels);
    const QPoint middle(static_cast<int>(place.left()) + 62, static_cast<int>(place.top()) + 62);
    int green = 0;
    for (const QPoint edge : {QPoint(-3, 0), QPoint(3, 0), QPoint(0, -3), QPoint(0, 3)})
        green += shown.pixel(middle + edge) == Config::leafGreen.rgb() ? 1 : 0;
    return green == 4;
}

/// The pointer moves with no button down; a widget that is not shown hears of that only so.
void hover(test::CanvasFixture& f, QPointF to)
{
    QMouseEvent event(QEvent::MouseMove, to, to, to, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(f.canvas.get(), &event);
}

} // namespace

/// The loupe is there while somebody looks for an edge.
class TestLoupeShown final : public test::TestCase {
    Q_OBJECT

private:
    using Fixture = test::CanvasFixture;

private Q_SLOTS:
    void isShownWhileNothingIsSelected()
    {
        Fixture f;
        QVERIFY(!seesLoupe(f, {0, 0})); // nobody knows where the pointer is
        hover(f, {120, 90});
        QVERIFY(seesLoupe(f, {120, 90}));
        hover(f, {300, 200});
        QVERIFY(seesLoupe(f, {300, 200}));
        QVERIFY(!seesLoupe(f, {120, 90}));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(f.canvas.get(), &leave);
        QVERIFY(!seesLoupe(f, {300, 200}));
    }

    void isShownWhileAnAreaIsDraggedOutAndNotAfterwards()
    {
        Fixture f;
        f.move({50, 40});
        f.press({50, 40});
        f.move({150, 110});
        QVERIFY(seesLoupe(f, {150, 110}));
        f.release({150, 110});
        QVERIFY(!seesLoupe(f, {150, 110}));
        hover(f, {100, 80});
        QVERIFY(!seesLoupe(f, {100, 80}));
    }

    void isShownWhileEdgesMoveAndNotWhileTheSelectionDoes()
    {
        Fixture f;
        f.drag({50, 40}, {150, 110});
        f.move({150, 110});
        f.press({150, 110});
        f.move({180, 130});
        QVERIFY(seesLoupe(f, {180, 130}));
        f.release({180, 130});
        QVERIFY(!seesLoupe(f, {180, 130}));
        f.press({100, 80});
        f.move({110, 90});
        QVERIFY(!seesLoupe(f, {110, 90}));
        f.release({110, 90});
    }

    void isNotShownWhileAMarkIsDrawnOrMoved()
    {
        test::EditingFixture e;
        e.choose(Tool::rect);
        e.move({40, 40});
        e.press({40, 40});
        e.move({120, 100});
        QVERIFY(e.canvas->editor().current());
        QVERIFY(!seesLoupe(e, {120, 100}));
        e.release({120, 100});
        e.clickButton(test::EditingFixture::pointerName());
        e.press({40, 70});
        e.move({60, 90});
        QVERIFY(e.canvas->editor().selectedAnnotation());
        QVERIFY(!seesLoupe(e, {60, 90}));
        e.release({60, 90});
    }

    void isNeverShownWhereTheSettingsSaySo()
    {
        Fixture f;
        f.defaults.setBoolean(QStringLiteral("showLoupe"), false);
        hover(f, {120, 90});
        QVERIFY(!seesLoupe(f, {120, 90}));
        f.press({120, 90});
        f.move({180, 130});
        QVERIFY(!seesLoupe(f, {180, 130}));
        f.release({180, 130});
    }

    void theHintIsShownUntilAnAreaIsBegun()
    {
        Fixture f;
        const auto atHint = [&f] { return f.canvas->grab().toImage().copy(0, 55, 400, 35); };
        f.move({20, 280});
        const QImage choosing = atHint();
        f.press({20, 280});
        const QImage begun = atHint();
        QVERIFY(begun != choosing);
        QCOMPARE(begun, Dimming::dimmedCopy(f.image).copy(0, 55, 400, 35));
        f.release({20, 280});
        QCOMPARE(atHint(), choosing);
    }
};

BRINDLECAM_TEST(TestLoupeShown);

} // namespace brindlecam

#include "tst_loupeshown.moc"
