// Covers ShortcutRecorderAccess.
#include "look/Appearance.h"
#include "preferences/Config.h"
#include "settings/ShortcutRecorder.h"
#include "support/FakeHotKeys.h"
#include "support/TestCase.h"

#include <QAccessible>
#include <QLineEdit>
#include <QVBoxLayout>

namespace brindlecam {

namespace {

constexpr Qt::KeyboardModifiers kShiftSuper = Qt::ShiftModifier | Qt::MetaModifier;

/// A recorder in a window with another field, and what it has told.
struct RecorderDesk {
    test::FakeHotKeys keyboard;
    QStringList told; ///< until the window has gone
    QWidget window;
    ShortcutRecorder* recorder =
        new ShortcutRecorder(keyboard, KeyNaming::words, QStringLiteral("Capturar área"));
    QLineEdit* other = new QLineEdit;

    RecorderDesk()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(recorder);
        layout->addWidget(other);
        recorder->setCombo(KeyCombo{25, shiftModifier | commandModifier, QStringLiteral("⇧⌘9")});
        recorder->onRecording = [this] { told << QStringLiteral("records"); };
        recorder->onStopped = [this] { told << QStringLiteral("stops"); };
        recorder->onRefused = [this] { told << QStringLiteral("beeps"); };
        recorder->onChange = [this](const auto& combo) {
            told << (combo ? combo->display : QStringLiteral("none"));
        };
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
};

} // namespace

class TestShortcutRecorder final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aClickRecordsAndAnotherStops()
    {
        RecorderDesk desk;
        QCOMPARE(desk.recorder->shown(), QStringLiteral("Mayús+Super+9"));
        QTest::mouseClick(desk.recorder, Qt::LeftButton);
        QVERIFY(desk.recorder->recording());
        QVERIFY(desk.recorder->hasFocus());
        QCOMPARE(desk.recorder->shown(), QStringLiteral("Presiona la combinación…"));
        QTest::mouseClick(desk.recorder, Qt::LeftButton);
        QVERIFY(!desk.recorder->recording());
        QCOMPARE(desk.told, QStringList({QStringLiteral("records"), QStringLiteral("stops")}));
        QCOMPARE(desk.recorder->shown(), QStringLiteral("Mayús+Super+9"));
    }

    void otherButtonsDoNothing()
    {
        RecorderDesk desk;
        QTest::mouseClick(desk.recorder, Qt::RightButton);
        QTest::mouseClick(desk.recorder, Qt::MiddleButton);
        QVERIFY(!desk.recorder->recording());
    }

