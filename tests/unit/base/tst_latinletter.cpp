#include "base/KeyCodes.h"
#include "base/LatinLetter.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestLatinLetter final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void lettersOfAnotherScriptAreThoseOfTheirPlace_data()
    {
        QTest::addColumn<int>("virtualCode");
        QTest::addColumn<char>("letter");
        QTest::newRow("first of the upper row") << 12 << 'Q';
        QTest::newRow("last of the upper row") << 35 << 'P';
        QTest::newRow("first of the middle row") << 0 << 'A';
        QTest::newRow("second of the middle row") << 1 << 'S';
        QTest::newRow("last of the middle row") << 37 << 'L';
        QTest::newRow("first of the lower row") << 6 << 'Z';
        QTest::newRow("third of the lower row") << 8 << 'C';
        QTest::newRow("last of the lower row") << 46 << 'M';
    }
    void lettersOfAnotherScriptAreThoseOfTheirPlace()
    {
        QFETCH(int, virtualCode);
        QFETCH(char, letter);
        const int evdev = KeyCodes::toEvdev(virtualCode).front();
        const auto xkb = static_cast<std::uint32_t>(evdev + 8);
        QCOMPARE(latinLetter(U'Ж', xkb), int(letter));
        QCOMPARE(latinLetter(Qt::Key_X, xkb), int(Qt::Key_X));
    }

    void placesWithoutALetterChangeNothing()
    {
        // Before, between and after the rows; not a code at all.
        for (const std::uint32_t place : {0U, 23U, 34U, 37U, 47U, 51U, 59U, 0xffffffffU})
            QCOMPARE(latinLetter(U'Ж', place), int(U'Ж'));
    }
};

BRINDLECAM_TEST(TestLatinLetter);

} // namespace brindlecam

#include "tst_latinletter.moc"
