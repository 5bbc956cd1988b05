#include "desktop/support/ClientWindow.h"
#include "desktop/support/Clipboard.h"
#include "desktop/support/DesktopTest.h"
#include "desktop/support/Pictures.h"

#include <QProcess>

namespace brindlecam::desktop {

/// The harness itself: what other desktop tests rely on.
class TestHarness final : public DesktopTest {
    Q_OBJECT

private Q_SLOTS:
    void windowShowsItsColour_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<bool>("managed");
        QTest::newRow("managed, 24 bits") << 24 << true;
        QTest::newRow("unmanaged, 24 bits") << 24 << false;
        QTest::newRow("managed, 16 bits") << 16 << true;
    }
    void windowShowsItsColour()
    {
        QFETCH(int, depth);
        QFETCH(bool, managed);
        useDesktop({.screen = {.pixels = {640, 480}, .depth = depth}});
        const auto window =
            desktop().open({.pixels = QRect(100, 120, 200, 150),
                            .kind = managed ? WindowKind::normal : WindowKind::unmanaged,
                            .colour = QColor(255, 0, 0)});
        const auto red = [&] {
            return screen().pixel(window->pixels().center()) == QColor(255, 0, 0);
        };
        QVERIFY(waitUntil(red));
        QCOMPARE(window->pixels().size(), QSize(200, 150));
        QCOMPARE(screen().grab().size(), QSize(640, 480));
    }

    void checkerboardIsSharp()
    {
        useDesktop({.windowManager = WindowManager::none});
        const QImage board = checkerboard({64, 48}, 1, Qt::black, Qt::white);
        const auto window = desktop().open(
            {.pixels = QRect(10, 20, 64, 48), .kind = WindowKind::unmanaged, .picture = board});
        QVERIFY(waitUntil([&] { return screen().grab(window->pixels()) == board; }));
        QVERIFY(!screen().grabAtRest().isNull());
    }

    void keysReachTheFocusedWindow()
    {
        useDesktop();
        const auto window = desktop().open({});
        QVERIFY(waitUntil([&] { return window->hasFocus(); }));
        input().type("a1");
        input().chord({Qt::Key_Shift, Qt::Key_9});
        QVERIFY(waitUntil([&] { return window->keys().size() == 4; }));
        QCOMPARE(window->keys()[0].key, Qt::Key_A);
        QCOMPARE(window->keys()[1].key, Qt::Key_1);
        QCOMPARE(window->keys()[3].key, Qt::Key_9);
        QCOMPARE(window->keys()[3].modifiers, Qt::KeyboardModifiers(Qt::ShiftModifier));
        window->forget();
        QVERIFY(window->keys().empty());
    }

    void clicksReachTheWindowUnderThePointer()
    {
        useDesktop({.windowManager = WindowManager::none});
        const auto below = desktop().open({.pixels = QRect(0, 0, 300, 200)});
        const auto above = desktop().open({.pixels = QRect(100, 100, 300, 200)});
        input().click({120, 130});
        input().click({20, 30}, Button::right);
        QVERIFY(
            waitUntil([&] { return above->clicks().size() == 1 && below->clicks().size() == 1; }));
        QCOMPARE(above->clicks()[0].place, QPoint(20, 30));
        QCOMPARE(below->clicks()[0].button, std::uint8_t(3));
        input().drag({10, 10}, {50, 90});
        QCOMPARE(input().pointer(), QPoint(50, 90));
    }

    void keysAreFoundOnAChangedKeyboard()
    {
        useDesktop();
        const auto window = desktop().open({});
        QVERIFY(waitUntil([&] { return window->hasFocus(); }));
        input().tap(Qt::Key_Y);
        QVERIFY(waitUntil([&] { return window->keys().size() == 1; }));
        QCOMPARE(window->keys()[0].key, Qt::Key_Y);
        desktop().setKeyboard(QStringLiteral("de")); // Y and Z change places
        input().tap(Qt::Key_Y);
        QVERIFY(waitUntil([&] { return window->keys().size() == 2; }));
        QCOMPARE(window->keys()[1].key, Qt::Key_Y);
    }

