#include "capture/CaptureFixture.h"
#include "support/TestCase.h"

#include <QMenu>

namespace brindlecam {

/// Captures that start while a menu of ours is open.
class TestOpenMenus final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void openMenusAreClosedBeforeTheScreensAreGrabbed()
    {
        test::CaptureFixture f;
        QMenu menu;
        menu.addAction(QStringLiteral("Copiar"));
        menu.popup({});
        QVERIFY(menu.isVisible());
        f.controller.begin();
        QVERIFY(!menu.isVisible());
        // What it covered gets some time to be painted again.
        QCOMPARE(f.grabber.calls, 0);
        QTRY_COMPARE(f.overlays().size(), 2U);
    }
};

BRINDLECAM_TEST(TestOpenMenus);

} // namespace brindlecam

#include "tst_openmenus.moc"
