#include "CaptureFixture.h"
#include "canvas/BarButton.h"
#include "capture/LongCaptures.h"
#include "support/TestCase.h"

namespace brindlecam {

using Fixture = test::CaptureFixture;
using test::kLeft;
using test::kRight;

/// Sessions that end with a capture that goes on for a while.
class TestLongCaptures final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theyBeginOnTheScreenOfTheSelection()
    {
        Fixture f;
        f.longCaptures.kinds = {LongCapture::scroll};
        f.controller.begin();
        f.controller.finish(outcome::Scroll{QRect(450, 20, 100, 150)});
        QVERIFY(f.longCaptures.begun.empty());
        QTRY_COMPARE(f.longCaptures.begun.size(), std::size_t(1));
        QCOMPARE(f.longCaptures.begun.front(), std::pair(LongCapture::scroll, kRight.id));
        QCOMPARE(f.pasteboard.changes, 0);
    }

    void theyDoNotBeginOverAnotherCapture()
    {
        Fixture f;
        f.longCaptures.kinds = {LongCapture::scroll};
        f.controller.begin();
        f.controller.finish(outcome::Scroll{QRect(450, 20, 100, 150)});
        f.controller.begin();
        QVERIFY(f.controller.busy());
        QVERIFY(!QTest::qWaitFor([&] { return !f.longCaptures.begun.empty(); }, 400));
    }

    void theyDoNotBeginWhileTheProgramEnds()
    {
        Fixture f;
        f.longCaptures.kinds = {LongCapture::gif};
        f.controller.begin();
        f.controller.finish(outcome::Gif{QRect(450, 20, 100, 150)});
        f.activity.stage = Activity::Stage::quitting;
        QVERIFY(!QTest::qWaitFor([&] { return !f.longCaptures.begun.empty(); }, 400));
    }

    void thoseThatNobodyTakesJustEndTheSession()
    {
        Fixture f;
        const QRect rect(10, 10, 200, 200);
        const auto endWith = [&f](const Outcome& outcome) {
            f.controller.begin();
            f.controller.finish(outcome);
            QVERIFY(!f.controller.busy());
            QVERIFY(f.overlays().empty());
        };
        endWith(outcome::Scroll{rect});
        endWith(outcome::Gif{rect});
        f.longCaptures.kinds = {LongCapture::scroll, LongCapture::gif};
        endWith(outcome::Gif{rect});
        QTRY_VERIFY(!f.longCaptures.begun.empty());
        // What came before it would have begun before it.
        QCOMPARE(f.longCaptures.begun, (std::vector{std::pair(LongCapture::gif, kLeft.id)}));
    }

    void theBarsOfferThoseThatAreTaken_data()
    {
        QTest::addColumn<QList<LongCapture>>("taken");
        QTest::addColumn<QStringList>("refused");
        const QString scroll = QStringLiteral("Captura con desplazamiento (páginas largas)");
        const QString gif = QStringLiteral("Grabar esta área como GIF");
        QTest::newRow("none") << QList<LongCapture>() << QStringList{scroll, gif};
        QTest::newRow("pages") << QList{LongCapture::scroll} << QStringList(gif);
        QTest::newRow("recordings") << QList{LongCapture::gif} << QStringList(scroll);
        QTest::newRow("both") << QList{LongCapture::scroll, LongCapture::gif} << QStringList();
    }
    void theBarsOfferThoseThatAreTaken()
    {
        QFETCH(QList<LongCapture>, taken);
        Fixture f;
        f.longCaptures.kinds = {taken.begin(), taken.end()};
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {210, 210});
        QStringList refused;
        for (const BarButton* button : f.canvas(0).findChildren<BarButton*>()) {
            if (!button->isEnabled())
                refused << button->accessibleName();
        }
        QTEST(refused, "refused");
    }
};

BRINDLECAM_TEST(TestLongCaptures);

} // namespace brindlecam

#include "tst_longcaptures.moc"
