// Covers X11HotKeys.
#include "base/KeyCombo.h"
#include "desktop/support/x11/X11Hardware.h"
#include "desktop/support/x11/X11Input.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/keys/X11HotKeys.h"
#include "support/TestCase.h"
#include "x11/ThisDesktop.h"

#include <QKeyEvent>
#include <QWidget>

namespace brindlecam {

using test::display;

namespace {

constexpr std::uint8_t kPrintCode = 107;
constexpr std::uint8_t kPausePressCode = 127;
constexpr std::uint8_t kMailCode = 163;
constexpr std::uint8_t kMenuCode = 135;
constexpr int kLayouts = 4; ///< as many as a keyboard can have at a time

} // namespace

/// A window with the keyboard, in which each press is read.
class ReadingField final : public QWidget {
public:
    explicit ReadingField(const HotKeys& keys)
        : m_keys(keys)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

    std::vector<std::optional<PressedKey>> read; ///< modifiers by themselves included

    /// The last press that was a key; none where that has no code.
    [[nodiscard]] std::optional<PressedKey> last() const
    {
        return read.empty() ? std::nullopt : read.back();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override { read.push_back(m_keys.read(*event)); }

private:
    const HotKeys& m_keys;
};

/// What keys that come to a window of ours would be as hot keys.
class TestX11PressedKeys final : public test::TestCase {
    Q_OBJECT

private:
    std::shared_ptr<X11Events> m_events = std::make_shared<X11Events>();
    X11HotKeys m_hotKeys{m_events};
    desktop::X11Input m_hands{display()};
    desktop::X11Hardware m_hardware{display()};
    std::unique_ptr<ReadingField> m_field;

    /// Presses these, and waits until the last has come.
    PressedKey readOf(const QList<Qt::Key>& keys)
    {
        const std::size_t expected = m_field->read.size() + static_cast<std::size_t>(keys.size());
        m_hands.chord(keys);
        [&] { QTRY_COMPARE(m_field->read.size(), expected); }();
        return m_field->last().value_or(PressedKey{-1, 0, {}});
    }

    [[nodiscard]] std::optional<PressedKey> readOf(Qt::Key key, std::uint8_t code) const
    {
        return m_hotKeys.read(QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, code, 0, 0));
    }

