// Covers InterfaceFont, TextLine.
#include "look/InterfaceFont.h"
#include "look/Pill.h"
#include "look/TextLine.h"
#include "support/TestCase.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

namespace brindlecam {

class TestPill final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void linesAreDrawnAtTheirRealSize_data()
    {
        QTest::addColumn<qreal>("points");
        for (const qreal points : {10.0, 10.5, 11.5, 13.0, 64.0})
            QTest::addRow("%.1f", points) << points;
    }
    void linesAreDrawnAtTheirRealSize()
    {
        QFETCH(qreal, points);
        const auto lineOf = [](qreal size) {
            return TextLine{QString(40, QLatin1Char('n')), InterfaceFont::medium(size)};
        };
        // What is drawn ten times as large is ten times as wide, but for rounding.
        const qreal expected = lineOf(points * 10).width() / 10;
        const TextLine line = lineOf(points);
        QVERIFY2(qAbs(line.width() - expected) < expected * 0.02, qPrintable(line.font.toString()));

        QImage image(qCeil(line.width()) + 20, 100, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setPen(Qt::white);
        line.draw(painter, {0, 80});
        painter.end();
        int last = image.width() - 1;
        while (last > 0 && image.pixelColor(last, 79).value() < 40)
            --last;
        QVERIFY2(qAbs(last - line.width()) < points * 0.2 + 1, qPrintable(QString::number(last)));
    }

    void weightsAreTheOnesAskedFor()
    {
        QCOMPARE(InterfaceFont::regular(13).weight(), QFont::Normal);
        QCOMPARE(InterfaceFont::medium(13).weight(), QFont::Medium);
        QCOMPARE(InterfaceFont::semibold(13).weight(), QFont::DemiBold);
        QCOMPARE(InterfaceFont::bold(13).weight(), QFont::Bold);
    }

    void missingFamilyLeavesTheSystemsFont()
    {
        const QFont before = QGuiApplication::font();
        InterfaceFont::install(QStringLiteral("No hay tal letra"));
        InterfaceFont::install(QString());
        QCOMPARE(QGuiApplication::font(), before);
    }

    void countingTextsKeepTheirWidth()
    {
        const auto width = [](const char* text) {
            return TextLine{QString::fromLatin1(text), InterfaceFont::regular(13), true}.width();
        };
        for (const char* text : {"1:11", "7:41", "9:58"})
            QCOMPARE(width(text), width("0:00"));
        QVERIFY(width("10:00") > width("0:00"));
    }

    void lineThatIsTooLongEndsWithAnEllipsis()
    {
        const auto lineOf = [](const QString& text) {
            return TextLine{text, InterfaceFont::medium(13), true};
        };
        const TextLine line = lineOf(QStringLiteral("Capturando… 111 px de alto"));
        QCOMPARE(line.elided(line.width()).text, line.text);
        const TextLine cut = line.elided(line.width() - 1);
        QVERIFY(cut.width() <= line.width() - 1);
        QVERIFY2(cut.text.startsWith(QStringLiteral("Capturando… 111 px")), qPrintable(cut.text));
        QVERIFY(cut.text.endsWith(QStringLiteral("…")));
        QCOMPARE(cut.evenDigits, true);
        QCOMPARE(lineOf(QStringLiteral("a 😀😀")).elided(lineOf(QStringLiteral("a…")).width()).text,
                 QStringLiteral("a…"));
        QCOMPARE(line.elided(0).text, QStringLiteral("…"));
    }

    void sizeIsTheTextAndItsPaddingInWholePoints()
    {
        const Pill narrow{.text = QStringLiteral("hola"),
                          .font = InterfaceFont::medium(14),
                          .paddingX = 18,
                          .paddingY = 10};
        Pill wide = narrow;
        wide.text = QStringLiteral("hola, esto es bastante más largo y no se parte nunca");
        const QFontMetricsF metrics(narrow.font);
        QCOMPARE(narrow.size().width(), std::ceil(metrics.horizontalAdvance(narrow.text)) + 36);
        QCOMPARE(narrow.size().height(), std::ceil(metrics.ascent() + metrics.descent()) + 20);
        QVERIFY(wide.size().width() > narrow.size().width());
        QCOMPARE(wide.size().height(), narrow.size().height());
    }

    void linesStandOneBelowTheOther()
    {
        const Pill one{.text = QStringLiteral("████"),
                       .font = InterfaceFont::regular(20),
                       .paddingX = 10,
                       .paddingY = 10,
                       .alpha = 1,
                       .radius = 4};
        Pill two = one;
        two.text += QStringLiteral("\n█");
        const qreal line = one.size().height() - 20;
        QCOMPARE(two.size(), one.size() + QSizeF(0, line + 2));

        QImage image(two.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        two.paint(painter, {});
        painter.end();
        const int first = qRound(10 + line / 2);
        const int second = qRound(10 + line * 3 / 2 + 2);
        QCOMPARE(image.pixelColor(14, first), QColor(Qt::white));
        QCOMPARE(image.pixelColor(14, second), QColor(Qt::white));
        QCOMPARE(image.pixelColor(image.width() - 14, first), QColor(Qt::white));
        QCOMPARE(image.pixelColor(image.width() - 14, second), QColor(26, 26, 26));
    }

    void longToolTipsHaveSeveralLines()
    {
        const Pill brief = Pill::toolTip(QStringLiteral("Texto"));
        const Pill lengthy = Pill::toolTip(QStringLiteral(
            "una explicación tan larga que en un solo renglón no cabría junto a ninguna barra, y "
            "que por eso se parte"));
        QVERIFY(!brief.text.contains(QLatin1Char('\n')));
        QVERIFY(lengthy.text.contains(QLatin1Char('\n')));
        QVERIFY(lengthy.size().width() <= 340);
        QVERIFY(lengthy.size().height() > brief.size().height());
    }

    void capsuleHasRoundEndsAndADarkMiddle()
    {
        const Pill pill{.text = QString(),
                        .font = InterfaceFont::regular(14),
                        .paddingX = 30,
                        .paddingY = 12,
                        .alpha = 1};
        QImage image(pill.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        pill.paint(painter, {});
        painter.end();
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(image.pixelColor(image.width() - 1, image.height() - 1).alpha(), 0);
        QCOMPARE(image.pixelColor(image.width() / 2, 1), QColor(26, 26, 26));
        QCOMPARE(image.pixelColor(1, image.height() / 2).alpha(), 255);
    }

    void textIsWhiteOnThePanel()
    {
        const Pill pill{.text = QStringLiteral("███"),
                        .font = InterfaceFont::regular(20),
                        .paddingX = 10,
                        .paddingY = 10,
                        .alpha = 1,
                        .radius = 4,
                        .evenDigits = true};
        QImage image(pill.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        pill.paint(painter, {});
        painter.end();
        QCOMPARE(image.pixelColor(image.rect().center()), QColor(Qt::white));
        QCOMPARE(image.pixelColor(5, image.height() / 2), QColor(26, 26, 26));
    }
};

BRINDLECAM_TEST(TestPill);

} // namespace brindlecam

#include "tst_pill.moc"
