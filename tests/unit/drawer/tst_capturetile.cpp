#include "drawer/CaptureTile.h"
#include "drawer/DrawerGeometry.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>

namespace brindlecam {

namespace {

Thumbnail thumbnail(QSize size, QColor colour, QSize pixels = {1440, 900})
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return {image, pixels};
}

/// A tile on a black ground, and what has been asked of it.
struct TileDesk {
    test::FakePanels panels;
    QWidget ground;
    CaptureTile tile{QStringLiteral("/h/a.png"), QStringLiteral("Hoy, 9:26"), panels};
    QStringList asked;

    TileDesk()
    {
        tile.setParent(&ground);
        const auto note = [this](const char* what) {
            return [this, what] { asked << QString::fromLatin1(what); };
        };
        tile.onCopy = note("copy");
        tile.onPreview = note("preview");
        tile.onOpenInPreview = note("open");
        tile.onReveal = note("reveal");
        tile.onSaveToFolder = note("save");
        tile.onRemove = note("remove");
        tile.onDragBegins = note("drag");
        tile.onDragEnds = [this](CaptureTile::Drag end) {
            asked << (end == CaptureTile::Drag::dropped ? QStringLiteral("dropped")
                                                        : QStringLiteral("refused"));
        };
        ground.resize(tile.size());
        ground.show();
    }
    [[nodiscard]] QImage look()
    {
        QImage image(tile.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        tile.render(&painter, {}, {}, QWidget::RenderFlags());
        return image;
    }
    void mouse(QEvent::Type type, QPoint at, Qt::MouseButton button = Qt::LeftButton)
    {
        const bool up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, QPointF(at), QPointF(at),
                          type == QEvent::MouseMove ? Qt::NoButton : button,
                          up ? Qt::NoButton : button, Qt::NoModifier);
        QCoreApplication::sendEvent(&tile, &event);
    }
};

} // namespace

