#include "desktop/support/CaptureTest.h"
#include "desktop/support/Windows.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace brindlecam::desktop {

/// Captures by command while another program has pointer and keyboard.
class TestForeignMenus final : public CaptureTest {
    Q_OBJECT

private:
    enum class Kind { openbox, qt, qtSubmenu, gtk };

    static constexpr QPoint kPlace{400, 300}; ///< where menus open
    static constexpr QPoint kAside{1200, 700};
    static constexpr int kMenuOpens = 5000; // ms
    static constexpr int kMostTries = 4;

    [[nodiscard]] QString log() const { return m_home + QStringLiteral("/done"); }
    [[nodiscard]] qint64 carriedOut() const { return QFileInfo(log()).size(); }

    /// Whether somebody else has the pointer.
    [[nodiscard]] bool pointerIsTaken() { return desktop().rival()->isPointerTaken(); }

    [[nodiscard]] std::vector<WindowId> shownWindows()
    {
        std::vector<WindowId> ids;
        for (const SeenWindow& window : windows().all())
            ids.push_back(window.id);
        return ids;
    }
    /// Waits until one window more is on the screen than `before`, and names it. What toolkits keep
    /// beside the screen does not count.
    [[nodiscard]] SeenWindow newWindow(const std::vector<WindowId>& before)
    {
        SeenWindow found;
        const bool shown = waitUntil(
            [&] {
                for (const SeenWindow& window : windows().all()) {
                    if (std::ranges::count(before, window.id) == 0 &&
                        screen().pixels().contains(window.pixels)) {
                        found = window;
                        return true;
                    }
                }
                return false;
            },
            kMenuOpens);
        return shown ? found : SeenWindow();
    }

    void useMenus(Kind kind)
    {
        usePatternedDesktop({.windowManager = WindowManager::none});
        m_client.reset();
        QProcessEnvironment environment = desktop().environment();
        m_home = environment.value(QStringLiteral("HOME"));
        const QString configuration = m_home + QStringLiteral("/openbox");
        QVERIFY(QDir().mkpath(configuration));
        QFile menu(configuration + QStringLiteral("/menu.xml"));
        QVERIFY(menu.open(QIODevice::WriteOnly));
        menu.write("<openbox_menu><menu id=\"root-menu\" label=\"menu\">"
                   "<item label=\"uno\"><action name=\"Execute\">"
                   "<command>sh -c 'printf x >> \"$HOME/done\"'</command></action></item>"
                   "<item label=\"dos\"/><item label=\"tres\"/></menu></openbox_menu>");
        menu.close();
        desktop().startWindowManager();
        if (kind != Kind::openbox) {
            // Nothing else may start on account of a menu.
            environment.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
            environment.insert(QStringLiteral("GTK_A11Y"), QStringLiteral("none"));
            const QString helper = QString::fromLocal8Bit(
                qgetenv(kind == Kind::gtk ? "BRINDLECAM_GTK_MENU" : "BRINDLECAM_QT_MENU"));
            m_client = std::make_unique<Process>(helper, QStringList{log()}, environment);
            const auto isActive = [this] { return windows().active() != 0; };
            QVERIFY2(waitUntil(isActive), m_client->log().constData());
        }
        startProgram();
    }

    /// Waits until a menu is not only there but shows its entries.
    [[nodiscard]] bool isPainted(const QRect& menu, const QImage& beneath)
    {
        constexpr qsizetype kColoursOfText = 6;
        return waitUntil(
            [&] {
                const QImage now = screen().grab(menu);
                QSet<QRgb> colours;
                for (int y = 0; y < now.height(); ++y) {
                    for (int x = 0; x < now.width(); ++x)
                        colours.insert(now.pixel(x, y));
                }
                return now != beneath.copy(menu) && colours.size() >= kColoursOfText;
            },
            kMenuOpens);
    }

    /// Opens the menu and answers with its place on the screen; empty when it does not open. A menu
    /// closes again by itself when its program hears late that the focus has changed.
    QRect openMenu(Kind kind)
    {
        QRect menu;
        for (int i = 0; i < kMostTries && menu.isEmpty(); ++i)
            menu = tryToOpenMenu(kind);
        return menu;
    }
    QRect tryToOpenMenu(Kind kind)
    {
        const auto before = shownWindows();
        const QImage beneath = screen().grab();
        input().click(m_client ? insideClient() : kPlace, Button::right);
        const SeenWindow menu = newWindow(before);
        m_menus = {menu.id};
        input().moveTo(kAside);
        if (menu.id == 0 || !isPainted(menu.pixels, beneath) ||
            !waitUntil([this] { return pointerIsTaken(); }, kMenuOpens))
            return {};
        if (kind != Kind::qtSubmenu)
            return menu.pixels;
        // The last entry opens another menu.
        const auto withMenu = shownWindows();
        input().tap(Qt::Key_Up);
        input().tap(Qt::Key_Right);
        const SeenWindow submenu = newWindow(withMenu);
        m_menus.push_back(submenu.id);
        return submenu.id != 0 && isPainted(submenu.pixels, beneath) ? menu.pixels : QRect();
    }

