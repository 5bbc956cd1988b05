#include "DrawerFixture.h"
#include "support/TestCase.h"
#include "support/ToolTips.h"

#include <QImage>
#include <QPointer>

namespace brindlecam {

using test::DrawerFixture;
using test::kDenseScreen;
using test::kDrawerScreen;

class TestRecentDrawer final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void opensOnTheScreenUnderThePointer_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<ScreenInfo>("screen");
        QTest::newRow("left") << QPoint(450, 50) << kDrawerScreen;
        QTest::newRow("right") << QPoint(2000, 50) << kDenseScreen;
        QTest::newRow("nowhere") << QPoint(-9, -9) << kDrawerScreen;
    }
    void opensOnTheScreenUnderThePointer()
    {
        QFETCH(QPoint, pointer);
        QFETCH(ScreenInfo, screen);
        DrawerFixture f;
        f.displays.pointerAt = pointer;
        f.addMany(2);
        f.open();
        QCOMPARE(f.panels.roles, std::vector{PanelRole::drawer});
        const auto places = DrawerGeometry::places(2, screen, f.displays.all);
        QCOMPARE(f.panels.shown.back().native, DrawerSlide::firstPlace(places));
        QVERIFY(screen.native.intersects(f.panels.shown.back().native)); // it can be seen at once
        QVERIFY(f.panel().isVisible());
        QCOMPARE(f.panels.focused.back(), &f.panel());
        QCOMPARE(f.front.remembered, 1);
    }

    void nothingOpensWithoutScreens()
    {
        DrawerFixture f;
        f.displays.all.clear();
        f.drawer.show();
        QVERIFY(!f.drawer.isOpen());
    }

    void showsAllEntriesNewestFirst()
    {
        DrawerFixture f;
        for (int i = 0; i < 20; ++i)
            f.add({100 + i, 80});
        f.open();
        QCOMPARE(f.tiles().size(), std::size_t(20));
        const QStringList items = f.history.items();
        for (std::size_t i = 0; i < 20; ++i)
            QCOMPARE(f.tile(i).path(), items.at(static_cast<qsizetype>(i)));
        QVERIFY(f.tile(0).accessibleName().endsWith(QStringLiteral("  ·  119×80")));
        QCOMPARE(f.panel().row().width(), 1880 - 32);
    }

    void anEmptyHistorySaysWhatToDo_data()
    {
        QTest::addColumn<bool>("kept");
        QTest::addColumn<QString>("text");
        QTest::newRow("on") << true
                            << QStringLiteral("Aún no hay capturas. Haz una y aparecerá aquí.");
        QTest::newRow("off")
            << false
            << QStringLiteral("El historial está apagado. Puedes activarlo en Configuración.");
    }
    void anEmptyHistorySaysWhatToDo()
    {
        QFETCH(bool, kept);
        QFETCH(QString, text);
        DrawerFixture f;
        f.defaults.setBoolean(QStringLiteral("keepHistory"), kept);
        f.open();
        QCOMPARE(f.sentence(), text);
        QVERIFY(!f.panel().findChild<PanelButton*>()->isVisible());
    }

    void entriesAreShownWhileNoneAreAdded()
    {
        DrawerFixture f;
        f.addMany(2);
        f.defaults.setBoolean(QStringLiteral("keepHistory"), false);
        f.open();
        QCOMPARE(f.tiles().size(), std::size_t(2));
        QCOMPARE(f.sentence(), QString());
    }

    void entriesThatAreNoPicturesAreThereWithoutOne()
    {
        DrawerFixture f;
        f.add();
        f.history.add("no es una imagen", QStringLiteral("png"));
        f.open();
        QCOMPARE(f.tiles().size(), std::size_t(2));
        QVERIFY(!f.tile(0).accessibleName().contains(QStringLiteral("×")));
        QVERIFY(f.tile(1).accessibleName().contains(QStringLiteral("300×200")));
    }

    void waitsForThumbnailsInSightButNotForLong()
    {
        DrawerFixture f;
        f.addMany(3);
        test::GatedExecutor gate;
        f.executor = gate.executor();
        f.drawer.show();
        QVERIFY(f.drawer.isOpen());
        gate.run(0); // the list
        test::sendAllPostedEvents();
        QVERIFY(!f.drawer.panel());
        QCOMPARE(gate.jobs.size(), std::size_t(3));
        gate.run(0);
        test::sendAllPostedEvents();
        QTRY_VERIFY(f.drawer.panel()); // with one of three
        QVERIFY(f.tile(0).accessibleName().contains(QStringLiteral("×")));
        QVERIFY(!f.tile(1).accessibleName().contains(QStringLiteral("×")));
        gate.run(0);
        gate.run(0);
        test::sendAllPostedEvents();
        QVERIFY(f.tile(1).accessibleName().contains(QStringLiteral("×")));
        QVERIFY(f.tile(2).accessibleName().contains(QStringLiteral("×")));
    }

    void waitsForNothingThatWouldHaveToBeDecoded()
    {
        DrawerFixture f;
        f.addWithoutThumbnail();
        f.addWithoutThumbnail();
        test::GatedExecutor gate;
        f.executor = gate.executor();
        f.drawer.show();
        gate.run(0); // the list
        test::sendAllPostedEvents();
        QCOMPARE(gate.jobs.size(), std::size_t(2));
        gate.run(0);
        gate.run(0);
        QVERIFY(!f.drawer.panel());
        test::sendAllPostedEvents();
        QVERIFY(f.drawer.panel());
        QVERIFY(!f.tile(0).accessibleName().contains(QStringLiteral("×")));
        QCOMPARE(gate.jobs.size(), std::size_t(2)); // and now they are decoded
        gate.run(0);
        test::sendAllPostedEvents();
        QVERIFY(f.tile(0).accessibleName().contains(QStringLiteral("×")));
    }

    void whatIsThereIsShownAtOnceAndWhatComesLateFadesIn()
    {
        DrawerFixture f;
        const QColor colour(10, 20, 200);
        f.add({300, 200}, colour);
        f.add({300, 200}, colour);
        test::GatedExecutor gate;
        f.executor = gate.executor();
        f.drawer.show();
        for (int job = 0; job < 2; ++job) { // the list, the first one's
            gate.run(0);
            test::sendAllPostedEvents();
        }
        QTRY_VERIFY(f.drawer.panel());
        const auto seen = [&f](std::size_t index) {
            return f.tile(index).grab().toImage().pixelColor(
                DrawerGeometry::kPicture.center().toPoint());
        };
        QCOMPARE(seen(0), colour);
        QVERIFY(seen(1) != colour);
        gate.run(0);
        test::sendAllPostedEvents();
        QVERIFY(seen(1) != colour);
        QTRY_COMPARE(seen(1), colour);
    }

    void whatEndsItWhileItWaitsEndsIt_data()
    {
        QTest::addColumn<QString>("end");
        for (const char* end : {"hidden", "left for a capture", "its screen goes"})
            QTest::newRow(end) << QString::fromLatin1(end);
    }
    void whatEndsItWhileItWaitsEndsIt()
    {
        QFETCH(QString, end);
        DrawerFixture f;
        f.addMany(3);
        test::GatedExecutor gate;
        f.executor = gate.executor();
        f.drawer.show();
        gate.run(0); // the list: the panel is made
        test::sendAllPostedEvents();
        QCOMPARE(f.panels.roles, std::vector{PanelRole::drawer});
        f.compositing.change(false); // reaches it there, too
        if (end == QLatin1String("hidden"))
            f.drawer.hide();
        else if (end == QLatin1String("left for a capture"))
            QVERIFY(!f.drawer.leave(ScreenCover::Focus::isTaken));
        else {
            f.displays.all = {kDenseScreen};
            f.displays.change();
        }
        QVERIFY(!f.drawer.isOpen());
        while (!gate.jobs.empty()) {
            gate.run(0);
            test::sendAllPostedEvents();
        }
        QTest::qWait(40); // longer than it would have waited
        QVERIFY(!f.drawer.isOpen());
        QVERIFY(f.panels.shown.empty());
    }

    void beginsAnewWhenAskedAgainWhileItWaits()
    {
        DrawerFixture f;
        f.addMany(3);
        test::GatedExecutor gate;
        f.executor = gate.executor();
        f.drawer.show();
        gate.run(0); // the list
        test::sendAllPostedEvents();
        QCOMPARE(gate.jobs.size(), std::size_t(3)); // it waits for these
        f.drawer.show();
        QTest::qWait(40); // longer than it would have waited
        QVERIFY(f.drawer.isOpen());
        QVERIFY(!f.drawer.panel());
        while (!gate.jobs.empty()) {
            gate.run(0);
            test::sendAllPostedEvents();
        }
        QVERIFY(f.drawer.panel());
        QCOMPARE(f.tiles().size(), std::size_t(3));
        QVERIFY(f.tile(2).accessibleName().contains(QStringLiteral("×")));
    }

    void opensAtOnceWhenAllInSightAreThere()
    {
        DrawerFixture f;
        f.addMany(15); // nine can be seen
        test::GatedExecutor gate;
        f.executor = gate.executor();
        f.drawer.show();
        gate.run(0);
        test::sendAllPostedEvents();
        for (int i = 0; i < 9; ++i) {
            QVERIFY(!f.drawer.panel());
            gate.run(0);
            test::sendAllPostedEvents();
        }
        QVERIFY(f.drawer.panel());
        QCOMPARE(gate.jobs.size(), std::size_t(6 + 9)); // and what was made is kept afterwards
    }

    void followsTheCompositor()
    {
        DrawerFixture f;
        f.compositing.on = false;
        f.add();
        f.open();
        QVERIFY(!f.panel().mask().isEmpty());
        f.compositing.change(true);
        QVERIFY(f.panel().mask().isEmpty());
        f.compositing.change(false);
        QVERIFY(!f.panel().mask().isEmpty());
    }

    void itsToolTipsAreMessagesOfOurs()
    {
        DrawerFixture f;
        f.add();
        f.open();
        QVERIFY(test::restOn(f.tile()));
        QVERIFY(!test::qtShowsATip());
        QCOMPARE(f.panels.roles.back(), PanelRole::toast);
        const QPointer<QWidget> tip(f.panels.shown.back().widget);
        QCOMPARE(tip->accessibleName(), f.tile().toolTip());
        f.drawer.hide();
        QVERIFY(!tip);
    }

    void doesNotOpenTwiceAtATime()
    {
        DrawerFixture f;
        f.add();
        f.drawer.show();
        f.drawer.show();
        test::sendAllPostedEvents();
        QCOMPARE(f.panels.visibleNow(), 1);
        f.drawer.hide();
        f.drawer.hide();
        QTRY_COMPARE(f.panels.visibleNow(), 0);
    }
};

BRINDLECAM_TEST(TestRecentDrawer);

} // namespace brindlecam

#include "tst_recentdrawer.moc"
