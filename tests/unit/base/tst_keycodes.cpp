#include "base/KeyCodes.h"
#include "base/KeyCombo.h"
#include "support/TestCase.h"

#include <linux/input-event-codes.h>

#include <algorithm>

namespace brindlecam {

class TestKeyCodes final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyVirtualCodeComesBackFromAllItsKeys()
    {
        int known = 0;
        for (int virtualCode = 0; virtualCode < 128; ++virtualCode) {
            for (const int evdevCode : KeyCodes::toEvdev(virtualCode)) {
                QCOMPARE(KeyCodes::fromEvdev(evdevCode), virtualCode);
                ++known;
            }
        }
        QVERIFY(known > 100);
    }

    void everyEvdevCodeIsAmongThoseOfItsVirtualCode()
    {
        for (int evdevCode = 0; evdevCode < 256; ++evdevCode) {
            const auto virtualCode = KeyCodes::fromEvdev(evdevCode);
            if (!virtualCode)
                continue;
            const auto back = KeyCodes::toEvdev(*virtualCode);
            QVERIFY2(std::count(back.begin(), back.end(), evdevCode) == 1,
                     qPrintable(QString::number(evdevCode)));
        }
    }

    void keysAreMappedByTheirPlace_data()
    {
        QTest::addColumn<int>("virtualCode");
        QTest::addColumn<int>("evdevCode");
        QTest::newRow("9") << 25 << KEY_9;
        QTest::newRow("8") << 28 << KEY_8;
        QTest::newRow("0") << 29 << KEY_0;
        QTest::newRow("6, out of line") << 22 << KEY_6;
        QTest::newRow("5, out of line") << 23 << KEY_5;
        QTest::newRow("A") << 0 << KEY_A;
        QTest::newRow("Z") << 6 << KEY_Z;
        QTest::newRow("Return") << KeyCodes::kReturn << KEY_ENTER;
        QTest::newRow("keypad Enter") << KeyCodes::kKeypadEnter << KEY_KPENTER;
        QTest::newRow("Escape") << KeyCodes::kEscape << KEY_ESC;
        QTest::newRow("Space") << 49 << KEY_SPACE;
        QTest::newRow("Backspace") << 51 << KEY_BACKSPACE;
        QTest::newRow("forward delete") << 117 << KEY_DELETE;
        QTest::newRow("Insert") << 114 << KEY_INSERT;
        QTest::newRow("key beside the left shift") << 10 << KEY_102ND;
        QTest::newRow("F1") << 122 << KEY_F1;
        QTest::newRow("F12") << 111 << KEY_F12;
        QTest::newRow("F13") << 105 << KEY_F13;
        QTest::newRow("Print Screen is F13") << 105 << KEY_SYSRQ;
        QTest::newRow("Scroll Lock is F14") << 107 << KEY_SCROLLLOCK;
        QTest::newRow("Pause is F15") << 113 << KEY_PAUSE;
        QTest::newRow("F20") << 90 << KEY_F20;
        QTest::newRow("Up") << 126 << KEY_UP;
        QTest::newRow("Page Down") << 121 << KEY_PAGEDOWN;
    }
    void keysAreMappedByTheirPlace()
    {
        QFETCH(int, virtualCode);
        QFETCH(int, evdevCode);
        QCOMPARE(KeyCodes::fromEvdev(evdevCode), virtualCode);
        const auto codes = KeyCodes::toEvdev(virtualCode);
        QVERIFY(std::count(codes.begin(), codes.end(), evdevCode) == 1);
    }

    void everyFunctionAndNamedKeyHasAKey()
    {
        for (int code = 0; code < 128; ++code) {
            if (KeyCombo::functionKeyName(code) || KeyCombo::namedKeyName(code))
                QVERIFY2(!KeyCodes::toEvdev(code).empty(), qPrintable(QString::number(code)));
        }
    }

    void unknownKeysHaveNoCode()
    {
        QVERIFY(KeyCodes::toEvdev(-1).empty());
        QVERIFY(KeyCodes::toEvdev(1000).empty());
        QVERIFY(!KeyCodes::fromEvdev(0));
        QVERIFY(!KeyCodes::fromEvdev(KEY_LEFTSHIFT));
        QVERIFY(!KeyCodes::fromEvdev(KEY_LEFTMETA));
    }
};

BRINDLECAM_TEST(TestKeyCodes);

} // namespace brindlecam

#include "tst_keycodes.moc"
