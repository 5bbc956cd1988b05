#include "PinnedFixture.h"
#include "support/TestCase.h"

#include <QWindow>

namespace brindlecam {

using test::kPinned;
using test::PinnedFixture;

/// A pin whose window is ahead of the size that its widget has heard of.
class TestPinGrowing final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void wheelTurnsBeyondTheSizeThatTheWidgetHasHeardOfCountToo()
    {
        PinnedFixture f;
        f.open();
        f.wheel(4);
        f.pin().resize(kPinned.size());
        const QPointF beyond(220, 110);
        QWheelEvent event(beyond, beyond, {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(f.pin().windowHandle(), &event);
        QCOMPARE(f.place().size(), QSize(252, 126));
    }

    void handTakesThePinBeyondTheSizeThatTheWidgetHasHeardOfToo()
    {
        PinnedFixture f;
        f.open();
        f.wheel(4);
        f.pin().resize(kPinned.size());
        const QRect before = f.place();
        QWindow* const window = f.pin().windowHandle();
        const QPoint beyond(220, 110);
        const auto send = [&](QEvent::Type type, QPoint way, Qt::MouseButtons buttons) {
            const QPointF global(before.topLeft() + beyond + way);
            QMouseEvent event(type, QPointF(beyond), global,
                              type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(window, &event);
        };
        send(QEvent::MouseButtonPress, {}, Qt::LeftButton);
        send(QEvent::MouseMove, {30, 20}, Qt::LeftButton);
        QCOMPARE(f.place(), before.translated(30, 20));
        send(QEvent::MouseButtonRelease, {30, 20}, Qt::NoButton);
        QCOMPARE(f.place(), before.translated(30, 20));
    }
};

BRINDLECAM_TEST(TestPinGrowing);

} // namespace brindlecam

#include "tst_pingrowing.moc"
