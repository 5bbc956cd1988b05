#include "reading/Backgrounds.h"
#include "reading/Flatten.h"
#include "reading/Icons.h"
#include "reading/InkSpots.h"
#include "reading/Lanczos.h"
#include "reading/NearestBackground.h"
#include "reading/Noise.h"
#include "reading/ReadingOrder.h"
#include "reading/SlidingMaximum.h"
#include "reading/StopRequest.h"
#include "reading/TextPage.h"
#include "support/ReadingAnswers.h"
#include "support/TestCase.h"

#include <functional>

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
        row("spots", [=](StopRequest stop) { (void)InkSpots::boxes(grey, stop); });
        row("noise", [=](StopRequest stop) {
            QImage page = grey;
            (void)Noise::erase(page, {}, stop);
        });
        row("enlarging", [=](StopRequest stop) { (void)enlarged(grey, 2, stop); });
        row("icons", [=](StopRequest stop) { (void)Icons::among(InkSpots::boxes(grey), 1, stop); });
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

    // How soon a wish is heard depends on how much is done between two looks for it.
    void aLargePageIsLookedUpFromRowByRow()
    {
        constexpr int kRows = 4000;
        constexpr int kLeastSteps = 5; ///< that go through every row
        const std::atomic<bool> wanted = false;
        std::atomic<int> looks = 0;
        const TextPage page(test::noise({5000, kRows}), StopRequest(wanted, looks));
        QVERIFY2(looks >= kLeastSteps * kRows, qPrintable(QString::number(looks)));
    }
};

BRINDLECAM_TEST(TestStopRequest);

} // namespace brindlecam

#include "tst_stoprequest.moc"
