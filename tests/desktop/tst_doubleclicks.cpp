// Covers ClickSink.
#include "desktop/AnnotatingTest.h"
#include "desktop/support/Buttons.h"
#include "look/InterfaceFont.h"

#include <QPainter>

namespace brindlecam::desktop {

/// Actions of the bars chosen by a double click, as many people click everything: the second press
/// comes when the session is over.
class TestDoubleClicks final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QRect kWindow{100, 40, 500, 400}; ///< holds selection and bars
    static constexpr int kBetween = 80;                ///< ms, before a third click
    static constexpr int kNoDoubleClick = 600;         ///< ms, more than Qt waits for a second one

    static QImage page()
    {
        QImage picture(kWindow.size(), QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.setFont(InterfaceFont::regular(17));
        painter.drawText(34, 70, QStringLiteral("Una nota"));
        return picture;
    }

    enum class End { close, copy, text, save, pin };
    static const char* buttonOf(End end)
    {
        switch (end) {
        case End::close:
            return "Cerrar";
        case End::copy:
            return "Copiar";
        case End::text:
            return Buttons::kReadText;
        case End::save:
            return "Guardar";
        case End::pin:
            return Buttons::kPin;
        }
        return "";
    }

    /// Where this button is, once the bars are there; the session ends with the first press on it.
    [[nodiscard]] QPoint placeOfButton(End end)
    {
        return placeOf(buttonOf(end), ControlKind::button).center();
    }

    /// What is there when the session has ended with this.
    [[nodiscard]] bool isCarriedOut(End end)
    {
        switch (end) {
        case End::copy:
            return toastComes();
        case End::text:
            return waitUntil(
                [this] { return desktop().clipboard().text() == QLatin1String("Una nota"); });
        case End::save:
            return dialogOpens();
        case End::pin:
            return waitUntil([this] { return pins().size() == 1; });
        case End::close:
            return true;
        }
        return false;
    }

private Q_SLOTS:
    void secondPressReachesNobody_data()
    {
        QTest::addColumn<WindowManager>("windowManager");
        QTest::newRow("openbox") << WindowManager::openbox;
        QTest::newRow("bare") << WindowManager::none;
    }
    void secondPressReachesNobody()
    {
        QFETCH(WindowManager, windowManager);
        useProgram({}, 1, {.windowManager = windowManager});
        const auto below = desktop().open({.pixels = kWindow, .picture = page()});
        QVERIFY(worksIn(*below));
        QPoint place;
        for (const End end : {End::close, End::copy, End::text, End::save, End::pin}) {
            QVERIFY(selects());
            place = placeOfButton(end);
            below->forget();
            input().doubleClick(place);
            if (end == End::copy) { // some click three times
                QTest::qWait(kBetween);
                input().click(place);
            }
            QVERIFY(sessionIsOver());
            // Only there: whoever goes on working elsewhere is not kept waiting.
            const bool goesOn = end != End::pin && end != End::save;
            if (goesOn)
                input().click(kWindow.topLeft() + QPoint(20, 380));
            QVERIFY(isCarriedOut(end));
            if (goesOn)
                QVERIFY(waitUntil([&] { return !below->clicks().empty(); }));
            QCOMPARE(below->clicks().size(), goesOn ? 1U : 0U);
            if (end == End::save) {
                QVERIFY(dialogHasKeyboard());
                input().tap(Qt::Key_Escape);
                QVERIFY(dialogsAreGone());
            }
            QVERIFY(getsFocus(*below));
            QCOMPARE(below->clicks().size(), goesOn ? 1U : 0U);
        }
        // Nor the pin; and after that the place is like any other.
        QTest::qWait(kNoDoubleClick);
        QCOMPARE(pins().size(), std::size_t(1));
        QVERIFY(below->clicks().empty());
        input().click(place);
        QVERIFY(waitUntil([&] { return below->clicks().size() == 1; }));
        input().doubleClick(kSelected.center().toPoint());
        QVERIFY(waitUntil([this] { return pins().empty(); }));
    }

    void pinUnderTheSecondPressStays_data() { secondPressReachesNobody_data(); }
    void pinUnderTheSecondPressStays()
    {
        QFETCH(WindowManager, windowManager);
        useProgram({}, 1, {.windowManager = windowManager});
        const auto below = desktop().open({.pixels = kWindow});
        QVERIFY(worksIn(*below));
        // So large that the bar lies inside, where the pin will be.
        const QRectF all(QPointF(2, 2), canvas() - QSizeF(4, 4));
        QVERIFY(openArea());
        drag(all.topLeft(), all.bottomRight());
        QVERIFY(waitUntil([this] { return clipboardIsTaken(); }));
        input().doubleClick(placeOfButton(End::pin));
        QVERIFY(sessionIsOver());
        QVERIFY(isCarriedOut(End::pin));
        QTest::qWait(kNoDoubleClick);
        QCOMPARE(pins().size(), std::size_t(1));
        QVERIFY(below->hasFocus()); // a press on the pin would have taken it
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestDoubleClicks>(argc, argv);
}

#include "tst_doubleclicks.moc"
