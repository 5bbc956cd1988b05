#include "CanvasFixture.h"
#include "canvas/Hud.h"
#include "canvas/HudView.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

const QString kShown = QStringLiteral("Grosor del lápiz: 4 px");

} // namespace

class TestHudView final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void coversTheMessageAndShowsIt()
    {
        QWidget canvas;
        canvas.resize(400, 300);
        HudView view(canvas);
        QVERIFY(view.isHidden());
        const QRectF selection(100, 100, 201, 101);
        view.present(kShown, selection, {400, 300});
        QVERIFY(!view.isHidden());
        QVERIFY(QRectF(view.geometry()).contains(Hud::rect(kShown, selection, {400, 300})));
        const QColor panel = canvas.grab().toImage().pixelColor(view.pos() + QPoint(7, 15));
        QVERIFY(panel.lightness() < 80);
    }

    void hidesWithoutTextOrSelection()
    {
        QWidget canvas;
        HudView view(canvas);
        view.present(kShown, {10, 10, 50, 50}, {400, 300});
        view.present(QString(), {10, 10, 50, 50}, {400, 300});
        QVERIFY(view.isHidden());
        view.present(kShown, {}, {400, 300});
        QVERIFY(view.isHidden());
    }

    void aMessageOfASmallSelectionIsNotHiddenByTheBars()
    {
        test::CanvasFixture f;
        f.drag({60, 60}, {90, 90});
        const auto* view = f.canvas->findChild<HudView*>();
        const BarButton* copy = f.button(QStringLiteral("Copiar (⌘C o Enter)"));
        QVERIFY(view->isHidden());
        f.canvas->actions().scrollCapture(); // too small: says so
        QVERIFY(!view->isHidden());
        const QRect tools = f.button(tooltip(Tool::pen))->parentWidget()->geometry();
        QVERIFY(view->geometry().intersects(tools));
        const QObjectList all = f.canvas->children();
        QVERIFY(all.indexOf(view) > all.indexOf(copy->parent()));
        QCOMPARE(all.last(), view);
    }

    void theMouseGoesThroughTheMessage()
    {
        test::CanvasFixture f;
        f.drag({60, 60}, {90, 90});
        const BarButton* pen = f.button(tooltip(Tool::pen));
        const QPoint at = pen->mapTo(f.canvas.get(), QPoint(5, 25));
        f.canvas->actions().scrollCapture();
        QVERIFY(f.canvas->findChild<HudView*>()->geometry().contains(at));
        QCOMPARE(f.canvas->childAt(at), pen);
    }
};

BRINDLECAM_TEST(TestHudView);

} // namespace brindlecam

#include "tst_hudview.moc"
