#include "ReadingAnswers.h"
#include "platform/linux/text/Flatten.h"
#include "platform/linux/text/Marks.h"
#include "platform/linux/text/Noise.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

QImage textPage(int pixels)
{
    QImage page = test::blankPage({700, 600});
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    font.setBold(true);
    QPainter painter(&page);
    painter.setFont(font);
    painter.setPen(Qt::black);
    for (int y = pixels; y < page.height(); y += pixels)
        painter.drawText(0, y, QStringLiteral("immillmi; WilliMM: illumination ").repeated(9));
    return page;
}

QImage leaders()
{
    QImage page = test::blankPage({400, 400});
    for (int y = 10; y < 400; y += 14) {
        for (int x = 3; x < 400; x += 5)
            page.setPixel(x, y, qRgb(0, 0, 0));
    }
    return page;
}

} // namespace

class TestNoise final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsTooBusyForTextIsErased_data()
    {
        QTest::addColumn<QImage>("picture");
        QTest::newRow("colours") << test::noise({700, 500});
        QTest::newRow("dots") << test::scatteredDots({700, 500}, 10);
        QTest::newRow("half of it") << test::scatteredDots({700, 500}, 50);
    }
    void whatIsTooBusyForTextIsErased()
    {
        QFETCH(QImage, picture);
        QImage grey = flatten(picture).grey;
        QVERIFY(!Marks::boxes(grey).empty());
        QVERIFY(Noise::erase(grey, Marks::boxes(grey)));
        QVERIFY(Marks::boxes(grey).empty());
    }

    void textStays_data()
    {
        QTest::addColumn<QImage>("picture");
        for (const int pixels : {8, 10, 13, 24, 120})
            QTest::addRow("close bold lines of %d pixels", pixels) << textPage(pixels);
        QTest::newRow("dotted leaders") << leaders();
        QTest::newRow("nothing") << QImage();
    }
    void textStays()
    {
        QFETCH(QImage, picture);
        const QImage before = flatten(picture).grey;
        QImage grey = before;
        QVERIFY(!Noise::erase(grey, Marks::boxes(grey)));
        QCOMPARE(grey, before);
    }

    void textBesideNoiseStays()
    {
        QImage picture = test::blankPage({1280, 512});
        QPainter(&picture).drawImage(640, 0, test::noise({640, 512}));
        test::writeOn(picture, {QStringLiteral("hola")}, Qt::black);
        const QImage before = flatten(picture).grey;
        QImage grey = before;
        QVERIFY(Noise::erase(grey, Marks::boxes(grey)));
        const QRect text(0, 0, 256, 128);
        QCOMPARE(grey.copy(text), before.copy(text));
        QVERIFY(!Marks::boxes(grey).empty());
    }
};

BRINDLECAM_TEST(TestNoise);

} // namespace brindlecam

#include "tst_noise.moc"
