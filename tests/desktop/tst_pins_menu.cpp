#include "desktop/TrayHost.h"
#include "desktop/support/PinTest.h"

#include <algorithm>
#include <string_view>

namespace brindlecam::desktop {

/// A pin's menu: what it offers, and what goes on while it is open.
class TestPinsMenu final : public PinTest {
    Q_OBJECT

private:
    /// In the lower right corner of the pin: much of a menu there lies outside.
    static constexpr QPoint kCorner{690, 540};

    /// Every second menu of this test lies partly above the plain desktop.
    [[nodiscard]] bool openMenuAcrossTheEdge()
    {
        return openMenu(kCorner) && !kDragged.contains(menus().front().pixels);
    }

    enum class Way { hotKey, command };
    void take(Way way)
    {
        if (way == Way::hotKey)
            pressHotKeyAtOnce(kAreaKey);
        else
            QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
    }

    /// Types into the save panel that has the keyboard, and accepts.
    [[nodiscard]] bool saveAs(std::string_view name)
    {
        const std::size_t open = dialogs().size();
        if (!dialogHasKeyboard())
            return false;
        input().type(name);
        input().tap(Qt::Key_Return);
        return waitUntil([&] { return dialogs().size() + 1 == open; });
    }
    [[nodiscard]] QImage saved(const char* name)
    {
        return QImage(program().folders().captures() + QLatin1Char('/') +
                      QString::fromLatin1(name) + QStringLiteral(".png"));
    }

private Q_SLOTS:
    void menuCopiesAgain_data() { addSurroundings(); }
    void menuCopiesAgain()
    {
        useSurroundings();
        QVERIFY(isOnlyInHistory(captured()));
        pressHotKey(kFullScreenKey);
        QVERIFY(waitUntil([this] { return history().size() == 2; }));
        QVERIFY(toastIsGone());
        const int files = captures().size();
        QVERIFY(openMenu({500, 400}));
        choose("Copiar");
        QVERIFY(toastComes());
        QVERIFY(isPasted(captured()));
        QVERIFY(menus().empty());
        QCOMPARE(history().size(), 2);
        QCOMPARE(captures().size(), files);
        QVERIFY(isOnlyPin(kDragged));
    }

    void menuSavesThroughTheSavePanel_data() { addSurroundings(); }
    void menuSavesThroughTheSavePanel()
    {
        useSurroundings();
        QVERIFY(openMenu({500, 400}));
        choose("Guardar…");
        QVERIFY(dialogOpens());
        // The pin has the keyboard until the panel takes it.
        QVERIFY(waitUntil([this] {
            input().tap(Qt::Key_Return);
            return dialogs().empty();
        }));
        QVERIFY(isOnlyCapture(captured()));
        QVERIFY(isOnlyInHistory(captured()));
        QVERIFY(isOnlyPin(kDragged));
    }

    void menuCloses_data() { addSurroundings(); }
    void menuCloses()
    {
        useSurroundings();
        QVERIFY(openMenu({500, 400}));
        choose("Cerrar");
        QVERIFY(pinsAreGone());
        QVERIFY(menus().empty());
    }

    void menuGoesAwayWithoutAChoice_data() { addSurroundings(); }
    void menuGoesAwayWithoutAChoice()
    {
        useSurroundings();
        QVERIFY(openMenu({500, 400}));
        QVERIFY(menus().front().pixels.contains(510, 410));
        QVERIFY(escapeMenu());
        QVERIFY(openMenu({600, 450})); // not a double click
        // A menu that has just been mapped may not have the pointer yet.
        QVERIFY(waitUntil([this] {
            input().click({100, 100});
            return menus().empty();
        }));
        QVERIFY(isOnlyPin(kDragged));
    }

    void keysOpenTheMenuOfAFocusedPin_data() { addSurroundings(); }
    void keysOpenTheMenuOfAFocusedPin()
    {
        useSurroundings();
        input().click({500, 400});
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_Menu);
        QVERIFY(waitUntil([this] { return menus().size() == 1; }));
        input().tap(Qt::Key_Escape);
        QVERIFY(waitUntil([this] { return menus().empty(); }));
        input().chord({Qt::Key_Shift, Qt::Key_F10});
        QVERIFY(waitUntil([this] { return menus().size() == 1; }));
        choose("Cerrar");
        QVERIFY(pinsAreGone());
    }