    /// The middle of the client's window; there is no other large one.
    [[nodiscard]] QPoint insideClient()
    {
        for (const SeenWindow& window : windows().all()) {
            if (window.pixels.width() > 300 && window.pixels.height() > 300)
                return window.pixels.center();
        }
        return kPlace;
    }

    /// The menus that were opened last are off the screen.
    [[nodiscard]] bool menusAreGone()
    {
        const auto shown = shownWindows();
        return std::ranges::none_of(
            m_menus, [&](WindowId menu) { return std::ranges::count(shown, menu) > 0; });
    }

    std::unique_ptr<Process> m_client;
    std::vector<WindowId> m_menus;
    QString m_home;

private Q_SLOTS:
    void openMenuIsCapturedAndClosed_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("openbox") << Kind::openbox;
        QTest::newRow("Qt") << Kind::qt;
        QTest::newRow("Qt, a menu in a menu") << Kind::qtSubmenu;
        QTest::newRow("GTK") << Kind::gtk;
    }
    void openMenuIsCapturedAndClosed()
    {
        QFETCH(Kind, kind);
        useMenus(kind);
        const QRect menu = openMenu(kind);
        QVERIFY(!menu.isEmpty());
        const QImage before = screen().grabAtRest();

        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        QVERIFY(sessionIsReady());
        QVERIFY(menusAreGone());
        QVERIFY(!pointerIsTaken());
        // Begins where an entry was.
        const QRect area(menu.topLeft() + QPoint(15, 15), QSize(200, 150));
        select(area);
        QVERIFY(isPasted(before.copy(area)));
        input().moveTo(kAside);
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QCOMPARE(carriedOut(), 0);

        // The menu works as ever.
        QVERIFY(!openMenu(Kind::qt).isEmpty());
        input().tap(Qt::Key_Down);
        input().tap(Qt::Key_Return);
        QVERIFY(waitUntil([this] { return carriedOut() == 1; }));
        QVERIFY(waitUntil([this] { return menusAreGone(); }));
    }

    void otherGrabsGetNoKeyAndTheSessionEndsWithAMessage()
    {
        usePatternedDesktop();
        const auto window = desktop().open({.pixels = QRect(200, 200, 500, 400)});
        QVERIFY(becomesActive(*window));
        startProgram();

        // A drag.
        input().moveTo(window->pixels().center());
        input().press(Button::left);
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        QVERIFY(toastComes());
        QVERIFY(overlays().empty());
        QVERIFY(toastIsGone());
        QVERIFY(pointerIsTaken());
        input().release(Button::left);
        QVERIFY(window->keys().empty());

        // A program that has the whole screen, pointer and keyboard, beside windows that are no
        // menus though they look a little like some.
        const auto game = desktop().open(
            {.pixels = screen().pixels(), .kind = WindowKind::unmanaged, .colour = Qt::red});
        const auto panel =
            desktop().open({.pixels = QRect(100, 100, 150, 200), .kind = WindowKind::unmanaged});
        const auto owner = desktop().rival();
        QVERIFY(owner->takeKeyboard());
        QVERIFY(owner->takePointer());
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        QVERIFY(toastComes());
        QVERIFY(overlays().empty());
        QVERIFY(toastIsGone());
        QVERIFY(!owner->gotKeys());
        QVERIFY(history().isEmpty());

        owner->giveBackKeyboardAndPointer();
        QVERIFY(openArea());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }

    /// As that of a shortcut in a window manager's configuration, which ends with the key.
    void grabThatEndsWithAKeyIsWaitedFor()
    {
        usePatternedDesktop();
        startProgram();
        const auto owner = desktop().rival();
        QVERIFY(owner->takeHotKey(Qt::Key_F7, {}));
        input().press(Qt::Key_F7);
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        input().release(Qt::Key_F7);
        QVERIFY(sessionIsReady());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestForeignMenus)

#include "tst_foreignmenus.moc"