    // Nothing would end it, and hot keys would be dead meanwhile.
    void withoutTheKeyboardItDoesNotRecord()
    {
        RecorderDesk desk;
        QWidget elsewhere;
        elsewhere.show();
        elsewhere.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&elsewhere));
        desk.recorder->startRecording();
        QVERIFY(desk.recorder->recording() == desk.recorder->hasFocus());
        QTRY_VERIFY(desk.recorder->recording()); // it has asked for it
        QVERIFY(desk.recorder->hasFocus());
        desk.window.hide();
        desk.told.clear();
        desk.recorder->startRecording();
        desk.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&desk.window));
        QVERIFY(!desk.recorder->recording());
        QVERIFY(desk.told.isEmpty());
    }

    void longShortcutsFit()
    {
        RecorderDesk desk;
        desk.other->setFocus();
        desk.recorder->setCombo(
            KeyCombo{49, controlModifier | optionModifier | shiftModifier | commandModifier,
                     QStringLiteral("⌃⌥⇧⌘Espacio")});
        QCOMPARE(desk.recorder->shown(), QStringLiteral("Ctrl+Alt+Mayús+Super+Espacio"));
        const QImage shown = desk.recorder->grab().toImage();
        const QColor ground = shown.pixelColor(4, shown.height() / 2);
        for (int y = 8; y < shown.height() - 8; ++y) {
            for (const int x : {3, 4, 5, shown.width() - 6, shown.width() - 5})
                QCOMPARE(shown.pixelColor(x, y), ground);
        }
    }

    void aCombinationIsTakenAndEndsIt()
    {
        RecorderDesk desk;
        desk.recorder->startRecording();
        QTest::keyClick(desk.recorder, Qt::Key_5, kShiftSuper);
        QCOMPARE(desk.recorder->combo(),
                 (KeyCombo{23, shiftModifier | commandModifier, QStringLiteral("⇧⌘5")}));
        QCOMPARE(desk.told, QStringList({QStringLiteral("records"), QStringLiteral("⇧⌘5"),
                                         QStringLiteral("stops")}));
        QCOMPARE(desk.recorder->shown(), QStringLiteral("Mayús+Super+5"));
    }

    void aFunctionKeyNeedsNoModifier()
    {
        RecorderDesk desk;
        desk.recorder->startRecording();
        QTest::keyClick(desk.recorder, Qt::Key_F13);
        QCOMPARE(desk.recorder->shown(), QStringLiteral("F13"));
    }

    void whatCantBeAShortcutBeepsAndItGoesOn_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("held");
        QTest::newRow("a plain letter") << int(Qt::Key_A) << Qt::KeyboardModifiers();
        QTest::newRow("with Shift alone")
            << int(Qt::Key_A) << Qt::KeyboardModifiers(Qt::ShiftModifier);
        QTest::newRow("a key without a code")
            << int(Qt::Key_LaunchMail) << Qt::KeyboardModifiers(Qt::MetaModifier);
        QTest::newRow("Tab, which leads nowhere meanwhile")
            << int(Qt::Key_Tab) << Qt::KeyboardModifiers();
        QTest::newRow("Return") << int(Qt::Key_Return) << Qt::KeyboardModifiers();
    }
    void whatCantBeAShortcutBeepsAndItGoesOn()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, held);
        RecorderDesk desk;
        desk.recorder->startRecording();
        QTest::keyClick(desk.recorder, Qt::Key(key), held);
        QCOMPARE(desk.told, QStringList({QStringLiteral("records"), QStringLiteral("beeps")}));
        QVERIFY(desk.recorder->recording());
        QVERIFY(desk.recorder->hasFocus());
        QTest::keyClick(desk.recorder, Qt::Key_Escape);
        QVERIFY(!desk.recorder->recording());
        QCOMPARE(desk.recorder->shown(), QStringLiteral("Mayús+Super+9"));
        QCOMPARE(desk.told.last(), QStringLiteral("stops"));
    }

    void backspaceRemovesTheShortcut()
    {
        RecorderDesk desk;
        desk.recorder->startRecording();
        QTest::keyClick(desk.recorder, Qt::Key_Backspace);
        QVERIFY(!desk.recorder->combo());
        QCOMPARE(desk.recorder->shown(), QStringLiteral("Sin atajo"));
        QCOMPARE(desk.told, QStringList({QStringLiteral("records"), QStringLiteral("none"),
                                         QStringLiteral("stops")}));
    }

    void escapeAndBackspaceWithModifiersAreKeysLikeOthers()
    {
        RecorderDesk desk;
        desk.keyboard.codes.insert({{Qt::Key_Escape, 53}, {Qt::Key_Backspace, 51}});
        desk.recorder->startRecording();
        QTest::keyClick(desk.recorder, Qt::Key_Escape, Qt::ControlModifier);
        QCOMPARE(desk.recorder->combo()->keyCode, 53);
        desk.recorder->startRecording();
        QTest::keyClick(desk.recorder, Qt::Key_Backspace, Qt::AltModifier);
        QCOMPARE(desk.recorder->combo()->keyCode, 51);
    }

    void aHeldKeyCountsOnce()
    {
        RecorderDesk desk;
        desk.recorder->startRecording();
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(desk.recorder, &repeat);
        QCOMPARE(desk.told, QStringList(QStringLiteral("records")));
    }

    void whoeverTakesTheKeyboardEndsIt()
    {
        RecorderDesk desk;
        desk.recorder->startRecording();
        desk.other->setFocus();
        QVERIFY(!desk.recorder->recording());
        desk.recorder->startRecording();
        desk.window.hide();
        QVERIFY(!desk.recorder->recording());
        QCOMPARE(desk.told.filter(QStringLiteral("stops")).size(), 2);
    }

    void spaceAndReturnRecordToo_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Space") << int(Qt::Key_Space);
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Enter") << int(Qt::Key_Enter);
    }
    void spaceAndReturnRecordToo()
    {
        QFETCH(int, key);
        RecorderDesk desk;
        desk.recorder->setFocus();
        QTest::keyClick(desk.recorder, Qt::Key(key));
        QVERIFY(desk.recorder->recording());
    }

    void assistiveTechnologyReadsWhatItIsFor()
    {
        RecorderDesk desk;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(desk.recorder);
        QVERIFY(told);
        QCOMPARE(told->role(), QAccessible::Button);
        QCOMPARE(told->text(QAccessible::Name), QStringLiteral("Capturar área"));
        QCOMPARE(told->text(QAccessible::Value), QStringLiteral("Mayús+Super+9"));
        QCOMPARE(told->text(QAccessible::Description), QStringLiteral("Mayús+Super+9"));
        told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(desk.recorder->recording());
        QCOMPARE(told->text(QAccessible::Value), QStringLiteral("Presiona la combinación…"));
    }

    void itLooksGreenWhileItRecords()
    {
        RecorderDesk desk;
        desk.window.setPalette(Appearance::palette(Appearance::Shade::light));
        desk.other->setFocus();
        const QSize size = ShortcutRecorder::kSize;
        QCOMPARE(desk.recorder->size(), size);
        const QPoint inside(6, size.height() / 2);
        const QPoint edge(1, size.height() / 2);
        const auto shown = [recorder = desk.recorder](QPoint place) {
            return recorder->grab().toImage().pixelColor(place);
        };
        QCOMPARE(shown(inside), QColor(Qt::white));
        desk.recorder->startRecording();
        QCOMPARE(shown(edge), QColor(Config::leafGreen.rgb()));
        QVERIFY(shown(inside).green() > shown(inside).red() + 5);
    }
};

BRINDLECAM_TEST(TestShortcutRecorder);

} // namespace brindlecam

#include "tst_shortcutrecorder.moc"
