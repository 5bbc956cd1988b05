#include "platform/x11/windows/AskedPlaces.h"
#include "support/TestCase.h"

namespace brindlecam {

using x11::AskedPlaces;

namespace {

constexpr QRect kAskedFirst(100, 100, 400, 300);
constexpr QRect kAskedNext(150, 120, 420, 315);
constexpr QRect kAskedLast(200, 140, 440, 330);

AskedPlaces threeWishes()
{
    AskedPlaces places;
    places.settle(kAskedFirst);
    places.ask(kAskedNext);
    places.ask(kAskedLast);
    return places;
}

} // namespace

class TestAskedPlaces final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void lateAnswersAreOurs_data()
    {
        QTest::addColumn<QRect>("seen");
        QTest::newRow("none yet") << kAskedFirst;
        QTest::newRow("an earlier wish") << kAskedNext;
        QTest::newRow("the last wish") << kAskedLast;
        QTest::newRow("place before size") << QRect(kAskedLast.topLeft(), kAskedFirst.size());
        QTest::newRow("size before place") << QRect(kAskedFirst.topLeft(), kAskedNext.size());
    }
    void lateAnswersAreOurs()
    {
        QFETCH(QRect, seen);
        AskedPlaces places = threeWishes();
        QVERIFY(places.leadTo(seen));
    }

    void whatNobodyAskedForIsSomebodyElses_data()
    {
        QTest::addColumn<QRect>("seen");
        QTest::newRow("moved") << kAskedLast.translated(1, 0);
        QTest::newRow("resized") << kAskedLast.adjusted(0, 0, 10, 0);
        QTest::newRow("both") << QRect(0, 0, 800, 600);
    }
    void whatNobodyAskedForIsSomebodyElses()
    {
        QFETCH(QRect, seen);
        AskedPlaces places = threeWishes();
        QVERIFY(!places.leadTo(seen));
        QVERIFY(!AskedPlaces().leadTo(seen));
    }

    void earlierWishesAreForgottenOnceTheLastIsFulfilled()
    {
        AskedPlaces places = threeWishes();
        QVERIFY(places.leadTo(kAskedLast));
        QVERIFY(!places.leadTo(kAskedNext));
        QVERIFY(!places.leadTo(kAskedFirst));
        QVERIFY(places.leadTo(kAskedLast));
    }
};

BRINDLECAM_TEST(TestAskedPlaces);

} // namespace brindlecam

#include "tst_askedplaces.moc"
