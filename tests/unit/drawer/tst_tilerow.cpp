#include "drawer/CaptureTile.h"
#include "drawer/TileRow.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QCursor>
#include <QEnterEvent>
#include <QPointingDevice>
#include <QWheelEvent>

namespace brindlecam {

namespace {

/// A row of so many tiles in a window 640 points wide.
struct RowDesk {
    test::FakePanels panels;
    QWidget window;
    TileRow row{&window};

    explicit RowDesk(int count)
    {
        for (int i = 0; i < count; ++i)
            row.append(new CaptureTile(QString::number(i), QString(), panels));
        row.setGeometry(0, 0, 640, 150);
        window.resize(640, 150);
        window.show();
    }
    void wheel(QPoint angle, QPoint pixels = {}, Qt::KeyboardModifiers keys = Qt::NoModifier,
               const QPointingDevice* device = QPointingDevice::primaryPointingDevice())
    {
        QWheelEvent event({}, {}, pixels, angle, Qt::NoButton, keys, Qt::NoScrollPhase, false,
                          Qt::MouseEventNotSynthesized, device);
        QCoreApplication::sendEvent(&row, &event);
    }
    [[nodiscard]] QRect placeOf(int index) const
    {
        const CaptureTile* tile = row.captureTiles().at(static_cast<std::size_t>(index));
        return {tile->mapTo(&row, QPoint()), tile->size()};
    }
};

const QPointingDevice& touchPad()
{
    static const QPointingDevice pad(QStringLiteral("pad"), 1, QInputDevice::DeviceType::TouchPad,
                                     QPointingDevice::PointerType::Finger,
                                     QInputDevice::Capability::PixelScroll, 2, 3);
    return pad;
}

} // namespace

class TestTileRow final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void tilesStandSideBySide()
    {
        const RowDesk desk(3);
        QCOMPARE(desk.placeOf(0), QRect(0, 0, 210, 150));
        QCOMPARE(desk.placeOf(1), QRect(222, 0, 210, 150));
        QCOMPARE(desk.placeOf(2), QRect(444, 0, 210, 150));
    }

    void scrollsBetweenItsEnds()
    {
        RowDesk desk(5); // 1098 points
        desk.row.scrollTo(100);
        QCOMPARE(desk.row.scrolled(), 100.0);
        QCOMPARE(desk.placeOf(0).x(), -100);
        desk.row.scrollTo(5000);
        QCOMPARE(desk.row.scrolled(), 458.0);
        QCOMPARE(desk.placeOf(4).right(), 639);
        desk.row.scrollTo(-1);
        QCOMPARE(desk.row.scrolled(), 0.0);
    }

    void aRowThatFitsDoesNotScroll()
    {
        RowDesk desk(2);
        desk.wheel({0, -120});
        QCOMPARE(desk.row.scrolled(), 0.0);
    }

    void anyWheelScrollsSideways_data()
    {
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<QPoint>("pixels");
        QTest::addColumn<bool>("touchPad");
        QTest::addColumn<Qt::KeyboardModifiers>("keys");
        QTest::addColumn<qreal>("scrolled");
        const Qt::KeyboardModifiers none;
        QTest::newRow("a notch") << QPoint(0, -120) << QPoint() << false << none << 111.0;
        QTest::newRow("with Shift") << QPoint(0, -120) << QPoint() << false
                                    << Qt::KeyboardModifiers(Qt::ShiftModifier) << 111.0;
        QTest::newRow("a wheel for it") << QPoint(-240, 0) << QPoint() << false << none << 222.0;
        QTest::newRow("fingers sideways")
            << QPoint(-120, 0) << QPoint(-37, 2) << true << none << 37.0;
        QTest::newRow("fingers down") << QPoint(0, -120) << QPoint(3, -20) << true << none << 20.0;
        QTest::newRow("fingers without pixels")
            << QPoint(-120, 0) << QPoint() << true << none << 12.0;
    }
    void anyWheelScrollsSideways()
    {
        QFETCH(QPoint, angle);
        QFETCH(QPoint, pixels);
        QFETCH(bool, touchPad);
        QFETCH(Qt::KeyboardModifiers, keys);
        QFETCH(qreal, scrolled);
        RowDesk desk(5);
        desk.wheel(angle, pixels, keys,
                   touchPad ? &brindlecam::touchPad() : QPointingDevice::primaryPointingDevice());
        QCOMPARE(desk.row.scrolled(), scrolled);
        desk.wheel(-angle, -pixels, keys,
                   touchPad ? &brindlecam::touchPad() : QPointingDevice::primaryPointingDevice());
        QCOMPARE(desk.row.scrolled(), 0.0);
    }

    void theTileThatGetsTheKeysComesIntoSight()
    {
        RowDesk desk(5);
        QVERIFY(!desk.row.focusedTile());
        QCOMPARE(desk.row.focusedIndex(), -1);
        desk.window.activateWindow();
        desk.row.focusTile(3);
        QCOMPARE(desk.row.focusedIndex(), 3);
        QCOMPARE(desk.placeOf(3).right(), 639);
        desk.row.focusTile(0);
        QCOMPARE(desk.row.scrolled(), 0.0);
        desk.row.focusTile(99);
        QCOMPARE(desk.row.focusedIndex(), 4);
        desk.row.focusTile(-5);
        QCOMPARE(desk.row.focusedIndex(), 0);
    }

    void anEmptyRowHasNothingToFocus()
    {
        RowDesk desk(0);
        desk.row.focusTile(0);
        QVERIFY(!desk.row.focusedTile());
        QVERIFY(!desk.row.hoveredTile());
    }

    void knowsTheTileUnderThePointer()
    {
        const RowDesk desk(3);
        desk.row.captureTiles().at(1)->setHovering(true);
        QCOMPARE(desk.row.hoveredTile(), desk.row.captureTiles().at(1));
    }

    void aRestingPointerIsOverTheTileThatComesUnderIt()
    {
        RowDesk desk(5);
        // As if Qt had told it; what the offscreen pointer enters is not always what lies under it.
        QCursor::setPos(desk.row.mapToGlobal(QPoint(300, 50)));
        desk.row.setAttribute(Qt::WA_UnderMouse);
        desk.row.scrollTo(222);
        QCOMPARE(desk.row.hoveredTile(), desk.row.captureTiles().at(2));
        QVERIFY(!desk.row.captureTiles().at(1)->hovering());
        desk.row.scrollTo(135); // between two of them
        QVERIFY(!desk.row.hoveredTile());
        desk.row.scrollTo(0);
        QCOMPARE(desk.row.hoveredTile(), desk.row.captureTiles().at(1));
        desk.row.setAttribute(Qt::WA_UnderMouse, false);
        desk.row.scrollTo(222); // by a key, while the pointer is elsewhere
        QVERIFY(!desk.row.hoveredTile());
        QCursor::setPos(0, 0);
    }

    void aTileThatCameUnderThePointerIsLeftForAnother()
    {
        RowDesk desk(5);
        const auto& tiles = desk.row.captureTiles();
        tiles.at(1)->setHovering(true); // nobody has entered it
        QEnterEvent enter({}, {}, {});
        QCoreApplication::sendEvent(tiles.at(2), &enter);
        QVERIFY(!tiles.at(1)->hovering());
        QCOMPARE(desk.row.hoveredTile(), tiles.at(2));
        tiles.at(3)->setHovering(true);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&desk.row, &leave);
        QVERIFY(!desk.row.hoveredTile());
    }
};

BRINDLECAM_TEST(TestTileRow);

} // namespace brindlecam

#include "tst_tilerow.moc"
