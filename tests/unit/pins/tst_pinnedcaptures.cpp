#include "PinnedFixture.h"
#include "pictures/Crop.h"
#include "support/TestCase.h"

#include <QContextMenuEvent>
#include <QPointer>

namespace brindlecam {

using test::FakePanels;
using test::kPinned;
using test::kPinnedDenseScreen;
using test::kPinnedScreen;
using test::PinnedFixture;

/// What a pin's menu leads to, and the pins among each other.
class TestPinnedCaptures final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void menuHasItsThreeEntriesAsTheyAre()
    {
        PinnedFixture f;
        f.open();
        f.mouse(QEvent::MouseButtonPress, {550, 450});
        QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 60}, {550, 460});
        QCoreApplication::sendEvent(&f.view(), &event);
        QVERIFY(!f.window().held);
        const FakePanels::Menu& menu = f.panels.menus.at(0);
        QCOMPARE(menu.over, &f.view());
        QCOMPARE(menu.place, QPoint(50, 60));
        QStringList titles;
        for (const MenuEntry& entry : menu.entries)
            titles << entry.title;
        QCOMPARE(titles, QStringList({QStringLiteral("Copiar"), QStringLiteral("Guardar…"),
                                      QStringLiteral("Cerrar")}));
        menu.entries.at(0).run();
        QCOMPARE(f.delivery.copied.size(), std::size_t(1));
        menu.entries.at(1).run();
        QCOMPARE(f.delivery.saved.size(), std::size_t(1));
        menu.entries.at(2).run();
        QVERIFY(f.pins.open().empty());
    }

    void keysOpenTheMenuInTheMiddle()
    {
        PinnedFixture f;
        f.open();
        QTest::keyClick(&f.view(), Qt::Key_F10, Qt::ShiftModifier);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {50, 60}, {550, 460});
        QCoreApplication::sendEvent(&f.view(), &event);
        QCOMPARE(f.panels.menus.size(), std::size_t(2));
        for (const FakePanels::Menu& menu : f.panels.menus)
            QCOMPARE(menu.place, f.view().rect().center());
    }

    void copyTellsOnThePinsScreen()
    {
        PinnedFixture f;
        f.displays.all = {kPinnedScreen, kPinnedDenseScreen};
        f.open(QRect(2400, 400, 400, 200), QSizeF(200, 100));
        f.pin().copyImage();
        QVERIFY(f.delivery.copied.front().isSame(f.pin().rendered()));
        QVERIFY(!f.toast.visible());
        f.delivery.copyDone(ClipboardFate::taken);
        QVERIFY(f.toast.visible());
        QVERIFY(kPinnedDenseScreen.native.contains(f.panels.shown.back().native));
        QVERIFY(f.delivery.saved.empty());
    }

    void whatBecameOfTheCopyIsToldAsItIs_data()
    {
        QTest::addColumn<ClipboardFate>("fate");
        QTest::addColumn<QString>("told");
        QTest::newRow("taken") << ClipboardFate::taken << QStringLiteral("Copiado al portapapeles");
        QTest::newRow("refused") << ClipboardFate::refused
                                 << QStringLiteral("No se pudo copiar la captura");
        QTest::newRow("overtaken") << ClipboardFate::overtaken << QString();
    }
    void whatBecameOfTheCopyIsToldAsItIs()
    {
        QFETCH(ClipboardFate, fate);
        QFETCH(QString, told);
        PinnedFixture f;
        f.open();
        f.pin().copyImage();
        f.delivery.copyDone(fate);
        QCOMPARE(f.toast.visible(), !told.isEmpty());
        if (!told.isEmpty())
            QCOMPARE(f.panels.shown.back().widget->accessibleName(), told);
    }

    void copyOfAPinThatIsGoneTellsOnThePrimaryScreen()
    {
        PinnedFixture f;
        f.displays.all = {kPinnedScreen, kPinnedDenseScreen};
        f.open(QRect(2400, 400, 400, 200), QSizeF(200, 100));
        const QPointer<PinnedCapture> pin = &f.pin();
        f.pin().copyImage();
        f.pin().dismiss();
        QTRY_VERIFY(!pin);
        f.delivery.copyDone(ClipboardFate::taken);
        QVERIFY(kPinnedScreen.native.contains(f.panels.shown.back().native));
    }

    void saveHandsOverThePicture()
    {
        PinnedFixture f;
        f.open();
        f.pin().saveImage();
        QVERIFY(f.delivery.saved.front().isSame(f.pin().rendered()));
        QVERIFY(f.delivery.copied.empty());
        QVERIFY(f.pin().isVisible());
    }

    void nothingIsHandedOverWhileTheProgramEnds()
    {
        PinnedFixture f;
        f.open();
        f.activity.stage = Activity::Stage::quitting;
        f.pin().copyImage();
        f.pin().saveImage();
        QVERIFY(f.delivery.copied.empty());
        QVERIFY(f.delivery.saved.empty());
        QVERIFY(!f.toast.visible());
    }

    void closingOneOfTwoPinsLeavesTheOther()
    {
        PinnedFixture f;
        PinnedCapture& first = f.open();
        PinnedCapture& second = f.open(QRect(10, 10, 50, 50));
        QCOMPARE(f.pins.open().front().get(), &first);
        QCOMPARE(f.pins.open().back().get(), &second);
        first.dismiss();
        QCOMPARE(f.pins.open().size(), std::size_t(1));
        QCOMPARE(f.pins.open().front().get(), &second);
        QVERIFY(second.isVisible());
    }

    void windowClosedByTheSystemIsDismissed()
    {
        PinnedFixture f;
        f.open();
        f.pin().close();
        QVERIFY(f.pins.open().empty());
    }

    void aPinHoldsItsOwnPixelsAndNotTheScreenTheyWereCutFrom()
    {
        PinnedFixture f;
        QImage screen(400, 300, QImage::Format_RGB32);
        screen.fill(Qt::red);
        f.pins.pin(Rendered(croppedView(screen, QRect(20, 30, 40, 50)), QSizeF(40, 50)), kPinned);
        QVERIFY(screen.isDetached());
        QCOMPARE(f.pin().rendered().image(), screen.copy(20, 30, 40, 50));
        QCOMPARE(f.pin().rendered().pointSize(), QSizeF(40, 50));
        const QPointer<PinnedCapture> pin = &f.pin();
        f.pin().dismiss();
        QTRY_VERIFY(!pin);
    }
};

BRINDLECAM_TEST(TestPinnedCaptures);

} // namespace brindlecam

#include "tst_pinnedcaptures.moc"
