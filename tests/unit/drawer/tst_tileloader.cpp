#include "DrawerFixture.h"
#include "drawer/TileLoader.h"
#include "support/TestCase.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace brindlecam {

using test::DrawerFixture;

namespace {

constexpr QSize kLarge(640, 640); // the size that is kept of each capture

} // namespace

class TestTileLoader final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void listsTheHistoryNewestFirstWithItsTimes()
    {
        DrawerFixture f;
        const QString older = f.add();
        const QString newer = f.add();
        const QDateTime time(QDate(2025, 1, 2), QTime(3, 4));
        QFile file(older);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
        file.close();
        TileLoader loader(f.history.folders(), f.executor);
        std::optional<std::vector<TileLoader::Entry>> entries;
        loader.list([&](std::vector<TileLoader::Entry> all) { entries = std::move(all); });
        QVERIFY(!entries);
        test::sendAllPostedEvents();
        QVERIFY(entries);
        QCOMPARE(entries->size(), std::size_t(2));
        QCOMPARE(entries->at(0).path, newer);
        QCOMPARE(entries->at(1).path, older);
        QCOMPARE(entries->at(1).written, time);
    }

    void aHistoryThatIsNoFolderIsEmpty()
    {
        DrawerFixture f;
        test::put(f.history.folder());
        TileLoader loader(f.history.folders(), f.executor);
        std::optional<std::size_t> count;
        loader.list([&](const std::vector<TileLoader::Entry>& all) { count = all.size(); });
        test::sendAllPostedEvents();
        QCOMPARE(count, std::size_t(0));
    }

    void asksForThumbnailsInTheirOrderOneByOne()
    {
        DrawerFixture f;
        test::GatedExecutor gate;
        std::vector<TileLoader::Entry> entries;
        for (int i = 0; i < 3; ++i)
            entries.push_back({f.add({10 + i, 10}), {}});
        TileLoader loader(f.history.folders(), gate.executor());
        std::map<std::size_t, QSize> loaded;
        loader.load(entries, {194, 114}, [&](std::size_t index, std::optional<Thumbnail> made) {
            loaded[index] = made ? made->pixels : QSize();
        });
        QCOMPARE(gate.jobs.size(), std::size_t(3));
        gate.run(0);
        test::sendAllPostedEvents();
        QCOMPARE(loaded.size(), std::size_t(1));
        QCOMPARE(loaded.at(0), QSize(10, 10));
        gate.run(1);
        gate.run(0);
        test::sendAllPostedEvents();
        QCOMPARE(loaded.at(1), QSize(11, 10));
        QCOMPARE(loaded.at(2), QSize(12, 10));
    }

    void decodesOnlyWhatIsNotKeptAndOnceThatIsWanted()
    {
        DrawerFixture f;
        const std::vector<TileLoader::Entry> entries{
            {f.add(), {}}, {f.addWithoutThumbnail(), {}}, {f.addWithoutThumbnail(), {}}};
        test::GatedExecutor gate;
        TileLoader loader(f.history.folders(), gate.executor());
        std::vector<std::pair<std::size_t, bool>> told;
        loader.load(entries, kLarge, [&](std::size_t index, const std::optional<Thumbnail>& made) {
            told.emplace_back(index, made.has_value());
        });
        gate.run(0);
        gate.run(0);
        test::sendAllPostedEvents();
        using Told = decltype(told);
        QCOMPARE(std::exchange(told, {}), (Told{{0, true}, {1, false}}));
        QCOMPARE(gate.jobs.size(), std::size_t(1)); // to look for the third
        loader.decodeMissing();
        QCOMPARE(gate.jobs.size(), std::size_t(2));
        gate.run(0);
        test::sendAllPostedEvents();
        QCOMPARE(std::exchange(told, {}), (Told{{2, false}}));
        QCOMPARE(gate.jobs.size(), std::size_t(2));
        gate.run(0);
        gate.run(0);
        test::sendAllPostedEvents();
        QCOMPARE(told, (Told{{1, true}, {2, true}}));
    }

    void tellsOfThoseThatHaveNone()
    {
        DrawerFixture f;
        TileLoader loader(f.history.folders(), f.executor);
        bool told = false;
        loader.load({{QStringLiteral("/none.png"), {}}}, {194, 114},
                    [&told](std::size_t, const std::optional<Thumbnail>& made) { told = !made; });
        test::sendAllPostedEvents();
        QVERIFY(told);
    }

    void whatIsMadeIsKeptAfterwardsUnlessItIsGone()
    {
        for (const bool gone : {false, true}) {
            DrawerFixture f;
            const QString entry = f.add({400, 300});
            const QString kept = f.folder.filePath(QStringLiteral("miniaturas"));
            QCOMPARE(test::filesIn(kept).size(), 1);
            test::GatedExecutor gate;
            auto loader = std::make_unique<TileLoader>(f.history.folders(), gate.executor());
            bool loaded = false;
            loader->load(
                {{entry, {}}}, {194, 114},
                [&loaded](std::size_t, const std::optional<Thumbnail>&) { loaded = true; });
            gate.run(0);
            test::sendAllPostedEvents();
            QVERIFY(loaded);
            QCOMPARE(test::filesIn(kept).size(), 1);
            if (gone)
                loader.reset();
            QCOMPARE(gate.jobs.size(), std::size_t(1));
            gate.run(0);
            QCOMPARE(test::filesIn(kept).size(), gone ? 1 : 2);
        }
    }

    void decodesNothingMoreOnceItIsGone()
    {
        DrawerFixture f;
        const QString entry = f.addWithoutThumbnail();
        const QString kept = f.folder.filePath(QStringLiteral("miniaturas"));
        test::GatedExecutor gate;
        auto loader = std::make_unique<TileLoader>(f.history.folders(), gate.executor());
        loader->decodeMissing();
        loader->load({{entry, {}}}, {194, 114}, [](std::size_t, const auto&) {});
        gate.run(0);
        test::sendAllPostedEvents();
        QCOMPARE(gate.jobs.size(), std::size_t(1)); // to decode it
        loader.reset();
        gate.run(0);
        QVERIFY(test::filesIn(kept).isEmpty());
    }

    void answersNobodyOnceItIsGone()
    {
        DrawerFixture f;
        test::GatedExecutor gate;
        auto loader = std::make_unique<TileLoader>(f.history.folders(), gate.executor());
        bool told = false;
        loader->list([&told](const auto&) { told = true; });
        loader->load({{f.add(), {}}}, {194, 114},
                     [&told](std::size_t, const auto&) { told = true; });
        loader.reset();
        gate.run(0);
        gate.run(0);
        test::sendAllPostedEvents();
        QVERIFY(!told);
    }
};

BRINDLECAM_TEST(TestTileLoader);

} // namespace brindlecam

#include "tst_tileloader.moc"
