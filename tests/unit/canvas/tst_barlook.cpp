#include "canvas/BarLook.h"
#include "support/TestCase.h"

#include <QImage>
#include <QPainter>

namespace brindlecam {

namespace {

using PaintLook = void (*)(QPainter&, const QRectF&);

/// What a square of 38 points at (origin, origin) looks like on black.
QImage paintedLook(PaintLook paint, qreal scale, int origin)
{
    QImage image((QSizeF(60, 60) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.translate(origin, origin);
    paint(painter, {0, 0, 38, 38});
    return image;
}

void addLookPlaces()
{
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<int>("origin");
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0}) {
        for (const int origin : {4, 5, 6, 7})
            QTest::addRow("at %d, scale %g", origin, scale) << scale << origin;
    }
}

struct Run {
    QRgb color = 0;
    int first = 0;
};

/// The stretches of one colour along the middle row.
std::vector<Run> runs(const QImage& image, int row)
{
    std::vector<Run> found;
    for (int x = 0; x < image.width(); ++x) {
        if (found.empty() || found.back().color != image.pixel(x, row))
            found.push_back({image.pixel(x, row), x});
    }
    return found;
}

} // namespace

class TestBarLook final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void groundAndBorderAreSharpWhereverTheBarStands_data() { addLookPlaces(); }
    void groundAndBorderAreSharpWhereverTheBarStands()
    {
        QFETCH(qreal, scale);
        QFETCH(int, origin);
        const QImage image = paintedLook(BarLook::paintGround, scale, origin);
        const std::vector<Run> found = runs(image, qRound((origin + 19) * scale));
        QCOMPARE(found.size(), 5U); // outside, border, ground, border, outside
        QCOMPARE(found.at(1).first, qRound(origin * scale));
        QCOMPARE(found.at(2).first, found.at(1).first + std::max(1, qRound(scale)));
        QCOMPARE(found.at(3).color, found.at(1).color);
        QCOMPARE(found.at(4).first, qRound((origin + 38) * scale));
    }

    void theFocusRingIsSharpWhereverTheControlStands_data() { addLookPlaces(); }
    void theFocusRingIsSharpWhereverTheControlStands()
    {
        QFETCH(qreal, scale);
        QFETCH(int, origin);
        const QImage image = paintedLook(BarLook::paintFocusRing, scale, origin);
        const std::vector<Run> found = runs(image, qRound((origin + 19) * scale));
        QCOMPARE(found.size(), 5U); // outside, ring, inside, ring, outside
        QCOMPARE(found.at(1).color, qRgb(255, 255, 255));
        QCOMPARE(found.at(1).first, qRound(origin * scale));
        QCOMPARE(found.at(2).first, found.at(1).first + qRound(2 * scale));
        QCOMPARE(found.at(2).color, qRgb(0, 0, 0));
        QCOMPARE(found.at(3).color, qRgb(255, 255, 255));
        QCOMPARE(found.at(4).first, qRound((origin + 38) * scale));
    }
};

BRINDLECAM_TEST(TestBarLook);

} // namespace brindlecam

#include "tst_barlook.moc"
