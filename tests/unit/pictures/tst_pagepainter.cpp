#include "ForeignReaders.h"
#include "PagePainter.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestPagePainter final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void pagesAreTheSameEveryTime()
    {
        using namespace test::PagePainter;
        QCOMPARE(interfacePage({500, 300}), interfacePage({500, 300}));
        QCOMPARE(photoPage({200, 100}), photoPage({200, 100}));
    }

    void anySizeWorks_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("one pixel") << QSize(1, 1);
        QTest::newRow("narrow") << QSize(3, 400);
        QTest::newRow("low") << QSize(700, 2);
        QTest::newRow("odd") << QSize(799, 601);
    }
    void anySizeWorks()
    {
        QFETCH(QSize, size);
        QCOMPARE(test::PagePainter::interfacePage(size).size(), size);
        QCOMPARE(test::PagePainter::interfacePage(size, 1.5).size(), size);
        QCOMPARE(test::PagePainter::photoPage(size).size(), size);
    }

    void pagesWeighWhatRealScreenshotsWeigh()
    {
        const QSize size(1920, 1080);
        const auto interface =
            test::ForeignReaders::libpngSize(test::PagePainter::interfacePage(size));
        QVERIFY2(interface > 150'000 && interface < 500'000,
                 qPrintable(QString::number(interface)));
        const auto photo = test::ForeignReaders::libpngSize(test::PagePainter::photoPage(size));
        QVERIFY2(photo > 1'500'000 && photo < 2'500'000, qPrintable(QString::number(photo)));
    }
};

BRINDLECAM_TEST(TestPagePainter);

} // namespace brindlecam

#include "tst_pagepainter.moc"