    void handsLetGoWhatIsDown()
    {
        useDesktop();
        const auto window = desktop().open({});
        QVERIFY(waitUntil([&] { return window->hasFocus(); }));
        input().press(Qt::Key_Shift);
        input().press(Qt::Key_Control);
        input().press(Qt::Key_A);
        input().letGo();
        input().tap(Qt::Key_A);
        QVERIFY(waitUntil([&] { return window->keys().size() == 4; }));
        QCOMPARE(window->keys()[2].modifiers, Qt::ShiftModifier | Qt::ControlModifier);
        QCOMPARE(window->keys()[3].modifiers, Qt::KeyboardModifiers());
        input().moveTo(window->pixels().center());
        input().press(Button::left);
        input().letGo();
        // Where a button is still down, nobody else gets what is pressed next.
        const auto other =
            desktop().open({.pixels = QRect(600, 100, 200, 200), .kind = WindowKind::unmanaged});
        input().click({700, 200});
        QVERIFY(waitUntil([&] { return other->clicks().size() == 1; }));
    }

    void hurriedHandsKeepTheOrderAndTellWhenTheyStruck()
    {
        useDesktop();
        const auto window = desktop().open({});
        QVERIFY(waitUntil([&] { return window->hasFocus(); }));
        input().hurry();
        const auto before = std::chrono::steady_clock::now();
        input().press(Qt::Key_Shift);
        const auto first = input().lastSent();
        input().tap(Qt::Key_A);
        input().moveTo(window->pixels().topLeft() + QPoint(30, 40));
        input().press(Button::left);
        const auto last = input().lastSent();
        input().letGo();
        QVERIFY(before <= first);
        QVERIFY(first < last);
        QVERIFY(last < input().lastSent());
        QCOMPARE(window->keys().size(), std::size_t(2));
        QCOMPARE(window->keys()[1].modifiers, Qt::KeyboardModifiers(Qt::ShiftModifier));
        QCOMPARE(window->clicks().size(), std::size_t(1));
        QCOMPARE(window->clicks()[0].place, QPoint(30, 40));
    }

    void loweredWindowsLieBelow()
    {
        useDesktop({.windowManager = WindowManager::none});
        const auto below = desktop().open({.pixels = QRect(0, 0, 300, 200), .colour = Qt::red});
        const auto above = desktop().open({.pixels = QRect(0, 0, 300, 200), .colour = Qt::green});
        QVERIFY(waitUntil([&] { return screen().pixel({50, 50}) == QColor(Qt::green); }));
        above->lower();
        QVERIFY(waitUntil([&] { return screen().pixel({50, 50}) == QColor(Qt::red); }));
    }

    void grabsOfOthersAreSeen()
    {
        useDesktop({.windowManager = WindowManager::none});
        constexpr Qt::KeyboardModifiers modifiers = Qt::MetaModifier | Qt::ShiftModifier;
        const auto onlooker = desktop().rival();
        QVERIFY(!onlooker->isHotKeyTaken(Qt::Key_9, modifiers));
        const auto other = desktop().rival();
        QVERIFY(other->takeHotKey(Qt::Key_9, modifiers));
        QVERIFY(onlooker->isHotKeyTaken(Qt::Key_9, modifiers));
        QVERIFY(!onlooker->isHotKeyTaken(Qt::Key_8, modifiers));
        QVERIFY(!onlooker->takeHotKey(Qt::Key_9, modifiers));
    }

    void clipboardOfAnotherProgramIsRead_data()
    {
        QTest::addColumn<int>("bytes");
        QTest::addColumn<bool>("inPieces");
        QTest::newRow("in one go") << 11 << false;
        QTest::newRow("in pieces") << 20'000'000 << true;
    }
    void clipboardOfAnotherProgramIsRead()
    {
        QFETCH(int, bytes);
        useDesktop();
        Clipboard& reader = desktop().clipboard();
        QCOMPARE(reader.owner(), std::uint64_t(0));
        QVERIFY(reader.formats().isEmpty());

        QByteArray content(bytes, 'x');
        content.replace(bytes - 4, 4, "tail");
        QProcess xclip;
        xclip.setProcessEnvironment(desktop().environment());
        xclip.start(QStringLiteral("xclip"),
                    {QStringLiteral("-selection"), QStringLiteral("clipboard"),
                     QStringLiteral("-t"), QStringLiteral("image/x-test"),
                     QStringLiteral("-quiet")});
        xclip.write(content);
        xclip.closeWriteChannel();
        QVERIFY(waitUntil([&] { return reader.owner() != 0; }));

        QVERIFY(reader.formats().contains("image/x-test"));
        const auto read = reader.read("image/x-test");
        QVERIFY(read.has_value());
        QVERIFY(*read == content);
        QTEST(reader.lastCameInPieces(), "inPieces");
        xclip.kill();
        xclip.waitForFinished();
    }

