#include "SettingsFixture.h"
#include "settings/LoginBox.h"
#include "support/TestCase.h"

namespace brindlecam {

using test::SettingsFixture;

class TestLoginBox final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void showsWhatTheSessionHas()
    {
        SettingsFixture desk;
        desk.loginItem.enabled = true;
        LoginBox& box = desk.open().behaviour().loginBox();
        QCOMPARE(box.text(), QStringLiteral("Abrir Brindlecam al iniciar sesión"));
        QVERIFY(box.isChecked());
        // Changed in the desktop's own settings.
        desk.loginItem.enabled = false;
        desk.open();
        QVERIFY(!box.isChecked());
    }

    void tellsTheSession()
    {
        SettingsFixture desk;
        LoginBox& box = desk.open().behaviour().loginBox();
        box.click();
        desk.settle();
        QVERIFY(desk.loginItem.enabled);
        box.click();
        desk.settle();
        QVERIFY(!desk.loginItem.enabled);
        QVERIFY(!desk.question());
    }

    void whatFailsIsToldAndTheBoxShowsHowThingsAre()
    {
        SettingsFixture desk;
        LoginBox& box = desk.open().behaviour().loginBox();
        desk.loginItem.fails = Error{QStringLiteral("No se pudo escribir “/x”.")};
        box.click();
        QVERIFY(box.isChecked());
        desk.settle();
        QVERIFY(!box.isChecked());
        QVERIFY(desk.question());
        QCOMPARE(desk.question()->text(),
                 QStringLiteral("No se pudo cambiar la apertura al iniciar sesión"));
        QCOMPARE(desk.question()->informativeText(), QStringLiteral("No se pudo escribir “/x”."));
    }

    void quickChangesAreMadeOneAfterTheOther()
    {
        SettingsFixture desk;
        LoginBox& box = desk.open().behaviour().loginBox();
        box.click();
        box.click();
        box.click();
        QCOMPARE(desk.loginItem.wanted.size(), std::size_t(1));
        box.click();
        desk.settle();
        QCOMPARE(desk.loginItem.wanted, (std::deque<bool>{true, false}));
        QVERIFY(!desk.loginItem.enabled);
        QVERIFY(!box.isChecked());
    }

    void anAnswerDoesNotOverruleAChangeOnItsWay()
    {
        SettingsFixture desk;
        LoginBox& box = desk.open().behaviour().loginBox();
        box.refresh();
        box.click();
        desk.settle(); // the question was put before the change, and is answered "no"
        QVERIFY(box.isChecked());
        QVERIFY(desk.loginItem.enabled);
    }
};

BRINDLECAM_TEST(TestLoginBox);

} // namespace brindlecam

#include "tst_loginbox.moc"
