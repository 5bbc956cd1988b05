#include "base/WorkPool.h"
#include "support/TestCase.h"

#include <QImage>
#include <QPainter>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <atomic>

namespace brindlecam {

class TestWorkPool final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void worksOnThreadsThatAreNotQts()
    {
        std::atomic<bool> onQts = true;
        std::atomic<QThread*> worker = nullptr;
        QSemaphore done;
        WorkPool::run([&] {
            worker = QThread::currentThread();
            onQts = QThreadPool::globalInstance()->contains(worker);
            done.release();
        });
        done.acquire();
        QVERIFY(worker != QThread::currentThread());
        QVERIFY(!onQts);
    }

    void paintingDoesNotWaitForIt()
    {
        QSemaphore gate;
        QSemaphore done;
        const int jobs = 4 * QThread::idealThreadCount();
        for (int i = 0; i < jobs; ++i)
            WorkPool::run([&] {
                gate.acquire();
                done.release();
            });
        // Large enough for Qt to part it among threads.
        QImage screen(1920, 1080, QImage::Format_ARGB32_Premultiplied);
        screen.fill(Qt::white);
        QPainter painter(&screen);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(QColor(10, 20, 30, 200));
        painter.drawRoundedRect(screen.rect(), 16, 16);
        painter.end();
        QCOMPARE(done.available(), 0); // nothing could go on meanwhile
        QVERIFY(screen.pixelColor(900, 500).lightness() < 100);
        gate.release(jobs);
        done.acquire(jobs);
    }
};

BRINDLECAM_TEST(TestWorkPool);

} // namespace brindlecam

#include "tst_workpool.moc"
