#include "SettingsFixture.h"
#include "settings/PrivacySettings.h"
#include "settings/SmallButton.h"
#include "support/TestCase.h"

namespace brindlecam {

using test::SettingsFixture;

class TestPrivacySettings final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void countsWhatIsKept_data()
    {
        QTest::addColumn<int>("captures");
        QTest::addColumn<QString>("words");
        QTest::newRow("none") << 0 << QStringLiteral("No hay capturas guardadas en el historial.");
        QTest::newRow("one") << 1 << QStringLiteral("1 captura guardada (máximo 20).");
        QTest::newRow("several") << 3 << QStringLiteral("3 capturas guardadas (máximo 20).");
    }
    void countsWhatIsKept()
    {
        QFETCH(int, captures);
        SettingsFixture desk;
        desk.addToHistory(captures);
        QTEST(desk.open().privacy().historyLabel().text(), "words");
    }

    void switchingItOffAsksWhetherToEmptyIt()
    {
        SettingsFixture desk;
        desk.addToHistory(2);
        PrivacySettings& privacy = desk.open().privacy();
        QVERIFY(privacy.historyBox().isChecked());
        privacy.historyBox().click();
        desk.settle();
        QCOMPARE(desk.defaults.boolean(QStringLiteral("keepHistory")), false);
        QVERIFY(desk.question());
        QCOMPARE(desk.question()->text(), QStringLiteral("¿Vaciar las 2 capturas recientes?"));
        desk.answer("Cancelar");
        QCOMPARE(desk.history.items().size(), 2);
        QCOMPARE(privacy.historyLabel().text(),
                 QStringLiteral("2 capturas guardadas (máximo 20)."));
        QVERIFY(!privacy.historyBox().isChecked());
    }

    void switchingItOffWithNothingKeptAsksNothing()
    {
        SettingsFixture desk;
        desk.open().privacy().historyBox().click();
        desk.settle();
        QVERIFY(!desk.question());
        QCOMPARE(desk.defaults.boolean(QStringLiteral("keepHistory")), false);
    }

    void switchingItOnAsksNothing()
    {
        SettingsFixture desk;
        desk.defaults.setBoolean(QStringLiteral("keepHistory"), false);
        desk.addToHistory(1);
        desk.open().privacy().historyBox().click();
        desk.settle();
        QVERIFY(!desk.question());
        QCOMPARE(desk.defaults.boolean(QStringLiteral("keepHistory")), true);
    }

    void emptyingItNowIsConfirmedFirst()
    {
        SettingsFixture desk;
        desk.addToHistory(2);
        PrivacySettings& privacy = desk.open().privacy();
        privacy.clearButton().click();
        desk.settle();
        desk.answer("Vaciar");
        QVERIFY(desk.history.items().isEmpty());
        QCOMPARE(privacy.historyLabel().text(),
                 QStringLiteral("No hay capturas guardadas en el historial."));
        QVERIFY(privacy.historyBox().isChecked());
    }

    void itIsAskedOnceAtATime()
    {
        SettingsFixture desk;
        desk.addToHistory(2);
        PrivacySettings& privacy = desk.open().privacy();
        privacy.clearButton().click();
        privacy.clearButton().click();
        desk.settle();
        desk.answer("Cancelar");
        QVERIFY(!desk.question());
        privacy.clearButton().click();
        desk.settle();
        QVERIFY(desk.question());
    }
};

BRINDLECAM_TEST(TestPrivacySettings);

} // namespace brindlecam

#include "tst_privacysettings.moc"
