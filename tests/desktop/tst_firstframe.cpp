#include "desktop/AnnotatingTest.h"
#include "desktop/support/Patience.h"

#include <QDeadlineTimer>

#include <utility>

namespace brindlecam::desktop {

/// The overlay shows its first frame before it has painted anything, and paints only what differs:
/// whatever happens to its window, nobody sees what was never painted.
class TestFirstFrame final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QRect kCovered{150, 90, 500, 420};

    /// A session at rest, with nothing in it or with a selection and a mark.
    [[nodiscard]] bool opens(bool marked)
    {
        if (!marked)
            return openArea();
        if (!selects() || !choose(Tool::rect))
            return false;
        drag({160, 100}, {300, 220});
        return isPastedWith({mark(Tool::rect, {160, 100}, {300, 220})});
    }
    /// Puts another program's window over the session for a moment.
    [[nodiscard]] bool cover()
    {
        const auto other = desktop().open({.pixels = kCovered, .kind = WindowKind::unmanaged});
        return waitUntil([this] { return screen().pixel(kCovered.center()) == QColor(Qt::blue); });
    }
    /// The screen once two looks at it at rest were the same: on a busy machine one comes too
    /// early.
    [[nodiscard]] QImage settled()
    {
        QImage last;
        const auto same = [&] {
            const QImage now = screen().grabAtRest();
            return samePixels(std::exchange(last, now), now);
        };
        return waitUntil(same) ? last : QImage();
    }
    [[nodiscard]] bool looksLike(const QImage& expected)
    {
        return waitUntil([&] { return samePixels(screen().grab(), expected); });
    }

private Q_SLOTS:
    void overlayIsWholeAgainWhereAnotherWindowWas_data()
    {
        QTest::addColumn<Compositor>("compositor");
        QTest::addColumn<bool>("marked");
        QTest::newRow("before anything is done") << Compositor::none << false;
        QTest::newRow("with marks") << Compositor::none << true;
        QTest::newRow("composited, before anything is done") << Compositor::picom << false;
        QTest::newRow("composited, with marks") << Compositor::picom << true;
    }
    void overlayIsWholeAgainWhereAnotherWindowWas()
    {
        QFETCH(Compositor, compositor);
        QFETCH(bool, marked);
        useProgram();
        if (compositor == Compositor::picom) {
            desktop().startCompositor();
            QVERIFY(cover());
            QVERIFY(looksLike(frozen()));
        }
        input().moveTo({20, 780});
        QVERIFY(opens(marked));
        input().moveTo({20, 780});
        const QImage before = settled();
        for (int time = 0; time < 2; ++time) {
            QVERIFY(cover());
            QVERIFY(looksLike(before));
        }
        input().tap(Qt::Key_Escape);
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }

    void compositorMayComeAndGoDuringASession_data()
    {
        QTest::addColumn<bool>("marked");
        QTest::newRow("before anything is done") << false;
        QTest::newRow("with marks") << true;
    }
    void compositorMayComeAndGoDuringASession()
    {
        QFETCH(bool, marked);
        useProgram();
        input().moveTo({20, 780});
        QVERIFY(opens(marked));
        input().moveTo({20, 780});
        const QImage before = settled();
        // Another window shows that everybody has followed.
        desktop().startCompositor();
        QVERIFY(cover());
        QVERIFY(looksLike(before));
        desktop().endCompositor();
        QVERIFY(cover());
        QVERIFY(looksLike(before));
        if (!marked)
            drag(kSelected.topLeft(), kSelected.bottomRight());
        Marks marks;
        if (marked)
            marks.push_back(mark(Tool::rect, {160, 100}, {300, 220}));
        QVERIFY(returnTakes(marks));
    }

    void whoeverSeesTheOverlayCanLeaveIt()
    {
        useProgram();
        input().moveTo({20, 780});
        const QPoint corner(0, screen().pixels().height() - 1);
        const QColor bright = screen().pixel(corner);
        for (int round = 0; round < 10; ++round) {
            pressHotKey(kAreaKey);
            // Without a pause: the frame is there before the window has the focus.
            QDeadlineTimer patience(kPatience);
            while (screen().pixel(corner) == bright)
                QVERIFY(!patience.hasExpired());
            input().tap(Qt::Key_Escape);
            QVERIFY(sessionIsOver());
            QVERIFY(waitUntil([&] { return screen().pixel(corner) == bright; }));
        }
    }

    void eachOfThreeScreensShowsItsOwnFrame()
    {
        const QRect wide(0, 0, 5120, 700);
        const QRect thin(0, 700, 800, 1);
        const QRect dense(800, 700, 1366, 500);
        useProgram({}, 1,
                   {.screen = {.pixels = {5120, 1200},
                               .monitors = {{QStringLiteral("WIDE"), wide},
                                            {QStringLiteral("THIN"), thin},
                                            {QStringLiteral("DENSE"), dense}}}});
        QCOMPARE(program().quit(), 0);
        program().environment().insert(QStringLiteral("QT_SCREEN_SCALE_FACTORS"),
                                       QStringLiteral("WIDE=1;THIN=2;DENSE=1.5"));
        startProgram();
        input().moveTo({1500, 1100});
        const QImage before = screen().grabAtRest();
        QVERIFY(openArea(3));
        const QImage dark = dimmed(before);
        const QRegion belowTheHints =
            QRegion(wide.adjusted(0, 200, 0, 0)) | QRegion(dense.adjusted(0, 200, 0, 0));
        QVERIFY(waitUntil([&] { return difference(screen().grab(), dark, belowTheHints) <= 1; }));
        QVERIFY(waitUntil([&] { return screen().pixel({799, 700}) == dark.pixelColor(799, 700); }));
        // From end to end of the widest.
        input().drag({0, 0}, {5119, 699}, 3);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([&] { return !pasted().isNull(); }));
        const QImage picture = pasted();
        QVERIFY(picture.width() >= 5118 && picture.height() >= 698);
        QVERIFY(samePixels(picture, before.copy(QRect({}, picture.size()))));
    }

    void serverThatSharesNoMemoryShowsTheSame()
    {
        useProgram({}, 1, {.screen = {.without = QStringLiteral("MIT-SHM")}});
        QVERIFY(openArea());
        const QRegion belowTheHint(0, 200, frozen().width(), frozen().height() - 200);
        const QImage dark = dimmed(frozen());
        QVERIFY(waitUntil([&] { return difference(screen().grab(), dark, belowTheHint) <= 1; }));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(selects());
        QVERIFY(choose(Tool::rect));
        drag({160, 100}, {300, 220});
        QVERIFY(returnTakes({mark(Tool::rect, {160, 100}, {300, 220})}));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestFirstFrame>(argc, argv);
}

#include "tst_firstframe.moc"
