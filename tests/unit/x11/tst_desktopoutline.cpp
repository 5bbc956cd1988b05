#include "platform/x11/grab/DesktopOutline.h"
#include "support/TestCase.h"

namespace brindlecam {

/// What of a desktop can be read.
class TestDesktopOutline final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatScreensShowIsShown_data()
    {
        QTest::addColumn<QRect>("native");
        QTest::addColumn<bool>("shown");
        QTest::newRow("a whole screen") << QRect(0, 0, 800, 600) << true;
        QTest::newRow("across two screens") << QRect(700, 50, 300, 200) << true;
        QTest::newRow("last pixel of a screen") << QRect(1439, 579, 1, 1) << true;
        QTest::newRow("a part on no screen") << QRect(790, 0, 100, 100) << true;
        QTest::newRow("the desktop on no screen") << QRect(800, 0, 640, 100) << false;
        QTest::newRow("past the desktop") << QRect(1300, 200, 141, 10) << false;
        QTest::newRow("before the desktop") << QRect(0, -1, 10, 10) << false;
        QTest::newRow("empty") << QRect() << false;
    }
    void whatScreensShowIsShown()
    {
        QFETCH(QRect, native);
        const DesktopOutline outline{{0, 0, 1440, 600}, {{0, 0, 800, 600}, {800, 100, 640, 480}}};
        QTEST(outline.shows(native), "shown");
    }

    void withoutScreensTheDesktopIsOne()
    {
        const DesktopOutline outline{{0, 0, 1440, 600}, {}};
        QVERIFY(outline.shows({800, 0, 640, 100}));
        QVERIFY(!outline.shows({800, 0, 641, 100}));
    }

    void nothingIsShownWhereNobodyAnswers() { QVERIFY(!DesktopOutline().shows({0, 0, 1, 1})); }
};

BRINDLECAM_TEST(TestDesktopOutline);

} // namespace brindlecam

#include "tst_desktopoutline.moc"
