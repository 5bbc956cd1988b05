#include "desktop/AnnotatingTest.h"

#include <QFile>
#include <QRegularExpression>

namespace brindlecam::desktop {

/// What a session holds beside what the program needs anyway.
class TestSessionMemory final : public AnnotatingTest {
    Q_OBJECT

private:
    /// In kB: the program's own, and what it shares with the server.
    struct Memory {
        qint64 own = 0;
        qint64 shared = 0;
    };
    [[nodiscard]] Memory memory()
    {
        QFile status(QStringLiteral("/proc/%1/status").arg(program().pid()));
        if (!status.open(QIODevice::ReadOnly))
            return {};
        const QString text = QString::fromLatin1(status.readAll());
        static const QRegularExpression own(QStringLiteral("RssAnon:\\s*(\\d+) kB"));
        static const QRegularExpression shared(QStringLiteral("RssShmem:\\s*(\\d+) kB"));
        return {own.match(text).captured(1).toLongLong(),
                shared.match(text).captured(1).toLongLong()};
    }

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
        const Memory rest = memory();
        QVERIFY(openArea());
        (void)screen().grabAtRest(); // nothing more is painted
        const Memory session = memory();
        const qint64 more = session.own - rest.own + session.shared - rest.shared;
        QVERIFY2(more > picture / 2 && more <= picture + most,
                 qPrintable(QStringLiteral("%1 kB for a picture of %2").arg(more).arg(picture)));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestSessionMemory>(argc, argv);
}

#include "tst_sessionmemory.moc"
