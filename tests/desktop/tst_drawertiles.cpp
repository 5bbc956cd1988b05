#include "desktop/DrawerTest.h"

#include <QFile>

#include <algorithm>

namespace brindlecam::desktop {

/// What the drawer of recent captures shows, and what can be done with a tile.
class TestDrawerTiles final : public DrawerTest {
    Q_OBJECT

private Q_SLOTS:
    void aClickCopiesThatCaptureAndCloses()
    {
        useDrawer();
        QVERIFY(openDrawer());
        QVERIFY(shows(1, kColours[1]));
        input().click(tile(1).center());
        QVERIFY(isPastedEntry(kColours[1]));
        QVERIFY(drawerIsGone());
        QVERIFY(toastSays(QStringLiteral("Copiado al portapapeles")));
    }

    void keysWalkCopyAndPreview()
    {
        useDrawer();
        QVERIFY(openDrawer());
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_Right);
        input().tap(Qt::Key_End);
        input().tap(Qt::Key_Left);
        input().tap(Qt::Key_Return);
        QVERIFY(isPastedEntry(kColours[1]));
        QVERIFY(drawerIsGone());
        QVERIFY(toastIsGone());

        QVERIFY(openDrawer());
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_Space);
        QVERIFY(dialogOpens());
        QVERIFY(drawerIsGone());
        QVERIFY(dialogHasKeyboard());
        const QRect window = dialogs().front().pixels;
        QVERIFY(waitUntil([&] { return screen().pixel(window.center()) == QColor(kColours[0]); }));
        input().tap(Qt::Key_Space);
        QVERIFY(dialogsAreGone());
    }

    void aCaptureTakesThePreviewAway()
    {
        useDrawer();
        const auto below = desktop().open({.pixels = {100, 100, 400, 300}});
        QVERIFY(turnsTo(*below));
        const QImage before = screen().grabAtRest();
        QVERIFY(openDrawer());
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_Space);
        QVERIFY(dialogOpens() && dialogHasKeyboard());
        pressHotKey(kFullScreenKey);
        QVERIFY(waitUntil([this] { return pasted().size() == screen().pixels().size(); }));
        QVERIFY(samePixels(pasted(), before));
        QVERIFY(toastIsGone());
        QVERIFY(dialogs().empty());
        QVERIFY(getsFocus(*below));
    }

    void menuRemovesAndTheRestMovesUp()
    {
        useDrawer({.accessibility = Accessibility::on});
        QVERIFY(openDrawer());
        QVERIFY(choose(1, "Quitar de recientes"));
        QVERIFY(shows(1, kColours[2]));
        QVERIFY(drawerIsOpen());
        QCOMPARE(history().size(), 2);
        QVERIFY(choose(0, "Guardar en la carpeta de capturas"));
        QVERIFY(waitUntil([this] { return captures().size() == 1; }));
        QVERIFY(choose(0, "Copiar"));
        QVERIFY(isPastedEntry(kColours[0]));
        QVERIFY(drawerIsGone());
    }

    void theMenuOfATileLeavesTheKeysWhereTheyAre_data()
    {
        QTest::addColumn<bool>("saves");
        QTest::newRow("saves") << true;
        QTest::newRow("escape") << false;
    }
    void theMenuOfATileLeavesTheKeysWhereTheyAre()
    {
        QFETCH(bool, saves);
        useDrawer({.accessibility = Accessibility::on});
        QVERIFY(openDrawer());
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_Right);
        input().tap(Qt::Key_Right);
        if (saves) {
            QVERIFY(choose(0, "Guardar en la carpeta de capturas"));
            QVERIFY(waitUntil([this] { return captures().size() == 1; }));
        } else {
            input().click(tile(0).center(), Button::right);
            QVERIFY(waitUntil([this] { return menus().size() == 1; }));
            QVERIFY(escapeMenu());
        }
        input().tap(Qt::Key_Right);
        input().tap(Qt::Key_Return);
        QVERIFY(isPastedEntry(kColours[2]));
    }

    void keysOpenTheMenuOfTheFocusedTile()
    {
        useDrawer({.accessibility = Accessibility::on});
        for (const QList<Qt::Key>& keys :
             {QList<Qt::Key>{Qt::Key_Menu}, {Qt::Key_Shift, Qt::Key_F10}}) {
            QVERIFY(openDrawer());
            QVERIFY(programHasKeyboard());
            input().tap(Qt::Key_End);
            input().chord(keys);
            QVERIFY(waitUntil([this] { return menus().size() == 1; }));
            const auto copy = controls().find(QStringLiteral("Copiar"), ControlKind::menuItem);
            QVERIFY(copy);
            input().click(copy->pixels.center());
            QVERIFY(isPastedEntry(kColours[2]));
            QVERIFY(drawerIsGone());
            QVERIFY(toastIsGone());
        }
    }

    void deleteAsksAndTheQuestionHasEscape()
    {
        useDrawer({.accessibility = Accessibility::on});
        QVERIFY(openDrawer());
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_Right);
        input().tap(Qt::Key_Delete);
        QVERIFY(dialogOpens() && dialogHasKeyboard());
        input().tap(Qt::Key_Escape);
        QVERIFY(dialogsAreGone());
        QVERIFY(drawerIsOpen());
        QCOMPARE(history().size(), 3);
        // The window manager may take the keyboard once more before the drawer has it for good.
        QVERIFY(waitUntil([this] {
            input().tap(Qt::Key_Delete);
            return dialogs().size() == 1;
        }));
        QVERIFY(dialogHasKeyboard());
        QVERIFY(press("Quitar"));
        QVERIFY(shows(0, kColours[1]));
        QCOMPARE(history().size(), 2);
    }

    void emptiesTheHistoryOnceTheUserSaysSo()
    {
        useDrawer({.accessibility = Accessibility::on});
        QVERIFY(openDrawer());
        QVERIFY(press("Vaciar"));
        QVERIFY(dialogOpens());
        QVERIFY(drawerIsGone());
        QVERIFY(dialogHasKeyboard());
        input().tap(Qt::Key_Return); // "Vaciar" is the default
        QVERIFY(dialogsAreGone());
        QVERIFY(toastSays(QStringLiteral("Capturas recientes vaciadas")));
        QVERIFY(history().isEmpty());
        QVERIFY(openDrawer());
        QCOMPARE(drawers().front().pixels, QRect(304, 574, 672, 212));
    }

    void tellsAssistiveTechnologyOfEachTile()
    {
        useDrawer({.accessibility = Accessibility::on});
        QVERIFY(openDrawer());
        const auto tiles = [this] {
            std::vector<Control> all = controls().shown();
            std::erase_if(all, [](const Control& control) {
                return control.kind != ControlKind::button ||
                       !control.name.endsWith(QStringLiteral("  ·  300×200"));
            });
            return all;
        };
        QVERIFY(waitUntil([&] { return tiles().size() == 3; }));
        QVERIFY(tiles().front().name.startsWith(QStringLiteral("Hoy, ")));
        QCOMPARE(tiles().front().pixels, tile(0));
        input().tap(Qt::Key_Right);
        input().tap(Qt::Key_Right);
        QVERIFY(waitUntil([&] { return tiles().at(1).focused; }));
        QVERIFY(!tiles().at(0).focused);
    }

    void thePreviewComesWhereTheDrawerWas_data()
    {
        QTest::addColumn<QString>("scales");
        for (const char* scales : {"LEFT=1;RIGHT=1", "LEFT=1;RIGHT=2", "LEFT=2;RIGHT=1"})
            QTest::newRow(scales) << QString::fromLatin1(scales);
    }
    void thePreviewComesWhereTheDrawerWas()
    {
        QFETCH(QString, scales);
        const QRect right(1000, 0, 1000, 800);
        usePatternedDesktop({.screen = {.pixels = {2000, 800},
                                        .monitors = {{QStringLiteral("LEFT"), {0, 0, 1000, 800}},
                                                     {QStringLiteral("RIGHT"), right}}}});
        program().environment().insert(QStringLiteral("QT_SCREEN_SCALE_FACTORS"), scales);
        const QSize picture(700, 500);
        addEntry(kColours[0], picture);
        input().moveTo({1500, 100});
        startProgram();
        pressHotKey(kRecentsKey);
        QVERIFY(waitUntil([this] { return drawers().size() == 1; }));
        QVERIFY(programHasKeyboard());
        input().moveTo({500, 400});
        input().tap(Qt::Key_Space);
        QVERIFY(dialogOpens());
        const QRect window = dialogs().front().pixels;
        QVERIFY(right.contains(window));
        QVERIFY((window.center() - right.center()).manhattanLength() < 40);
        // Pixel by pixel.
        QRect seen(QPoint(), picture);
        seen.moveCenter(window.center());
        QVERIFY(waitUntil([&] { return screen().pixel(seen.center()) == QColor(kColours[0]); }));
        QCOMPARE(screen().pixel(seen.topLeft()), QColor(kColours[0]));
        QCOMPARE(screen().pixel(seen.bottomRight()), QColor(kColours[0]));
        QVERIFY(screen().pixel(seen.topLeft() - QPoint(2, 2)) != QColor(kColours[0]));
        QVERIFY(screen().pixel(seen.bottomRight() + QPoint(2, 2)) != QColor(kColours[0]));
    }

    void scrollsSidewaysByTheWheel()
    {
        useDrawer();
        for (const QColor& colour : {QColor(Qt::cyan), QColor(Qt::magenta), QColor(Qt::yellow)})
            addEntry(colour);
        QVERIFY(openDrawer());
        QCOMPARE(drawers().front().pixels, QRect(20, 574, 1240, 212));
        QVERIFY(shows(0, Qt::yellow));
        // 1320 points in 1208: the second notch has one point left.
        input().click(tile(1).center(), Button::wheelDown);
        input().click(tile(1).center(), Button::wheelDown);
        QVERIFY(waitUntil([this] {
            return screen().pixel(tile(5).center() - QPoint(112, 10)) == QColor(kColours[2]);
        }));
        input().click(tile(1).center(), Button::wheelUp);
        input().click(tile(1).center(), Button::wheelUp);
        QVERIFY(shows(0, Qt::yellow));
    }

    void badEntriesAreTilesWithoutPictures()
    {
        useDrawer();
        addEntry(QByteArray());
        addEntry(QByteArray("no es una imagen"));
        QFile whole(history().constFirst());
        QVERIFY(whole.open(QIODevice::ReadOnly));
        addEntry(whole.readAll().left(60));
        addEntry(Qt::magenta, {2000, 30000});
        QVERIFY(openDrawer());
        QVERIFY(shows(0, Qt::magenta));
        QVERIFY(shows(4, kColours[0]));
        input().click(tile(3).center());
        QVERIFY(toastSays(QStringLiteral("No se pudo leer la captura")));
        QVERIFY(drawerIsGone());
        QCOMPARE(program().log(), QString());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestDrawerTiles)

#include "tst_drawertiles.moc"
