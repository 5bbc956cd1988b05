#include "platform/x11/connection/KeyRepeats.h"
#include "support/TestCase.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWindow>

namespace brindlecam {

namespace {

constexpr quint32 kReturn = 36; // codes of keys
constexpr quint32 kDelete = 119;

/// A window that writes down whether the presses it gets are repeats.
class Typewriter final : public QWindow {
public:
    QList<bool> repeats;
    bool accepts = true;

    bool press(quint32 code, quint64 time, bool repeat = false)
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::ShiftModifier, code, 0xff0d, 1,
                        QStringLiteral("\r"), repeat);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(this, &event);
        return event.isAccepted();
    }
    void release(quint32 code, quint64 time)
    {
        QKeyEvent event(QEvent::KeyRelease, Qt::Key_Return, {}, code, 0, 0);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(this, &event);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        repeats.append(event->isAutoRepeat());
        same = same && event->key() == Qt::Key_Return && event->modifiers() == Qt::ShiftModifier &&
               event->nativeVirtualKey() == 0xff0d && event->nativeModifiers() == 1 &&
               event->text() == QLatin1String("\r") && event->timestamp() != 0;
        event->setAccepted(accepts);
    }

public:
    bool same = true; ///< every press came with all that it was sent with
};

} // namespace

class TestKeyRepeats final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyPressOfAFingerStaysOne()
    {
        const KeyRepeats repeats;
        Typewriter window;
        window.press(kReturn, 100);
        window.release(kReturn, 150);
        window.press(kReturn, 151);
        QCOMPARE(window.repeats, QList({false, false}));
    }

    void repeatThatQtMissesIsMarkedAndOtherwiseTheSame()
    {
        const KeyRepeats repeats;
        Typewriter window;
        window.press(kReturn, 100);
        window.release(kReturn, 700);
        QVERIFY(window.press(kReturn, 700));
        window.accepts = false;
        window.release(kReturn, 730);
        QVERIFY(!window.press(kReturn, 730));
        QCOMPARE(window.repeats, QList({false, true, true}));
        QVERIFY(window.same);
    }

    void repeatThatQtTellsStaysOne()
    {
        const KeyRepeats repeats;
        Typewriter window;
        window.press(kReturn, 100, true);
        QCOMPARE(window.repeats, QList({true}));
    }

    void anotherKeyOfTheSameMomentIsAPress()
    {
        const KeyRepeats repeats;
        Typewriter window;
        window.release(kDelete, 700);
        window.press(kReturn, 700);
        QCOMPARE(window.repeats, QList({false}));
    }

    void pressesWithoutATimeStayPresses()
    {
        const KeyRepeats repeats;
        Typewriter window;
        window.release(kReturn, 0);
        window.press(kReturn, 0);
        QCOMPARE(window.repeats.last(), false);
    }

    void releaseOnAnotherWindowCounts()
    {
        const KeyRepeats repeats;
        Typewriter first;
        Typewriter second;
        first.release(kReturn, 700);
        second.press(kReturn, 700);
        QCOMPARE(second.repeats, QList({true}));
    }
};

BRINDLECAM_TEST(TestKeyRepeats);

} // namespace brindlecam

#include "tst_keyrepeats.moc"