    void textCopiedElsewhereIsOnTheClipboard()
    {
        useDesktop({.windowManager = WindowManager::none});
        for (const QString& text : {QStringLiteral("uno"), QStringLiteral("dos: ñ")}) {
            desktop().copyElsewhere(text);
            QCOMPARE(desktop().clipboard().text(), std::optional(text));
        }
    }

    void whatTheDesktopHoldsForAProcessIsCounted()
    {
        useDesktop({.windowManager = WindowManager::none});
        const qint64 own = QCoreApplication::applicationPid();
        const Holdings before = desktop().holdings(own);
        const auto window = desktop().open({.pixels = QRect(0, 0, 100, 100)});
        desktop().hangWallpaper(pattern({64, 32}));
        const Holdings with = desktop().holdings(own);
        QCOMPARE(with.connections, before.connections + 1);
        QCOMPARE(with.windows, before.windows + 1);
        QCOMPARE(with.pictures, before.pictures + 1);
        QVERIFY(with.pictureBytes > before.pictureBytes); // in parts: the desktop uses it thrice
        constexpr qint64 kFirst = 1;                      // draws nothing
        QCOMPARE(desktop().holdings(kFirst).connections, 0);
    }

    void monitorsAreSeen()
    {
        useDesktop({.screen = {.pixels = {1600, 600},
                               .monitors = {{QStringLiteral("LEFT"), QRect(0, 0, 800, 600)},
                                            {QStringLiteral("RIGHT"), QRect(800, 0, 800, 600)}}}});
        QCOMPARE(monitors(), QStringLiteral("LEFT 800x600+0+0, RIGHT 800x600+800+0"));
        desktop().setMonitors({{QStringLiteral("ONLY"), QRect(0, 0, 1600, 600)}});
        QCOMPARE(monitors(), QStringLiteral("ONLY 1600x600+0+0"));
    }

    void inhabitantsComeAndGo()
    {
        useDesktop(
            {.compositor = Compositor::picom, .bus = MessageBus::session, .tray = Tray::tint2});
        QVERIFY(desktop().hasWindowManager());
        QVERIFY(desktop()
                    .environment()
                    .value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"))
                    .startsWith(QLatin1String("unix:")));
        desktop().endTray();
        QVERIFY(waitUntil([&] { return !desktop().hasTray(); }));
        desktop().startTray(Tray::trayer);
        desktop().endCompositor();
        QVERIFY(waitUntil([&] { return !desktop().hasCompositor(); }));
        desktop().endWindowManager();
        QVERIFY(waitUntil([&] { return !desktop().hasWindowManager(); }));
        desktop().startWindowManager();
        desktop().killWindowManager();
        QVERIFY(waitUntil([&] { return !desktop().hasWindowManager(); }));
        const QString bus = QStringLiteral("DBUS_SESSION_BUS_ADDRESS");
        const QString before = desktop().environment().value(bus);
        desktop().endMessageBus();
        desktop().startMessageBus();
        QVERIFY(desktop().environment().value(bus) != before);
    }

private:
    QString monitors()
    {
        QProcess xrandr;
        xrandr.start(QStringLiteral("xrandr"), {QStringLiteral("--display"), desktop().name(),
                                                QStringLiteral("--listactivemonitors")});
        xrandr.waitForFinished(kPatience);
        // " 0: LEFT 800/212x600/159+0+0  screen"; an automatic monitor has a plus before its name
        static const QRegularExpression line(
            QStringLiteral("\\d+: \\+?\\*?(\\w+) (\\d+)/\\d+x(\\d+)/\\d+(\\+\\d+\\+\\d+)"));
        QStringList found;
        auto matches = line.globalMatch(QString::fromLatin1(xrandr.readAllStandardOutput()));
        while (matches.hasNext()) {
            const auto match = matches.next();
            found << QStringLiteral("%1 %2x%3%4")
                         .arg(match.captured(1), match.captured(2), match.captured(3),
                              match.captured(4));
        }
        return found.join(QStringLiteral(", "));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestHarness)

#include "tst_harness.moc"
