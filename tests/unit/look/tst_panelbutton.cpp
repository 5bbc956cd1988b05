#include "look/PanelButton.h"
#include "support/TestCase.h"

#include <QEnterEvent>
#include <QKeyEvent>
#include <QSignalSpy>

namespace brindlecam {

namespace {

/// How bright its ground is, beside the text.
int groundOf(PanelButton& button)
{
    QImage image(button.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    button.render(&image, {}, {}, QWidget::RenderFlags());
    return image.pixelColor(5, button.height() / 2).lightness();
}

void sendPress(PanelButton& button, Qt::Key key, bool repeat)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, {}, repeat);
    QCoreApplication::sendEvent(&button, &press);
}

} // namespace

class TestPanelButton final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isAsHighAsItsSizeSaysAndAsWideAsItsTitle()
    {
        const QString shorter = QStringLiteral("Listo");
        const PanelButton small(shorter, PanelButton::Size::small, nullptr);
        const PanelButton regular(shorter, PanelButton::Size::regular, nullptr);
        const PanelButton longer(QStringLiteral("Terminar"), PanelButton::Size::regular, nullptr);
        QCOMPARE(small.sizeHint().height(), 20);
        QCOMPARE(regular.sizeHint().height(), 28);
        QVERIFY(small.sizeHint().width() < regular.sizeHint().width());
        QVERIFY(regular.sizeHint().width() < longer.sizeHint().width());
        QCOMPARE(regular.accessibleName(), shorter);
    }

    void groundIsBrighterUnderThePointerAndBrighterYetWhenPressed()
    {
        for (const auto size : {PanelButton::Size::small, PanelButton::Size::regular}) {
            PanelButton button(QStringLiteral("Listo"), size, nullptr);
            button.resize(button.sizeHint());
            button.show();
            QVERIFY(QTest::qWaitForWindowExposed(&button));
            button.setAttribute(Qt::WA_UnderMouse, false); // wherever the pointer is
            const int resting = groundOf(button);
            button.setAttribute(Qt::WA_UnderMouse);
            const int hovered = groundOf(button);
            button.setDown(true);
            const int pressed = groundOf(button);
            QVERIFY(resting > 10);
            QVERIFY(hovered > resting + 10);
            QVERIFY(pressed > hovered + 10);
        }
    }

    void heldReturnPressesItOnceAndSpaceToo()
    {
        PanelButton button(QStringLiteral("Listo"), PanelButton::Size::regular, nullptr);
        button.show();
        const QSignalSpy clicks(&button, &QAbstractButton::clicked);
        sendPress(button, Qt::Key_Return, false);
        QCOMPARE(clicks.count(), 1);
        sendPress(button, Qt::Key_Return, true);
        QCOMPARE(clicks.count(), 1);
        sendPress(button, Qt::Key_Enter, false);
        QCOMPARE(clicks.count(), 2);
        QTest::keyClick(&button, Qt::Key_Space);
        QCOMPARE(clicks.count(), 3);
    }

    void clickLeavesTheKeyboardWhereItIs()
    {
        QWidget panel;
        QWidget other(&panel);
        other.setFocusPolicy(Qt::StrongFocus);
        PanelButton button(QStringLiteral("Listo"), PanelButton::Size::regular, &panel);
        panel.show();
        panel.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        other.setFocus();
        const QSignalSpy clicks(&button, &QAbstractButton::clicked);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicks.count(), 1);
        QVERIFY(other.hasFocus());
    }
};

BRINDLECAM_TEST(TestPanelButton);

} // namespace brindlecam

#include "tst_panelbutton.moc"
