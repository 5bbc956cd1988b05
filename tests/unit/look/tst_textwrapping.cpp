#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "look/TextWrapping.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

QFont font()
{
    return InterfaceFont::medium(12);
}

qreal widthOf(const QString& text)
{
    return TextLine{text, font()}.width();
}

} // namespace

class TestTextWrapping final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void shortTextsStayAsTheyAre()
    {
        const QString text = QStringLiteral("Copiar (Ctrl+C o Enter)");
        QCOMPARE(wrapped(text, font(), widthOf(text) + 1), text);
        QCOMPARE(wrapped(QString(), font(), 100), QString());
    }

    void linesAreAsFewAndAsEvenAsTheyCanBe()
    {
        const QString half = QStringLiteral("uno dos tres cuatro");
        const QString whole = half + QLatin1Char(' ') + half;
        // Almost all of it would fit into the first line.
        QCOMPARE(wrapped(whole, font(), widthOf(whole) - 1), half + QLatin1Char('\n') + half);
        QCOMPARE(wrapped(whole, font(), widthOf(half) + 1), half + QLatin1Char('\n') + half);
    }

    void noLineIsLongerThanAllowed()
    {
        const QString text = QStringLiteral("mucho texto en palabras cortas que se parten aquí y "
                                            "allá sin que ninguna línea sea demasiado larga");
        const QStringList lines = wrapped(text, font(), 150).split(QLatin1Char('\n'));
        QVERIFY(lines.size() > 2);
        for (const QString& line : lines)
            QVERIFY2(widthOf(line) <= 150, qPrintable(line));
        QCOMPARE(lines.join(QLatin1Char(' ')), text);
    }

    void noLineBeginsWithADot()
    {
        const QString text = QStringLiteral("mm · mm · mm · mm · mm");
        for (int width = 20; width < 200; width += 3) {
            const QString all = wrapped(text, font(), width);
            QVERIFY2(!all.contains(QStringLiteral("\n·")), qPrintable(all));
        }
    }

    void aWordThatIsTooLongStandsAlone()
    {
        const QString word(40, QLatin1Char('m'));
        QCOMPARE(wrapped(QStringLiteral("a %1 b").arg(word), font(), 50),
                 QStringLiteral("a\n%1\nb").arg(word));
    }
};

BRINDLECAM_TEST(TestTextWrapping);

} // namespace brindlecam

#include "tst_textwrapping.moc"
