#include "OutputFixture.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <memory>

namespace brindlecam {

namespace {

enum class Writer { captures, saveAs };

} // namespace

/// The files that deliveries leave, on disks that are full and in folders with links in them.
class TestOutputFiles final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_place = std::make_unique<QTemporaryDir>(); }

    void whereNoFileMayGrowNothingIsWritten_data() { addWritersAndSizes(); }
    void whereNoFileMayGrowNothingIsWritten()
    {
        QFETCH(Writer, writer);
        QFETCH(int, side);
        test::put(file(), "before");
        {
            const test::FileSizeLimit limit(0);
            write(writer, test::noise({side, side}), file());
            write(writer, test::noise({side, side}), m_place->filePath(QStringLiteral("new.png")));
        }
        QCOMPARE(test::contentOf(file()), QByteArray("before"));
        QCOMPARE(allFiles(), QStringList{QStringLiteral("captura.png")});
    }

    void onAFullDiskNothingIsWritten_data() { addWritersAndSizes(); }
    void onAFullDiskNothingIsWritten()
    {
        QFETCH(Writer, writer);
        QFETCH(int, side);
        test::SmallDisk disk(m_place->path());
        if (!disk.isMounted())
            QSKIP("nobody but the superuser may mount a disk");
        test::put(file(), "before");
        disk.fill();
        const QStringList before = allFiles();
        write(writer, test::noise({side, side}), file());
        write(writer, test::noise({side, side}), m_place->filePath(QStringLiteral("new.png")));
        QCOMPARE(test::contentOf(file()), QByteArray("before"));
        QCOMPARE(allFiles(), before);
    }

    void aLinkInTheFoldersIsReplaced_data()
    {
        QTest::addColumn<Writer>("writer");
        QTest::newRow("captures") << Writer::captures;
        QTest::newRow("save as") << Writer::saveAs;
    }
    void aLinkInTheFoldersIsReplaced()
    {
        QFETCH(Writer, writer);
        const QString precious = m_place->filePath(QStringLiteral("precious.txt"));
        test::put(precious, "precious");
        QVERIFY(QFile::link(precious, file()));
        write(writer, test::noise({3, 3}), file());
        QCOMPARE(test::contentOf(precious), QByteArray("precious"));
        QVERIFY(!QFileInfo(file()).isSymLink());
        QCOMPARE(QImage(file()).size(), QSize(3, 3));
    }

    void capturesAreReadableAsTheUmaskSays()
    {
        const test::Umask group(0027);
        write(Writer::captures, test::noise({3, 3}), file());
        QCOMPARE(test::modeOf(file()), 0640);
    }

private:
    static void addWritersAndSizes()
    {
        QTest::addColumn<Writer>("writer");
        QTest::addColumn<int>("side");
        QTest::newRow("captures, small") << Writer::captures << 3;
        QTest::newRow("captures, large") << Writer::captures << 200;
        QTest::newRow("save as, small") << Writer::saveAs << 3;
        QTest::newRow("save as, large") << Writer::saveAs << 200;
    }

    /// Returns when the file is there, or won't be.
    void write(Writer writer, const Rendered& picture, const QString& path)
    {
        test::OutputFixture elsewhere;
        Output& output = elsewhere.output;
        if (writer == Writer::captures)
            output.deliver(picture, {.saveTo = path});
        else
            output.writeFile(picture, path);
    }

    [[nodiscard]] QString file() const { return m_place->filePath(QStringLiteral("captura.png")); }
    [[nodiscard]] QStringList allFiles() const { return test::filesIn(m_place->path()); }

    std::unique_ptr<QTemporaryDir> m_place = std::make_unique<QTemporaryDir>();
};

BRINDLECAM_TEST(TestOutputFiles);

} // namespace brindlecam

#include "tst_outputfiles.moc"
