#include "app/Defaults.h"
#include "app/Prefs.h"
#include "capture/Output.h"
#include "recents/History.h"
#include "support/FakePasteboard.h"
#include "support/GatedExecutor.h"
#include "support/TestCase.h"

#include <QTemporaryDir>
#include <QThreadPool>

namespace brindlecam {

namespace {

/// What an output needs, and one picture.
struct OutputPlace {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    test::FakePasteboard pasteboard;
    History history{folder.filePath(QStringLiteral("historia"))};
    const QString file = folder.filePath(QStringLiteral("a.png"));
    Rendered red = picture();

    static Rendered picture()
    {
        QImage image(1000, 800, QImage::Format_RGB32);
        image.fill(Qt::red);
        return {image, image.size()};
    }
};

} // namespace

/// How work on other threads and the main thread meet.
class TestOutputThreads final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void destroyingItWaitsForWhatWasDelivered()
    {
        OutputPlace place;
        {
            Output output(place.pasteboard, place.history, place.prefs,
                          [](std::function<void()> job) {
                              QThreadPool::globalInstance()->start(std::move(job));
                          });
            output.deliver(place.red, {.copy = true, .saveTo = place.file, .history = true});
        }
        QCOMPARE(QImage(place.file).pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(place.history.items().size(), 1);
        QCOMPARE(place.pasteboard.changes, 1);
    }

    // A job goes on for a moment after it has reported.
    void whatTheCompletionHoldsIsLetGoOnTheMainThread()
    {
        OutputPlace place;
        std::vector<std::function<void()>> stillThere;
        Output output(place.pasteboard, place.history, place.prefs,
                      [&stillThere](std::function<void()> job) {
                          job();
                          stillThere.push_back(std::move(job));
                      });
        const auto held = std::make_shared<int>(0);
        output.deliver(place.red, {.copy = true, .saveTo = place.file},
                       [held](const Fate&) { ++*held; });
        output.finishAll();
        QCOMPARE(*held, 1);
        QVERIFY(!stillThere.empty());
        QCOMPARE(held.use_count(), 1);
    }
};

BRINDLECAM_TEST(TestOutputThreads);

} // namespace brindlecam

#include "tst_outputthreads.moc"
