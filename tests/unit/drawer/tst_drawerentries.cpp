// Covers RecentDrawer.
#include "DrawerFixture.h"
#include "drawer/CapturePreview.h"
#include "drawer/PreviewWindow.h"
#include "support/TestCase.h"

#include <QFileInfo>
#include <QPointer>

namespace brindlecam {

using test::DrawerFixture;
using test::kDenseScreen;
using test::kDrawerScreen;

namespace {

constexpr std::pair kEscapeKey{KeyCodes::kEscape, 0};

} // namespace

/// What is asked of the entries that the drawer shows.
class TestDrawerEntries final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void entriesDeletedMeanwhileDoNoHarm()
    {
        DrawerFixture f;
        f.addMany(3);
        f.open();
        f.history.clear();
        f.add();
        f.click(f.tile(2));
        QTRY_COMPARE(f.said(), QStringLiteral("No se pudo leer la captura"));
        QCOMPARE(f.pasteboard.changes, 0);
    }

    void anEntryAddedMeanwhileIsShownTheNextTime()
    {
        DrawerFixture f;
        f.addMany(2);
        f.open();
        const QString newest = f.tile(0).path();
        const QString added = f.add();
        QCOMPARE(f.tiles().size(), std::size_t(2));
        QCOMPARE(f.tile(0).path(), newest);
        const QPointer<DrawerPanel> before(&f.panel());
        f.tile(1).openMenu({});
        f.choose("Quitar de recientes");
        QTRY_VERIFY(!before);
        QCOMPARE(f.tiles().size(), std::size_t(2));
        QCOMPARE(f.tile(0).path(), added);
        QCOMPARE(f.tile(1).path(), newest);
    }

    void anEntryDeletedMeanwhileIsToldOf_data()
    {
        QTest::addColumn<QByteArray>("asked"); // in the menu
        QTest::addColumn<QString>("said");
        QTest::addColumn<bool>("open");
        QTest::newRow("copied") << QByteArray("Copiar")
                                << QStringLiteral("No se pudo leer la captura") << false;
        QTest::newRow("shown large")
            << QByteArray("Ver en grande") << QStringLiteral("No se pudo leer la captura") << false;
        QTest::newRow("opened") << QByteArray("Abrir con Vista Previa")
                                << QStringLiteral("No se pudo abrir la captura") << false;
        QTest::newRow("shown in its folder")
            << QByteArray("Mostrar en Finder") << QStringLiteral("No se pudo abrir la carpeta")
            << true;
        QTest::newRow("saved") << QByteArray("Guardar en la carpeta de capturas")
                               << QStringLiteral("No se pudo guardar la captura") << true;
        QTest::newRow("removed") << QByteArray("Quitar de recientes") << QString() << true;
    }
    void anEntryDeletedMeanwhileIsToldOf()
    {
        QFETCH(QByteArray, asked);
        QFETCH(QString, said);
        QFETCH(bool, open);
        DrawerFixture f;
        f.addMany(2);
        f.open();
        f.opener.succeeds = false; // as it does with files that are not there
        QVERIFY(QFile::remove(f.tile(0).path()));
        const QPointer<DrawerPanel> before(&f.panel());
        f.tile(0).openMenu({});
        f.choose(asked.constData());
        if (said.isEmpty())
            QTRY_VERIFY(!before); // shown anew
        else
            QTRY_COMPARE(f.said(), said);
        QCOMPARE(f.drawer.isOpen(), open);
        QCOMPARE(f.history.items().size(), 1);
        QCOMPARE(f.pasteboard.changes, 0);
        QVERIFY(test::filesIn(f.folder.filePath(QStringLiteral("capturas"))).isEmpty());
    }

    void anEntryDeletedMeanwhileCanBeDragged()
    {
        DrawerFixture f;
        f.addMany(2);
        f.open();
        QVERIFY(QFile::remove(f.tile(0).path()));
        QTest::mousePress(&f.tile(0), Qt::LeftButton, {}, QPoint(20, 10));
        QMouseEvent move(QEvent::MouseMove, QPointF(60, 60), QPointF(60, 60), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&f.tile(0), &move); // nobody takes it
        QVERIFY(f.drawer.isOpen());
        f.click(f.tile(1));
        QTRY_COMPARE(f.said(), QStringLiteral("Copiado al portapapeles"));
    }

    void aClickCopiesAndClosesAndTellsThere()
    {
        DrawerFixture f;
        f.displays.pointerAt = QPoint(2000, 50);
        const QString entry = f.add();
        f.open();
        f.click(f.tile());
        QVERIFY(!f.drawer.isOpen());
        QTRY_COMPARE(f.said(), QStringLiteral("Copiado al portapapeles"));
        QVERIFY(kDenseScreen.native.contains(f.saidAt()));
        QCOMPARE(f.pasteboard.png, test::contentOf(entry));
    }

