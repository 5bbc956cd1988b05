#include "reading/TextPage.h"
#include "support/ReadingAnswers.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestTextPage final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPageIsMadeLargeEnoughAndGetsABorder()
    {
        const TextPage page(test::writtenPage({QStringLiteral("mesa y nombre")}));
        QVERIFY(page.grey().width() > 1.3 * 420);
        QCOMPARE(qGray(page.grey().pixel(0, 0)), 255);
        QVERIFY(page.lines({}).isEmpty());
    }

    void aBlankPageNeedsNoEngine()
    {
        QVERIFY(TextPage(test::blankPage({400, 300})).grey().isNull());
        QVERIFY(TextPage(test::noise({1600, 1200})).grey().isNull());
        QImage faint = test::blankPage({400, 300});
        faint.setPixel(200, 150, qRgb(245, 245, 245));
        QVERIFY(!TextPage(faint).grey().isNull());
    }
};

BRINDLECAM_TEST(TestTextPage);

} // namespace brindlecam

#include "tst_textpage.moc"
