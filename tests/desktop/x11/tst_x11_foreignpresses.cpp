#include "desktop/support/x11/X11Input.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/desktop/X11ForeignPresses.h"
#include "support/TestCase.h"
#include "x11/ThisDesktop.h"

#include <QWidget>

namespace brindlecam {

using test::display;
using test::settle;

namespace {

constexpr QPoint kElsewhere(50, 50);

} // namespace

/// Presses on the bare desktop, and who hears of them.
class TestX11ForeignPresses final : public test::TestCase {
    Q_OBJECT

private:
    X11ForeignPresses m_presses{std::make_shared<X11Events>()};
    desktop::X11Input m_hands{display()};

    [[nodiscard]] std::unique_ptr<PressWatch> watch(int& heard)
    {
        return m_presses.watch([&heard] { ++heard; });
    }

private Q_SLOTS:
    void aPressElsewhereIsHeardAsLongAsSomebodyWatches()
    {
        int heard = 0;
        auto watching = watch(heard);
        QVERIFY(watching);
        m_hands.click(kElsewhere);
        QTRY_COMPARE(heard, 1);
        m_hands.click(kElsewhere, desktop::Button::right);
        QTRY_COMPARE(heard, 2);
        m_hands.click(kElsewhere, desktop::Button::middle);
        watching.reset();
        m_hands.click(kElsewhere);
        settle();
        QCOMPARE(heard, 2);
    }

    void aPressOnOursIsNone()
    {
        QWidget ours(nullptr, Qt::Window | Qt::BypassWindowManagerHint);
        ours.setGeometry(100, 100, 300, 200);
        ours.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ours));
        int heard = 0;
        const auto watching = watch(heard);
        m_hands.click({300, 300});
        m_hands.click({1300, 700});
        QTRY_VERIFY(heard > 0);
        settle();
        QCOMPARE(heard, 1);
    }

    void whoWatchesInAnothersPlaceGoesOnHearing()
    {
        int before = 0;
        int after = 0;
        auto watching = watch(before);
        watching = watch(after); // made while the other one still watches
        m_hands.click(kElsewhere);
        QTRY_COMPARE(after, 1);
        QCOMPARE(before, 0);
    }

    void allWhoWatchHear()
    {
        int first = 0;
        int second = 0;
        const auto one = watch(first);
        const auto other = watch(second);
        m_hands.click(kElsewhere);
        QTRY_COMPARE(second, 1);
        QCOMPARE(first, 1);
    }

    void whoHearsMayEndAllWatching()
    {
        std::unique_ptr<PressWatch> one;
        std::unique_ptr<PressWatch> other;
        int heard = 0;
        const auto endsAll = [&] {
            ++heard;
            one.reset();
            other.reset();
        };
        one = m_presses.watch(endsAll);
        other = m_presses.watch(endsAll);
        m_hands.click(kElsewhere);
        QTRY_COMPARE(heard, 1);
        settle();
        QCOMPARE(heard, 1);
    }
};

BRINDLECAM_TEST(TestX11ForeignPresses);

} // namespace brindlecam

#include "tst_x11_foreignpresses.moc"
