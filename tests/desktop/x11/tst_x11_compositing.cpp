// Covers CompositorWatch.
#include "desktop/support/x11/SelectionReader.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/windows/CompositorWatch.h"
#include "platform/x11/windows/X11Compositing.h"
#include "support/TestCase.h"
#include "x11/RootImage.h"
#include "x11/ThisDesktop.h"

namespace brindlecam {

using test::display;
using test::rootImage;

class TestX11Compositing final : public test::TestCase {
    Q_OBJECT

private:
    X11Compositing m_compositing{std::make_shared<CompositorWatch>(),
                                 std::make_shared<ServerPixels>()};

private Q_SLOTS:
    void compositorIsSeenWhenItComesAndGoes()
    {
        int changes = 0;
        QObject context;
        m_compositing.whenChanged(&context, [&] { ++changes; });
        QVERIFY(!m_compositing.blends());
        {
            desktop::SelectionReader compositor(display());
            QVERIFY(compositor.own("_NET_WM_CM_S0"));
            QTRY_COMPARE(changes, 1);
            QVERIFY(m_compositing.blends());
        }
        QTRY_COMPARE(changes, 2);
        QVERIFY(!m_compositing.blends());
    }

    void backdropIsWhatTheScreenShowsOrNull()
    {
        const QRect part(31, 7, 20, 10);
        QWidget sheet;
        sheet.setWindowFlags(Qt::Window | Qt::BypassWindowManagerHint);
        sheet.setStyleSheet(QStringLiteral("background: #204060"));
        sheet.setGeometry(0, 0, 100, 60);
        sheet.show();
        QTRY_COMPARE(rootImage(part).pixelColor(3, 3), QColor(0x20, 0x40, 0x60));
        QCOMPARE(m_compositing.backdrop(part), rootImage(part));
        QVERIFY(m_compositing.backdrop({}).isNull());
    }
};

BRINDLECAM_TEST(TestX11Compositing);

} // namespace brindlecam

#include "tst_x11_compositing.moc"
