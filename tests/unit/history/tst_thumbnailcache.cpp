// Covers ThumbnailCache.
#include "HistoryFixture.h"
#include "base/UnfinishedFiles.h"
#include "history/ThumbnailCache.h"
#include "pictures/PngWriter.h"
#include "support/LockedFolder.h"
#include "support/TestCase.h"

#include <QDir>

namespace brindlecam {

namespace {

QImage plainPicture(QSize size, QRgb colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

QByteArray pngOf(const QImage& image)
{
    return PngWriter::encode(image, {.cancelled = {}});
}

constexpr QRgb kThumbnailGreen = 0xff2eb34d;
constexpr QSize kAnySize(640, 640);

} // namespace

/// The thumbnails of a history: made when a capture comes in, or when they are asked for.
class TestThumbnailCache final : public test::TestCase, private test::HistoryFixture {
    Q_OBJECT

private:
    /// An entry whose thumbnail could be told from its own picture.
    void add(QRgb thumbnail = kThumbnailGreen)
    {
        history().add(pngOf(plainPicture({1280, 720}, qRgb(1, 2, 3))), kPng,
                      plainPicture({1280, 720}, thumbnail));
        ++milliseconds;
    }
    [[nodiscard]] QString newest() const { return history().items().constFirst(); }
    void removeLargeOnes() const
    {
        const QStringList all = test::filesIn(thumbnails());
        for (const QString& name : all.filter(QStringLiteral("-640x640.png")))
            QVERIFY(QFile::remove(thumbnails() + QLatin1Char('/') + name));
    }
    [[nodiscard]] QColor shown(QSize most = kAnySize) const
    {
        const auto thumbnail = history().thumbnail(newest(), most);
        return thumbnail ? thumbnail->image.pixelColor(0, 0) : QColor();
    }

private Q_SLOTS:
    void cleanup() { startFresh(); }

    void isMadeOfThePictureThatIsAdded()
    {
        add();
        QCOMPARE(test::filesIn(thumbnails()).size(), 1);
        const auto thumbnail = history().thumbnail(newest(), kAnySize);
        QVERIFY(thumbnail);
        QCOMPARE(thumbnail->image.size(), QSize(640, 360));
        QCOMPARE(thumbnail->pixels, QSize(1280, 720));
        QCOMPARE(thumbnail->image.pixelColor(5, 5), QColor(kThumbnailGreen)); // and not decoded
    }

    void isAsSmallAsAskedFor()
    {
        add();
        const auto thumbnail = history().thumbnail(newest(), {194, 114});
        QVERIFY(thumbnail);
        QCOMPARE(thumbnail->image.size(), QSize(194, 109));
        QCOMPARE(thumbnail->pixels, QSize(1280, 720));
        QCOMPARE(shown({5000, 5000}), QColor(kThumbnailGreen));
    }

    void whatIsMissingIsDecodedAndKept()
    {
        history().add(pngOf(plainPicture({1280, 720}, kThumbnailGreen)), kPng);
        QVERIFY(test::filesIn(thumbnails()).isEmpty());
        QCOMPARE(shown({194, 114}), QColor(kThumbnailGreen));
        QCOMPARE(test::filesIn(thumbnails()).size(), 2); // the large one, too
        const auto again = history().thumbnail(newest(), kAnySize);
        QVERIFY(again);
        QCOMPARE(again->image.size(), QSize(640, 360));
        QCOMPARE(again->pixels, QSize(1280, 720));
    }

    void anyOtherSizeIsMadeOfTheLargeOneAndKept()
    {
        add();
        const auto made = history().thumbnail(newest(), {194, 114});
        QVERIFY(made);
        QCOMPARE(test::filesIn(thumbnails()).size(), 2);
        // The next time it is read, and nothing else.
        removeLargeOnes();
        const auto read = history().thumbnail(newest(), {194, 114});
        QVERIFY(read);
        QCOMPARE(read->image, made->image);
        QCOMPARE(read->pixels, QSize(1280, 720));
        QCOMPARE(test::filesIn(thumbnails()).size(), 1);
    }

    void whatIsMadeIsKeptWhereItIsSaid()
    {
        history().add(pngOf(plainPicture({1280, 720}, kThumbnailGreen)), kPng);
        std::vector<std::function<void()>> later;
        const auto made = history().thumbnail(
            newest(), {194, 114}, [&later](const auto& work) { later.push_back(work); });
        QVERIFY(made);
        QVERIFY(test::filesIn(thumbnails()).isEmpty());
        QCOMPARE(later.size(), std::size_t(2));
        for (const auto& keep : later)
            keep();
        QCOMPARE(test::filesIn(thumbnails()).size(), 2);
    }

