// Covers IncrTransfer, Mailbox, OfferedContent, SelectionAtoms, SelectionOwner, SelectionThread.
#include "desktop/support/x11/SelectionReader.h"
#include "x11/PasteboardTest.h"
#include "x11/ThisDesktop.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSemaphore>
#include <QThreadPool>

#include <atomic>
#include <memory>

namespace brindlecam {

using desktop::SelectionReader;
using test::display;

namespace {

constexpr qsizetype kMega = 1024 * 1024;

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator generator(17);
    auto* words = reinterpret_cast<quint32*>(bytes.data());
    generator.fillRange(words, size / 4);
    return bytes;
}

QByteArray pastedByXclip(const QString& target)
{
    QProcess xclip;
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-out"),
                 QStringLiteral("-target"), target});
    xclip.waitForFinished();
    return xclip.readAllStandardOutput();
}

/// Leaves a copy of it behind that serves the text.
bool copiedByXclip(const QByteArray& text)
{
    QProcess xclip;
    xclip.setStandardOutputFile(QProcess::nullDevice());
    xclip.setStandardErrorFile(QProcess::nullDevice());
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-selection"), QStringLiteral("clipboard")});
    xclip.write(text);
    xclip.closeWriteChannel();
    return xclip.waitForFinished() && xclip.exitCode() == 0;
}

/// Wake-ups so far of the thread that owns the clipboard.
int wakeUps()
{
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile name(tasks.filePath(task + QStringLiteral("/comm")));
        QFile status(tasks.filePath(task + QStringLiteral("/status")));
        if (!name.open(QIODevice::ReadOnly) || name.readAll().trimmed() != "clipboard" ||
            !status.open(QIODevice::ReadOnly))
            continue;
        static const QRegularExpression count(
            QStringLiteral("\nvoluntary_ctxt_switches:\\s*(\\d+)"));
        return count.match(QString::fromLatin1(status.readAll())).captured(1).toInt();
    }
    return -1;
}

/// Private memory in bytes.
qint64 privateMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    static const QRegularExpression size(QStringLiteral("RssAnon:\\s*(\\d+) kB"));
    return size.match(QString::fromLatin1(status.readAll())).captured(1).toLongLong() * 1024;
}

} // namespace

class TestX11Pasteboard final : public test::PasteboardTest {
    Q_OBJECT

private Q_SLOTS:
    void pictureIsReadByOthers_data()
    {
        QTest::addColumn<qsizetype>("size");
        QTest::newRow("20 bytes") << qsizetype(20);
        QTest::newRow("one chunk exactly") << qsizetype(256 * 1024);
        QTest::newRow("a byte more") << qsizetype(256 * 1024 + 4);
        QTest::newRow("whole chunks") << 2 * kMega;
        QTest::newRow("30 MB") << 30 * kMega;
    }
    void pictureIsReadByOthers()
    {
        QFETCH(qsizetype, size);
        const QByteArray png = noise(size);
        QVERIFY(setPicture(png, nothing));
        SelectionReader reader(display());
        QVERIFY(reader.read("image/png") == png);
        QVERIFY(pastedByXclip(QStringLiteral("image/png")) == png);
    }

    void offersPngBeforeTiff()
    {
        QVERIFY(setPicture("png", nothing));
        SelectionReader reader(display());
        const QList<QByteArray> expected{"TARGETS",      "TIMESTAMP", "MULTIPLE",
                                         "SAVE_TARGETS", "image/png", "image/tiff"};
        QCOMPARE(reader.targets(), expected);
        QVERIFY(setPicture({}, nothing));
        QVERIFY(!reader.targets().contains("image/png"));
        QVERIFY(!reader.read("image/png"));
        QVERIFY(!reader.read("UTF8_STRING"));
    }

    void newestContentWins()
    {
        SelectionReader reader(display());
        for (int i = 0; i < 50; ++i) {
            const QByteArray png = "picture " + QByteArray::number(i);
            QVERIFY(setPicture(png, nothing));
            QCOMPARE(reader.read("image/png"), png);
        }
    }

    void takesOverFromAnotherProgramAndLosesToIt()
    {
        SelectionReader reader(display());
        for (int i = 0; i < 5; ++i) {
            QVERIFY(copiedByXclip("theirs"));
            QTRY_COMPARE(reader.read("UTF8_STRING"), QByteArray("theirs"));
            QVERIFY(setPicture("ours", nothing));
            QCOMPARE(reader.read("image/png"), QByteArray("ours"));
        }
    }

    void textIsReadInEveryKind_data()
    {
        QTest::addColumn<QByteArray>("target");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray utf8("ma\u00f1ana \u2192 5 \u20ac");
        QTest::newRow("UTF8_STRING") << QByteArray("UTF8_STRING") << utf8;
        QTest::newRow("text/plain") << QByteArray("text/plain") << utf8;
        QTest::newRow("with charset") << QByteArray("text/plain;charset=utf-8") << utf8;
        QTest::newRow("TEXT") << QByteArray("TEXT") << utf8;
        QTest::newRow("Latin 1 as far as it goes") << QByteArray("STRING")
                                                   << QByteArray("ma\xf1"
                                                                 "ana ? 5 ?");
    }
    void textIsReadInEveryKind()
    {
        QFETCH(QByteArray, target);
        QVERIFY(setText(QStringLiteral("mañana → 5 €")));
        SelectionReader reader(display());
        QTEST(reader.read(target).value_or("refused"), "bytes");
    }

