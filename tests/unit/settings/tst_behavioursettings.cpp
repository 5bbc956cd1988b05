#include "SettingsFixture.h"
#include "settings/BehaviourSettings.h"
#include "support/TestCase.h"

namespace brindlecam {

using test::SettingsFixture;

namespace {

using Box = QCheckBox& (BehaviourSettings::*)();

struct BoxRow {
    Box box;
    const char* key;
    const char* title;
    bool standard;
};

const std::array kBoxes{
    BoxRow{&BehaviourSettings::autoCopyBox, "autoCopy",
           "Copiar al portapapeles automáticamente al seleccionar", true},
    BoxRow{&BehaviourSettings::autoSaveBox, "autoSaveFullScreen",
           "Guardar también la pantalla completa como archivo PNG", true},
    BoxRow{&BehaviourSettings::autoSaveAreaBox, "autoSaveArea",
           "Guardar también las capturas de área (Enter o Copiar)", true},
    BoxRow{&BehaviourSettings::loupeBox, "showLoupe", "Mostrar lupa de píxeles al elegir el área",
           true},
    BoxRow{&BehaviourSettings::lightGifsBox, "lightGifs", "GIF más ligeros (menor resolución)",
           false},
    BoxRow{&BehaviourSettings::updatesBox, "checkUpdates", "Avisarme cuando haya una versión nueva",
           true},
};

} // namespace

class TestBehaviourSettings final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void eachBoxIsItsSetting_data()
    {
        QTest::addColumn<std::size_t>("index");
        for (std::size_t i = 0; i < kBoxes.size(); ++i)
            QTest::newRow(kBoxes.at(i).key) << i;
    }
    void eachBoxIsItsSetting()
    {
        QFETCH(std::size_t, index);
        const BoxRow& row = kBoxes.at(index);
        const QString key = QString::fromLatin1(row.key);
        SettingsFixture desk;
        QCheckBox& box = (desk.open().behaviour().*row.box)();
        QCOMPARE(box.text(), QString::fromUtf8(row.title));
        QVERIFY(!box.toolTip().isEmpty());
        QCOMPARE(box.isChecked(), row.standard);
        QVERIFY(!desk.defaults.contains(key));
        box.click();
        QCOMPARE(desk.defaults.boolean(key), !row.standard);
        box.click();
        QCOMPARE(desk.defaults.boolean(key), row.standard);
        // Changed elsewhere: shown the next time.
        desk.defaults.setBoolean(key, !row.standard);
        desk.open();
        QCOMPARE(box.isChecked(), !row.standard);
    }

    void aBoxWritesNothingButItsOwn()
    {
        SettingsFixture desk;
        desk.open().behaviour().autoCopyBox().click();
        for (const BoxRow& row : kBoxes) {
            const QString key = QString::fromLatin1(row.key);
            QCOMPARE(desk.defaults.contains(key), key == QLatin1String("autoCopy"));
        }
    }

    // One action of three boxes.
    void whatIsSavedAndTheLoupeAreWrittenTogether()
    {
        SettingsFixture desk;
        desk.open().behaviour().loupeBox().click();
        QCOMPARE(desk.defaults.boolean(QStringLiteral("showLoupe")), false);
        QCOMPARE(desk.defaults.boolean(QStringLiteral("autoSaveArea")), true);
        QCOMPARE(desk.defaults.boolean(QStringLiteral("autoSaveFullScreen")), true);
    }

    void thereIsNoBoxForUpdatesWithoutAPlaceToAsk()
    {
        SettingsFixture desk;
        QVERIFY(desk.open().behaviour().updatesBox().isVisible());
        SettingsFixture without;
        without.host.looksForUpdates = false;
        QVERIFY(!without.open().behaviour().updatesBox().isVisible());
    }

    void lighterGifsSayWhatTheyCost()
    {
        SettingsFixture desk;
        QCOMPARE(desk.open().behaviour().lightGifsBox().toolTip(),
                 QStringLiteral("Pesan menos para mandarlos por chat, pero el texto se ve menos "
                                "nítido."));
    }
};

BRINDLECAM_TEST(TestBehaviourSettings);

} // namespace brindlecam

#include "tst_behavioursettings.moc"
