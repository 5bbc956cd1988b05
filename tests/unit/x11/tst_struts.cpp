#include "platform/x11/desktop/Struts.h"
#include "support/TestCase.h"

Q_DECLARE_METATYPE(brindlecam::Struts::Strut)

namespace brindlecam {

using Struts::Edge;
using Struts::Strut;

namespace {

// Two displays side by side, the right one lower and shorter.
constexpr QSize kDesktop(3200, 1080);
constexpr QRect kLeft(0, 0, 1920, 1080);
constexpr QRect kRight(1920, 180, 1280, 720);

} // namespace

class TestStruts final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void strutsTakeSpaceOnlyFromTheDisplayTheyTouch_data()
    {
        QTest::addColumn<Strut>("strut");
        QTest::addColumn<QRect>("left");
        QTest::addColumn<QRect>("right");

        QTest::newRow("bar along the top of the left display")
            << Strut{Edge::top, 30, 0, 1919} << QRect(0, 30, 1920, 1050) << kRight;
        QTest::newRow("bar along the top of the right, lower display")
            << Strut{Edge::top, 210, 1920, 3199} << kLeft << QRect(1920, 210, 1280, 690);
        QTest::newRow("bar along the whole bottom reaches only the taller display")
            << Strut{Edge::bottom, 40, 0, 3199} << QRect(0, 0, 1920, 1040) << kRight;
        QTest::newRow("bar along the bottom of the shorter display")
            << Strut{Edge::bottom, 220, 1920, 3199} << kLeft << QRect(1920, 180, 1280, 680);
        QTest::newRow("dock at the left edge")
            << Strut{Edge::left, 64, 0, 1079} << QRect(64, 0, 1856, 1080) << kRight;
        QTest::newRow("dock at the inner edge of the right display")
            << Strut{Edge::left, 1984, 180, 899} << kLeft << QRect(1984, 180, 1216, 720);
        QTest::newRow("dock at the right edge")
            << Strut{Edge::right, 64, 180, 899} << kLeft << QRect(1920, 180, 1216, 720);
        QTest::newRow("dock at the inner edge of the left display")
            << Strut{Edge::right, 1344, 0, 1079} << QRect(0, 0, 1856, 1080) << kRight;
        QTest::newRow("a strut as large as the desktop takes nothing")
            << Strut{Edge::top, 1080, 0, 3199} << kLeft << kRight;
    }
    void strutsTakeSpaceOnlyFromTheDisplayTheyTouch()
    {
        QFETCH(Strut, strut);
        QTEST(Struts::visibleFrame(kLeft, kDesktop, {strut}), "left");
        QTEST(Struts::visibleFrame(kRight, kDesktop, {strut}), "right");
    }

    void strutsAtOneEdgeDoNotAddUp()
    {
        const std::vector<Strut> struts{
            {Edge::top, 30, 0, 900}, {Edge::top, 50, 901, 1919}, {Edge::left, 10, 0, 1079}};
        QCOMPARE(Struts::visibleFrame(kLeft, kDesktop, struts), QRect(10, 50, 1910, 1030));
    }

    void strutsThatMeetLeaveWhatTheFirstLeft()
    {
        const std::vector<Strut> struts{{Edge::left, 1200, 0, 1079}, {Edge::right, 2500, 0, 1079}};
        QCOMPARE(Struts::visibleFrame(kLeft, kDesktop, struts), QRect(1200, 0, 720, 1080));
    }
};

BRINDLECAM_TEST(TestStruts);

} // namespace brindlecam

#include "tst_struts.moc"