    void tiffIsMadeOnceWhenFirstAskedForAndNobodyWaitsForIt()
    {
        auto gate = std::make_shared<QSemaphore>();
        auto made = std::make_shared<std::atomic_int>(0);
        QVERIFY(setPicture("png", [gate, made] {
            ++*made;
            gate->acquire();
            return QByteArray("tiff");
        }));
        SelectionReader first(display());
        SelectionReader second(display());
        SelectionReader third(display());
        QCOMPARE(third.read("image/png"), QByteArray("png"));
        QCOMPARE(made->load(), 0);
        first.ask("image/tiff");
        second.ask("image/tiff");
        QCOMPARE(third.read("image/png"), QByteArray("png"));
        QTRY_COMPARE(made->load(), 1);
        gate->release();
        QCOMPARE(first.answer(), QByteArray("tiff"));
        QCOMPARE(second.answer(), QByteArray("tiff"));
        QCOMPARE(third.read("image/tiff"), QByteArray("tiff"));
        QCOMPARE(made->load(), 1);
    }

    void tiffThatCannotBeMadeIsRefused()
    {
        QVERIFY(setPicture("png", nothing));
        SelectionReader reader(display());
        QVERIFY(!reader.read("image/tiff"));
        QVERIFY(!reader.read("image/tiff"));
    }

    void tiffAskedForBeforeALossStillComes()
    {
        auto gate = std::make_shared<QSemaphore>();
        QVERIFY(setPicture("png", [gate] {
            gate->acquire();
            return QByteArray("tiff");
        }));
        SelectionReader reader(display());
        reader.ask("image/tiff");
        SelectionReader other(display());
        QCOMPARE(other.read("image/png"), QByteArray("png"));
        QVERIFY(setText(QStringLiteral("newer")));
        gate->release();
        QCOMPARE(reader.answer(), QByteArray("tiff"));
    }

    void severalAreAskedForAtOnce()
    {
        QVERIFY(setPicture("png", [] { return QByteArray("tiff"); }));
        SelectionReader reader(display());
        const QList<std::optional<QByteArray>> expected{QByteArray("png"), QByteArray("tiff"),
                                                        std::nullopt};
        QCOMPARE(reader.readMultiple({"image/png", "image/tiff", "image/bmp"}), expected);
    }

    void transferFinishesWithTheContentItBeganWith()
    {
        const QByteArray older = noise(3 * kMega);
        QVERIFY(setPicture(older, nothing));
        SelectionReader slow(display());
        slow.ask("image/png");
        QVERIFY(slow.beginPieces());
        const QByteArray newer = noise(2 * kMega);
        QVERIFY(setPicture(newer, nothing));
        SelectionReader quick(display());
        QVERIFY(quick.read("image/png") == newer);
        QVERIFY(slow.finishPieces() == older);
        QVERIFY(slow.read("image/png") == newer);
    }

    void requestorThatDiesDoesNoHarm()
    {
        const QByteArray png = noise(4 * kMega);
        QVERIFY(setPicture(png, nothing));
        for (int i = 0; i < 3; ++i) {
            SelectionReader mortal(display());
            mortal.ask("image/png");
            QVERIFY(mortal.beginPieces());
        }
        // Connected before the other dies: the server gives a new client the dead one's window ids,
        // and with them what was meant for it.
        SelectionReader reader(display());
        SelectionReader(display()).ask("image/png");
        QVERIFY(reader.read("image/png") == png);
    }

    void sleepsWhenNobodyAsks()
    {
        QVERIFY(setPicture(noise(2 * kMega), nothing));
        SelectionReader reader(display());
        QVERIFY(reader.read("image/png"));
        QTest::qWait(200);
        const int before = wakeUps();
        QVERIFY(before > 0);
        QTest::qWait(1000);
        QCOMPARE(wakeUps(), before);
    }

    void memoryIsGivenBackAfterALoss()
    {
        QVERIFY(setText(QStringLiteral("small")));
        const qint64 before = privateMemory();
        QVERIFY(setPicture(noise(48 * kMega), nothing));
        QVERIFY(privateMemory() > before + 40 * kMega);
        QVERIFY(copiedByXclip("theirs"));
        QTRY_VERIFY(privateMemory() < before + 4 * kMega);
    }

    void destroyingItGivesTheClipboardUp()
    {
        auto gate = std::make_shared<QSemaphore>();
        QVERIFY(setPicture(noise(kMega), [gate] {
            gate->acquire();
            return QByteArray("tiff");
        }));
        SelectionReader reader(display());
        reader.ask("image/tiff");
        SelectionReader slow(display());
        slow.ask("image/png");
        QVERIFY(slow.beginPieces());
        m_pasteboard.reset();
        gate->release();
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(!slow.read("image/png"));
        m_pasteboard = makePasteboard();
    }
};

BRINDLECAM_TEST(TestX11Pasteboard);

} // namespace brindlecam

#include "tst_x11_pasteboard.moc"
