#include "base/WholeFile.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>
#include <optional>

#include <sys/stat.h>

namespace brindlecam {

namespace {

/// A disk with a bad sector: it can be read up to there.
class BrokenDevice final : public QIODevice {
public:
    explicit BrokenDevice(qint64 readable)
        : m_readable(readable)
    {
    }
    [[nodiscard]] qint64 size() const override { return 2 * m_readable; }

protected:
    qint64 readData(char* data, qint64 count) override
    {
        const qint64 given = std::min(count, m_readable - m_given);
        if (given == 0)
            return -1;
        std::fill_n(data, given, 'r');
        m_given += given;
        return given;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    qint64 m_readable;
    qint64 m_given = 0;
};

void addSizes()
{
    QTest::addColumn<int>("size");
    QTest::newRow("one byte") << 1;
    QTest::newRow("small") << 700;
    QTest::newRow("just below a buffer") << 16 * 1024 - 1;
    QTest::newRow("large") << 200'000;
}

} // namespace

class TestWholeFile final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_place = std::make_unique<QTemporaryDir>(); }

    void bytesReplaceWhatWasThere_data() { addSizes(); }
    void bytesReplaceWhatWasThere()
    {
        QFETCH(int, size);
        const QByteArray bytes(size, 'n');
        QVERIFY(writeWhole(file(), bytes));
        QCOMPARE(test::contentOf(file()), bytes);
        QVERIFY(writeWhole(file(), "and again"));
        QCOMPARE(test::contentOf(file()), QByteArray("and again"));
        QCOMPARE(allFiles().size(), 1);
    }

    void nothingAtAllIsAFileToo()
    {
        test::put(file(), "before");
        QVERIFY(writeWhole(file(), {}));
        QCOMPARE(test::contentOf(file()), QByteArray());
    }

    void whereNoFileMayGrowTheOldOneStays_data() { addSizes(); }
    void whereNoFileMayGrowTheOldOneStays()
    {
        QFETCH(int, size);
        test::put(file(), "before");
        {
            const test::FileSizeLimit limit(0);
            QVERIFY(!writeWhole(file(), QByteArray(size, 'n')));
            QVERIFY(!writeWhole(m_place->filePath(QStringLiteral("new")), QByteArray(size, 'n')));
        }
        QCOMPARE(test::contentOf(file()), QByteArray("before"));
        QCOMPARE(allFiles().size(), 1);
    }

    void onAFullDiskTheOldFileStays_data() { addSizes(); }
    void onAFullDiskTheOldFileStays()
    {
        QFETCH(int, size);
        test::SmallDisk disk(m_place->path());
        if (!disk.isMounted())
            QSKIP("nobody but the superuser may mount a disk");
        test::put(file(), "before");
        disk.fill();
        const QStringList before = allFiles();
        QVERIFY(!writeWhole(file(), QByteArray(size, 'n')));
        QVERIFY(!writeWhole(m_place->filePath(QStringLiteral("new")), QByteArray(size, 'n')));
        QCOMPARE(test::contentOf(file()), QByteArray("before"));
        QCOMPARE(allFiles(), before);
    }

    void aLinkIsReplacedAndWhatItPointsAtStays()
    {
        const QString precious = m_place->filePath(QStringLiteral("precious.txt"));
        test::put(precious, "precious");
        QVERIFY(QFile::link(precious, file()));
        QVERIFY(writeWhole(file(), "picture"));
        QCOMPARE(test::contentOf(precious), QByteArray("precious"));
        QVERIFY(!QFileInfo(file()).isSymLink());
        QCOMPARE(test::contentOf(file()), QByteArray("picture"));
    }

    void aLinkToNowhereIsReplacedAndNothingAppearsThere()
    {
        const QString nowhere = m_place->filePath(QStringLiteral("nowhere"));
        QVERIFY(QFile::link(nowhere, file()));
        QVERIFY(writeWhole(file(), "picture"));
        QVERIFY(!QFileInfo::exists(nowhere));
        QCOMPARE(test::contentOf(file()), QByteArray("picture"));
    }

