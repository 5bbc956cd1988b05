#include "drawer/CaptureCaption.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestCaptureCaption final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void tellsTheDayInWordsWhileThereAreAny_data()
    {
        QTest::addColumn<QDateTime>("time");
        QTest::addColumn<QString>("when");
        const QDate today(2026, 3, 14);
        QTest::newRow("just now") << QDateTime(today, QTime(9, 26)) << QStringLiteral("Hoy, 9:26");
        QTest::newRow("midnight") << QDateTime(today, QTime(0, 0)) << QStringLiteral("Hoy, 0:00");
        QTest::newRow("a minute before")
            << QDateTime(today.addDays(-1), QTime(23, 59)) << QStringLiteral("Ayer, 23:59");
        QTest::newRow("the day before that")
            << QDateTime(today.addDays(-2), QTime(18, 5)) << QStringLiteral("12/3/26, 18:05");
        QTest::newRow("from the future")
            << QDateTime(today.addDays(1), QTime(1, 0)) << QStringLiteral("15/3/26, 1:00");
    }
    void tellsTheDayInWordsWhileThereAreAny()
    {
        QFETCH(QDateTime, time);
        QFETCH(QString, when);
        const QDateTime now(QDate(2026, 3, 14), QTime(9, 27));
        QCOMPARE(CaptureCaption::when(time, now, QLocale(QLocale::Spanish)), when);
    }

    void usesTheUsersOwnDateElsewhere()
    {
        const QDateTime time(QDate(2026, 3, 2), QTime(18, 5));
        const QDateTime now(QDate(2026, 3, 14), QTime(9, 27));
        const QLocale german(QLocale::German);
        QCOMPARE(CaptureCaption::when(time, now, german), QStringLiteral("02.03.26, 18:05"));
    }

    void eachWordBeginsWithACapital_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("when");
        QTest::newRow("Colombia") << QLocale(QLocale::Spanish, QLocale::Colombia)
                                  << QStringLiteral("Hoy, 6:05 P. M.");
        QTest::newRow("United States")
            << QLocale(QLocale::English, QLocale::UnitedStates) << QStringLiteral("Hoy, 6:05 PM");
    }
    void eachWordBeginsWithACapital()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, when);
        const QDate today(2026, 3, 14);
        const QString made = CaptureCaption::when(QDateTime(today, QTime(18, 5)),
                                                  QDateTime(today, QTime(19, 0)), locale);
        QCOMPARE(made.simplified(), when); // some of the spaces are narrow ones
    }

    void endsWithTheSizeOnceThatIsKnown()
    {
        const QString when = QStringLiteral("Hoy, 9:26");
        QCOMPARE(CaptureCaption::of(QStringLiteral("/a/b.png"), when, {1440, 900}),
                 QStringLiteral("Hoy, 9:26  ·  1440×900"));
        QCOMPARE(CaptureCaption::of(QStringLiteral("/a/b.png"), when, {}), when);
    }

    void beginsWithTheKindOfAnAnimation()
    {
        QCOMPARE(
            CaptureCaption::of(QStringLiteral("/a/b.gif"), QStringLiteral("Ayer, 9:26"), {20, 10}),
            QStringLiteral("GIF  ·  Ayer, 9:26  ·  20×10"));
    }

    void isSpanishWhereTheSystemHasNoLanguage()
    {
        const QLocale before;
        QLocale::setDefault(QLocale::c());
        QCOMPARE(CaptureCaption::locale().language(), QLocale::Spanish);
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(CaptureCaption::locale().language(), QLocale::German);
        QLocale::setDefault(before);
    }
};

BRINDLECAM_TEST(TestCaptureCaption);

} // namespace brindlecam

#include "tst_capturecaption.moc"
