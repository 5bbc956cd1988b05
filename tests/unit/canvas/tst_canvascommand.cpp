#include "canvas/CanvasCommand.h"
#include "support/TestCase.h"

#include <QKeyEvent>

namespace brindlecam {

namespace {

/// XKB's codes of the keys that carry these letters on a US keyboard.
enum Place {
    kNowhere = 0,
    kPlaceW = 25,
    kPlaceY = 29,
    kPlaceS = 39,
    kPlaceZ = 52,
    kPlaceC = 54,
    kPlaceV = 55
};

constexpr Qt::KeyboardModifiers kControl = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers kBoth = Qt::ControlModifier | Qt::ShiftModifier;
using Asked = std::optional<CanvasCommand::Kind>;
constexpr Asked kNothing;
constexpr Asked kCopy = CanvasCommand::Kind::copy;
constexpr Asked kSave = CanvasCommand::Kind::save;
constexpr Asked kUndo = CanvasCommand::Kind::undo;
constexpr Asked kRedo = CanvasCommand::Kind::redo;

} // namespace

/// What keys ask for on the keyboard maps of the world.
class TestCanvasCommand final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void keysOfMapsWithoutLatinLettersCountByTheirPlace_data() { addKeys(); }
    void keysOfMapsWithoutLatinLettersCountByTheirPlace()
    {
        QFETCH(int, key);
        QFETCH(int, place);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(Asked, asked);
        const QKeyEvent event(QEvent::KeyPress, key, modifiers, static_cast<quint32>(place), 0, 0);
        const auto command = CanvasCommand::of(event);
        QCOMPARE(command ? Asked(command->kind) : kNothing, asked);
    }

private:
    static void addKeys()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("place");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<Asked>("asked");
        const auto row = [](const char* name, char32_t key, Place place,
                            Qt::KeyboardModifiers modifiers, Asked asked) {
            QTest::newRow(name) << int(key) << int(place) << modifiers << asked;
        };
        row("Russian copy", U'С', kPlaceC, kControl, kCopy);
        row("Russian save", U'Ы', kPlaceS, kControl, kSave);
        row("Russian undo", U'Я', kPlaceZ, kControl, kUndo);
        row("Russian redo", U'Я', kPlaceZ, kBoth, kRedo);
        row("Thai redo", U'\u0e31', kPlaceY, kControl, kRedo);
        row("Arabic redo", U'\u063a', kPlaceY, kControl, kRedo);
        row("Greek copy", U'Ψ', kPlaceC, kControl, kCopy);
        row("Greek save", U'Σ', kPlaceS, kControl, kSave);
        row("Greek undo", U'Ζ', kPlaceZ, kControl, kUndo);
        row("Greek redo", U'Ζ', kPlaceZ, kBoth, kRedo);
        row("Hebrew copy", U'ב', kPlaceC, kControl, kCopy);
        row("Arabic save", U'س', kPlaceS, kControl, kSave);
        row("Thai undo", U'ผ', kPlaceZ, kControl, kUndo);
        row("a vowel sign of Devanagari", U'\u0947', kPlaceS, kControl, kSave);

        row("without Control", U'С', kPlaceC, Qt::NoModifier, kNothing);
        row("another place", U'М', kPlaceV, kControl, kNothing);
        row("no place", U'С', kNowhere, kControl, kNothing);

        row("US copy", U'C', kPlaceC, kControl, kCopy);
        row("AZERTY: W where Z is", U'W', kPlaceZ, kControl, kNothing);
        row("AZERTY: Z where W is", U'Z', kPlaceW, kControl, kUndo);
        row("QWERTZ: Y where Z is", U'Y', kPlaceZ, kControl, kRedo); // as a letter of its own
        row("Dvorak: J where C is", U'J', kPlaceC, kControl, kNothing);
        row("Dvorak: O where S is", U'O', kPlaceS, kControl, kNothing);
        row("Dvorak: a semicolon where Z is", U';', kPlaceZ, kControl, kNothing);
        row("a Latin letter beyond ASCII", U'Ş', kPlaceS, kControl, kNothing);
        row("a key without a letter", Qt::Key_Dead_Acute, kPlaceC, kControl, kNothing);
        row("an unknown key", Qt::Key_unknown, kPlaceC, kControl, kNothing);
        // Latin maps, too, have Greek letters on such levels.
        row("another level of a map", U'Ψ', kPlaceC, kControl | Qt::GroupSwitchModifier, kNothing);
    }
};

BRINDLECAM_TEST(TestCanvasCommand);

} // namespace brindlecam

#include "tst_canvascommand.moc"
