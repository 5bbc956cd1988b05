#include "recents/HistoryNames.h"
#include "support/TestCase.h"

#include <QLocale>

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

    void onlyLowerCasePngAndGifAreEntries_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("entry");
        QTest::newRow("png") << QStringLiteral("20260304-090603-005.png") << true;
        QTest::newRow("gif") << QStringLiteral("20260304-090603-005.gif") << true;
        QTest::newRow("any name will do") << QStringLiteral("foto.png") << true;
        QTest::newRow("two dots") << QStringLiteral("foto.jpg.png") << true;
        QTest::newRow("hidden with extension") << QStringLiteral(".foto.png") << true;
        QTest::newRow("upper case") << QStringLiteral("foto.PNG") << false;
        QTest::newRow("mixed case") << QStringLiteral("foto.Gif") << false;
        QTest::newRow("jpeg") << QStringLiteral("foto.jpg") << false;
        QTest::newRow("no extension") << QStringLiteral("png") << false;
        QTest::newRow("a dot and nothing before it") << QStringLiteral(".png") << false;
        QTest::newRow("hidden system file") << QStringLiteral(".DS_Store") << false;
        QTest::newRow("being written") << QStringLiteral("20260304-090603-005.png.aBcDeF") << false;
        QTest::newRow("nothing") << QString() << false;
    }
    void onlyLowerCasePngAndGifAreEntries()
    {
        QFETCH(QString, name);
        QTEST(HistoryNames::isEntry(name), "entry");
    }

    void onlyOurOwnLeftoversAreUnfinished()
    {
        QVERIFY(HistoryNames::isUnfinished(QStringLiteral("20260304-090603-005.png.aBcDeF")));
        QVERIFY(HistoryNames::isUnfinished(QStringLiteral("20260304-090603-005.gif.aBcDeF")));
        QVERIFY(!HistoryNames::isUnfinished(QStringLiteral("20260304-090603-005.png")));
        QVERIFY(!HistoryNames::isUnfinished(QStringLiteral("foto.png.aBcDeF")));
        QVERIFY(!HistoryNames::isUnfinished(QStringLiteral("20260304-090603-005.jpg.aBcDeF")));
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
        QVERIFY(HistoryNames::surplus(entries).isEmpty());
        entries << QStringLiteral("20") << QStringLiteral("21");
        QCOMPARE(HistoryNames::surplus(entries),
                 (QStringList{QStringLiteral("20"), QStringLiteral("21")}));
    }
};

BRINDLECAM_TEST(TestHistoryNames);

} // namespace brindlecam

#include "tst_historynames.moc"
