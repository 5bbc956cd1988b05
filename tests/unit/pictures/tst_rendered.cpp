#include "pictures/Rendered.h"
#include "support/TestCase.h"

#include <QThread>
#include <QThreadPool>

#include <atomic>

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

    void aPictureIsFlattenedOnceAndNotBeforeItIsAskedFor()
    {
        int flattened = 0;
        const Rendered rendered(QSize(8, 6), QSizeF(4, 3), [&flattened] {
            ++flattened;
            return QImage(8, 6, QImage::Format_RGB32);
        });
        const Rendered copy = rendered;
        QCOMPARE(rendered.dotsPerMetre(), 5669);
        QCOMPARE(flattened, 0);
        QVERIFY(!rendered.isFlattened());
        QCOMPARE(copy.image().size(), QSize(8, 6));
        QVERIFY(rendered.isFlattened());
        QCOMPARE(rendered.image().cacheKey(), copy.image().cacheKey());
        QCOMPARE(flattened, 1);
    }

    void severalThreadsAskForOneFlattening()
    {
        std::atomic<int> flattened = 0;
        const Rendered rendered(QSize(8, 6), QSizeF(8, 6), [&flattened] {
            ++flattened;
            return QImage(8, 6, QImage::Format_RGB32);
        });
        QThreadPool pool;
        for (int i = 0; i < 8; ++i)
            pool.start([rendered] { (void)rendered.image(); });
        pool.waitForDone();
        QCOMPARE(flattened.load(), 1);
    }

    void anotherThreadMayAskMeanwhileWhetherItIsFlattened()
    {
        // Relaxed, so that nothing but the answers themselves has an order.
        std::atomic<bool> asked = false;
        const Rendered rendered(QSize(8, 6), QSizeF(8, 6), [&asked] {
            while (!asked.load(std::memory_order_relaxed))
                QThread::yieldCurrentThread();
            return QImage(8, 6, QImage::Format_RGB32);
        });
        QThreadPool pool;
        pool.start([rendered] { (void)rendered.image(); });
        QVERIFY(!rendered.isFlattened());
        asked.store(true, std::memory_order_relaxed);
        QTRY_VERIFY(rendered.isFlattened());
        QCOMPARE(rendered.image().size(), QSize(8, 6));
        pool.waitForDone();
    }

    void onlyCopiesAreTheSamePicture()
    {
        const QImage image(4, 4, QImage::Format_RGB32);
        const Rendered rendered(image, QSizeF(4, 4));
        const Rendered copy = rendered;
        QVERIFY(copy.isSame(rendered));
        QVERIFY(!Rendered(image, QSizeF(2, 2)).isSame(rendered));
    }

    void aPictureThatCouldNotBeMadeIsNull()
    {
        const Rendered rendered(QSize(4, 4), QSizeF(4, 4), [] { return QImage(); });
        QVERIFY(rendered.image().isNull());
        QVERIFY(rendered.tiffData().isEmpty());
    }

    void nothingRenderedGivesNoTiff() { QVERIFY(Rendered().tiffData().isEmpty()); }
};

BRINDLECAM_TEST(TestRendered);

} // namespace brindlecam

#include "tst_rendered.moc"
