#include "ReadingAnswers.h"
#include "platform/linux/text/Backgrounds.h"
#include "platform/linux/text/Flatten.h"
#include "platform/linux/text/Icons.h"
#include "platform/linux/text/Lanczos.h"
#include "platform/linux/text/Marks.h"
#include "platform/linux/text/NearestBackground.h"
#include "platform/linux/text/Noise.h"
#include "platform/linux/text/ReadingOrder.h"
#include "platform/linux/text/SlidingMaximum.h"
#include "platform/linux/text/StopRequest.h"
#include "platform/linux/text/TextPage.h"
#include "support/TestCase.h"

#include <QElapsedTimer>

#include <ctime>
#include <functional>
#include <future>

namespace brindlecam {

namespace {

using StoppableStep = std::function<void(StopRequest)>;

} // namespace

class TestStopRequest final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyStepStops_data()
    {
        QTest::addColumn<StoppableStep>("step");
        const QImage colours = test::writtenPage({QStringLiteral("hola")});
        const QImage grey = colours.convertToFormat(QImage::Format_Grayscale8);
        const auto row = [](const char* name, StoppableStep step) {
            QTest::newRow(name) << std::move(step);
        };
        row("regions", [=](StopRequest stop) { const ColourRegions regions(colours, stop); });
        row("backgrounds", [=](StopRequest stop) {
            (void)Backgrounds::among(ColourRegions(colours), colours.size(), stop);
        });
        row("spreading", [=](StopRequest stop) {
            QImage picture = colours;
            std::vector<int> labels(picture.width() * picture.height(), -1);
            labels[0] = 0;
            NearestBackground::spread(labels, picture, stop);
        });
        row("strongest", [=](StopRequest stop) { (void)slidingMaximum(grey, 4, 4, stop); });
        row("flattening", [=](StopRequest stop) { (void)flatten(colours, stop); });
        row("marks", [=](StopRequest stop) { (void)Marks::boxes(grey, stop); });
        row("noise", [=](StopRequest stop) {
            QImage page = grey;
            (void)Noise::erase(page, {}, stop);
        });
        row("enlarging", [=](StopRequest stop) { (void)enlarged(grey, 2, stop); });
        row("icons", [=](StopRequest stop) { (void)Icons::among(Marks::boxes(grey), 1, stop); });
        row("order", [](StopRequest stop) {
            (void)readingOrder({{QStringLiteral("a"), QRect(0, 0, 9, 9)}}, stop);
        });
        row("page", [=](StopRequest stop) { const TextPage page(colours, stop); });
    }
    void everyStepStops()
    {
        QFETCH(StoppableStep, step);
        std::atomic<bool> wanted = false;
        step(StopRequest(wanted)); // and not before
        wanted = true;
        QVERIFY_THROWS_EXCEPTION(StopRequest::Stopped, step(StopRequest(wanted)));
    }

    void aLargePageIsGivenUpAtOnce_data()
    {
        QTest::addColumn<int>("share");
        for (const int share : {5, 30, 60, 90})
            QTest::addRow("after %d %%", share) << share;
    }
    void aLargePageIsGivenUpAtOnce()
    {
        QFETCH(int, share);
        constexpr qint64 kAtOnce = 400; // milliseconds
        const QImage picture = test::noise({5000, 4000});
        // Processor time: this thread only waits meanwhile.
        static std::clock_t whole = 0;
        if (whole == 0) {
            const std::clock_t start = std::clock();
            const TextPage page(picture);
            whole = std::clock() - start;
        }
        std::atomic<bool> wanted = false;
        const std::clock_t start = std::clock();
        auto stopped = std::async(std::launch::async, [&picture, &wanted] {
            try {
                const TextPage page(picture, StopRequest(wanted));
            } catch (const StopRequest::Stopped&) {
                return true;
            }
            return false;
        });
        QTRY_VERIFY_WITH_TIMEOUT((std::clock() - start) * 100 > whole * share, test::kReadingTime);
        wanted = true;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(stopped.get());
        QVERIFY2(timer.elapsed() < kAtOnce, qPrintable(QString::number(timer.elapsed())));
    }
};

BRINDLECAM_TEST(TestStopRequest);

} // namespace brindlecam

#include "tst_stoprequest.moc"
