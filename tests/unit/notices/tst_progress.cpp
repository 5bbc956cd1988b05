#include "notices/Progress.h"
#include "notices/Toast.h"
#include "support/FakeCompositing.h"
#include "support/FakeDisplays.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace test {

struct ProgressDesk {
    ProgressDesk()
    {
        displays.all = {{QStringLiteral("A"), QRect(0, 0, 800, 600), 1, QRect(0, 0, 800, 600)}};
    }

    FakeDisplays displays;
    FakePanels panels;
    FakeCompositing compositing;
    Toast toast{displays, panels, compositing};
};

} // namespace test

namespace {

constexpr std::chrono::milliseconds kShort{10};
const QString kSaid = QStringLiteral("Preparando");

} // namespace

class TestProgress final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsQuickIsNotAnnounced()
    {
        test::ProgressDesk desk;
        {
            const Progress progress(desk.toast, kSaid, {}, kShort);
        }
        QVERIFY(!QTest::qWaitFor([&desk] { return desk.toast.visible(); }, 50));
    }

    void whatTakesLongIsSaidUntilItIsOver()
    {
        test::ProgressDesk desk;
        {
            const Progress progress(desk.toast, kSaid, {}, kShort);
            QTRY_VERIFY(desk.toast.visible());
            QVERIFY(!QTest::qWaitFor([&desk] { return !desk.toast.visible(); }, 1500));
        }
        QTRY_VERIFY(!desk.toast.visible());
    }

    void whatAnotherToastHasReplacedIsNotTakenAway()
    {
        test::ProgressDesk desk;
        auto progress = std::make_unique<Progress>(desk.toast, kSaid, std::nullopt, kShort);
        QTRY_VERIFY(desk.toast.visible());
        desk.toast.show(QStringLiteral("Copiado"));
        progress.reset();
        QVERIFY(desk.toast.visible());
        QCOMPARE(desk.panels.shown.back().widget->accessibleName(), QStringLiteral("Copiado"));
        QVERIFY(!QTest::qWaitFor([&desk] { return !desk.toast.visible(); }, 300));
    }
};

BRINDLECAM_TEST(TestProgress);

} // namespace brindlecam

#include "tst_progress.moc"
