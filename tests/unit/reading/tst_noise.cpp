#include "reading/Flatten.h"
#include "reading/InkSpots.h"
#include "reading/Noise.h"
#include "support/ReadingAnswers.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

constexpr QSize kVastPage(1600, 1200);

QImage textPage(int pixels)
{
    QImage page = test::blankPage(kVastPage);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    font.setBold(true);
    QPainter painter(&page);
    painter.setFont(font);
    painter.setPen(Qt::black);
    for (int y = pixels; y < page.height(); y += pixels)
        painter.drawText(0, y, QStringLiteral("immillmi; WilliMM: illumination ").repeated(20));
    return page;
}

/// Lines of dots only, close enough to fill the page.
QImage leaders(QSize size, int pace)
{
    QImage page = test::blankPage(size);
    for (int y = 10; y < size.height(); y += 14) {
        for (int x = 3; x < size.width(); x += pace)
            page.setPixel(x, y, qRgb(0, 0, 0));
    }
    return page;
}

/// As much of bold lines as a hasty selection holds: nearly no paper.
QImage boldCrop(QSize size)
{
    QImage page = test::blankPage(size);
    QFont font(QStringLiteral("DejaVu Sans"), -1, QFont::Black);
    font.setPixelSize(10);
    QPainter painter(&page);
    painter.setFont(font);
    for (int y = 7; y < size.height() + 7; y += 7)
        painter.drawText(0, y, QStringLiteral("MWNHBRMWEMNWHB").repeated(9));
    return page;
}

/// A line of a table of contents, cut out without paper around it.
QImage leaderLine(QSize size)
{
    QImage page = test::blankPage(size);
    for (int y = 2; y < size.height(); y += 6) {
        for (int x = 1; x < size.width(); x += 4)
            page.setPixel(x, y, qRgb(0, 0, 0));
    }
    QPainter(&page).fillRect(0, 0, 12, size.height(), Qt::black);
    return page;
}

} // namespace

class TestNoise final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsTooBusyForTextIsErased_data()
    {
        QTest::addColumn<QImage>("picture");
        QTest::newRow("colours") << test::noise(kVastPage);
        QTest::newRow("dots") << test::scatteredDots(kVastPage, 10);
        QTest::newRow("half of it") << test::scatteredDots(kVastPage, 50);
    }
    void whatIsTooBusyForTextIsErased()
    {
        QFETCH(QImage, picture);
        QImage grey = flatten(picture).grey;
        QVERIFY(!InkSpots::boxes(grey).empty());
        QVERIFY(Noise::erase(grey, InkSpots::boxes(grey)));
        QVERIFY(InkSpots::boxes(grey).empty());
    }

    void textStays_data()
    {
        QTest::addColumn<QImage>("picture");
        for (const int pixels : {8, 10, 13, 24, 120})
            QTest::addRow("close bold lines of %d pixels", pixels) << textPage(pixels);
        QTest::newRow("dotted leaders") << leaders(kVastPage, 5);
        QTest::newRow("a crop of close dotted leaders") << leaders({400, 400}, 3);
        QTest::newRow("one line of dotted leaders") << leaderLine({300, 14});
        for (const QSize size : {QSize(60, 20), QSize(128, 128), QSize(600, 14), QSize(800, 600)})
            QTest::addRow("a bold crop of %d x %d", size.width(), size.height()) << boldCrop(size);
        QTest::newRow("noise that is not vast") << test::noise({800, 800});
        QTest::newRow("nothing") << QImage();
    }
    void textStays()
    {
        QFETCH(QImage, picture);
        const QImage before = flatten(picture).grey;
        QImage grey = before;
        QVERIFY(!Noise::erase(grey, InkSpots::boxes(grey)));
        QCOMPARE(grey, before);
    }

    void textBesideNoiseStays()
    {
        constexpr QRect kNoise(1536, 0, 1536, 1024);
        constexpr int kMargin = 128; // pixels; a tile, which the edge of the noise does not cut
        QImage picture = test::blankPage({3072, 1024});
        test::writeOn(picture,
                      QStringList(38, QStringLiteral("Una línea del texto a la izquierda ") +
                                          QStringLiteral("del ruido ").repeated(18)),
                      Qt::black);
        QPainter(&picture).drawImage(kNoise.topLeft(), test::noise(kNoise.size()));
        const QImage before = flatten(picture).grey;
        QImage grey = before;
        QVERIFY(Noise::erase(grey, InkSpots::boxes(grey)));
        const QRect text(0, 0, kNoise.left() + kMargin, picture.height());
        QCOMPARE(grey.copy(text), before.copy(text));
        QVERIFY(InkSpots::boxes(grey.copy(kNoise.adjusted(kMargin, 0, 0, 0))).empty());
    }
};

BRINDLECAM_TEST(TestNoise);

} // namespace brindlecam

#include "tst_noise.moc"
