// Covers TextEntry, TextField.
#include "EditingFixture.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QClipboard>
#include <QGuiApplication>

namespace brindlecam {

/// Typing a text mark on the canvas.
class TestCanvasTyping final : public test::TestCase {
    Q_OBJECT

private:
    using Editor = test::EditingFixture;

private Q_SLOTS:
    void typedTextBecomesAMarkAndTheSessionGoesOn()
    {
        Editor e;
        e.type(QStringLiteral("Hola"));
        QVERIFY(e.marks().empty());
        QTest::keyClick(e.field(), Qt::Key_Return);
        QVERIFY(!e.field());
        QVERIFY(e.outcomes.empty());
        QCOMPARE(e.mark(0).text(), QStringLiteral("Hola"));
        QCOMPARE(e.mark(0).color(), Config::palette.front());
    }

    void escapeForgetsTheTextAloneAndThenEndsTheSession()
    {
        Editor e;
        e.type(QStringLiteral("Hola"));
        QTest::keyClick(e.field(), Qt::Key_Escape);
        QVERIFY(!e.field());
        QVERIFY(e.marks().empty());
        QVERIFY(e.outcomes.empty());
        e.key(Qt::Key_Escape);
        QCOMPARE(e.outcomes.size(), 1U);
    }

    void aPendingTextIsInTheCopiedAndInTheSavedPicture()
    {
        for (const Qt::Key letter : {Qt::Key_C, Qt::Key_S}) {
            Editor e;
            e.type(QStringLiteral("Hola"));
            QTest::keyClick(e.field(), letter, Qt::ControlModifier);
            QCOMPARE(e.outcomes.size(), 1U);
            const auto* saved = std::get_if<outcome::Save>(&e.outcomes.front());
            const Rendered& picture =
                saved ? saved->picture : std::get<outcome::Copy>(e.outcomes.front()).picture;
            QCOMPARE(saved != nullptr, letter == Qt::Key_S);
            QCOMPARE(e.mark(0).text(), QStringLiteral("Hola"));
            QVERIFY(picture.image() != e.image.copy(10, 10, 250, 270));
        }
    }

    void keysThatMeanNothingInTheFieldStayThere()
    {
        Editor e;
        e.type(QStringLiteral("Hola"));
        const QRectF before = e.canvas->selection().rect();
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Delete, Qt::Key_F5}) {
            QTest::keyClick(e.field(), key);
            QTest::keyClick(e.field(), key, Qt::ShiftModifier);
            QTest::keyClick(e.field(), key, Qt::AltModifier);
        }
        QTest::keyClick(e.field(), Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(e.canvas->selection().rect(), before);
        QCOMPARE(e.field()->text(), QStringLiteral("Hola"));
    }

    void escapeDropsACompositionFirstThenTheText()
    {
        Editor e;
        e.type(QStringLiteral("Hola"));
        QInputMethodEvent composing(QStringLiteral("ka"), {});
        QCoreApplication::sendEvent(e.field(), &composing);
        QVERIFY(e.canvas->stepBack());
        QVERIFY(e.field());
        QCOMPARE(e.field()->text(), QStringLiteral("Hola"));
        QVERIFY(e.canvas->stepBack());
        QVERIFY(!e.field());
        QVERIFY(!e.canvas->stepBack());
        QVERIFY(e.marks().empty());
    }