    void whoeverAsksForWhatIsKeptWaitsForNoDecoding()
    {
        history().add(pngOf(plainPicture({1280, 720}, kThumbnailGreen)), kPng);
        QVERIFY(!history().keptThumbnail(newest(), {194, 114}));
        QVERIFY(test::filesIn(thumbnails()).isEmpty());
        add();
        const auto made = history().keptThumbnail(newest(), {194, 114}); // of the large one
        QVERIFY(made);
        QCOMPARE(made->image.size(), QSize(194, 109));
        QVERIFY(!history().keptThumbnail(folder() + QStringLiteral("/gone.png"), kAnySize));
    }

    void anEntryThatHasChangedIsDecodedAnew()
    {
        add();
        QCOMPARE(shown({194, 114}), QColor(kThumbnailGreen));
        const QString entry = newest();
        const QByteArray other = pngOf(plainPicture({100, 50}, qRgb(9, 9, 9)));
        test::put(entry, other);
        const auto thumbnail = history().thumbnail(entry, kAnySize);
        QVERIFY(thumbnail);
        QCOMPARE(thumbnail->pixels, QSize(100, 50));
        QCOMPARE(thumbnail->image.pixelColor(0, 0), QColor(9, 9, 9));
        QCOMPARE(test::filesIn(thumbnails()).size(), 1); // those before are gone
    }

    void anEntryWrittenAtAnotherTimeIsDecodedAnew()
    {
        add();
        const QDateTime later = QDateTime::currentDateTime().addSecs(60);
        QFile file(newest());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(later, QFileDevice::FileModificationTime));
        file.close();
        QCOMPARE(shown(), QColor(1, 2, 3));
    }

    void aDamagedOneIsReplaced()
    {
        add();
        const QString kept = thumbnails() + QLatin1Char('/') + test::filesIn(thumbnails()).front();
        for (const QByteArray& content :
             {QByteArray(), QByteArray("basura"), test::contentOf(kept).left(60)}) {
            test::put(kept, content);
            QCOMPARE(shown(), QColor(1, 2, 3));
            QCOMPARE(test::filesIn(thumbnails()).size(), 1);
            QVERIFY(test::contentOf(kept).startsWith("\x89PNG"));
        }
    }

    void entriesThatAreNoPicturesHaveNone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("text") << QByteArray("no es una imagen");
        QTest::newRow("half of one") << pngOf(plainPicture({300, 300}, kThumbnailGreen)).left(100);
    }
    void entriesThatAreNoPicturesHaveNone()
    {
        QFETCH(QByteArray, bytes);
        history().add(bytes, kPng);
        QVERIFY(!history().thumbnail(newest(), kAnySize));
        QVERIFY(test::filesIn(thumbnails()).isEmpty());
        QVERIFY(!history().thumbnail(folder() + QStringLiteral("/gone.png"), kAnySize));
    }

    void goWithTheirEntries()
    {
        for (int i = 0; i < 22; ++i) {
            add();
            QCOMPARE(shown({194, 114}), QColor(kThumbnailGreen));
        }
        QCOMPARE(test::filesIn(thumbnails()).size(), 2 * 20); // of both sizes
        history().remove(newest());
        QCOMPARE(test::filesIn(folder()).size(), 19);
        QCOMPARE(test::filesIn(thumbnails()).size(), 2 * 19);
        // Also with one that is gone already.
        const QString gone = newest();
        QVERIFY(QFile::remove(gone));
        history().remove(gone);
        QCOMPARE(test::filesIn(thumbnails()).size(), 2 * 18);
        history().clear();
        QVERIFY(test::filesIn(thumbnails()).isEmpty());
    }

    void whatIsMadeOfAnEntryThatIsGoneByThenIsNotKept_data()
    {
        QTest::addColumn<bool>("replaced");
        QTest::newRow("gone") << false;
        QTest::newRow("another in its place") << true;
    }
    void whatIsMadeOfAnEntryThatIsGoneByThenIsNotKept()
    {
        QFETCH(bool, replaced);
        add();
        const QString entry = newest();
        const auto stamp = ThumbnailCache::stampOf(entry);
        const auto thumbnail = history().thumbnail(entry, kAnySize);
        QVERIFY(stamp && thumbnail);
        history().remove(entry);
        QVERIFY(test::filesIn(thumbnails()).isEmpty());
        if (replaced)
            test::put(entry, "something else");
        // As whoever was decoding it meanwhile would.
        ThumbnailCache(thumbnails()).store(entry, *stamp, kAnySize, *thumbnail);
        QVERIFY(test::filesIn(thumbnails()).isEmpty());
    }

