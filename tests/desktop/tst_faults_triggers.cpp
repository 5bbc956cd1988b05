#include "desktop/support/CaptureTest.h"

#include <algorithm>

namespace brindlecam::desktop {

namespace {

constexpr int kTriggers = 8;

} // namespace

/// Too many triggers, too small drags.
class TestFaultsTriggers final : public CaptureTest {
    Q_OBJECT

private Q_SLOTS:
    void manyAreaTriggersOpenOneSession_data()
    {
        QTest::addColumn<bool>("byCommand");
        QTest::newRow("shortcut") << false;
        QTest::newRow("command") << true;
    }
    void manyAreaTriggersOpenOneSession()
    {
        QFETCH(bool, byCommand);
        useSmallDesktop();
        std::vector<std::unique_ptr<Process>> copies;
        for (int i = 0; i < kTriggers; ++i) {
            if (byCommand)
                copies.push_back(program().another({QStringLiteral("area")}));
            else
                pressHotKeyAtOnce(kAreaKey);
        }
        QVERIFY(sessionIsReady());
        int opened = 0;
        for (const auto& copy : copies) {
            constexpr int kBusy = 4;
            QVERIFY(copy->waitForEnd());
            if (copy->exitCode() == 0)
                ++opened;
            else
                QCOMPARE(copy->exitCode(), kBusy);
        }
        QCOMPARE(opened, byCommand ? 1 : 0);
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        // Whatever was still on its way would open before this capture, and refuse it.
        pressHotKey(kFullScreenKey);
        QVERIFY(toastSays(QStringLiteral("Pantalla completa copiada y guardada")));
        QVERIFY(overlays().empty());
        QCOMPARE(filesIn(program().folders().history()).size(), 1);
    }

    void manyFullScreenTriggersLoseNothingThatWasTaken_data()
    {
        QTest::addColumn<int>("pauseMilliseconds");
        QTest::newRow("at once") << 0;
        QTest::newRow("spread over a second") << 1000 / kTriggers;
    }
    void manyFullScreenTriggersLoseNothingThatWasTaken()
    {
        QFETCH(int, pauseMilliseconds);
        useSmallDesktop();
        // Each capture can be told by the colour in its middle.
        std::vector<std::unique_ptr<ClientWindow>> windows;
        std::size_t mostToasts = 0;
        for (int i = 0; i < kTriggers; ++i) {
            windows.push_back(desktop().open({.pixels = QRect(100, 100, 200, 200),
                                              .kind = WindowKind::unmanaged,
                                              .colour = colour(i)}));
            pressHotKeyAtOnce(kFullScreenKey);
            // The pace is what is tested.
            QTest::qWait(pauseMilliseconds);
            mostToasts = std::max(mostToasts, toasts().size());
        }
        QVERIFY(toastSays(QStringLiteral("Pantalla completa copiada y guardada")));
        QVERIFY(waitUntil([this] { return toasts().size() == 1; }));
        QVERIFY(mostToasts <= 1);
        QVERIFY(nothingIsShown());
        // The last of them is on the clipboard.
        const auto newestIsPasted = [this] {
            const std::vector<int> taken = numbersIn(program().folders().history());
            return !taken.empty() && std::ranges::max(taken) == numberIn(pasted());
        };
        QVERIFY(waitUntil(newestIsPasted));
        // What is being written beside them is no picture yet.
        QVERIFY(waitUntil([&] { return numbersIn(program().folders().history()).front() >= 0; }));
        const std::vector<int> taken = numbersIn(program().folders().history());
        QVERIFY(taken.size() <= kTriggers);
        // One file per second and name, none half written.
        const std::vector<int> files = numbersIn(program().folders().captures());
        QVERIFY(!files.empty() && files.front() >= 0);
        if (pauseMilliseconds > 0)
            QVERIFY(taken.size() > 1);
    }

    void smallestDrags_data()
    {
        QTest::addColumn<QSize>("drag");
        QTest::addColumn<QSize>("taken");
        const QSize window(300, 200);
        QTest::newRow("a click takes the window") << QSize(0, 0) << window;
        QTest::newRow("two pixels are a click") << QSize(2, 2) << window;
        QTest::newRow("one side under three pixels is a click") << QSize(50, 2) << window;
        QTest::newRow("three pixels are an area") << QSize(3, 3) << QSize(3, 3);
    }
    void smallestDrags()
    {
        QFETCH(QSize, drag);
        QFETCH(QSize, taken);
        useSmallDesktop();
        const auto window = openSample(QRect(100, 100, 300, 200));
        const QRect expected = drag == taken ? QRect(QPoint(200, 180), drag) : window->pixels();
        const QImage before = screen().grab(expected);
        QVERIFY(openArea());
        select(QRect(QPoint(200, 180), drag));
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QCOMPARE(pasted().size(), taken);
        QVERIFY(samePixels(pasted(), before));
    }

    void clickOnTheBareDesktopSelectsNothing()
    {
        useSmallDesktop();
        QVERIFY(openArea());
        select(QRect(200, 180, 2, 2));
        input().tap(Qt::Key_Return);
        // The session goes on: nothing was there to end it with.
        const QRect area(50, 50, 40, 30);
        select(area);
        QVERIFY(sessionIsReady());
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(QStringLiteral("Copiado y guardado")));
        QCOMPARE(pasted().size(), area.size());
        QCOMPARE(filesIn(program().folders().history()).size(), 1);
    }

private:
    void useSmallDesktop()
    {
        useDesktop({.screen = {.pixels = {640, 480}}, .windowManager = WindowManager::none});
        startProgram();
    }

    static QColor colour(int number) { return QColor(20 * number + 40, 200, 20); }

    /// Which of the numbered windows a picture shows; -1 for none.
    static int numberIn(const QImage& picture)
    {
        if (picture.size() != QSize(640, 480))
            return -1;
        for (int i = 0; i < kTriggers; ++i) {
            if (picture.pixelColor(200, 200) == colour(i))
                return i;
        }
        return -1;
    }

    /// Of every file in a folder, sorted.
    static std::vector<int> numbersIn(const QString& folder)
    {
        std::vector<int> numbers;
        for (const QString& name : filesIn(folder))
            numbers.push_back(numberIn(QImage(folder + QLatin1Char('/') + name)));
        std::ranges::sort(numbers);
        return numbers;
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestFaultsTriggers)

#include "tst_faults_triggers.moc"
