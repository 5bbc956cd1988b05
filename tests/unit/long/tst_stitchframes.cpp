#include "PixelRows.h"
#include "support/TestCase.h"

#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

namespace brindlecam {

namespace {

using test::FramedPage;
using test::PixelRows;

constexpr int kWidth = 120;
constexpr int kHeight = 240;

QImage imageOf(const PixelRows& rows)
{
    return QImage(rows.bytes().data(), rows.width(), rows.rows(), rows.width() * 4,
                  QImage::Format_RGB32)
        .copy();
}

struct Outcome {
    int code = -1;
    QString told;
};

Outcome run(const QStringList& arguments)
{
    QProcess tool;
    tool.start(QStringLiteral(BRINDLECAM_STITCH_FRAMES), arguments);
    if (!tool.waitForFinished() || tool.exitStatus() != QProcess::NormalExit)
        return {};
    return {tool.exitCode(), QString::fromUtf8(tool.readAllStandardError())};
}

} // namespace

/// The program of tools/stitch.
class TestStitchFrames final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        std::mt19937 random(33);
        m_page.header = PixelRows::patches(kWidth, 20, random);
        m_page.page = PixelRows::patches(kWidth, 600, random);
        m_page.footer = PixelRows::patches(kWidth, 10, random);
        for (const int offset : {0, 60, 300})
            QVERIFY(imageOf(m_page.frame(offset)).save(frame(offset)));
    }

    void stitchesTwoFramesAndTellsOfThem()
    {
        const Outcome outcome = run({QStringLiteral("--out"), out(), frame(0), frame(60)});
        QCOMPARE(outcome.code, 0);
        QCOMPARE(outcome.told, QStringLiteral("d=60 costo=0.00 top=20 bottom=10\n"));
        const QImage picture(out());
        QCOMPARE(picture.convertToFormat(QImage::Format_RGB32), imageOf(m_page.stitched(60)));
    }

    void tellsOfFramesThatAddNothing()
    {
        const Outcome outcome =
            run({QStringLiteral("--out"), out(), frame(0), frame(0), frame(300)});
        QCOMPARE(outcome.code, 0);
        QCOMPARE(outcome.told, QStringLiteral("still\nlost: mejor costo -1.0 top 20 bottom 10\n"));
        QCOMPARE(QImage(out()).convertToFormat(QImage::Format_RGB32), imageOf(m_page.frame(0)));
    }

    void wrongArgumentsEndWith64_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("none") << QStringList{};
        QTest::newRow("no frame") << QStringList{QStringLiteral("--out"), out()};
        QTest::newRow("no file") << QStringList{frame(0)};
        QTest::newRow("--out in the end") << QStringList{frame(0), QStringLiteral("--out")};
        QTest::newRow("unknown option")
            << QStringList{QStringLiteral("--out"), out(), QStringLiteral("--fast"), frame(0)};
    }
    void wrongArgumentsEndWith64()
    {
        QFETCH(const QStringList, arguments);
        const Outcome outcome = run(arguments);
        QCOMPARE(outcome.code, 64);
        QCOMPARE(outcome.told, QStringLiteral("stitch_frames: uso: stitch_frames --out ARCHIVO "
                                              "FOTOGRAMA...\n"));
    }

    void framesItCannotTakeEndWith1()
    {
        const QString other = m_folder.filePath(QStringLiteral("other.png"));
        QVERIFY(imageOf(m_page.frame(0).cut(0, 100)).save(other));
        const QString wanted = m_folder.filePath(QStringLiteral("wanted.png"));
        QCOMPARE(run({QStringLiteral("--out"), wanted, frame(0), other}).code, 1);
        QCOMPARE(run({QStringLiteral("--out"), wanted, wanted}).code, 1);
        QVERIFY(!QFileInfo::exists(wanted));
    }

private:
    [[nodiscard]] QString frame(int offset) const
    {
        return m_folder.filePath(QStringLiteral("frame%1.png").arg(offset));
    }
    [[nodiscard]] QString out() const { return m_folder.filePath(QStringLiteral("out.png")); }

    QTemporaryDir m_folder;
    FramedPage m_page{PixelRows(kWidth), PixelRows(kWidth), PixelRows(kWidth), kHeight};
};

BRINDLECAM_TEST(TestStitchFrames);

} // namespace brindlecam

#include "tst_stitchframes.moc"
