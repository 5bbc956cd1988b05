// Covers WindowQuery, X11WindowList.
#include "desktop/support/x11/X11Pager.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/desktop/X11WindowList.h"
#include "support/TestCase.h"
#include "x11/ports/Client.h"

#include <algorithm>

namespace brindlecam {

namespace {

/// The list's window with this pid; each window of these tests says another one.
std::optional<WindowEntry> find(std::int64_t pid)
{
    const auto windows = X11WindowList().frontToBack();
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [&](const WindowEntry& entry) { return entry.pid == pid; });
    return found == windows.end() ? std::nullopt : std::optional(*found);
}

/// The pids of the ordinary windows, frontmost first.
std::vector<std::int64_t> ordinary()
{
    std::vector<std::int64_t> pids;
    for (const auto& entry : X11WindowList().frontToBack()) {
        if (entry.layer == 0)
            pids.push_back(entry.pid.value_or(0));
    }
    return pids;
}

} // namespace

/// The window list under a window manager.
class TestManagedWindows final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        // Not in initTestCase: Qt would skip the program's other classes, too.
        if (!x11::hasWindowManager())
            QSKIP("no window manager");
    }

    void frontmostComesFirst()
    {
        test::Client client;
        const auto first = show(client, 11, {.rect = QRect(50, 60, 300, 200)});
        show(client, 12, {.rect = QRect(100, 120, 300, 200)});
        show(client, 13, {.rect = QRect(150, 180, 300, 200)});
        QTRY_COMPARE(ordinary(), (std::vector<std::int64_t>{13, 12, 11}));
        client.raise(first);
        QTRY_COMPARE(ordinary(), (std::vector<std::int64_t>{11, 13, 12}));
    }

    void frameIsTheWholeDecoratedWindow()
    {
        test::Client client;
        const auto window = show(client, 21, {.rect = QRect(200, 200, 300, 200)});
        QVERIFY(client.topLevel(window) != window);
        QTRY_COMPARE(find(21)->frame, client.outerRect(client.topLevel(window)));
        QVERIFY(find(21)->frame.height() > 200);
        QVERIFY(!find(21)->opacity.has_value());
    }

    void shadowDrawnByTheWindowItselfIsLeftOut()
    {
        test::Client client;
        const auto window = show(client, 31, {.rect = QRect(200, 200, 300, 200)});
        QTRY_COMPARE(find(31)->frame, client.outerRect(client.topLevel(window)));
        const QRect outer = find(31)->frame;
        client.setNumbers(window, "_GTK_FRAME_EXTENTS", {26, 20, 23, 29});
        QCOMPARE(find(31)->frame, outer.adjusted(26, 23, -20, -29));
    }

    void onlyOrdinaryWindowsAndDialogsLieInLayerZero_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<bool>("isOrdinary");
        QTest::newRow("no type") << QByteArray() << true;
        QTest::newRow("normal") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_NORMAL") << true;
        QTest::newRow("dialog") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DIALOG") << true;
        QTest::newRow("dock") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DOCK") << false;
        QTest::newRow("desktop") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DESKTOP") << false;
        QTest::newRow("notification")
            << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_NOTIFICATION") << false;
        QTest::newRow("utility") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_UTILITY") << false;
    }
    void onlyOrdinaryWindowsAndDialogsLieInLayerZero()
    {
        QFETCH(QByteArray, type);
        test::Client client;
        show(client, 41, {.type = type});
        QVERIFY(find(41)->layer.has_value());
        QTEST(find(41)->layer == 0, "isOrdinary");
    }

    void firstKnownTypeCounts()
    {
        test::Client client;
        const auto window = show(client, 42, {.type = "_NET_WM_WINDOW_TYPE_DESKTOP"});
        client.setNumbers(window, "_NET_WM_WINDOW_TYPE",
                          {client.atom("_KDE_NET_WM_WINDOW_TYPE_OVERRIDE"),
                           client.atom("_NET_WM_WINDOW_TYPE_DESKTOP"),
                           client.atom("_NET_WM_WINDOW_TYPE_NORMAL")},
                          XCB_ATOM_ATOM);
        QVERIFY(find(42)->layer != 0);
        client.setNumbers(window, "_NET_WM_WINDOW_TYPE",
                          {client.atom("_KDE_NET_WM_WINDOW_TYPE_OVERRIDE"),
                           client.atom("_NET_WM_WINDOW_TYPE_NORMAL"),
                           client.atom("_NET_WM_WINDOW_TYPE_DOCK")},
                          XCB_ATOM_ATOM);
        QVERIFY(find(42)->layer == 0);
    }

    void opacityIsTold()
    {
        test::Client client;
        const auto window = show(client, 51, {});
        client.setNumbers(window, "_NET_WM_WINDOW_OPACITY", {0x80000000});
        const auto entry = find(51);
        QVERIFY(entry && entry->opacity);
        QVERIFY(qAbs(*entry->opacity - 0.5) < 0.001);
    }

    void minimisedWindowsAreLeftOut()
    {
        test::Client client;
        const auto window = show(client, 61, {});
        m_pager.iconify(window);
        QTRY_VERIFY(!find(61));
    }

    void windowsOfOtherDesktopsAreLeftOut()
    {
        constexpr int kEvery = -1;
        test::Client client;
        const auto window = show(client, 71, {});
        m_pager.sendToDesktop(window, 1);
        QTRY_VERIFY(!find(71));
        m_pager.sendToDesktop(window, kEvery);
        QTRY_VERIFY(find(71));
        m_pager.goToDesktop(1);
        QTRY_COMPARE(
            x11::property32(x11::root(), x11::atom("_NET_CURRENT_DESKTOP"), XCB_ATOM_CARDINAL),
            std::vector<std::uint32_t>{1});
        QVERIFY(find(71));
        m_pager.goToDesktop(0);
        QTRY_COMPARE(
            x11::property32(x11::root(), x11::atom("_NET_CURRENT_DESKTOP"), XCB_ATOM_CARDINAL),
            std::vector<std::uint32_t>{0});
    }

    void closedWindowsAreGone()
    {
        test::Client client;
        const auto window = show(client, 81, {});
        client.destroy(window);
        QTRY_VERIFY(!find(81));
    }

private:
    /// Waits until the window manager has the window in its list.
    static xcb_window_t show(test::Client& client, std::uint32_t pid,
                             const test::WindowOptions& options)
    {
        const auto window = client.show(options);
        client.setNumbers(window, "_NET_WM_PID", {pid});
        if (!QTest::qWaitFor([&] { return find(pid).has_value(); }))
            qWarning("the window of %u never shows up", pid);
        return window;
    }

    desktop::X11Pager m_pager{test::display()};
};

BRINDLECAM_TEST(TestManagedWindows);

} // namespace brindlecam

#include "tst_managed_windows.moc"
