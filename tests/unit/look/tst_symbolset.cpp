#include "base/Tool.h"
#include "look/Symbols.h"
#include "support/TestCase.h"

#include <QDir>
#include <QSvgRenderer>

#include <algorithm>
#include <cstdlib>

namespace brindlecam {

namespace {

/// Symbols that no tool names: of the status item, the pointer and the actions beside the tools.
const QStringList kOtherSymbols{
    QStringLiteral("arrow.up.and.down"),
    QStringLiteral("arrow.uturn.backward"),
    QStringLiteral("arrow.uturn.forward"),
    QStringLiteral("cursorarrow"),
    QStringLiteral("doc.on.doc"),
    QStringLiteral("leaf.fill"),
    QStringLiteral("minus"),
    QStringLiteral("pin"),
    QStringLiteral("plus"),
    QStringLiteral("record.circle"),
    QStringLiteral("square.and.arrow.down"),
    QStringLiteral("text.viewfinder"),
    QStringLiteral("xmark"),
};

QStringList allSymbols()
{
    QStringList names = kOtherSymbols;
    for (const Tool tool : kAllTools)
        names << symbolName(tool);
    names.sort();
    return names;
}

/// A row per symbol.
void symbolRows()
{
    QTest::addColumn<QString>("symbol");
    for (const QString& symbol : allSymbols())
        QTest::newRow(qPrintable(symbol)) << symbol;
}

QImage symbolImage(const QString& symbol, int pixels, const QColor& color)
{
    return Symbols::icon(symbol, color)
        .pixmap(QSize(pixels, pixels), 1)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// Ink in pixels: the sum of what each pixel is covered.
qreal inkOf(const QImage& image)
{
    qreal sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y)) / 255.0;
    }
    return sum;
}

} // namespace

class TestSymbolSet final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theSetHoldsWhatIsShownAndNothingElse()
    {
        QStringList files;
        for (const QString& file : QDir(QStringLiteral(":/symbols")).entryList())
            files << file.chopped(QStringLiteral(".svg").size());
        files.sort();
        QCOMPARE(files, allSymbols());
    }

    void everySymbolIsDrawnOnTheGrid_data() { symbolRows(); }
    void everySymbolIsDrawnOnTheGrid()
    {
        QFETCH(QString, symbol);
        QVERIFY(Symbols::exists(symbol));
        const QSvgRenderer drawing(QStringLiteral(":/symbols/%1.svg").arg(symbol));
        QVERIFY(drawing.isValid());
        QCOMPARE(drawing.viewBoxF(), QRectF(0, 0, 24, 24));
    }

    void everySymbolShowsAtTheSizeOfTheBars_data() { symbolRows(); }
    void everySymbolShowsAtTheSizeOfTheBars()
    {
        QFETCH(QString, symbol);
        const QImage image = symbolImage(symbol, 14, Qt::white);
        QCOMPARE(image.size(), QSize(14, 14));
        // The least is a minus, a line of nine pixels; the most is a filled shape.
        const qreal ink = inkOf(image);
        QVERIFY2(ink > 8 && ink < 14 * 14 / 2.0, qPrintable(QString::number(ink)));
    }

    void everySymbolHasALineThatIsCrisp_data() { symbolRows(); }
    void everySymbolHasALineThatIsCrisp()
    {
        QFETCH(QString, symbol);
        const QImage image = symbolImage(symbol, 14, Qt::white);
        int crisp = 0;
        for (int y = 0; y < 14; ++y) {
            for (int x = 0; x < 14; ++x)
                crisp += qAlpha(image.pixel(x, y)) > 235 ? 1 : 0;
        }
        QVERIFY2(crisp >= 7, qPrintable(QString::number(crisp)));
    }

    void everySymbolStaysInsideItsSquare_data() { symbolRows(); }
    void everySymbolStaysInsideItsSquare()
    {
        QFETCH(QString, symbol);
        const QImage image = symbolImage(symbol, 28, Qt::white);
        for (int i = 0; i < 28; ++i) {
            QCOMPARE(qAlpha(image.pixel(i, 0)), 0);
            QCOMPARE(qAlpha(image.pixel(i, 27)), 0);
            QCOMPARE(qAlpha(image.pixel(0, i)), 0);
            QCOMPARE(qAlpha(image.pixel(27, i)), 0);
        }
    }

    void everySymbolHasOneColour_data() { symbolRows(); }
    void everySymbolHasOneColour()
    {
        QFETCH(QString, symbol);
        const QImage image = symbolImage(symbol, 28, Qt::red);
        for (int y = 0; y < 28; ++y) {
            for (int x = 0; x < 28; ++x) {
                // Premultiplied: pure red is as red as it covers.
                const int alpha = qAlpha(image.pixel(x, y));
                QCOMPARE(image.pixel(x, y), qRgba(alpha, 0, 0, alpha));
            }
        }
    }

    void redoIsTheMirrorOfUndo()
    {
        const QImage undo = symbolImage(QStringLiteral("arrow.uturn.backward"), 56, Qt::white);
        const QImage redo = symbolImage(QStringLiteral("arrow.uturn.forward"), 56, Qt::white);
        const QImage mirrored = redo.mirrored(true, false);
        QVERIFY(undo != redo);
        // Edges may be rounded to the other side.
        int worst = 0;
        for (int y = 0; y < 56; ++y) {
            for (int x = 0; x < 56; ++x) {
                worst = std::max(worst,
                                 std::abs(qAlpha(undo.pixel(x, y)) - qAlpha(mirrored.pixel(x, y))));
            }
        }
        QVERIFY2(worst <= 24, qPrintable(QString::number(worst)));
    }
};

BRINDLECAM_TEST(TestSymbolSet);

} // namespace brindlecam

#include "tst_symbolset.moc"
