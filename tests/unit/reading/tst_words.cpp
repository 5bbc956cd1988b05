// Covers DoubtfulWords, FixedPitch, TextFixes.
#include "reading/DoubtfulWords.h"
#include "reading/FixedPitch.h"
#include "reading/Fragment.h"
#include "reading/TextFixes.h"
#include "support/TestCase.h"

#include <QStringList>

#include <algorithm>

namespace brindlecam {

namespace {

Word wordAt(const QString& text, const QRect& box, int line = 0, double confidence = 95)
{
    return {.text = text, .confidence = confidence, .box = box, .line = line};
}

QStringList textsOf(const std::vector<Word>& words)
{
    QStringList texts;
    for (const Word& word : words)
        texts << word.text;
    return texts;
}

QImage greyWithInk(const QRect& ink)
{
    QImage grey(200, 40, QImage::Format_Grayscale8);
    grey.fill(255);
    for (int y = ink.top(); y <= ink.bottom(); ++y)
        std::fill_n(grey.scanLine(y) + ink.left(), ink.width(), uchar(0));
    return grey;
}

/// A line of words set in cells ten pixels wide, one blank between them.
std::vector<Word> cellWords(const QStringList& texts, int line)
{
    std::vector<Word> words;
    int column = 0;
    for (const QString& text : texts) {
        const int characters = static_cast<int>(text.size());
        words.push_back(wordAt(text, QRect(column * 10, line * 20, characters * 10 - 1, 14), line));
        column += characters + 1;
    }
    return words;
}

} // namespace

class TestWords final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void symbolsWithoutInkAreDropped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("ink");
        QTest::addColumn<bool>("kept");
        QTest::newRow("a dash in a gap") << QStringLiteral("—") << false << false;
        QTest::newRow("symbols in a gap") << QStringLiteral("_|") << false << false;
        QTest::newRow("a letter in a gap") << QStringLiteral("i") << false << false;
        QTest::newRow("a dash of ink") << QStringLiteral("—") << true << true;
        QTest::newRow("a word whose box is off") << QStringLiteral("hola") << false << true;
    }
    void symbolsWithoutInkAreDropped()
    {
        QFETCH(QString, text);
        QFETCH(bool, ink);
        QFETCH(bool, kept);
        std::vector<Word> words{wordAt(text, {50, 10, 20, 16})};
        DoubtfulWords::dropInkless(words, greyWithInk(ink ? QRect(52, 17, 16, 2) : QRect()));
        QCOMPARE(words.size(), std::size_t(kept ? 1 : 0));
    }

    void whatWasReadInAnIconIsDropped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("confidence");
        QTest::addColumn<bool>("first");
        QTest::addColumn<bool>("kept");
        QTest::newRow("one sure character") << QStringLiteral("Q") << 99.0 << true << false;
        QTest::newRow("a doubtful short word") << QStringLiteral("2,") << 60.0 << true << false;
        QTest::newRow("a sure short word") << QStringLiteral("El") << 96.0 << true << true;
        QTest::newRow("a longer word") << QStringLiteral("Casa") << 60.0 << true << true;
        QTest::newRow("not first in its line") << QStringLiteral("y") << 60.0 << false << true;
    }
    void whatWasReadInAnIconIsDropped()
    {
        QFETCH(QString, text);
        QFETCH(double, confidence);
        QFETCH(bool, first);
        QFETCH(bool, kept);
        const QString other = QStringLiteral("Ajustes");
        std::vector<Word> words;
        if (!first)
            words.push_back(wordAt(other, {0, 10, 9, 16}));
        words.push_back(wordAt(text, {12, 12, 14, 14}, 0, confidence));
        words.push_back(wordAt(other, {50, 10, 60, 16}));
        DoubtfulWords::dropIcons(words, {QRect(10, 10, 20, 20)});
        QCOMPARE(textsOf(words).contains(text), kept);
        QVERIFY(textsOf(words).contains(other));
    }

    void wordsCloserThanABlankAreJoinedInFixedPitch()
    {
        std::vector<Word> words = cellWords({QStringLiteral("const"), QStringLiteral("valor")}, 0);
        const auto more = cellWords({QStringLiteral("return"), QStringLiteral("lista")}, 1);
        words.insert(words.end(), more.begin(), more.end());
        QCOMPARE(FixedPitch::cell(words), 9.8);
        // The engine cut this one in two: the halves stand closer than a cell.
        words.push_back(wordAt(QStringLiteral("fetch"), {0, 40, 49, 14}, 2));
        words.push_back(wordAt(QStringLiteral("(url)"), {53, 40, 49, 14}, 2));
        FixedPitch::join(words);
        QCOMPARE(textsOf(words), QStringList({QStringLiteral("const"), QStringLiteral("valor"),
                                              QStringLiteral("return"), QStringLiteral("lista"),
                                              QStringLiteral("fetch(url)")}));
        QCOMPARE(words.back().box, QRect(0, 40, 102, 14));
    }

    void proportionalTextIsLeftAlone()
    {
        std::vector<Word> words{wordAt(QStringLiteral("milimo"), {0, 0, 40, 14}),
                                wordAt(QStringLiteral("illi"), {44, 0, 14, 14}),
                                wordAt(QStringLiteral("mamá"), {62, 0, 44, 14})};
        QCOMPARE(FixedPitch::cell(words), 0.0);
        FixedPitch::join(words);
        QCOMPARE(words.size(), std::size_t(3));
    }

    void spanishSlipsAreFixed_data()
    {
        QTest::addColumn<QString>("read");
        QTest::addColumn<QString>("fixed");
        QTest::newRow("dieresis") << QStringLiteral("la cigúeña y el pingúino")
                                  << QStringLiteral("la cigüeña y el pingüino");
        QTest::newRow("before a stressed vowel")
            << QStringLiteral("lingúística") << QStringLiteral("lingüística");
        QTest::newRow("capitals") << QStringLiteral("PINGÚINO") << QStringLiteral("PINGÜINO");
        QTest::newRow("a stressed u elsewhere")
            << QStringLiteral("algún azúcar, tegúa") << QStringLiteral("algún azúcar, tegúa");
        QTest::newRow("ordinal") << QStringLiteral("Pedido n.° 7")
                                 << QStringLiteral("Pedido n.º 7");
        QTest::newRow("degrees stay") << QStringLiteral("20 °C") << QStringLiteral("20 °C");
    }
    void spanishSlipsAreFixed()
    {
        QFETCH(QString, read);
        QFETCH(QString, fixed);
        QCOMPARE(fixedText(read), fixed);
    }

    void linesAreCutAtGapsWiderThanTheyAreHigh()
    {
        const std::vector<Word> words{wordAt(QStringLiteral("Guardar"), {0, 0, 50, 16}),
                                      wordAt(QStringLiteral("como"), {66, 0, 30, 16}),
                                      wordAt(QStringLiteral("Ctrl+S"), {113, 0, 40, 16}),
                                      wordAt(QStringLiteral("Salir"), {0, 30, 40, 16}, 1)};
        const std::vector<Fragment> cut =
            fragments(words, [](QPoint pixel) { return pixel.y() > 20 ? 1 : 0; });
        QCOMPARE(cut.size(), std::size_t(3));
        QCOMPARE(cut[0].text, QStringLiteral("Guardar como"));
        QCOMPARE(cut[0].box, QRect(0, 0, 96, 16));
        QCOMPARE(cut[1].text, QStringLiteral("Ctrl+S"));
        QCOMPARE(cut[2].text, QStringLiteral("Salir"));
        QCOMPARE(cut[1].background, 0);
        QCOMPARE(cut[2].background, 1);
        QVERIFY(fragments({}, [](QPoint) { return 0; }).empty());
    }
};

BRINDLECAM_TEST(TestWords);

} // namespace brindlecam

#include "tst_words.moc"