    void whoMayReadIsSaidOrKept_data()
    {
        QTest::addColumn<Readers>("readers");
        QTest::addColumn<int>("before"); // -1: there is no file
        QTest::addColumn<int>("mask");
        QTest::addColumn<int>("after");
        QTest::newRow("new, as the umask says") << Readers::usual << -1 << 0027 << 0640;
        QTest::newRow("replaced, as it was") << Readers::usual << 0604 << 0077 << 0604;
        QTest::newRow("replaced, for reading alone") << Readers::usual << 0444 << 0022 << 0444;
        QTest::newRow("new, its owner's") << Readers::ownerOnly << -1 << 0000 << 0600;
        QTest::newRow("the umask hides it even from its owner")
            << Readers::ownerOnly << -1 << 0277 << 0600;
        QTest::newRow("replaced, its owner's") << Readers::ownerOnly << 0666 << 0022 << 0600;
    }
    void whoMayReadIsSaidOrKept()
    {
        QFETCH(Readers, readers);
        QFETCH(int, before);
        QFETCH(int, mask);
        if (before >= 0) {
            test::put(file(), "before");
            test::setMode(file(), before);
        }
        if (!QFileInfo(file()).isWritable() && before >= 0)
            QSKIP("only the superuser replaces what may not be written");
        const test::Umask usual(mask);
        QVERIFY(writeWhole(file(), "after", readers));
        QCOMPARE(test::contentOf(file()), QByteArray("after"));
        QTEST(test::modeOf(file()), "after");
    }

    void aReplacedLinkTakesNoPermissionsFromWhereItLed()
    {
        const QString target = m_place->filePath(QStringLiteral("target"));
        test::put(target, "target");
        test::setMode(target, 0666);
        QVERIFY(QFile::link(target, file()));
        const test::Umask strict(0077);
        QVERIFY(writeWhole(file(), "after"));
        QCOMPARE(test::modeOf(file()), 0600);
    }

    void whatIsNoFileIsNeverReplaced()
    {
        QVERIFY(QDir().mkpath(file()));
        QVERIFY(!writeWhole(file(), "bytes"));
        QVERIFY(QFileInfo(file()).isDir());

        const QString pipe = m_place->filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(qUtf8Printable(pipe), 0600), 0);
        QVERIFY(!writeWhole(pipe, "bytes"));
        struct stat status {};
        QCOMPARE(stat(qUtf8Printable(pipe), &status), 0);
        QVERIFY(S_ISFIFO(status.st_mode));
        QCOMPARE(allFiles(), QStringList{QStringLiteral("pipe")});
    }

    void aMissingFolderIsNotMade()
    {
        const QString path = m_place->filePath(QStringLiteral("nowhere/file"));
        QVERIFY(!writeWhole(path, "bytes"));
        QVERIFY(!QFileInfo::exists(QFileInfo(path).path()));
    }

    void keepingFromOthersLeavesTheOwnersRights_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("after");
        QTest::newRow("everybody's") << 0666 << 0600;
        QTest::newRow("a folder's") << 0755 << 0700;
        QTest::newRow("protected") << 0444 << 0400;
        QTest::newRow("private") << 0600 << 0600;
    }
    void keepingFromOthersLeavesTheOwnersRights()
    {
        QFETCH(int, before);
        test::put(file(), "bytes");
        test::setMode(file(), before);
        keepFromOthers(file());
        QTEST(test::modeOf(file()), "after");
    }

    void allOfAFileIsRead_data() { addSizes(); }
    void allOfAFileIsRead()
    {
        QFETCH(int, size);
        const QByteArray bytes(size, 'r');
        test::put(file(), bytes);
        QFile device(file());
        QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        QCOMPARE(readWhole(device), std::optional(bytes));
    }

    void aReadErrorInTheMiddleIsNoEnd()
    {
        // What can be read first is more than any buffer holds.
        BrokenDevice device(100'000);
        QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        QVERIFY(!readWhole(device));
    }

    void aReadErrorAtTheStartIsNoEmptyFile()
    {
        QFile device(QStringLiteral("/proc/self/mem"));
        QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        QVERIFY(!readWhole(device));
    }

private:
    [[nodiscard]] QString file() const { return m_place->filePath(QStringLiteral("file.bin")); }
    [[nodiscard]] QStringList allFiles() const { return test::filesIn(m_place->path()); }

    std::unique_ptr<QTemporaryDir> m_place = std::make_unique<QTemporaryDir>();
};

BRINDLECAM_TEST(TestWholeFile);

} // namespace brindlecam

#include "tst_wholefile.moc"
