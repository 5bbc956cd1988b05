#include "PaintedPage.h"
#include "long/ScrolledPage.h"
#include "support/TestCase.h"

namespace brindlecam {

using State = ScrolledPage::State;
using test::paintedPage;
using test::scrolledTo;

class TestScrolledPage final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void growsByWhatIsScrolled()
    {
        const QImage page = paintedPage({120, 900});
        ScrolledPage scrolled;
        QCOMPARE(scrolled.height(), 0);
        QVERIFY(!scrolled.picture());
        QCOMPARE(scrolled.add(scrolledTo(page, 0, 300)), State::waiting);
        QCOMPARE(scrolled.height(), 300);
        QCOMPARE(scrolled.add(scrolledTo(page, 0, 300)), State::waiting);
        QCOMPARE(scrolled.add(scrolledTo(page, 150, 300)), State::growing);
        QCOMPARE(scrolled.height(), 450);
        QCOMPARE(scrolled.add(scrolledTo(page, 150, 300)), State::growing);
        QCOMPARE(scrolled.add(scrolledTo(page, 380, 300)), State::growing);
        QCOMPARE(scrolled.picture(), scrolledTo(page, 0, 680));
    }

    void isTooFastFromTheThirdFrameWithoutAMatchOn()
    {
        const QImage page = paintedPage({120, 3000});
        ScrolledPage scrolled;
        scrolled.add(scrolledTo(page, 0, 300));
        QCOMPARE(scrolled.add(scrolledTo(page, 1000, 300)), State::waiting);
        QCOMPARE(scrolled.add(scrolledTo(page, 1400, 300)), State::waiting);
        QCOMPARE(scrolled.add(scrolledTo(page, 1800, 300)), State::tooFast);
        QCOMPARE(scrolled.add(scrolledTo(page, 2200, 300)), State::tooFast);
        QCOMPARE(scrolled.add(scrolledTo(page, 100, 300)), State::growing);
        QCOMPARE(scrolled.add(scrolledTo(page, 1000, 300)), State::growing);
        QCOMPARE(scrolled.picture(), scrolledTo(page, 0, 400));
    }

    void isCompleteAtTwentyThousandRows()
    {
        const QImage page = paintedPage({32, 21000});
        ScrolledPage scrolled;
        constexpr int kHeight = 5000;
        int top = 0;
        State state = scrolled.add(scrolledTo(page, top, kHeight));
        for (int frame = 0; frame < 10 && state != State::complete; ++frame)
            state = scrolled.add(scrolledTo(page, top += 4000, kHeight));
        QCOMPARE(state, State::complete);
        QCOMPARE(scrolled.height(), 20000);
        QCOMPARE(scrolled.picture(), scrolledTo(page, 0, 20000));
    }

    void thePictureOutlivesThePage()
    {
        const QImage page = paintedPage({40, 200});
        QImage picture;
        {
            ScrolledPage scrolled;
            scrolled.add(page);
            picture = scrolled.picture().value_or(QImage());
        }
        QCOMPARE(picture, page);
    }
};

BRINDLECAM_TEST(TestScrolledPage);

} // namespace brindlecam

#include "tst_scrolledpage.moc"
