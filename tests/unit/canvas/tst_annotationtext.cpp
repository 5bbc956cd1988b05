#include "canvas/AnnotationText.h"

#include "DrawnMark.h"
#include "support/TestCase.h"

#include <QThread>

#include <memory>

namespace brindlecam {

class TestAnnotationText final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void textLandsInItsBox_data()
    {
        QTest::addColumn<QString>("words");
        QTest::newRow("plain") << QStringLiteral("Hola gjpq ÁÑ");
        QTest::newRow("right to left") << QStringLiteral("مرحبا");
        QTest::newRow("combining marks") << QStringLiteral("a\u0301e\u0308");
        QTest::newRow("emoji") << QStringLiteral("a😀👍🏽");
    }
    void textLandsInItsBox()
    {
        QFETCH(QString, words);
        const Annotation mark = test::textMark({20, 30}, words);
        const QRect ink = test::inkedRect(test::drawnMark(mark, {300, 80}));
        QVERIFY(!ink.isEmpty());
        const QRectF box = mark.bounds();
        QVERIFY(QRectF(ink).intersected(box.adjusted(-1, 0, 1, 0)) == QRectF(ink));
        // Left-aligned, whatever its direction, two points from the edge.
        QVERIFY(ink.left() >= 21 && ink.left() <= 26);
        QVERIFY(ink.width() > box.width() / 2);
    }

    void theFirstLetterTellsTheDirection()
    {
        // By an unseen letter that reads in one direction.
        const auto drawn = [](const char* unseen) {
            const QString words = QString::fromUtf8(unseen) + QStringLiteral("שלום (1) abc");
            return test::drawnMark(test::textMark({20, 30}, words), {300, 80});
        };
        const char* const leftToRight = "\u200e";
        const char* const rightToLeft = "\u200f";
        QCOMPARE(drawn(""), drawn(rightToLeft));
        QVERIFY(drawn("") != drawn(leftToRight));
    }

    void textHasItsColourAndNoBackground()
    {
        const Annotation mark = test::textMark({20, 30}, QStringLiteral("▉"), Qt::green);
        const QImage picture = test::drawnMark(mark, {80, 80}, 4);
        QVERIFY(test::hasPixel(picture, qRgb(0, 255, 0)));
        QCOMPARE(picture.pixel(20 * 4 + 2, 31 * 4), test::kPaper);
    }

    void emojiKeepTheirOwnColours()
    {
        const QImage picture =
            test::drawnMark(test::textMark({5, 5}, QStringLiteral("😀"), Qt::black), {40, 40}, 2);
        int bright = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                bright += qRed(pixel) > 200 && qBlue(pixel) < 120 ? 1 : 0;
            }
        }
        QVERIFY(bright > 100);
    }

    void textIsCutAt4000Points()
    {
        const QString words(3000, QLatin1Char('W'));
        const Annotation mark = test::textMark({0, 0}, words);
        QVERIFY(mark.bounds().width() > 5000);
        const QRectF painted = mark.paintedBounds();
        QVERIFY(painted.right() < 4020);
        const QRect ink = test::inkedRect(test::drawnMark(mark, {4400, 30}));
        QVERIFY(ink.right() > 3980);
        QVERIFY(ink.right() < painted.right());
    }

    void anotherThreadDrawsTheSame()
    {
        const Annotation words = test::textMark({10, 10}, QStringLiteral("Hola 12"));
        Annotation badge(Tool::number, Qt::blue, {90, 30});
        badge.setLineWidth(26);
        badge.setNumber(7);
        QImage wordsThere;
        QImage badgeThere;
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            wordsThere = test::drawnMark(words, {120, 60});
            badgeThere = test::drawnMark(badge, {120, 60});
        }));
        thread->start();
        QVERIFY(thread->wait());
        QCOMPARE(wordsThere, test::drawnMark(words, {120, 60}));
        QCOMPARE(badgeThere, test::drawnMark(badge, {120, 60}));
    }
};

BRINDLECAM_TEST(TestAnnotationText);

} // namespace brindlecam

#include "tst_annotationtext.moc"
