#include "canvas/BarButton.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QAccessible>
#include <QImage>
#include <QSignalSpy>

namespace brindlecam {

namespace {

const QString kButtonTooltip = QStringLiteral("Copiar (⌘C o Enter)");
/// The one symbol whose middle is known to be filled.
const QString kFilledSymbol = QStringLiteral("leaf.fill");

QImage pictureOf(BarButton& button)
{
    QImage image(button.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    button.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// Left of the symbol: only the background is there.
QColor background(BarButton& button)
{
    return pictureOf(button).pixelColor(4, 15);
}

int brightness(const QImage& image)
{
    int sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qGray(image.pixel(x, y));
    }
    return sum;
}

bool accepts(BarButton& button, Qt::Key key)
{
    QKeyEvent press(QEvent::KeyPress, key, {});
    QCoreApplication::sendEvent(&button, &press);
    return press.isAccepted();
}

} // namespace

class TestBarButton final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isASquareOf30PointsNamedByItsTooltip()
    {
        const BarButton button(kFilledSymbol, kButtonTooltip);
        QCOMPARE(button.size(), QSize(30, 30));
        QCOMPARE(button.toolTip(), kButtonTooltip);
        QCOMPARE(button.accessibleName(), kButtonTooltip);
        QVERIFY(button.text().isEmpty());
    }

    void aClickCallsBack()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        int clicks = 0;
        button.onClick = [&clicks] { ++clicks; };
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicks, 1);
        QTest::mousePress(&button, Qt::LeftButton);
        QTest::mouseRelease(&button, Qt::LeftButton, {}, {-20, 15});
        QCOMPARE(clicks, 1);
        button.setEnabled(false);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicks, 1);
    }

    void aClickWithNobodyListeningDoesNothing()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        QSignalSpy clicked(&button, &QAbstractButton::clicked);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
    }

    void aPressDoesNotSwitchItOn()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        button.setOn(false);
        QTest::mouseClick(&button, Qt::LeftButton);
        QVERIFY(!button.isOn());
        button.setOn(true);
        QTest::mouseClick(&button, Qt::LeftButton);
        QVERIFY(button.isOn());
        QVERIFY(button.property("isOn").toBool());
    }

    void assistiveTechnologySeesWhetherItIsOn()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&button);
        QCOMPARE(face->text(QAccessible::Name), kButtonTooltip);
        QVERIFY(!face->state().checkable);
        button.setOn(true);
        QVERIFY(face->state().checkable);
        QVERIFY(face->state().checked);
        button.setOn(false);
        QVERIFY(!face->state().checked);
    }

    void spacePressesAndOtherKeysAreTheCanvass()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        int clicks = 0;
        button.onClick = [&clicks] { ++clicks; };
        QTest::keyClick(&button, Qt::Key_Space);
        QCOMPARE(clicks, 1);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Left,
                                  Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Delete})
            QVERIFY(!accepts(button, key));
        QCOMPARE(clicks, 1);
    }

    void theWheelIsTheCanvass()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        QWheelEvent wheel({15, 15}, {15, 15}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&button, &wheel);
        QVERIFY(!wheel.isAccepted());
    }

    void isGreenWhileItIsOnAndClearOtherwise()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        QCOMPARE(background(button), QColor(Qt::black));
        button.setOn(true);
        QCOMPARE(background(button).rgb(), Config::leafGreen.rgb());
        button.setOn(false);
        QCOMPARE(background(button), QColor(Qt::black));
    }

    void showsThatThePointerIsOverItAndMoreWhenItIsPressed()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        button.setAttribute(Qt::WA_UnderMouse);
        const int hovered = background(button).red();
        QVERIFY(hovered > 15);
        button.setDown(true);
        QVERIFY(background(button).red() > hovered + 10);
    }

    void aDisabledOneIsPalerAndDoesNotAnswerThePointer()
    {
        BarButton button(kFilledSymbol, kButtonTooltip);
        const int bright = brightness(pictureOf(button));
        button.setEnabled(false);
        button.setAttribute(Qt::WA_UnderMouse);
        QCOMPARE(background(button), QColor(Qt::black));
        QVERIFY(brightness(pictureOf(button)) < bright / 2);
    }

    void aMissingSymbolDrawsNothing()
    {
        BarButton button(QStringLiteral("no.such.symbol"), kButtonTooltip);
        QCOMPARE(brightness(pictureOf(button)), 0);
    }

    void aSwatchIsADiscWithALightLineAround()
    {
        BarButton button({}, QStringLiteral("Color"));
        QVERIFY(!button.swatch());
        button.setSwatch(Qt::blue, 20);
        QCOMPARE(button.swatch(), std::optional(QColor(Qt::blue)));
        const QImage image = pictureOf(button);
        QCOMPARE(image.pixelColor(15, 15), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(8, 15), QColor(Qt::blue)); // within the line at 5.25 … 6.75
        QCOMPARE(image.pixelColor(4, 15), QColor(Qt::black));
        QVERIFY(image.pixelColor(6, 15).red() > 100 || image.pixelColor(5, 15).red() > 100);
        QCOMPARE(image.pixelColor(6, 6), QColor(Qt::black)); // a disc, no square
    }

    void aSmallerSwatchIsSmaller()
    {
        BarButton large({}, {});
        large.setSwatch(Qt::white, 20);
        BarButton small({}, {});
        small.setSwatch(Qt::white, 18);
        QVERIFY(brightness(pictureOf(small)) < brightness(pictureOf(large)) * 0.9);
    }

    void aClickTakesNoFocusButTabDoes()
    {
        QCOMPARE(BarButton(kFilledSymbol, {}).focusPolicy(), Qt::TabFocus);
    }

    void aRingShowsTheKeyboardFocus()
    {
        QWidget window;
        BarButton button(QStringLiteral("no.such.symbol"), kButtonTooltip, &window);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        button.setFocus(Qt::TabFocusReason);
        button.setAttribute(Qt::WA_UnderMouse, false);
        const QImage image = pictureOf(button);
        QCOMPARE(image.pixelColor(0, 15), QColor(Qt::white));
        QCOMPARE(image.pixelColor(1, 15), QColor(Qt::white));
        QCOMPARE(image.pixelColor(2, 15), QColor(Qt::black));
        QCOMPARE(image.pixelColor(15, 29), QColor(Qt::white));
        button.clearFocus();
        QCOMPARE(brightness(pictureOf(button)), 0);
    }
};

BRINDLECAM_TEST(TestBarButton);

} // namespace brindlecam

#include "tst_barbutton.moc"
