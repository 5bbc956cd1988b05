#include "canvas/TextField.h"
#include "desktop/AnnotatingTest.h"

namespace brindlecam::desktop {

/// Typing a text on the canvas: which keys are the field's, what ends it, and that nothing typed is
/// lost.
class TestTyping final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QPointF kAt{140, 120};
    static constexpr QRectF kInside = QRectF(128, 68, 224, 184); ///< without the border

    /// A session with the field open.
    [[nodiscard]] bool types(const QJsonObject& settings = {}, qreal scale = 1)
    {
        if (!annotates(settings, scale) || !choose(Tool::text))
            return false;
        click(kAt);
        return true;
    }

    [[nodiscard]] static Annotation at(const char* text) { return typed(kAt, QLatin1String(text)); }

    /// All of the inside but where the caret stands behind this text.
    [[nodiscard]] QRegion withoutCaret(const Annotation& text) const
    {
        const QRectF box = text.bounds();
        // It stands behind a space, where no letter is.
        const QRectF caret(box.right() - 3, box.top(), 16, box.height());
        const QPoint origin = pixels(kInside).topLeft();
        return QRegion(pixels(kInside)).subtracted(pixels(caret)).translated(-origin);
    }

    /// Waits until the field shows exactly what the mark will show, caret aside.
    [[nodiscard]] bool showsInField(const Annotation& text)
    {
        const QImage expected = picture({text}, kInside);
        const QRegion where = withoutCaret(text);
        return waitUntil([&] { return difference(seen(kInside), expected, where) == 0; });
    }

private Q_SLOTS:
    void fieldLooksLikeTheFinishedMark_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::newRow("at 1") << 1.0;
        QTest::newRow("at 1.5") << 1.5;
        QTest::newRow("at 2") << 2.0;
    }
    void fieldLooksLikeTheFinishedMark()
    {
        QFETCH(qreal, scale);
        QVERIFY(types({}, scale));
        input().type("hola jg ");
        QVERIFY(showsInField(at("hola jg ")));
        input().tap(Qt::Key_Return);
        QVERIFY(shows({at("hola jg ")}, kInside));
        QVERIFY(returnTakes({at("hola jg ")}));
    }

    void returnFinishesTheTextOnly_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter of the keypad") << Qt::Key_Enter;
    }
    void returnFinishesTheTextOnly()
    {
        QFETCH(Qt::Key, key);
        QVERIFY(types());
        input().type("uno");
        input().tap(key);
        QVERIFY(isPastedWith({at("uno")}));
        QCOMPARE(overlays().size(), std::size_t(1));
        QVERIFY(history().isEmpty());
        QVERIFY(returnTakes({at("uno")}));
    }

    void escapeForgetsTheTextAndOnlyThenEndsTheSession()
    {
        QVERIFY(types({{QStringLiteral("autoCopy"), false}}));
        input().type("uno ");
        QVERIFY(showsInField(at("uno ")));
        input().tap(Qt::Key_Escape);
        QVERIFY(shows({}, kInside));
        QCOMPARE(overlays().size(), std::size_t(1));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QCOMPARE(program().quit(), 0);
        QVERIFY(!clipboardIsTaken());
        QVERIFY(history().isEmpty());
    }

    void emptyTextLeavesNothing()
    {
        QVERIFY(types());
        input().tap(Qt::Key_Return);
        click(kAt + QPointF(40, 60));
        input().tap(Qt::Key_Return);
        QVERIFY(returnTakes({}));
    }

    void copyTakesTheUnfinishedTextAlong()
    {
        QVERIFY(types());
        input().type("uno");
        input().chord({Qt::Key_Control, Qt::Key_C});
        QVERIFY(sessionIsOver());
        QVERIFY(isPastedWith({at("uno")}));
        QVERIFY(isOnlyCapture(picture({at("uno")})));
        QVERIFY(isOnlyInHistory(picture({at("uno")})));
    }

    void saveTakesTheUnfinishedTextAlong()
    {
        QVERIFY(types());
        input().type("uno");
        input().chord({Qt::Key_Control, Qt::Key_S});
        QVERIFY(dialogOpens());
        QVERIFY(dialogHasKeyboard());
        input().tap(Qt::Key_Return);
        QVERIFY(isOnlyCapture(picture({at("uno")})));
        QVERIFY(isOnlyInHistory(picture({at("uno")})));
    }

    void undoInTheFieldTakesBackTypingOnly()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::rect));
        drag({200, 160}, {300, 220});
        const Annotation rect = mark(Tool::rect, {200, 160}, {300, 220});
        QVERIFY(choose(Tool::text));
        click(kAt);
        input().type("uno");
        input().chord({Qt::Key_Control, Qt::Key_Z});
        input().type("dos");
        input().tap(Qt::Key_Return);
        QVERIFY(isPastedWith({rect, at("dos")}));
        input().chord({Qt::Key_Control, Qt::Key_Z});
        QVERIFY(isPastedWith({rect}));
        QVERIFY(returnTakes({rect}));
    }

    void keysOfTheCanvasEditInTheField()
    {
        QVERIFY(types());
        input().type("abd");
        tap({Qt::Key_Left, Qt::Key_C, Qt::Key_Home, Qt::Key_Delete, Qt::Key_End, Qt::Key_Backspace,
             Qt::Key_E});
        input().tap(Qt::Key_Return);
        QVERIFY(returnTakes({at("bce")}));
    }

    void deadKeyAndComposeMakeOneLetter()
    {
        QVERIFY(types());
        desktop().setKeyboard(QStringLiteral("es"), QStringLiteral("compose:rctrl"));
        tap({Qt::Key_Dead_Acute, Qt::Key_A, Qt::Key_Ntilde});
        // Qt puts a composed letter before plain ones that came in the same moment; no hand is that
        // fast.
        QVERIFY(showsInField(typed(kAt, QStringLiteral("áñ"))));
        tap({Qt::Key_Multi_key, Qt::Key_Apostrophe, Qt::Key_E, Qt::Key_Multi_key, Qt::Key_O,
             Qt::Key_C});
        input().tap(Qt::Key_Return);
        QVERIFY(returnTakes({typed(kAt, QStringLiteral("áñé©"))}));
    }

    void clickElsewhereFinishesOneTextAndBeginsAnother()
    {
        QVERIFY(types());
        input().type("uno");
        click({160, 200});
        input().type("dos");
        input().tap(Qt::Key_Return);
        QVERIFY(returnTakes({at("uno"), typed({160, 200}, QStringLiteral("dos"))}));
    }

    void choosingAToolFinishesTheText()
    {
        QVERIFY(types());
        input().type("uno");
        QVERIFY(choose(Tool::rect));
        QVERIFY(isPastedWith({at("uno")}));
        QVERIFY(returnTakes({at("uno")}));
    }

    void colorPickedMeanwhileColorsTheText()
    {
        QVERIFY(types());
        input().type("un");
        QVERIFY(pick(3));
        input().type("o");
        input().tap(Qt::Key_Return);
        QVERIFY(returnTakes({typed(kAt, QStringLiteral("uno"), Config::palette.at(3))}));
    }

    void focusTakenByAnotherWindowFinishesTheText()
    {
        useProgram();
        const auto other = desktop().open({.pixels = QRect(900, 500, 100, 100)});
        QVERIFY(selects());
        QVERIFY(choose(Tool::text));
        click(kAt);
        input().type("uno ");
        QVERIFY(showsInField(at("uno ")));
        // A session that has only just begun takes a lost focus back.
        const QImage expected = picture({at("uno ")});
        QVERIFY(waitUntil([&] {
            if (!other->hasFocus())
                other->takeFocus();
            return samePixels(pasted(), expected);
        }));
        QCOMPARE(overlays().size(), std::size_t(1));
        QVERIFY(press("Copiar"));
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyCapture(picture({at("uno ")})));
    }

    void hotKeyMeanwhileLeavesTheFieldAlone()
    {
        QVERIFY(types());
        input().type("un");
        pressHotKey(kAreaKey);
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 4);
        input().type("o");
        input().tap(Qt::Key_Return);
        QVERIFY(returnTakes({at("uno")}));
    }

    void longPastedTextScrollsInTheFieldAndIsCutOffByThePicture()
    {
        QVERIFY(annotates({{QStringLiteral("autoCopy"), false}}));
        const QString longText = QStringLiteral("abcdefghi ").repeated(1000);
        desktop().copyElsewhere(longText);
        QVERIFY(choose(Tool::text));
        click(kAt);
        input().chord({Qt::Key_Control, Qt::Key_V});
        const QRectF field = TextField::place(kAt, kSelected);
        QVERIFY(waitUntil([&] { return !samePixels(seen(field), picture({}, field)); }));
        // Nothing of it shows beside the field.
        QVERIFY(shows({}, {128, field.top(), field.left() - 128, field.height()}));
        input().type("fin");
        input().tap(Qt::Key_Return);
        const QString whole = longText + QStringLiteral("fin");
        QVERIFY(shows({typed(kAt, whole)}, kInside));
        QVERIFY(returnTakes({typed(kAt, whole)}));
    }

    void pastedTextIsDrawnAsTheSystemDrawsIt_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("drawn");
        const auto same = [](const char* name, const QString& text) {
            QTest::newRow(name) << text << text;
        };
        same("emoji", QStringLiteral("a 😀👩‍💻 b"));
        same("right to left", QStringLiteral("שלום abc"));
        same("combining marks", QStringLiteral("e\u0301 n\u0303 x\u0302"));
        QTest::newRow("lines and tabs") << QStringLiteral("a\nb\tc") << QStringLiteral("a b c");
    }
    void pastedTextIsDrawnAsTheSystemDrawsIt()
    {
        QFETCH(QString, pasted);
        QFETCH(QString, drawn);
        QVERIFY(annotates({{QStringLiteral("autoCopy"), false}}));
        desktop().copyElsewhere(pasted);
        QVERIFY(choose(Tool::text));
        click(kAt);
        input().chord({Qt::Key_Control, Qt::Key_V});
        QVERIFY(waitUntil([this] { return !samePixels(seen(kInside), picture({}, kInside)); }));
        input().tap(Qt::Key_Return);
        QVERIFY(returnTakes({typed(kAt, drawn)}));
    }

    void heldKeyEndsTheTextOnly_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<bool>("keepsText");
        QTest::newRow("Return") << Qt::Key_Return << true;
        QTest::newRow("Escape") << Qt::Key_Escape << false;
    }
    void heldKeyEndsTheTextOnly()
    {
        constexpr int kHeldMilliseconds = 1200; // the server repeats after 660
        QFETCH(Qt::Key, key);
        QFETCH(bool, keepsText);
        QVERIFY(types());
        input().type("uno");
        input().press(key);
        const Marks left = keepsText ? Marks{at("uno")} : Marks{};
        QVERIFY(shows(left, kInside));
        QTest::qWait(kHeldMilliseconds);
        input().release(key);
        QCOMPARE(overlays().size(), std::size_t(1));
        QVERIFY(returnTakes(left));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestTyping>(argc, argv);
}

#include "tst_typing.moc"