class TestCaptureTile final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void showsItsPictureInTheMiddleAndTheCaptionBelow()
    {
        TileDesk desk;
        desk.tile.setThumbnail(thumbnail({100, 114}, Qt::red), CaptureTile::Arrival::atOnce);
        const QImage seen = desk.look();
        QCOMPARE(seen.pixelColor(105, 60), QColor(Qt::red));
        QCOMPARE(seen.pixelColor(56, 60), QColor(Qt::red)); // 55 … 154 across, 8 … 121 down
        QVERIFY(seen.pixelColor(54, 60) != QColor(Qt::red));
        QCOMPARE(seen.pixelColor(105, 9), QColor(Qt::red));
        QVERIFY(seen.pixelColor(105, 7) != QColor(Qt::red));
        QVERIFY(seen.pixelColor(105, 122) != QColor(Qt::red));
        QVERIFY(seen.pixelColor(55, 8) != QColor(Qt::red)); // its corners are round
        int light = 0;
        for (int x = 0; x < seen.width(); ++x) {
            for (int y = 130; y < 145; ++y)
                light += seen.pixelColor(x, y).lightness() > 120 ? 1 : 0;
        }
        QVERIFY(light > 50);
    }

    void smallPicturesAreEnlarged()
    {
        TileDesk desk;
        desk.tile.setThumbnail(thumbnail({10, 5}, Qt::red, {10, 5}), CaptureTile::Arrival::atOnce);
        const QImage seen = desk.look();
        QCOMPARE(seen.pixelColor(12, 65), QColor(Qt::red)); // as wide as the room, 97 high
        QCOMPARE(seen.pixelColor(198, 65), QColor(Qt::red));
        QVERIFY(seen.pixelColor(105, 14) != QColor(Qt::red));
    }

    void withoutAPictureThereAreCardAndCaption()
    {
        TileDesk desk;
        const QImage seen = desk.look();
        QCOMPARE(seen.pixelColor(105, 60), QColor(37, 37, 37)); // 0.16 of white, nearly opaque
        QCOMPARE(seen.pixelColor(0, 0), QColor(Qt::black));
        QCOMPARE(desk.tile.accessibleName(), QStringLiteral("Hoy, 9:26"));
    }

    void cardIsLighterAndGreenlyOutlinedUnderThePointer()
    {
        TileDesk desk;
        desk.tile.setHovering(true);
        const QImage seen = desk.look();
        QCOMPARE(seen.pixelColor(105, 60), QColor(64, 64, 64));
        QVERIFY(seen.pixelColor(105, 1).green() > seen.pixelColor(105, 1).red() + 50);
    }

    void tellsAssistiveTechnologyWhatItIs()
    {
        TileDesk desk;
        desk.tile.setThumbnail(thumbnail({10, 10}, Qt::red), CaptureTile::Arrival::atOnce);
        auto* const face = QAccessible::queryAccessibleInterface(&desk.tile);
        QVERIFY(face);
        QCOMPARE(face->role(), QAccessible::Button);
        QCOMPARE(face->text(QAccessible::Name), QStringLiteral("Hoy, 9:26  ·  1440×900"));
        QCOMPARE(face->text(QAccessible::Description),
                 QStringLiteral("Clic para copiar · espacio para verla en grande · arrastra para "
                                "soltarla en otra app"));
        face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(desk.asked, QStringList{QStringLiteral("copy")});
    }

    void aClickCopies_data()
    {
        QTest::addColumn<QPoint>("moved");
        QTest::newRow("still") << QPoint(0, 0);
        QTest::newRow("four points aside") << QPoint(4, 0);
        QTest::newRow("four points in all") << QPoint(2, 3);
    }
    void aClickCopies()
    {
        QFETCH(QPoint, moved);
        TileDesk desk;
        desk.mouse(QEvent::MouseButtonPress, {50, 50});
        desk.mouse(QEvent::MouseMove, QPoint(50, 50) + moved);
        desk.mouse(QEvent::MouseButtonRelease, QPoint(50, 50) + moved);
        QCOMPARE(desk.asked, QStringList{QStringLiteral("copy")});
    }

    void moreThanFourPointsAreADragAndNeverACopy()
    {
        TileDesk desk;
        desk.mouse(QEvent::MouseButtonPress, {50, 50});
        desk.mouse(QEvent::MouseMove, {52, 53});
        QVERIFY(desk.asked.isEmpty());
        desk.mouse(QEvent::MouseMove, {53, 54});
        desk.mouse(QEvent::MouseButtonRelease, {80, 80});
        QCOMPARE(desk.asked, (QStringList{QStringLiteral("drag"), QStringLiteral("refused")}));
    }

    void aDragTakesTheFileAndShowsThePicture()
    {
        TileDesk desk;
        desk.tile.setThumbnail(thumbnail({194, 97}, Qt::red), CaptureTile::Arrival::atOnce);
        QImage picture;
        QPoint hotSpot;
        QList<QUrl> urls;
        desk.tile.onDragEnds = [&tile = desk.tile, &picture, &hotSpot, &urls](CaptureTile::Drag) {
            const auto* const drag = tile.findChild<QDrag*>();
            QVERIFY(drag);
            picture = drag->pixmap().toImage();
            hotSpot = drag->hotSpot();
            urls = drag->mimeData()->urls();
        };
        desk.mouse(QEvent::MouseButtonPress, {50, 60});
        desk.mouse(QEvent::MouseMove, {60, 60});
        QCOMPARE(urls, QList<QUrl>{QUrl(QStringLiteral("file:///h/a.png"))});
        // The tile without a border of eight points, held where it was pressed.
        QCOMPARE(picture.size(), QSize(194, 134));
        QCOMPARE(hotSpot, QPoint(42, 52));
        QCOMPARE(picture.pixelColor(97, 67), QColor(Qt::red));
        QCOMPARE(picture.pixelColor(5, 67), QColor(Qt::red));
        QCOMPARE(picture.pixelColor(97, 16).alpha(), 0); // above it
    }

    void otherButtonsDoNothing()
    {
        TileDesk desk;
        for (const Qt::MouseButton button : {Qt::MiddleButton, Qt::RightButton}) {
            desk.mouse(QEvent::MouseButtonPress, {50, 50}, button);
            desk.mouse(QEvent::MouseMove, {90, 90}, button);
            desk.mouse(QEvent::MouseButtonRelease, {50, 50}, button);
        }
        desk.mouse(QEvent::MouseButtonRelease, {50, 50}); // pressed elsewhere
        QVERIFY(desk.asked.isEmpty());
    }

    void menuOffersEverythingInItsOrder()
    {
        TileDesk desk;
        QContextMenuEvent event(QContextMenuEvent::Mouse, {30, 40}, {30, 40});
        QCoreApplication::sendEvent(&desk.tile, &event);
        QCOMPARE(desk.panels.menus.size(), std::size_t(1));
        const auto& menu = desk.panels.menus.front();
        QCOMPARE(menu.place, QPoint(30, 40));
        QStringList titles;
        for (const MenuEntry& entry : menu.entries) {
            titles << entry.title;
            entry.run();
        }
        QCOMPARE(titles, (QStringList{QStringLiteral("Copiar"), QStringLiteral("Ver en grande"),
                                      QStringLiteral("Abrir con Vista Previa"),
                                      QStringLiteral("Mostrar en Finder"),
                                      QStringLiteral("Guardar en la carpeta de capturas"),
                                      QStringLiteral("Quitar de recientes")}));
        QCOMPARE(desk.asked, (QStringList{QStringLiteral("copy"), QStringLiteral("preview"),
                                          QStringLiteral("open"), QStringLiteral("reveal"),
                                          QStringLiteral("save"), QStringLiteral("remove")}));
    }

    void aPictureThatComesLaterFadesIn()
    {
        TileDesk desk;
        desk.tile.setThumbnail(thumbnail({100, 100}, Qt::red), CaptureTile::Arrival::fadesIn);
        QVERIFY(desk.look().pixelColor(105, 60) != QColor(Qt::red));
        QTRY_COMPARE(desk.look().pixelColor(105, 60), QColor(Qt::red));
    }

    void thumbnailsAreShownPixelByPixel_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<QSize>("picture"); // whose thumbnail fills its room in one direction
        for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
            for (const QSize shape : {QSize(1000, 1000), QSize(1600, 1000), QSize(1700, 1000),
                                      QSize(1710, 1000), QSize(3000, 1000), QSize(500, 1000)})
                QTest::addRow("%dx%d at %.2f", shape.width(), shape.height(), scale)
                    << scale << shape;
        }
    }
    void thumbnailsAreShownPixelByPixel()
    {
        QFETCH(qreal, scale);
        QFETCH(QSize, picture);
        const QSize size = Thumbnail::fitted(picture, CaptureTile::thumbnailPixels(scale));
        QImage board(size, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x)
                board.setPixelColor(x, y, (x + y) % 2 == 0 ? Qt::black : Qt::white);
        }
        for (int left = 0; left < 4; ++left) { // tiles begin anywhere in a pixel
            QImage image(QSize(230, 170) * scale, QImage::Format_ARGB32_Premultiplied);
            image.setDevicePixelRatio(scale);
            image.fill(Qt::black);
            QPainter painter(&image);
            painter.translate(left, 1);
            CaptureTile::paintPicture(painter, board, DrawerGeometry::kPicture);
            painter.end();
            const QPoint middle = (QPointF(left + 105, 66) * scale).toPoint();
            int white = 0;
            for (int x = -20; x < 20; ++x) {
                const int level = image.pixelColor(middle + QPoint(x, x / 2)).lightness();
                QVERIFY2(level == 0 || level == 255, qPrintable(QString::number(level)));
                white += level == 255 ? 1 : 0;
            }
            QVERIFY(white > 10 && white < 30);
        }
    }

    void thumbnailsHaveThePixelsOfTheirRoom()
    {
        QCOMPARE(CaptureTile::thumbnailPixels(1), QSize(194, 114));
        QCOMPARE(CaptureTile::thumbnailPixels(1.25), QSize(242, 142)); // of 242.5 by 142.5
        QCOMPARE(CaptureTile::thumbnailPixels(1.5), QSize(291, 171));
        QCOMPARE(CaptureTile::thumbnailPixels(1.75), QSize(339, 199));
        QCOMPARE(CaptureTile::thumbnailPixels(2), QSize(388, 228));
    }
};

BRINDLECAM_TEST(TestCaptureTile);

} // namespace brindlecam

#include "tst_capturetile.moc"
