// Covers BarSurface.
#include "canvas/BarButton.h"
#include "canvas/BarView.h"
#include "support/TestCase.h"

#include <QImage>

namespace brindlecam {

namespace {

std::vector<std::unique_ptr<BarButton>> plainButtons(int count)
{
    std::vector<std::unique_ptr<BarButton>> buttons;
    for (int i = 0; i < count; ++i)
        buttons.push_back(std::make_unique<BarButton>(QString(), QString::number(i)));
    return buttons;
}

/// A ground that notes what reaches it through the bar on it.
class Beneath final : public QWidget {
public:
    int presses = 0;
    int keys = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
    void mouseReleaseEvent(QMouseEvent*) override { ++presses; }
    void mouseMoveEvent(QMouseEvent*) override { ++presses; }
    void mouseDoubleClickEvent(QMouseEvent*) override { ++presses; }
    void keyPressEvent(QKeyEvent*) override { ++keys; }
};

} // namespace

class TestBarView final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aVerticalBarGoesDownFromTheTop()
    {
        const BarView bar(Qt::Vertical, plainButtons(3), nullptr);
        QCOMPARE(bar.size(), QSize(38, 102)); // 3 × 30 + 2 × 2 + 8
        QCOMPARE(bar.buttons().size(), 3U);
        for (int i = 0; i < 3; ++i) {
            const BarButton* button = bar.buttons().at(static_cast<std::size_t>(i));
            QCOMPARE(button->toolTip(), QString::number(i));
            QCOMPARE(button->geometry(), QRect(4, 4 + 32 * i, 30, 30));
            QCOMPARE(button->parentWidget(), &bar);
        }
    }

    void aHorizontalBarGoesRightFromTheLeft()
    {
        const BarView bar(Qt::Horizontal, plainButtons(7), nullptr);
        QCOMPARE(bar.size(), QSize(230, 38)); // 7 × 30 + 6 × 2 + 8
        for (int i = 0; i < 7; ++i)
            QCOMPARE(bar.buttons().at(static_cast<std::size_t>(i))->geometry(),
                     QRect(4 + 32 * i, 4, 30, 30));
    }

    void isARoundedDarkPanelWithAThinLightBorder()
    {
        BarView bar(Qt::Horizontal, plainButtons(7), nullptr);
        QImage image(bar.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        bar.render(&image, {}, {}, QWidget::DrawChildren);
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        const QColor ground = image.pixelColor(115, 19);
        QVERIFY(std::abs(ground.alphaF() - 0.94F) < 0.01F);
        QVERIFY(std::abs(ground.redF() - 0.12F) < 0.01F);
        QVERIFY(image.pixelColor(115, 0).red() > ground.red() + 15);
        QCOMPARE(image.pixelColor(115, 1), ground);
        QCOMPARE(image.pixelColor(115, 37), image.pixelColor(115, 0));
        QCOMPARE(image.pixelColor(0, 19), image.pixelColor(115, 0));
        QCOMPARE(image.pixelColor(229, 19), image.pixelColor(115, 0));
    }

    void pressesOnTheBackgroundAreSwallowed()
    {
        Beneath canvas;
        BarView bar(Qt::Vertical, plainButtons(2), &canvas);
        const QPoint padding(2, 2);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
            QTest::mousePress(&bar, button, {}, padding);
            QTest::mouseRelease(&bar, button, {}, padding);
            QTest::mouseDClick(&bar, button, {}, padding);
        }
        QTest::mouseMove(&bar, {3, 3});
        QCOMPARE(canvas.presses, 0);
    }

    void pressesOnADisabledButtonAreSwallowed()
    {
        Beneath canvas;
        BarView bar(Qt::Vertical, plainButtons(1), &canvas);
        bar.buttons().front()->setEnabled(false);
        canvas.show();
        QVERIFY(QTest::qWaitForWindowExposed(&canvas));
        QTest::mouseClick(canvas.windowHandle(), Qt::LeftButton, {}, {19, 19});
        QCOMPARE(canvas.presses, 0);
    }

    void theWheelAndKeysReachTheCanvas()
    {
        Beneath canvas;
        BarView bar(Qt::Vertical, plainButtons(1), &canvas);
        for (QWidget* over :
             {static_cast<QWidget*>(&bar), static_cast<QWidget*>(bar.buttons().front())}) {
            canvas.keys = 0;
            QWheelEvent wheel({2, 2}, {2, 2}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(over, &wheel);
            QVERIFY(!wheel.isAccepted());
            QTest::keyClick(over, Qt::Key_Return);
            QTest::keyClick(over, Qt::Key_Escape);
            QTest::keyClick(over, Qt::Key_Left);
            QCOMPARE(canvas.keys, 3);
        }
    }

    void thePointerIsAnArrow()
    {
        Beneath canvas;
        canvas.setCursor(Qt::CrossCursor);
        const BarView bar(Qt::Vertical, plainButtons(1), &canvas);
        QCOMPARE(bar.cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(bar.buttons().front()->cursor().shape(), Qt::ArrowCursor);
    }
};

BRINDLECAM_TEST(TestBarView);

} // namespace brindlecam

#include "tst_barview.moc"
