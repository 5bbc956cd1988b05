#include "platform/x11/connection/X11.h"
#include "platform/x11/desktop/X11WindowList.h"
#include "support/TestCase.h"
#include "x11/ports/Client.h"

namespace brindlecam {

/// The window list without a window manager: what lies on the root window.
class TestUnmanagedWindows final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        // Not in initTestCase: Qt would skip the program's other classes, too.
        if (x11::hasWindowManager())
            QSKIP("a window manager runs");
    }

    void childrenOfTheRootWindowAreListedFrontToBack()
    {
        test::Client client;
        const auto lower = client.show({.rect = QRect(10, 20, 300, 200)});
        client.setNumbers(lower, "_NET_WM_PID", {11});
        const auto upper = client.show({.rect = QRect(40, 50, 300, 200), .border = 2});
        client.setNumbers(upper, "_NET_WM_WINDOW_OPACITY", {0});
        const std::vector<WindowEntry> expected{
            {QRect(40, 50, 304, 204), 0, std::nullopt, 0.0},
            {QRect(10, 20, 300, 200), 0, 11, std::nullopt},
        };
        QCOMPARE(X11WindowList().frontToBack(), expected);
        client.raise(lower);
        QCOMPARE(X11WindowList().frontToBack().front(), expected.back());
    }

    void menusAndTooltipsLieInAnotherLayer()
    {
        test::Client client;
        [[maybe_unused]] const auto menu = client.show({.unmanaged = true});
        const auto windows = X11WindowList().frontToBack();
        QCOMPARE(windows.size(), std::size_t(1));
        QVERIFY(windows.front().layer && *windows.front().layer != 0);
    }

    void whatCanNotBeSeenIsLeftOut()
    {
        test::Client client;
        [[maybe_unused]] const auto input = client.show({.inputOnly = true});
        const auto hidden = client.show({});
        client.setNumbers(hidden, "_NET_WM_STATE", {client.atom("_NET_WM_STATE_HIDDEN")},
                          XCB_ATOM_ATOM);
        QVERIFY(X11WindowList().frontToBack().empty());
    }

    void windowsThatVanishWhileWeAskAreSkipped()
    {
        test::Client client;
        const auto manager = client.show({.rect = QRect(0, 0, 1, 1), .unmanaged = true});
        const auto there = client.show({.rect = QRect(10, 20, 300, 200)});
        const auto gone = client.show({});
        client.destroy(gone);
        client.setNumbers(manager, "_NET_SUPPORTING_WM_CHECK", {manager}, XCB_ATOM_WINDOW);
        client.setNumbers(client.root(), "_NET_SUPPORTING_WM_CHECK", {manager}, XCB_ATOM_WINDOW);
        client.setNumbers(client.root(), "_NET_CLIENT_LIST_STACKING", {there, gone},
                          XCB_ATOM_WINDOW);
        const auto windows = X11WindowList().frontToBack();
        client.remove(client.root(), "_NET_SUPPORTING_WM_CHECK");
        client.remove(client.root(), "_NET_CLIENT_LIST_STACKING");
        QCOMPARE(windows.size(), std::size_t(1));
        QCOMPARE(windows.front().frame, QRect(10, 20, 300, 200));
    }

    void listOfADeadWindowManagerIsNotBelieved()
    {
        test::Client client;
        [[maybe_unused]] const auto window = client.show({.rect = QRect(10, 20, 300, 200)});
        const auto gone = client.show({});
        client.destroy(gone);
        client.setNumbers(client.root(), "_NET_SUPPORTING_WM_CHECK", {gone}, XCB_ATOM_WINDOW);
        client.setNumbers(client.root(), "_NET_CLIENT_LIST_STACKING", {gone}, XCB_ATOM_WINDOW);
        client.setNumbers(client.root(), "_NET_CURRENT_DESKTOP", {3});
        client.setNumbers(window, "_NET_WM_DESKTOP", {0});
        const auto windows = X11WindowList().frontToBack();
        client.remove(client.root(), "_NET_SUPPORTING_WM_CHECK");
        client.remove(client.root(), "_NET_CLIENT_LIST_STACKING");
        client.remove(client.root(), "_NET_CURRENT_DESKTOP");
        QCOMPARE(windows.size(), std::size_t(1));
    }
};

BRINDLECAM_TEST(TestUnmanagedWindows);

} // namespace brindlecam

#include "tst_unmanaged_windows.moc"
