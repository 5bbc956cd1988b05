#include "pictures/Rendered.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestRendered final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void densityFollowsFromPixelsAndPoints_data()
    {
        QTest::addColumn<QSize>("pixels");
        QTest::addColumn<QSizeF>("points");
        QTest::addColumn<int>("dotsPerMetre");
        QTest::newRow("scale 1 is 72 dpi") << QSize(300, 200) << QSizeF(300, 200) << 2835;
        QTest::newRow("scale 2 is 144 dpi") << QSize(300, 200) << QSizeF(150, 100) << 5669;
        QTest::newRow("scale 1.5 is 108 dpi") << QSize(300, 200) << QSizeF(200, 133.3) << 4252;
        QTest::newRow("scale 3 is 216 dpi") << QSize(300, 200) << QSizeF(100, 66.7) << 8504;
        QTest::newRow("no size in points counts as scale 1") << QSize(300, 200) << QSizeF() << 2835;
    }
    void densityFollowsFromPixelsAndPoints()
    {
        QFETCH(QSize, pixels);
        QFETCH(QSizeF, points);
        const Rendered rendered{QImage(pixels, QImage::Format_RGB32), points};
        QTEST(rendered.dotsPerMetre(), "dotsPerMetre");
    }

    void tiffCarriesThePointSize()
    {
        QImage image(60, 40, QImage::Format_RGB32);
        image.fill(Qt::red);
        const QImage read = QImage::fromData(Rendered{image, QSizeF(30, 20)}.tiffData());
        QCOMPARE(read.convertToFormat(QImage::Format_RGB32), image);
        QCOMPARE(read.dotsPerMeterX(), 5669);
    }

    void nothingRenderedGivesNoTiff() { QVERIFY(Rendered().tiffData().isEmpty()); }
};

BRINDLECAM_TEST(TestRendered);

} // namespace brindlecam

#include "tst_rendered.moc"