    void previewTakesTheDrawersPlace()
    {
        DrawerFixture f;
        const QString entry = f.add();
        f.open();
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, {5, 5});
        QCoreApplication::sendEvent(&f.tile(), &event);
        f.choose("Ver en grande");
        QVERIFY(!f.drawer.isOpen());
        QCOMPARE(f.opener.previewed, QStringList{entry});
        QTRY_VERIFY(f.drawer.largePreview().window()->isVisible());
        QCOMPARE(f.front.givenBack, 0); // the preview has the keyboard
    }

    void openingItInAnotherProgramClosesTheDrawer()
    {
        DrawerFixture f;
        const QString entry = f.add();
        f.open();
        f.tile().openMenu({});
        f.choose("Abrir con Vista Previa");
        QCOMPARE(f.opener.files, QStringList{entry});
        QVERIFY(!f.drawer.isOpen());
    }

    void theDrawerStaysForWhatHappensInTheFileManager()
    {
        DrawerFixture f;
        const QString entry = f.add();
        f.open();
        f.tile().openMenu({});
        f.choose("Mostrar en Finder");
        QCOMPARE(f.opener.revealed, QStringList{entry});
        f.choose("Guardar en la carpeta de capturas");
        QTRY_COMPARE(f.opener.revealed.size(), 2);
        QVERIFY(f.drawer.isOpen());
    }

    void removingRebuildsItInPlace()
    {
        DrawerFixture f;
        f.addMany(3);
        f.open();
        const QPointer<DrawerPanel> before(&f.panel());
        const QString middle = f.tile(1).path();
        f.tile(1).openMenu({});
        f.displays.pointerAt = QPoint(2000, 50); // the pointer has moved on
        f.choose("Quitar de recientes");
        QTRY_VERIFY(!before);
        QCOMPARE(f.tiles().size(), std::size_t(2));
        QVERIFY(!QFileInfo::exists(middle));
        QVERIFY(f.drawer.isOpen());
        // It does not slide in once more.
        QCOMPARE(f.panels.shown.back().native,
                 DrawerGeometry::places(2, kDrawerScreen, f.displays.all).open);
        QVERIFY(f.hotKeys.registered.contains(kEscapeKey));
    }

    void removingLeavesScrollAndKeysWhereTheyAre()
    {
        DrawerFixture f;
        f.addMany(15);
        f.open();
        f.panel().row().focusTile(12);
        f.panel().row().scrollTo(700);
        const QString next = f.tile(13).path();
        const QPointer<DrawerPanel> before(&f.panel());
        f.tile(6).openMenu({});
        f.choose("Quitar de recientes");
        QTRY_VERIFY(!before);
        QCOMPARE(f.panel().row().scrolled(), 700.0);
        QCOMPARE(f.panel().row().focusedIndex(), 12);
        QCOMPARE(f.panel().row().focusedTile()->path(), next);
        // As far as there are tiles: eight of them fit.
        for (int i = 0; i < 6; ++i) {
            f.tile(0).openMenu({});
            const QPointer<DrawerPanel> shown(&f.panel());
            f.choose("Quitar de recientes");
            QTRY_VERIFY(!shown);
        }
        QCOMPARE(f.tiles().size(), std::size_t(8));
        QCOMPARE(f.panel().row().focusedIndex(), 7);
        QCOMPARE(f.panel().row().scrolled(), 0.0);
    }

    void removingTheLastOneLeavesTheSentence()
    {
        DrawerFixture f;
        f.add();
        f.open();
        f.tile().openMenu({});
        f.choose("Quitar de recientes");
        QTRY_VERIFY(f.tiles().empty());
        QCOMPARE(f.sentence(), QStringLiteral("Aún no hay capturas. Haz una y aparecerá aquí."));
    }

    void emptyingClosesItAsksAndTells()
    {
        DrawerFixture f;
        f.displays.pointerAt = QPoint(2000, 50);
        f.addMany(2);
        f.open();
        QTest::mouseClick(f.panel().findChild<PanelButton*>(), Qt::LeftButton);
        test::sendAllPostedEvents();
        QVERIFY(!f.drawer.isOpen());
        QVERIFY(f.question());
        f.answer("Vaciar");
        QTRY_COMPARE(f.said(), QStringLiteral("Capturas recientes vaciadas"));
        QVERIFY(kDenseScreen.native.contains(f.saidAt()));
        QVERIFY(f.history.items().isEmpty());
        QCOMPARE(f.front.givenBack, 1);
    }

    void emptyingThatIsCancelledTellsNothing()
    {
        DrawerFixture f;
        f.addMany(2);
        f.open();
        QTest::mouseClick(f.panel().findChild<PanelButton*>(), Qt::LeftButton);
        test::sendAllPostedEvents();
        f.answer("Cancelar");
        QCOMPARE(f.history.items().size(), 2);
        QCOMPARE(f.said(), QString());
    }
};

BRINDLECAM_TEST(TestDrawerEntries);

} // namespace brindlecam

#include "tst_drawerentries.moc"
