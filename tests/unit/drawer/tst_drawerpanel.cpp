#include "drawer/CaptureTile.h"
#include "drawer/DrawerGeometry.h"
#include "drawer/DrawerPanel.h"
#include "drawer/TileRow.h"
#include "look/PanelButton.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QAccessible>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace brindlecam {

namespace {

using Entries = DrawerPanel::Entries;
const QString kNothing = QStringLiteral("Nada");
constexpr QSize kWidePanel(1820, 212);

/// A panel of this width, shown.
struct PanelDesk {
    DrawerPanel panel;

    explicit PanelDesk(int width = kWidePanel.width(), Entries entries = Entries::some)
        : panel(width, entries, kNothing)
    {
        panel.onClear = [] {};
        panel.resize(width, kWidePanel.height());
        panel.show();
    }
    [[nodiscard]] QLabel* label(const QString& begin) const
    {
        for (QLabel* label : panel.findChildren<QLabel*>()) {
            if (label->text().startsWith(begin))
                return label;
        }
        return nullptr;
    }
    [[nodiscard]] PanelButton* clear() const { return panel.findChild<PanelButton*>(); }
    [[nodiscard]] QImage look()
    {
        QImage image(panel.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        panel.render(&image, {}, {}, QWidget::RenderFlags());
        return image;
    }
};

} // namespace

class TestDrawerPanel final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void headerStandsAboveTheRow()
    {
        const PanelDesk desk;
        const QLabel* title = desk.label(QStringLiteral("🍃"));
        QVERIFY(title);
        QCOMPARE(title->text(), QStringLiteral("🍃  Capturas recientes"));
        QCOMPARE(title->x(), 16);
        QCOMPARE(title->geometry().bottom() + 1, 32);
        const PanelButton* clear = desk.clear();
        QCOMPARE(clear->text(), QStringLiteral("Vaciar"));
        QCOMPARE(clear->toolTip(),
                 QStringLiteral("Borrar definitivamente todas las capturas recientes"));
        QCOMPARE(clear->geometry().right() + 1, 1804);
        QCOMPARE(clear->geometry().bottom() + 1, 35);
        const QLabel* help = desk.label(QStringLiteral("Clic"));
        QCOMPARE(help->text(),
                 QStringLiteral("Clic: copiar  ·  Espacio: ver en grande  ·  Arrastrar: soltar en "
                                "otra app  ·  Clic derecho: más  ·  Esc: cerrar"));
        QCOMPARE(help->geometry().right() + 1, clear->x() - 12);
        QCOMPARE(help->geometry().bottom() + 1, 31);
        QCOMPARE(desk.panel.row().geometry(), QRect(16, 46, 1788, 150));
    }

    void helpIsLeftOutWhereItComesNearTheTitle()
    {
        const PanelDesk wide;
        const QLabel* title = wide.label(QStringLiteral("🍃"));
        const QLabel* help = wide.label(QStringLiteral("Clic"));
        // What stands beside each other, with the gaps between.
        const int least =
            16 + title->width() + 12 + help->width() + 12 + wide.clear()->width() + 16;
        const PanelDesk exact(least);
        QVERIFY(!exact.label(QStringLiteral("Clic"))->isVisible());
        const PanelDesk more(least + 1);
        QVERIFY(more.label(QStringLiteral("Clic"))->isVisible());
        // Without the button there is more room.
        const PanelDesk empty(least - wide.clear()->width() - 12 + 1, Entries::none);
        QVERIFY(empty.label(QStringLiteral("Clic"))->isVisible());
    }

    void withoutEntriesASentenceStandsInTheMiddle()
    {
        const PanelDesk desk(672, Entries::none);
        QVERIFY(!desk.clear()->isVisible());
        QVERIFY(!desk.panel.row().isVisible());
        const QLabel* sentence = desk.label(kNothing);
        QVERIFY(sentence->isVisible());
        QVERIFY(std::abs(sentence->geometry().center().x() - 336) <= 1);
        QCOMPARE(sentence->geometry().bottom() + 1, 129);
    }

    void isDarkRoundAndTranslucentWhereWindowsBlend()
    {
        PanelDesk desk;
        desk.panel.setBlends(true);
        QVERIFY(desk.panel.mask().isEmpty());
        const QImage seen = desk.look();
        QCOMPARE(seen.pixelColor(0, 0).alpha(), 0);
        const QColor ground = seen.pixelColor(900, 205);
        QVERIFY(ground.alpha() > 200 && ground.alpha() < 255);
        QVERIFY(seen.pixelColor(900, 0).lightness() > ground.lightness()); // the border
    }

    void isCutAndOpaqueWhereTheyDoNot()
    {
        PanelDesk desk;
        desk.panel.setBlends(false);
        QVERIFY(!desk.panel.mask().contains(QPoint(0, 0)));
        QVERIFY(desk.panel.mask().contains(QPoint(900, 0)));
        QVERIFY(!desk.panel.mask().contains(QPoint(1819, 211)));
        QCOMPARE(desk.look().pixelColor(900, 205).alpha(), 255);
        desk.panel.setBlends(true);
        QVERIFY(desk.panel.mask().isEmpty());
    }

    void buttonAsksToEmpty()
    {
        PanelDesk desk;
        int asked = 0;
        desk.panel.onClear = [&asked] { ++asked; };
        QTest::mouseClick(desk.clear(), Qt::LeftButton);
        QTest::keyClick(desk.clear(), Qt::Key_Return);
        QTest::keyClick(desk.clear(), Qt::Key_Space);
        QCOMPARE(asked, 3);
        QCOMPARE(desk.clear()->focusPolicy(), Qt::TabFocus); // a click leaves the keys alone
    }

    void aKeyThatIsHeldAsksOnce_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("return") << Qt::Key_Return;
        QTest::newRow("enter") << Qt::Key_Enter;
        QTest::newRow("space") << Qt::Key_Space;
    }
    void aKeyThatIsHeldAsksOnce()
    {
        QFETCH(Qt::Key, key);
        PanelDesk desk;
        int asked = 0;
        desk.panel.onClear = [&asked] { ++asked; };
        QTest::keyPress(desk.clear(), key);
        for (int i = 0; i < 3; ++i) {
            for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
                QKeyEvent repeat(type, key, Qt::NoModifier, QString(), true);
                QCoreApplication::sendEvent(desk.clear(), &repeat);
            }
        }
        QTest::keyRelease(desk.clear(), key);
        QCOMPARE(asked, 1);
    }

    void buttonIsLighterUnderThePointer()
    {
        PanelDesk desk;
        const QImage resting = desk.clear()->grab().toImage();
        QTest::mousePress(desk.clear(), Qt::LeftButton);
        const QImage pressed = desk.clear()->grab().toImage();
        QVERIFY(pressed.pixelColor(4, 10).lightness() > resting.pixelColor(4, 10).lightness());
    }

    void isToldToAssistiveTechnology()
    {
        PanelDesk desk;
        auto* const face = QAccessible::queryAccessibleInterface(&desk.panel);
        QCOMPARE(face->text(QAccessible::Name), QStringLiteral("Capturas recientes"));
        auto* const button = QAccessible::queryAccessibleInterface(desk.clear());
        QCOMPARE(button->role(), QAccessible::Button);
        QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Vaciar"));
    }
};

BRINDLECAM_TEST(TestDrawerPanel);

} // namespace brindlecam

#include "tst_drawerpanel.moc"
