#include "desktop/AnnotatingTest.h"
#include "desktop/support/ProcessMemory.h"

namespace brindlecam::desktop {

/// What a session holds beside what the program needs anyway.
class TestSessionMemory final : public AnnotatingTest {
    Q_OBJECT

private:
    [[nodiscard]] ProcessMemory memory() { return ProcessMemory::of(program().pid()); }

private Q_SLOTS:
    void sessionHoldsOnePictureOfTheScreenUntilSomethingIsDrawn()
    {
        const QSize pixels(2560, 1600);
        const qint64 picture = qint64(pixels.width()) * pixels.height() * 4 / 1024;
        const qint64 most = 6 * 1024; // kB over the picture
        useProgram({}, 1, {.screen = {.pixels = pixels}});
        QVERIFY(openArea()); // what is loaded once and stays
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        // The picture goes with the ring.
        QVERIFY(waitUntil([&] { return memory().shared < 2048; }));
        const ProcessMemory rest = memory();
        QVERIFY(openArea());
        (void)screen().grabAtRest(); // nothing more is painted
        const ProcessMemory session = memory();
        const qint64 more = session.own - rest.own + session.shared - rest.shared;
        QVERIFY2(more > picture / 2 && more <= picture + most,
                 qPrintable(QStringLiteral("%1 kB for a picture of %2").arg(more).arg(picture)));
    }

    void whatWasPaintedGoesWithTheSession()
    {
        const QSize pixels(2560, 1600);
        const qint64 picture = qint64(pixels.width()) * pixels.height() * 4 / 1024;
        const qint64 most = 4 * 1024; // kB that stay
        // What is on the clipboard by then is no session's: the copy may come before Esc or not.
        useProgram({{QStringLiteral("autoCopy"), false}}, 1, {.screen = {.pixels = pixels}});
        const auto leave = [this] {
            input().tap(Qt::Key_Escape); // the selection, then the session
            input().tap(Qt::Key_Escape);
            return sessionIsOver();
        };
        const auto paint = [this] {
            return openArea() && (select({100, 100, 2200, 1300}), !screen().grabAtRest().isNull());
        };
        QVERIFY(paint() && leave());
        QVERIFY(waitUntil([&] { return memory().shared < 2048; }));
        const qint64 rest = memory().own;
        QVERIFY(paint());
        QVERIFY2(memory().own > rest + picture / 2, qPrintable(QString::number(memory().own)));
        QVERIFY(leave());
        const bool gone = waitUntil([&] { return memory().own <= rest + most; });
        QVERIFY2(gone, qPrintable(QStringLiteral("%1 kB, %2 before").arg(memory().own).arg(rest)));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestSessionMemory>(argc, argv);
}

#include "tst_sessionmemory.moc"