    void clearingTakesHalfWrittenOnesAlong()
    {
        add();
        test::put(thumbnails() + QLatin1Char('/') + UnfinishedFiles::newName(), "half a picture");
        test::put(thumbnails() + QStringLiteral("/.brindlecam-foto.part"));
        history().clear();
        QCOMPARE(test::filesIn(thumbnails()), QStringList{QStringLiteral(".brindlecam-foto.part")});
    }

    void tidyingTakesThoseOfEntriesThatWentWithoutUs()
    {
        add();
        add();
        QVERIFY(QFile::remove(newest()));
        history().tidy();
        QCOMPARE(test::filesIn(thumbnails()).size(), 1);
    }

    void filesOfOthersStay()
    {
        add();
        const QStringList foreign{QStringLiteral("/readme.txt"), QStringLiteral("/foto.png"),
                                  QStringLiteral("/20260314-092653-000.png"),
                                  QStringLiteral("/20260314-092653-000.png.a-b-cxd-exf.png"),
                                  QStringLiteral("/..png.1-2-3x4-5x6.png")};
        for (const QString& name : foreign)
            test::put(thumbnails() + name);
        history().clear();
        for (const QString& name : foreign)
            QCOMPARE(test::contentOf(thumbnails() + name), QByteArray("by hand"));
        QCOMPARE(test::filesIn(thumbnails()).size(), foreign.size());
    }

    void aFolderThatCannotBeUsedCostsTheThumbnailsOnly_data()
    {
        QTest::addColumn<QString>("fault");
        for (const char* fault : {"a file in its place", "no place at all"})
            QTest::newRow(fault) << QString::fromLatin1(fault);
    }
    void aFolderThatCannotBeUsedCostsTheThumbnailsOnly()
    {
        QFETCH(QString, fault);
        QVERIFY(QDir().mkpath(place->filePath(QStringLiteral("cache/brindlecam"))));
        if (fault.startsWith(QLatin1Char('a')))
            test::put(thumbnails());
        const History broken(
            {folder(), fault.startsWith(QLatin1Char('a')) ? thumbnails() : QString()});
        QVERIFY(broken.add(pngOf(plainPicture({1280, 720}, kThumbnailGreen)), kPng,
                           plainPicture({1280, 720}, kThumbnailGreen)));
        const auto thumbnail = broken.thumbnail(broken.items().constFirst(), {64, 64});
        QVERIFY(thumbnail);
        QCOMPARE(thumbnail->image.size(), QSize(64, 36));
        broken.tidy();
        QCOMPARE(broken.clear(), 1);
    }

    void aReadOnlyFolderCostsTheThumbnailsOnly()
    {
        add();
        history().add(pngOf(plainPicture({1280, 720}, kThumbnailGreen)), kPng); // without one
        const QStringList kept = test::filesIn(thumbnails());
        // For the other user who reads now.
        test::setMode(folder(), 0777);
        for (const QString& item : history().items())
            test::setMode(item, 0644);
        test::setMode(thumbnails() + QLatin1Char('/') + kept.front(), 0644);
        const test::LockedFolder locked(thumbnails(), place->path());
        for (const QString& item : history().items()) {
            const auto thumbnail = history().thumbnail(item, {64, 64});
            QVERIFY(thumbnail);
            QCOMPARE(thumbnail->image.size(), QSize(64, 36));
            QCOMPARE(thumbnail->image.pixelColor(0, 0), QColor(kThumbnailGreen));
        }
        QCOMPARE(test::filesIn(thumbnails()), kept);
        QCOMPARE(history().clear(), 2);
        QVERIFY(history().items().isEmpty());
        QCOMPARE(test::filesIn(thumbnails()), kept);
    }

    void folderAndFilesAreTheirOwnersOnly()
    {
        const test::Umask open(0);
        add();
        QCOMPARE(test::modeOf(thumbnails()), 0700);
        QCOMPARE(
            test::modeOf(thumbnails() + QLatin1Char('/') + test::filesIn(thumbnails()).front()),
            0600);
    }

    void standardFolderLiesInTheUsersCache()
    {
        QVERIFY(
            ThumbnailCache::standardFolder().endsWith(QStringLiteral("/brindlecam/thumbnails")));
    }
};

BRINDLECAM_TEST(TestThumbnailCache);

} // namespace brindlecam

#include "tst_thumbnailcache.moc"
