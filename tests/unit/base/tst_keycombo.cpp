#include "base/KeyCodes.h"
#include "base/KeyCombo.h"
#include "support/TestCase.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace brindlecam {

namespace {

constexpr int kNine = 25;
constexpr int kA = 0;
constexpr int kSpace = 49;
constexpr int kF13 = 105;
constexpr int kUnknownKey = 200;

constexpr int kAllModifiers = controlModifier | optionModifier | shiftModifier | commandModifier;

} // namespace

class TestKeyCombo final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void keyPressBecomesAShortcut_data()
    {
        QTest::addColumn<int>("keyCode");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("characters");
        QTest::addColumn<QString>("display");
        QTest::newRow("shift and command with 9") << kNine << (shiftModifier | commandModifier)
                                                  << QStringLiteral("9") << QStringLiteral("⇧⌘9");
        QTest::newRow("all modifiers in their order")
            << kA << kAllModifiers << QStringLiteral("a") << QStringLiteral("⌃⌥⇧⌘A");
        QTest::newRow("control and option with space")
            << kSpace << (controlModifier | optionModifier) << QStringLiteral(" ")
            << QStringLiteral("⌃⌥Espacio");
        QTest::newRow("function key alone") << kF13 << 0 << QString() << QStringLiteral("F13");
        QTest::newRow("function key with shift")
            << 122 << static_cast<int>(shiftModifier) << QString() << QStringLiteral("⇧F1");
        QTest::newRow("letters become capitals") << 41 << static_cast<int>(commandModifier)
                                                 << QStringLiteral("ñ") << QStringLiteral("⌘Ñ");
        QTest::newRow("key that types nothing") << kUnknownKey << static_cast<int>(commandModifier)
                                                << QString() << QStringLiteral("⌘?");
        QTest::newRow("Return") << KeyCodes::kReturn << static_cast<int>(commandModifier)
                                << QStringLiteral("\r") << QStringLiteral("⌘↩");
        QTest::newRow("Tab") << 48 << static_cast<int>(optionModifier) << QStringLiteral("\t")
                             << QStringLiteral("⌥⇥");
        QTest::newRow("forward delete")
            << 117 << static_cast<int>(controlModifier) << QString() << QStringLiteral("⌃⌦");
    }
    void keyPressBecomesAShortcut()
    {
        QFETCH(int, keyCode);
        QFETCH(int, modifiers);
        QFETCH(QString, characters);
        const auto combo = KeyCombo::fromKeyPress(keyCode, modifiers, characters);
        QVERIFY(combo);
        QTEST(combo->display, "display");
        QTEST(combo->keyCode, "keyCode");
        QTEST(combo->modifiers, "modifiers");
    }

    void keyPressWithoutCommandKeyIsNoShortcut_data()
    {
        QTest::addColumn<int>("keyCode");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("characters");
        QTest::newRow("a letter") << kA << 0 << QStringLiteral("a");
        QTest::newRow("a letter with shift")
            << kA << static_cast<int>(shiftModifier) << QStringLiteral("A");
        QTest::newRow("a named key") << kSpace << 0 << QStringLiteral(" ");
        QTest::newRow("a key whose name is only white space")
            << kUnknownKey << static_cast<int>(commandModifier) << QStringLiteral("\r");
    }
    void keyPressWithoutCommandKeyIsNoShortcut()
    {
        QFETCH(int, keyCode);
        QFETCH(int, modifiers);
        QFETCH(QString, characters);
        QVERIFY(!KeyCombo::fromKeyPress(keyCode, modifiers, characters));
    }

    void foreignModifierBitsAreLeftOut()
    {
        const auto combo =
            KeyCombo::fromKeyPress(kNine, commandModifier | 0x10000, QStringLiteral("9"));
        QVERIFY(combo);
        QCOMPARE(combo->modifiers, static_cast<int>(commandModifier));
    }

    void thereAre20FunctionKeysAnd13NamedKeys()
    {
        QSet<QString> functionKeys;
        QSet<QString> namedKeys;
        for (int code = 0; code < 256; ++code) {
            if (const auto name = KeyCombo::functionKeyName(code))
                functionKeys << *name;
            if (const auto name = KeyCombo::namedKeyName(code))
                namedKeys << *name;
        }
        QCOMPARE(functionKeys.size(), 20);
        for (int number = 1; number <= 20; ++number)
            QVERIFY(functionKeys.contains(QStringLiteral("F%1").arg(number)));
        QCOMPARE(namedKeys.size(), 13);
    }

    void namedKeysHaveTheirSymbols_data()
    {
        QTest::addColumn<int>("keyCode");
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("word");
        const auto row = [](int code, const char* symbol, const char* word) {
            QTest::newRow(word) << code << QString::fromUtf8(symbol) << QString::fromUtf8(word);
        };
        row(49, "Espacio", "Espacio");
        row(36, "↩", "Intro");
        row(48, "⇥", "Tab");
        row(123, "←", "←");
        row(124, "→", "→");
        row(126, "↑", "↑");
        row(125, "↓", "↓");
        row(115, "↖", "Inicio");
        row(119, "↘", "Fin");
        row(116, "⇞", "RePág");
        row(121, "⇟", "AvPág");
        row(117, "⌦", "Supr");
        row(114, "Insert", "Insert");
    }
    void namedKeysHaveTheirSymbols()
    {
        QFETCH(int, keyCode);
        QFETCH(QString, symbol);
        QFETCH(QString, word);
        QCOMPARE(KeyCombo::namedKeyName(keyCode), symbol);
        const auto combo = KeyCombo::fromKeyPress(keyCode, commandModifier, QString());
        QVERIFY(combo);
        QCOMPARE(combo->display, QStringLiteral("⌘") + symbol);
        QCOMPARE(combo->shown(KeyNaming::words), QStringLiteral("Super+") + word);
    }

    void shortcutsAreShownInWords_data()
    {
        QTest::addColumn<KeyCombo>("combo");
        QTest::addColumn<QString>("words");
        QTest::newRow("default of the area capture")
            << KeyCombo{kNine, 0x300, QStringLiteral("⇧⌘9")} << QStringLiteral("Mayús+Super+9");
        QTest::newRow("all modifiers") << KeyCombo{kNine, kAllModifiers, QStringLiteral("⌃⌥⇧⌘9")}
                                       << QStringLiteral("Ctrl+Alt+Mayús+Super+9");
        QTest::newRow("function key alone")
            << KeyCombo{kF13, 0, QStringLiteral("F13")} << QStringLiteral("F13");
        QTest::newRow("arrow") << KeyCombo{123, optionModifier, QStringLiteral("⌥←")}
                               << QStringLiteral("Alt+←");
        QTest::newRow("no shortcut") << KeyCombo{kNine, 0x300, QString()} << QString();
    }
    void shortcutsAreShownInWords()
    {
        QFETCH(KeyCombo, combo);
        QTEST(combo.shown(KeyNaming::words), "words");
        QCOMPARE(combo.shown(KeyNaming::symbols), combo.display);
    }

    void jsonHasThreeNamedMembersAndReadsBack()
    {
        const KeyCombo combo{kNine, 0x300, QStringLiteral("⇧⌘9")};
        const QJsonObject object = QJsonDocument::fromJson(combo.toJson()).object();
        QCOMPARE(object.size(), 3);
        QCOMPARE(object.value(QStringLiteral("keyCode")).toInt(), kNine);
        QCOMPARE(object.value(QStringLiteral("modifiers")).toInt(), 0x300);
        QCOMPARE(object.value(QStringLiteral("display")).toString(), QStringLiteral("⇧⌘9"));
        QCOMPARE(KeyCombo::fromJson(combo.toJson()), combo);
    }

    void whatIsNoShortcutIsNotRead_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("nothing, as a cleared shortcut") << QByteArray();
        QTest::newRow("not JSON") << QByteArray("⇧⌘9");
        QTest::newRow("a list") << QByteArray("[25, 768]");
        QTest::newRow("a member missing") << QByteArray(R"({"keyCode":25,"modifiers":768})");
        QTest::newRow("text for a number")
            << QByteArray(R"({"keyCode":"25","modifiers":768,"display":"9"})");
        QTest::newRow("a fraction")
            << QByteArray(R"({"keyCode":25.5,"modifiers":768,"display":"9"})");
        QTest::newRow("below zero")
            << QByteArray(R"({"keyCode":-1,"modifiers":768,"display":"9"})");
        QTest::newRow("a number for text")
            << QByteArray(R"({"keyCode":25,"modifiers":768,"display":9})");
    }
    void whatIsNoShortcutIsNotRead()
    {
        QFETCH(QByteArray, json);
        QVERIFY(!KeyCombo::fromJson(json));
    }
};

BRINDLECAM_TEST(TestKeyCombo);

} // namespace brindlecam

#include "tst_keycombo.moc"
