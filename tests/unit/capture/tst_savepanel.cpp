// Covers FilePanel.
#include "capture/CaptureFixture.h"
#include "support/TestCase.h"

#include <QAbstractItemView>
#include <QAction>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPushButton>

namespace brindlecam {

namespace {

/// The save panel of a pin, with the keyboard's view of it.
struct PanelDesk : test::CaptureFixture {
    PanelDesk() { results.savePinned(test::onePicture(Qt::red)); }

    template <typename Dialog>
    [[nodiscard]] static Dialog* open()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* dialog = qobject_cast<Dialog*>(widget);
            if (dialog && dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }
    [[nodiscard]] static QFileDialog* panel() { return open<QFileDialog>(); }
    [[nodiscard]] static QMessageBox* question() { return open<QMessageBox>(); }

    void saveAs(const QString& name)
    {
        panel()->findChild<QLineEdit*>()->setText(name);
        QMetaObject::invokeMethod(panel(), "accept");
    }
    void choose(const QString& title)
    {
        for (auto* button : question()->findChildren<QPushButton*>()) {
            if (button->text() == title) {
                button->click();
                return;
            }
        }
        QFAIL("there is no such button");
    }
    [[nodiscard]] QString path(const QString& name) const
    {
        return QDir(prefs.saveFolder()).filePath(name);
    }
    /// A file of some other content under this name.
    void put(const QString& name) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("antes");
    }
    [[nodiscard]] bool isUntouched(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) && file.readAll() == "antes";
    }
    [[nodiscard]] bool isSaved(const QString& name) const
    {
        return QImage(path(name)).size() == QSize(40, 30);
    }
};

} // namespace

