#include "EditingFixture.h"
#include "canvas/TextReading.h"
#include "support/TestCase.h"

namespace brindlecam {

/// Reading the text of the selection, with a recogniser in the test's hand.
class TestTextReading final : public test::TestCase {
    Q_OBJECT

private:
    using Editor = test::EditingFixture;

    static QString buttonName() { return QStringLiteral("Copiar el texto de la selección (OCR)"); }

private Q_SLOTS:
    void theScreenIsReadWithoutItsMarks()
    {
        Editor e;
        e.draw(Tool::rect, {50, 60}, {150, 140});
        e.clickButton(buttonName());
        QCOMPARE(e.recognizer.requests.size(), 1U);
        QCOMPARE(e.recognizer.requests.front().picture, e.image.copy(10, 10, 250, 270));
    }

    void pixelsAreReadAtEveryScale()
    {
        Editor e(QSizeF(200, 150)); // two pixels per point
        e.clickButton(buttonName());
        QCOMPARE(e.recognizer.requests.front().picture, e.image.copy(20, 20, 300, 240));
    }

    void linesEndTheSessionJoinedByLineFeeds()
    {
        Editor e;
        e.clickButton(buttonName());
        QCOMPARE(e.message(), QStringLiteral("Leyendo texto…"));
        QCOMPARE(TextReading::test_lastOCRStatus(), QStringLiteral("iniciado, imagen 250×270"));
        QVERIFY(e.outcomes.empty());
        e.recognizer.answer(QStringList{QStringLiteral("Año"), QStringLiteral("nuevo")});
        QCOMPARE(e.outcomes.size(), 1U);
        QCOMPARE(std::get<outcome::Text>(e.outcomes.front()).text, QStringLiteral("Año\nnuevo"));
        QVERIFY(TextReading::test_lastOCRStatus().startsWith(QStringLiteral("ok en 0.")));
    }

    void aSingleLineHasNoLineFeed()
    {
        Editor e;
        e.clickButton(buttonName());
        e.recognizer.answer(QStringList{QStringLiteral("Hola")});
        QCOMPARE(std::get<outcome::Text>(e.outcomes.front()).text, QStringLiteral("Hola"));
    }

    void noTextIsSaidAndTheSessionGoesOn()
    {
        Editor e;
        e.type(QStringLiteral("Hola")); // a mark is no text of the screen
        e.clickButton(buttonName());
        QCOMPARE(e.marks().size(), 1U);
        e.recognizer.answer(QStringList());
        QCOMPARE(e.message(), QStringLiteral("No se encontró texto en la selección"));
        QVERIFY(e.outcomes.empty());
        QTRY_COMPARE(e.message(), QString());
    }

    void anErrorIsSaidWithWhatIsMissing()
    {
        Editor e;
        e.clickButton(buttonName());
        e.recognizer.answer(Error{QStringLiteral("falta todo")});
        QCOMPARE(e.message(), QStringLiteral("No se pudo leer el texto: falta todo"));
        QCOMPARE(TextReading::test_lastOCRStatus(), QStringLiteral("falta todo"));
        QVERIFY(e.outcomes.empty());
    }

    void everyPressReportsForItself()
    {
        Editor e;
        e.clickButton(buttonName());
        e.clickButton(buttonName());
        QCOMPARE(e.recognizer.requests.size(), 2U);
        e.recognizer.answer(QStringList());
        QCOMPARE(e.message(), QStringLiteral("No se encontró texto en la selección"));
        e.recognizer.answer(QStringList{QStringLiteral("Hola")});
        QCOMPARE(e.outcomes.size(), 1U);
    }

    void aResultForACanvasThatIsGoneIsDropped()
    {
        Editor e;
        e.clickButton(buttonName());
        e.canvas.reset();
        e.recognizer.answer(QStringList{QStringLiteral("Hola")});
        QVERIFY(e.outcomes.empty());
    }

    void openPopupsCloseWhenReadingBegins()
    {
        Editor e;
        e.clickButton(QStringLiteral("Color"));
        e.clickButton(buttonName());
        QVERIFY(!e.button(QStringLiteral("Azul"))->isVisibleTo(e.canvas.get()));
    }

    void typingAndPopupsAreOverBeforeThePictureIsHandedOver()
    {
        Editor e;
        e.type(QStringLiteral("Hola"));
        e.clickButton(QStringLiteral("Color"));
        QVERIFY(e.field());
        QVERIFY(e.button(QStringLiteral("Azul"))->isVisibleTo(e.canvas.get()));
        bool handedOver = false;
        e.recognizer.onRequest = [&] {
            handedOver = true;
            QVERIFY(!e.field());
            QVERIFY(!e.button(QStringLiteral("Azul"))->isVisibleTo(e.canvas.get()));
            QCOMPARE(e.marks().size(), 1U);
            QCOMPARE(e.mark(0).text(), QStringLiteral("Hola"));
            QCOMPARE(e.recognizer.requests.front().picture, e.image.copy(10, 10, 250, 270));
        };
        e.clickButton(buttonName());
        QVERIFY(handedOver);
    }

    void nothingSelectedReadsNothing()
    {
        test::CanvasFixture f;
        f.canvas->actions().recognizeText();
        QVERIFY(f.recognizer.requests.empty());
    }
};

BRINDLECAM_TEST(TestTextReading);

} // namespace brindlecam

#include "tst_textreading.moc"