    void captureClosesAnOpenMenu_data()
    {
        QTest::addColumn<WindowManager>("windowManager");
        QTest::addColumn<Way>("way");
        QTest::newRow("hot key") << WindowManager::openbox << Way::hotKey;
        QTest::newRow("command") << WindowManager::openbox << Way::command;
        QTest::newRow("hot key, bare") << WindowManager::none << Way::hotKey;
        QTest::newRow("command, bare") << WindowManager::none << Way::command;
    }
    void captureClosesAnOpenMenu()
    {
        QFETCH(WindowManager, windowManager);
        QFETCH(Way, way);
        usePins({.windowManager = windowManager});
        QVERIFY(pinArea());
        QVERIFY(openMenuAcrossTheEdge());
        const QRect menu = menus().front().pixels;
        take(way);
        QVERIFY(sessionIsReady());
        QVERIFY(menus().empty());
        // Mouse and keys are the session's, and the menu is not in the picture.
        const QRect area(kDragged.right() + 2, menu.top() - 20, 200, menu.height() + 40);
        select(area);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isPasted(before().copy(area)));
        QVERIFY(isOnlyPin(kDragged));
        QVERIFY(openMenu({500, 400}));
    }

    void delayedCaptureClosesAnOpenMenu()
    {
        usePins({.bus = MessageBus::session});
        TrayHost host(desktop());
        QVERIFY(host.itemComes());
        QVERIFY(pinArea());
        QVERIFY(host.choose(host.items().front(), {QStringLiteral("Capturar con retraso"),
                                                   QStringLiteral("Área en 3 segundos")}));
        QVERIFY(openMenu({500, 400}));
        QVERIFY(sessionIsReady());
        QVERIFY(menus().empty());
        const QRect area(800, 100, 200, 100);
        select(area);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isPasted(before().copy(area)));
        QVERIFY(toastIsGone());
        QVERIFY(openMenu({500, 400}));
        take(Way::hotKey);
        QVERIFY(sessionIsReady());
        QVERIFY(menus().empty());
    }

    void screenIsTakenWithoutAnOpenMenu()
    {
        usePins();
        QVERIFY(pinArea());
        QVERIFY(openMenuAcrossTheEdge());
        const QRect menu = menus().front().pixels;
        pressHotKeyAtOnce(kFullScreenKey);
        QVERIFY(waitUntil([this] { return pasted().size() == before().size(); }));
        const QRect beside(kDragged.right() + 2, menu.top(), 200, menu.height());
        QCOMPARE(pasted().copy(beside), before().copy(beside));
        QVERIFY(menus().empty());
    }

    void savePanelOfAPinComesBackAfterACapture()
    {
        usePins();
        QVERIFY(pinArea());
        QVERIFY(openMenu({500, 400}));
        choose("Guardar…");
        QVERIFY(dialogHasKeyboard());
        QVERIFY(openArea());
        QVERIFY(dialogs().empty());
        const QRect area(800, 100, 100, 100);
        select(area);
        QVERIFY(isPasted(before().copy(area)));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(dialogOpens());
        QVERIFY(saveAs("fijada"));
        QVERIFY(waitUntil([this] { return samePixels(saved("fijada"), captured()); }));
        QVERIFY(isOnlyPin(kDragged));
    }

    void pinIsSavedAndCopiedWhileAnotherPictureIsBeingSaved()
    {
        usePins();
        const QRect own(20, 20, 240, 150); // where no window manager puts a panel
        const QRect other(800, 100, 300, 200);
        QVERIFY(pinArea(own));
        QVERIFY(openArea());
        select(other);
        QVERIFY(isPasted(before().copy(other)));
        input().chord({Qt::Key_Control, Qt::Key_S});
        QVERIFY(dialogOpens() && dialogHasKeyboard());
        const WindowId panel = dialogs().front().id;
        // By clicks: a key that comes before the menu has the keyboard would be the panel's.
        QVERIFY(openMenu(own.center()));
        QVERIFY(clickInMenu("Copiar"));
        QVERIFY(isPasted(before().copy(own)));
        QVERIFY(openMenu(own.center()));
        QVERIFY(clickInMenu("Guardar…"));
        QVERIFY(waitUntil([this] { return dialogs().size() == 2; }));
        QVERIFY(waitUntil([&] {
            const WindowId focused = windows().focused();
            const auto all = dialogs();
            return std::ranges::any_of(all, [&](const SeenWindow& dialog) {
                return dialog.id == focused && dialog.id != panel;
            });
        }));
        QVERIFY(saveAs("fijada"));
        // A panel that is left before Qt has read its folder does not keep its name selected.
        QVERIFY(dialogHasKeyboard());
        input().chord({Qt::Key_Control, Qt::Key_A});
        QVERIFY(saveAs("otra"));
        QVERIFY(waitUntil([&] { return samePixels(saved("fijada"), before().copy(own)); }));
        QVERIFY(waitUntil([&] { return samePixels(saved("otra"), before().copy(other)); }));
        QCOMPARE(captures().size(), 2);
        QVERIFY(isPasted(before().copy(own)));
        QVERIFY(isOnlyPin(own));
        QVERIFY(openArea());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPinsMenu)

#include "tst_pins_menu.moc"