    /// Goes so many layouts further, by the key of a keyboard that is set so.
    void switchLayout(int times)
    {
        for (int i = 0; i < times; ++i)
            m_hands.tapCode(kMenuCode);
        test::settle();
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_field = std::make_unique<ReadingField>(m_hotKeys);
        m_field->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_field.get()));
        QTRY_VERIFY(x11::setFocus(static_cast<xcb_window_t>(m_field->winId())));
        QTRY_VERIFY(m_field->hasFocus());
    }
    void cleanup() { m_hardware.setKeyboard(QStringLiteral("us")); }

    void modifiersDoNotChangeWhatAKeyTypes()
    {
        const PressedKey key = readOf({Qt::Key_Shift, Qt::Key_Super_L, Qt::Key_9});
        QCOMPARE(key.keyCode, 25);
        QCOMPARE(key.modifiers, shiftModifier | commandModifier);
        QCOMPARE(key.characters, QStringLiteral("9"));
        const PressedKey letter = readOf({Qt::Key_Control, Qt::Key_Alt, Qt::Key_A});
        QCOMPARE(letter.keyCode, 0);
        QCOMPARE(letter.modifiers, controlModifier | optionModifier);
        QCOMPARE(letter.characters, QStringLiteral("a"));
    }

    void modifiersByThemselvesAreNoKeys()
    {
        m_field->read.clear();
        QCOMPARE(readOf({Qt::Key_Shift, Qt::Key_Control, Qt::Key_Super_L}).keyCode, -1);
        for (const auto& key : m_field->read)
            QVERIFY(!key);
    }

    // Window managers hold these keys.
    void printScreenArrivesAsF13AndPauseAsF15()
    {
        const auto print = readOf(Qt::Key_Print, kPrintCode);
        QVERIFY(print);
        QCOMPARE(print->keyCode, 105);
        QCOMPARE(print->modifiers, 0);
        QCOMPARE(KeyCombo::fromKeyPress(print->keyCode, 0, print->characters)->display,
                 QStringLiteral("F13"));
        const auto pause = readOf(Qt::Key_Pause, kPausePressCode);
        QVERIFY(pause);
        QCOMPARE(pause->keyCode, 113);
    }

    void keysWithoutACodeAreNone() { QVERIFY(!readOf(Qt::Key_LaunchMail, kMailCode)); }

    void keysThatTypeNothingSayNothing()
    {
        QCOMPARE(readOf({Qt::Key_Control, Qt::Key_Left}).characters, QString());
        QCOMPARE(m_field->last()->keyCode, 123);
    }

    void eachKeyIsNamedAsTheLayoutHasIt_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<std::uint8_t>("code");
        QTest::addColumn<QString>("characters");
        QTest::addColumn<int>("keyCode");
        const auto row = [](const char* layout, int code, const char* characters, int keyCode) {
            QTest::newRow(layout) << QString::fromLatin1(layout) << static_cast<std::uint8_t>(code)
                                  << QString::fromUtf8(characters) << keyCode;
        };
        row("es", 47, "ñ", 41);
        row("us,ru", 38, "a", 0);
        row("latam", 34, "´", 33);
        row("fr", 24, "a", 12);
        row("ru", 38, "ф", 0);
        row("gr", 38, "α", 0);
    }
    void eachKeyIsNamedAsTheLayoutHasIt()
    {
        QFETCH(QString, layout);
        QFETCH(std::uint8_t, code);
        QFETCH(QString, characters);
        QFETCH(int, keyCode);
        m_hardware.setKeyboard(layout);
        const auto press = [&] {
            const std::size_t before = m_field->read.size();
            m_hands.press(Qt::Key_Control);
            m_hands.tapCode(code);
            m_hands.release(Qt::Key_Control);
            QTRY_COMPARE(m_field->read.size(), before + 2);
        };
        press();
        QCOMPARE(m_field->last()->keyCode, keyCode);
        QCOMPARE(m_field->last()->characters.toLower(), characters);
        QCOMPARE(m_field->last()->modifiers, int(controlModifier));
    }

    // A digit with Shift, and a letter, in each of the layouts that are switched through.
    void eachLayoutOfSeveralNamesItsKeysAndFires_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<std::uint8_t>("code");
        QTest::addColumn<int>("keyCode");
        QTest::addColumn<QString>("characters");
        const auto row = [](const char* name, int number, int code, int keyCode,
                            const char* characters) {
            QTest::newRow(name) << number << static_cast<std::uint8_t>(code) << keyCode
                                << QString::fromUtf8(characters);
        };
        row("digit of the first", 0, 18, 25, "9");
        row("letter of the first", 0, 24, 12, "q");
        row("digit of the second", 1, 18, 25, "9");
        row("letter of the second", 1, 47, 41, "ñ");
        row("digit of the third", 2, 18, 25, "9");
        row("letter of the third", 2, 38, 0, "ф");
        row("digit of the fourth", 3, 18, 25, "ç");
        row("letter of the fourth", 3, 24, 12, "a");
        row("space of the third, which is the first one's", 2, 65, 49, " ");
    }
    void eachLayoutOfSeveralNamesItsKeysAndFires()
    {
        QFETCH(int, number);
        QFETCH(std::uint8_t, code);
        m_hardware.setKeyboard(QStringLiteral("us,es,ru,fr"), QStringLiteral("grp:menu_toggle"));
        switchLayout(number);
        const std::size_t before = m_field->read.size();
        const auto chord = [&] {
            m_hands.press(Qt::Key_Shift);
            m_hands.press(Qt::Key_Super_L);
            m_hands.tapCode(code);
            m_hands.letGo();
        };
        chord();
        QTRY_COMPARE(m_field->read.size(), before + 3);
        const PressedKey pressed = m_field->last().value_or(PressedKey{-1, 0, {}});

        int fired = 0;
        QObject context;
        bool isBound = false;
        m_hotKeys.bind(
            {{QStringLiteral("key"), {}, pressed.keyCode, pressed.modifiers}}, &context,
            [&fired](const QString&) { ++fired; },
            [&isBound](const QStringList& refused) { isBound = refused.isEmpty(); });
        chord();
        const bool fires = QTest::qWaitFor([&fired] { return fired == 1; });
        switchLayout(kLayouts - number);
        m_hotKeys.bind({}, &context, {}, [](const QStringList&) {});

        QTEST(pressed.keyCode, "keyCode");
        QCOMPARE(pressed.modifiers, shiftModifier | commandModifier);
        QTEST(pressed.characters.toLower(), "characters");
        QVERIFY(isBound);
        QVERIFY(fires);
    }
};

BRINDLECAM_TEST(TestX11PressedKeys);

} // namespace brindlecam

#include "tst_x11_pressedkeys.moc"