    void undoWhileTypingUndoesTyping()
    {
        Editor e;
        e.draw(Tool::line, {50, 160}, {150, 160});
        e.type(QStringLiteral("Hola"));
        e.clickButton(QStringLiteral("Deshacer (⌘Z)"));
        QVERIFY(e.field());
        QVERIFY(e.field()->text() != QStringLiteral("Hola"));
        QTest::keyClick(e.field(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(e.marks().size(), 1U);
        e.clickButton(QStringLiteral("Rehacer (⇧⌘Z)"));
        QCOMPARE(e.field()->text(), QStringLiteral("Hola"));
    }

    void standardKeysCountByTheirPlaceWhereTheMapHasNoLatinLetters()
    {
        constexpr quint32 kPlaceZ = 52;
        constexpr quint32 kPlaceC = 54;
        Editor e;
        e.beginText({60, 60});
        const QString typed = QStringLiteral("Да");
        e.field()->insert(typed);
        const auto press = [&e](char32_t letter, quint32 place, Qt::KeyboardModifiers modifiers) {
            QKeyEvent event(QEvent::KeyPress, int(letter), modifiers | Qt::ControlModifier, place,
                            0, 0);
            QCoreApplication::sendEvent(e.field(), &event);
        };
        press(U'Я', kPlaceZ, {});
        QVERIFY(e.field());
        QCOMPARE(e.field()->text(), QString());
        press(U'Я', kPlaceZ, Qt::ShiftModifier);
        QCOMPARE(e.field()->text(), typed);
        e.field()->selectAll();
        press(U'С', kPlaceC, {});
        QCOMPARE(QGuiApplication::clipboard()->text(), typed);
        QVERIFY(e.outcomes.empty());
        e.field()->deselect();
        press(U'С', kPlaceC, {});
        QCOMPARE(e.outcomes.size(), 1U);
        QCOMPARE(e.mark(0).text(), typed);
    }

    void thePickedColourIsThatOfTheTextBeingTyped()
    {
        Editor e;
        e.type(QStringLiteral("Hola"));
        e.clickButton(QStringLiteral("Color"));
        e.clickButton(QStringLiteral("Verde"));
        QVERIFY(e.field());
        e.click(QPoint(60, 200)); // another text begins
        QCOMPARE(e.mark(0).color(), Config::leafGreen);
        QVERIFY(e.field());
        QVERIFY(e.field()->text().isEmpty());
    }

    void choosingAToolMakesTheTextAMark()
    {
        Editor e;
        e.type(QStringLiteral("Hola"));
        e.choose(Tool::pen);
        QVERIFY(!e.field());
        QCOMPARE(e.mark(0).text(), QStringLiteral("Hola"));
    }

    void aPastedTextIsOneLine()
    {
        Editor e;
        e.beginText({60, 60});
        e.field()->insert(QStringLiteral("uno\ndos\ttres\u2028cuatro"));
        QTest::keyClick(e.field(), Qt::Key_Return);
        QCOMPARE(e.mark(0).text(), QStringLiteral("uno dos tres cuatro"));
    }

    void spacesOfOtherKindsStayAsTheyAre()
    {
        Editor e;
        e.beginText({60, 60});
        const QString spaced = QStringLiteral("10\u00a0000 あ\u3000い");
        e.field()->insert(spaced);
        QTest::keyClick(e.field(), Qt::Key_Return);
        QCOMPARE(e.mark(0).text(), spaced);
    }

    void tenThousandCharactersAreAMarkThatEndsAtThePicture()
    {
        Editor e;
        e.beginText({60, 60});
        e.field()->setText(QString(10000, QLatin1Char('m')));
        QTest::keyClick(e.field(), Qt::Key_Return);
        QCOMPARE(e.mark(0).text().size(), 10000);
        QCOMPARE(e.canvas->actions().render()->image().size(), QSize(250, 270));
    }

    void theCaretHasTheTextsColour()
    {
        Editor e;
        e.canvas->show();
        QVERIFY(QTest::qWaitForWindowExposed(e.canvas.get()));
        e.canvas->activateWindow();
        e.beginText({60, 60});
        QTRY_VERIFY(e.field()->hasFocus());
        const auto caretPixels = [&e](const QColor& color) {
            const QImage shown = e.field()->grab().toImage();
            int count = 0;
            for (int y = 0; y < shown.height(); ++y) {
                for (int x = 0; x < shown.width(); ++x)
                    count += shown.pixel(x, y) == color.rgb() ? 1 : 0;
            }
            return count;
        };
        const QColor red = Config::palette.front();
        QTRY_VERIFY(caretPixels(red) > 10); // it blinks
        e.field()->setColor(Config::leafGreen);
        QTRY_VERIFY(caretPixels(Config::leafGreen) > 10);
        QCOMPARE(caretPixels(red), 0);
    }

    void clicksOnBarsLeaveTheFocusInTheField()
    {
        Editor e(QSizeF(800, 600)); // room for all of the bars
        e.canvas->show();
        QVERIFY(QTest::qWaitForWindowExposed(e.canvas.get()));
        e.canvas->activateWindow();
        e.type(QStringLiteral("Hola"));
        QTRY_VERIFY(e.field()->hasFocus());
        // Through the window, as real clicks come: Qt looks there for whom the focus goes to.
        for (const QString& name : {QStringLiteral("Color"), QStringLiteral("Verde")}) {
            const BarButton* button = e.button(name);
            const QPoint at = button->mapTo(e.canvas.get(), button->rect().center());
            QTest::mouseClick(e.canvas->windowHandle(), Qt::LeftButton, {}, at);
        }
        QVERIFY(e.field());
        QVERIFY(e.field()->hasFocus());
        QCOMPARE(e.field()->color(), Config::leafGreen);
        QVERIFY(e.marks().empty());
    }

    void textFromRightToLeftBeginsWhereItsMarkWill()
    {
        Editor e(QSizeF(800, 600));
        e.beginText({60, 60});
        e.field()->setText(QStringLiteral("שלום"));
        QVERIFY(e.field()->width() > 300);
        const QImage shown = e.field()->grab().toImage();
        int last = 0;
        for (int x = 0; x < shown.width(); ++x) {
            for (int y = 0; y < shown.height(); ++y) {
                if (shown.pixel(x, y) == e.field()->color().rgb())
                    last = x;
            }
        }
        QVERIFY(last > 20);
        QVERIFY(last < 100);
    }

    void thereIsNoOtherCaretAtFractionalScales()
    {
        Editor e;
        e.canvas->show();
        QVERIFY(QTest::qWaitForWindowExposed(e.canvas.get()));
        e.canvas->activateWindow();
        e.beginText({60, 60});
        QTRY_VERIFY(e.field()->hasFocus());
        // Text, caret and what lies between them and white: all have much red.
        const auto strangePixels = [&e] {
            constexpr qreal kScale = 1.5;
            QImage shown(e.field()->size() * kScale, QImage::Format_RGB32);
            shown.setDevicePixelRatio(kScale);
            shown.fill(Qt::white);
            e.field()->render(&shown, {}, {}, QWidget::DrawChildren);
            int count = 0;
            for (int y = 0; y < shown.height(); ++y) {
                for (int x = 0; x < shown.width(); ++x)
                    count += qRed(shown.pixel(x, y)) < 200 ? 1 : 0;
            }
            return count;
        };
        QCOMPARE(strangePixels(), 0);
        QInputMethodEvent composing(QStringLiteral("ñ"), {});
        QCoreApplication::sendEvent(e.field(), &composing);
        QCOMPARE(strangePixels(), 0);
        QCOMPARE(e.field()->text(), QString());
    }
};

BRINDLECAM_TEST(TestCanvasTyping);

} // namespace brindlecam

#include "tst_canvastyping.moc"
