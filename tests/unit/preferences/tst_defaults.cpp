#include "preferences/Defaults.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTimeZone>

#include <thread>
#include <vector>

namespace brindlecam {

class TestDefaults final : public test::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;

    [[nodiscard]] QString file(const char* name) const
    {
        return m_folder.filePath(QString::fromLatin1(name));
    }

    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile out(path);
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }

    static QByteArray read(const QString& path)
    {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

private Q_SLOTS:
    void everyTypeSurvivesANewStart()
    {
        const QString path = file("deep/er/settings.json");
        const QDateTime moment(QDate(2026, 3, 14), QTime(9, 26, 53), Qt::UTC);
        {
            Defaults defaults(path);
            defaults.setBoolean(QStringLiteral("switch"), false);
            defaults.setNumber(QStringLiteral("number"), 0.4);
            defaults.setString(QStringLiteral("text"), QStringLiteral("ñandú/~"));
            defaults.setData(QStringLiteral("bytes"), QByteArray("\0\xff{", 3));
            defaults.setData(QStringLiteral("nothing"), QByteArray());
            defaults.setDate(QStringLiteral("moment"), moment.toTimeZone(QTimeZone(7200)));
        }
        const Defaults again(path);
        QCOMPARE(again.boolean(QStringLiteral("switch")), std::optional(false));
        QCOMPARE(again.number(QStringLiteral("number")), std::optional(0.4));
        QCOMPARE(again.string(QStringLiteral("text")), std::optional(QStringLiteral("ñandú/~")));
        QCOMPARE(again.data(QStringLiteral("bytes")), std::optional(QByteArray("\0\xff{", 3)));
        QCOMPARE(again.data(QStringLiteral("nothing")), std::optional(QByteArray()));
        QVERIFY(again.contains(QStringLiteral("nothing")));
        QCOMPARE(again.date(QStringLiteral("moment")), std::optional(moment));
    }

    void theFileIsOneFlatTypedObject()
    {
        const QString path = file("flat.json");
        {
            Defaults defaults(path);
            defaults.setBoolean(QStringLiteral("a"), true);
            defaults.setData(QStringLiteral("b"), QByteArray("hi"));
            defaults.setDate(QStringLiteral("c"),
                             QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53), Qt::UTC));
        }
        const QJsonObject expected{
            {QStringLiteral("a"), true},
            {QStringLiteral("b"), QJsonObject{{QStringLiteral("base64"), QStringLiteral("aGk=")}}},
            {QStringLiteral("c"),
             QJsonObject{{QStringLiteral("date"), QStringLiteral("2026-03-14T09:26:53Z")}}}};
        QCOMPARE(QJsonDocument::fromJson(read(path)).object(), expected);
        QCOMPARE(QDir(m_folder.path()).entryList({QStringLiteral("flat.json*")}).size(), 1);
    }

    void anotherTypeReadsAsAbsent()
    {
        const QString path = file("types.json");
        write(path,
              R"({"b": "true", "n": "1", "s": 1, "d": "aGk=", "o": {"base64": 1}, "z": null,
              "t": "2026-03-14T09:26:53Z", "u": {"date": 1}, "v": {"date": "ayer"}})");
        const Defaults defaults(path);
        QVERIFY(!defaults.boolean(QStringLiteral("b")));
        QVERIFY(!defaults.number(QStringLiteral("n")));
        QVERIFY(!defaults.string(QStringLiteral("s")));
        QVERIFY(!defaults.data(QStringLiteral("d")));
        QVERIFY(!defaults.data(QStringLiteral("o")));
        for (const char* key : {"t", "u", "v", "z"})
            QVERIFY(!defaults.date(QString::fromLatin1(key)));
        QVERIFY(!defaults.boolean(QStringLiteral("z")));
        QVERIFY(!defaults.contains(QStringLiteral("absent")));
    }

    void changesAreSavedAtOnce()
    {
        const QString path = file("once.json");
        Defaults defaults(path);
        defaults.setBoolean(QStringLiteral("a"), true);
        QTRY_COMPARE(Defaults(path).boolean(QStringLiteral("a")), std::optional(true));
        defaults.setBoolean(QStringLiteral("a"), false); // and again, when nothing is under way
        QTRY_COMPARE(Defaults(path).boolean(QStringLiteral("a")), std::optional(false));
    }

    void removedKeysAreGoneFromTheFileToo()
    {
        const QString path = file("removed.json");
        {
            Defaults defaults(path);
            defaults.setBoolean(QStringLiteral("a"), true);
            defaults.setBoolean(QStringLiteral("b"), true);
            defaults.remove(QStringLiteral("a"));
            QVERIFY(!defaults.contains(QStringLiteral("a")));
        }
        const Defaults again(path);
        QVERIFY(!again.contains(QStringLiteral("a")));
        QVERIFY(again.contains(QStringLiteral("b")));
    }

    void numbersThatJsonLacksAreIgnored()
    {
        Defaults defaults(file("finite.json"));
        defaults.setNumber(QStringLiteral("n"), 2);
        defaults.setNumber(QStringLiteral("n"), qQNaN());
        defaults.setNumber(QStringLiteral("n"), qInf());
        QCOMPARE(defaults.number(QStringLiteral("n")), std::optional(2.0));
    }

    void damagedFileIsSetAsideAndDefaultsApply_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("half an object") << QByteArray(R"({"autoCopy": fal)");
        QTest::newRow("a list") << QByteArray("[1, 2]");
        QTest::newRow("nothing at all") << QByteArray();
        QTest::newRow("binary") << QByteArray("\0\x01\x02", 3);
    }
    void damagedFileIsSetAsideAndDefaultsApply()
    {
        QFETCH(QByteArray, bytes);
        const QString path = file("broken.json");
        const QString aside = path + QStringLiteral(".damaged");
        write(path, bytes);
        write(aside, "an older one");
        Defaults defaults(path);
        QVERIFY(!defaults.contains(QStringLiteral("autoCopy")));
        QVERIFY(!QFile::exists(path));
        QCOMPARE(read(aside), bytes);

        defaults.setBoolean(QStringLiteral("autoCopy"), false);
        QTRY_COMPARE(Defaults(path).boolean(QStringLiteral("autoCopy")), std::optional(false));
    }

    void whatCannotBeReadIsNeverReplaced()
    {
        // A folder in the file's place can't be read as a file, whoever we are.
        const QString path = file("folder.json");
        QVERIFY(QDir().mkpath(path));
        Defaults defaults(path);
        defaults.setBoolean(QStringLiteral("autoCopy"), false);
        QCOMPARE(defaults.boolean(QStringLiteral("autoCopy")), std::optional(false));
        QVERIFY(QFileInfo(path).isDir());
        QVERIFY(!QFile::exists(path + QStringLiteral(".damaged")));
    }

    void unwritableFolderLeavesTheStoreWorkingInMemory()
    {
        write(file("plain"), "a file where the folder should be");
        Defaults defaults(file("plain/settings.json"));
        defaults.setNumber(QStringLiteral("size.pen"), 7);
        QCOMPARE(defaults.number(QStringLiteral("size.pen")), std::optional(7.0));
        QCOMPARE(read(file("plain")), QByteArray("a file where the folder should be"));
    }

    void severalThreadsLoseNothing()
    {
        constexpr int kThreads = 4;
        constexpr int kChanges = 25;
        const QString path = file("threads.json");
        {
            Defaults defaults(path);
            std::vector<std::thread> threads;
            for (int thread = 0; thread < kThreads; ++thread) {
                threads.emplace_back([&defaults, thread] {
                    for (int change = 0; change < kChanges; ++change) {
                        const QString key = QStringLiteral("%1.%2").arg(thread).arg(change);
                        defaults.setNumber(key, change);
                        defaults.setNumber(QStringLiteral("shared"), change);
                        (void)defaults.number(QStringLiteral("shared"));
                    }
                });
            }
            for (std::thread& thread : threads)
                thread.join();
        }
        const Defaults again(path);
        for (int thread = 0; thread < kThreads; ++thread) {
            for (int change = 0; change < kChanges; ++change) {
                const QString key = QStringLiteral("%1.%2").arg(thread).arg(change);
                QCOMPARE(again.number(key), std::optional<double>(change));
            }
        }
    }
};

BRINDLECAM_TEST(TestDefaults);

} // namespace brindlecam

#include "tst_defaults.moc"