class TestSavePanel final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyNameEndsLikeAPicture_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("saved");
        const auto row = [](const char* typed, const char* saved) {
            QTest::newRow(typed) << QString::fromUtf8(typed) << QString::fromUtf8(saved);
        };
        row("captura", "captura.png");
        row("captura v1.2", "captura v1.2.png");
        row("foto.jpg", "foto.jpg.png");
        row("Brindlecam 2026-03-14 09.26.53", "Brindlecam 2026-03-14 09.26.53.png");
        row("ya está.png", "ya está.png");
        row("YA.PNG", "YA.PNG");
        row("png", "png.png");
        row("uno.png.bak", "uno.png.bak.png");
    }
    void everyNameEndsLikeAPicture()
    {
        QFETCH(QString, typed);
        QFETCH(QString, saved);
        PanelDesk desk;
        desk.saveAs(typed);
        QVERIFY(!PanelDesk::panel());
        QTRY_VERIFY(desk.isSaved(saved));
        QCOMPARE(desk.savedFiles(), QStringList(saved));
    }

    void foldersAreEntered()
    {
        PanelDesk desk;
        QVERIFY(QDir(desk.prefs.saveFolder()).mkdir(QStringLiteral("viajes")));
        QVERIFY(QDir(desk.prefs.saveFolder()).mkdir(QStringLiteral("raro.png")));
        desk.saveAs(QStringLiteral("viajes"));
        QVERIFY(PanelDesk::panel());
        QCOMPARE(PanelDesk::panel()->directory().dirName(), QStringLiteral("viajes"));
        desk.saveAs(QStringLiteral(".."));
        QCOMPARE(PanelDesk::panel()->directory().dirName(), QStringLiteral("capturas"));
        desk.saveAs(QStringLiteral("raro"));
        QCOMPARE(PanelDesk::panel()->directory().dirName(), QStringLiteral("raro.png"));
        PanelDesk::panel()->reject();
    }

    void theNameThatIsWrittenIsAskedFor()
    {
        PanelDesk desk;
        desk.put(QStringLiteral("foto.png"));
        desk.put(QStringLiteral("foto.jpg"));
        desk.saveAs(QStringLiteral("foto"));
        QVERIFY(PanelDesk::question());
        QCOMPARE(PanelDesk::question()->text(), QStringLiteral("“foto.png” ya existe"));
        desk.choose(QStringLiteral("Cancelar"));
        QVERIFY(PanelDesk::panel());
        desk.saveAs(QStringLiteral("foto.jpg")); // becomes foto.jpg.png, which is free
        QVERIFY(!PanelDesk::question());
        QTRY_VERIFY(desk.isSaved(QStringLiteral("foto.jpg.png")));
        QVERIFY(desk.isUntouched(QStringLiteral("foto.png")));
        QVERIFY(desk.isUntouched(QStringLiteral("foto.jpg")));
    }

    void onlyTheButtonReplacesAFile()
    {
        PanelDesk desk;
        desk.put(QStringLiteral("foto.png"));
        desk.saveAs(QStringLiteral("foto"));
        QTest::keyClick(PanelDesk::question(), Qt::Key_Return);
        QVERIFY2(!PanelDesk::question(), "Return takes the harmless button");
        desk.saveAs(QStringLiteral("foto"));
        QTest::keyClick(PanelDesk::question(), Qt::Key_Escape);
        QVERIFY(!PanelDesk::question());
        QVERIFY(desk.isUntouched(QStringLiteral("foto.png")));
        desk.saveAs(QStringLiteral("foto"));
        desk.choose(QStringLiteral("Reemplazar"));
        QVERIFY(!PanelDesk::panel());
        QTRY_VERIFY(desk.isSaved(QStringLiteral("foto.png")));
    }

    void danglingLinksAreAskedForToo()
    {
        PanelDesk desk;
        QVERIFY(QFile::link(desk.path(QStringLiteral("nada")),
                            desk.path(QStringLiteral("enlace.png"))));
        desk.saveAs(QStringLiteral("enlace"));
        QVERIFY(PanelDesk::question());
        PanelDesk::panel()->reject();
    }

    void captureHidesPanelAndQuestionAndBringsThemBack()
    {
        PanelDesk desk;
        desk.put(QStringLiteral("foto.png"));
        desk.saveAs(QStringLiteral("foto"));
        desk.controller.begin();
        QTRY_VERIFY(!desk.overlays().empty());
        QVERIFY(!PanelDesk::panel());
        QVERIFY(!PanelDesk::question());
        desk.pressEscape();
        QVERIFY(PanelDesk::panel());
        QVERIFY(PanelDesk::question());
        QVERIFY(desk.isUntouched(QStringLiteral("foto.png")));
        desk.choose(QStringLiteral("Reemplazar"));
        QTRY_VERIFY(desk.isSaved(QStringLiteral("foto.png")));
    }

    void aRefusedStartBringsPanelAndQuestionForward()
    {
        test::CaptureFixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        QTest::keyClick(&f.canvas(0), Qt::Key_S, Qt::ControlModifier);
        const QPointer<QWidget> panel = PanelDesk::panel();
        QVERIFY(panel);
        f.panels.focused.clear();
        f.controller.begin();
        QCOMPARE(f.panels.focused, std::vector{panel});
        f.controller.captureFullScreen();
        QCOMPARE(f.panels.focused, (std::vector{panel, panel}));
        QVERIFY(f.overlays().empty());

        QFile file(QDir(f.prefs.saveFolder()).filePath(QStringLiteral("foto.png")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        panel->findChild<QLineEdit*>()->setText(QStringLiteral("foto"));
        QMetaObject::invokeMethod(panel, "accept");
        f.panels.focused.clear();
        f.controller.begin();
        QCOMPARE(f.panels.focused, (std::vector<QPointer<QWidget>>{panel, PanelDesk::question()}));
        PanelDesk::panel()->reject();
        QVERIFY2(!PanelDesk::question(), "it goes with the panel");
        QVERIFY(!f.controller.busy());
        f.panels.focused.clear();
        f.controller.begin();
        QCOMPARE(f.overlays().size(), 2U);
        QVERIFY(!f.panels.focused.empty() && f.panels.focused.back() != panel);
    }

    void nothingCanBeDeletedInThePanel()
    {
        // Qt would ask in a dialog that blocks, and lies below the overlays of a capture.
        PanelDesk desk;
        desk.put(QStringLiteral("otra.png"));
        desk.saveAs(QStringLiteral(".")); // reads the folder again
        auto* list = PanelDesk::panel()->findChild<QAbstractItemView*>(QStringLiteral("listView"));
        auto* tree = PanelDesk::panel()->findChild<QAbstractItemView*>(QStringLiteral("treeView"));
        for (auto* view : {list, tree}) {
            QTRY_COMPARE(view->model()->rowCount(view->rootIndex()), 1);
            view->setCurrentIndex(view->model()->index(0, 0, view->rootIndex()));
            view->setFocus();
            QTest::keyClick(view, Qt::Key_Delete);
            QVERIFY(!PanelDesk::question());
        }
        const auto* action =
            PanelDesk::panel()->findChild<QAction*>(QStringLiteral("qt_delete_action"));
        QVERIFY(!action->isVisible());
        QVERIFY(desk.isUntouched(QStringLiteral("otra.png")));
        PanelDesk::panel()->reject();
    }

    void usesLeaveNothingBehind()
    {
        PanelDesk desk;
        // What the style paints of a panel goes into the same place.
        QPixmap painted(8, 8);
        painted.fill(Qt::red);
        const QPixmapCache::Key key = QPixmapCache::insert(painted);
        PanelDesk::panel()->reject();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!QPixmapCache::find(key, &painted));
        const auto before = QApplication::allWidgets().size();
        for (int use = 0; use < 5; ++use) {
            desk.results.savePinned(test::onePicture(Qt::red));
            PanelDesk::panel()->reject();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QCOMPARE(QApplication::allWidgets().size(), before);
    }
};

BRINDLECAM_TEST(TestSavePanel);

} // namespace brindlecam

#include "tst_savepanel.moc"
