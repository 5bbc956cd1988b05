#include "canvas/CanvasKeys.h"
#include "support/TestCase.h"

#include <QKeyEvent>

namespace brindlecam {

namespace {

enum class Told { press, repeat };

std::optional<CanvasCommand> press(const CanvasKeys& keys, int key, quint64 time,
                                   Told told = Told::press)
{
    QKeyEvent event(QEvent::KeyPress, key, {}, {}, told == Told::repeat);
    event.setTimestamp(time);
    return keys.pressed(event);
}

void release(CanvasKeys& keys, int key, quint64 time)
{
    QKeyEvent event(QEvent::KeyRelease, key, {});
    event.setTimestamp(time);
    keys.released(event);
}

} // namespace

/// Which presses count.
class TestCanvasKeys final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyPressOfAFingerCounts()
    {
        CanvasKeys keys;
        QVERIFY(press(keys, Qt::Key_Return, 100));
        release(keys, Qt::Key_Return, 150);
        QVERIFY(press(keys, Qt::Key_Return, 151));
    }

    void repeatThatQtTellsCountsForMovesOnly()
    {
        const CanvasKeys keys;
        QVERIFY(!press(keys, Qt::Key_Return, 100, Told::repeat));
        QVERIFY(!press(keys, Qt::Key_Delete, 100, Told::repeat));
        QVERIFY(press(keys, Qt::Key_Left, 100, Told::repeat));
    }

    void repeatThatQtMissesIsOneToo()
    {
        CanvasKeys keys;
        release(keys, Qt::Key_Return, 700);
        QVERIFY(!press(keys, Qt::Key_Return, 700));
        release(keys, Qt::Key_Left, 730);
        QVERIFY(press(keys, Qt::Key_Left, 730));
    }

    void anotherKeyOfTheSameMomentCounts()
    {
        CanvasKeys keys;
        release(keys, Qt::Key_Delete, 700);
        QVERIFY(press(keys, Qt::Key_Return, 700));
    }

    void pressesWithoutATimeCount()
    {
        CanvasKeys keys;
        release(keys, Qt::Key_Return, 0);
        QVERIFY(press(keys, Qt::Key_Return, 0));
    }

    void keyWithoutAMeaningIsNoCommand()
    {
        const CanvasKeys keys;
        QVERIFY(!press(keys, Qt::Key_A, 100));
    }
};

BRINDLECAM_TEST(TestCanvasKeys);

} // namespace brindlecam

#include "tst_canvaskeys.moc"
