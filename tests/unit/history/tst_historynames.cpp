#include "history/HistoryNames.h"
#include "support/TestCase.h"

#include <QLocale>

#include <ctime>

namespace brindlecam {

class TestHistoryNames final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void namesAreLocalTimeDownToTheMillisecond()
    {
        const QDateTime time(QDate(2026, 3, 4), QTime(9, 6, 3, 5));
        QCOMPARE(HistoryNames::nameFor(time, QStringLiteral("png")),
                 QStringLiteral("20260304-090603-005.png"));
        QCOMPARE(HistoryNames::nameFor(time, QStringLiteral("gif")),
                 QStringLiteral("20260304-090603-005.gif"));
    }

    void namesKeepPlainDigitsInEveryLocale()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
        const QString name = HistoryNames::nameFor(QDateTime(QDate(2026, 3, 4), QTime(9, 6, 3, 5)),
                                                   QStringLiteral("png"));
        QLocale::setDefault(before);
        QCOMPARE(name, QStringLiteral("20260304-090603-005.png"));
    }

    void onlyNamesThatWeGiveAreEntries_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("entry");
        QTest::newRow("png") << QStringLiteral("20260304-090603-005.png") << true;
        QTest::newRow("gif") << QStringLiteral("20260304-090603-005.gif") << true;
        QTest::newRow("leap day") << QStringLiteral("20280229-000000-000.png") << true;
        QTest::newRow("another name") << QStringLiteral("foto.png") << false;
        QTest::newRow("two endings") << QStringLiteral("20260304-090603-005.jpg.png") << false;
        QTest::newRow("hidden") << QStringLiteral(".20260304-090603-005.png") << false;
        QTest::newRow("a copy") << QStringLiteral("20260304-090603-005 (1).png") << false;
        QTest::newRow("no such day") << QStringLiteral("20260230-090603-005.png") << false;
        QTest::newRow("no such time") << QStringLiteral("20260304-256103-005.png") << false;
        QTest::newRow("a digit too many") << QStringLiteral("120260304-090603-005.png") << false;
        QTest::newRow("a digit too few") << QStringLiteral("20260304-090603-05.png") << false;
        QTest::newRow("other digits")
            << QStringLiteral("\u0662\u0660\u0662\u0666\u0660\u0663\u0660\u0664-090603-005.png")
            << false;
        QTest::newRow("a line more") << QStringLiteral("20260304-090603-005.png\n") << false;
        QTest::newRow("upper case") << QStringLiteral("20260304-090603-005.PNG") << false;
        QTest::newRow("mixed case") << QStringLiteral("20260304-090603-005.Gif") << false;
        QTest::newRow("jpeg") << QStringLiteral("20260304-090603-005.jpg") << false;
        QTest::newRow("no extension") << QStringLiteral("20260304-090603-005") << false;
        QTest::newRow("extension alone") << QStringLiteral(".png") << false;
        QTest::newRow("being written") << QStringLiteral("20260304-090603-005.png.aBcDeF") << false;
        QTest::newRow("nothing") << QString() << false;
    }
    void onlyNamesThatWeGiveAreEntries()
    {
        QFETCH(QString, name);
        QTEST(HistoryNames::isEntry(name), "entry");
    }

    void theNextNameIsTheLaterOfNowAndAfterTheNewest_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("name");
        const auto row = [](const char* what, const char* newest, const char* name) {
            QTest::newRow(what) << (*newest ? QStringList{QLatin1String(newest)} : QStringList())
                                << QString::fromLatin1(name);
        };
        row("no entry yet", "", "20260304-090603-005.png");
        row("an older one", "20260304-090603-004.gif", "20260304-090603-005.png");
        row("the same moment", "20260304-090603-005.png", "20260304-090603-006.png");
        row("of the other kind", "20260304-090603-005.gif", "20260304-090603-006.png");
        row("in the future", "20990101-000000-000.png", "20990101-000000-001.png");
        row("over a year's end", "20991231-235959-999.png", "21000101-000000-000.png");
        row("after the last there is", "99991231-235959-999.png", "20260304-090603-005.png");
    }
    void theNextNameIsTheLaterOfNowAndAfterTheNewest()
    {
        QFETCH(QStringList, entries);
        const QDateTime now(QDate(2026, 3, 4), QTime(9, 6, 3, 5));
        QTEST(HistoryNames::nextName(now, entries, QStringLiteral("png")), "name");
    }

    void noHourIsMissingWhereClocksAreSetForward()
    {
        const QByteArray before = qgetenv("TZ");
        qputenv("TZ", "Europe/Madrid");
        tzset();
        const QStringList entries{QStringLiteral("20260329-015959-999.png")};
        const QString name = HistoryNames::nextName(QDateTime(QDate(2026, 3, 4), QTime(9, 6)),
                                                    entries, QStringLiteral("png"));
        const bool isEntry = HistoryNames::isEntry(QStringLiteral("20260329-023000-000.png"));
        before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
        tzset();
        QCOMPARE(name, QStringLiteral("20260329-020000-000.png"));
        QVERIFY(isEntry);
    }

    void entriesAreNewestFirstAndPngBeforeGifOfTheSameTime()
    {
        const QStringList names{
            QStringLiteral("20260304-090603-005.gif"), QStringLiteral("20260304-090603-004.png"),
            QStringLiteral("notes.txt"), QStringLiteral("20260304-090603-005.png"),
            QStringLiteral("20260304-090603-006.gif")};
        QCOMPARE(HistoryNames::entries(names),
                 (QStringList{QStringLiteral("20260304-090603-006.gif"),
                              QStringLiteral("20260304-090603-005.png"),
                              QStringLiteral("20260304-090603-005.gif"),
                              QStringLiteral("20260304-090603-004.png")}));
    }

    void surplusIsWhatFollowsTheTwentiethEntry()
    {
        QStringList entries;
        for (int i = 0; i < 20; ++i)
            entries << QString::number(i);
        QVERIFY(HistoryNames::surplus(entries, QStringLiteral("0")).isEmpty());
        entries << QStringLiteral("20") << QStringLiteral("21");
        QCOMPARE(HistoryNames::surplus(entries, QStringLiteral("0")),
                 (QStringList{QStringLiteral("20"), QStringLiteral("21")}));
        QCOMPARE(HistoryNames::surplus(entries, QStringLiteral("nowhere")),
                 (QStringList{QStringLiteral("20"), QStringLiteral("21")}));
        QCOMPARE(HistoryNames::surplus(entries, QStringLiteral("21")),
                 (QStringList{QStringLiteral("19"), QStringLiteral("20")}));
    }
};

BRINDLECAM_TEST(TestHistoryNames);

} // namespace brindlecam

#include "tst_historynames.moc"
