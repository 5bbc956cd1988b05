#include "desktop/TrayHost.h"
#include "desktop/support/CaptureTest.h"

#include <QElapsedTimer>

#include <algorithm>

namespace brindlecam::desktop {

/// Delayed captures, chosen from the menu of a tray host.
class TestCountdown final : public CaptureTest {
    Q_OBJECT

private:
    void useMenu()
    {
        usePatternedDesktop({.bus = MessageBus::session});
        m_host.reset(); // its name on the bus is one for all
        m_host = std::make_unique<TrayHost>(desktop());
        startProgram();
        QVERIFY(m_host->itemComes());
    }

    /// Chooses from the submenu of delayed captures.
    [[nodiscard]] bool choose(const char* title)
    {
        return m_host->choose(m_host->items().front(),
                              {QStringLiteral("Capturar con retraso"), QString::fromUtf8(title)});
    }

    std::unique_ptr<TrayHost> m_host;

private Q_SLOTS:
    void countsDownInTheMiddleOfTheScreenAndThenCaptures()
    {
        useMenu();
        const QImage before = screen().grabAtRest();
        QElapsedTimer sinceTheChoice;
        sinceTheChoice.start();
        QVERIFY(choose("Pantalla completa en 3 segundos"));
        QVERIFY(waitUntil([this] { return toasts().size() == 1; }));
        const QRect panel = toasts().front().pixels;
        QCOMPARE(panel, QRect(580, 340, 120, 120));
        // Three different digits, one after the other, and never the desktop again in between.
        QList<QImage> digits;
        const auto watched = [&] {
            const bool shown = !toasts().empty();
            const QImage now = screen().grab(panel);
            if (shown && !toasts().empty() && now != before.copy(panel) && !digits.contains(now))
                digits.append(now);
            return !shown;
        };
        QVERIFY(waitUntil(watched));
        QVERIFY(digits.size() >= 3);
        QVERIFY(history().isEmpty());
        QVERIFY(isPasted(before));
        QVERIFY(sinceTheChoice.elapsed() >= 3100);
        QVERIFY(isOnlyInHistory(before));
    }

    void laterChoiceReplacesTheRunningOne()
    {
        useMenu();
        QVERIFY(choose("Pantalla completa en 3 segundos"));
        QVERIFY(waitUntil([this] { return toasts().size() == 1; }));
        QVERIFY(choose("Área en 3 segundos"));
        QVERIFY(sessionIsReady());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QCOMPARE(program().quit(), 0);
        QVERIFY(history().isEmpty());
    }

    void captureMeanwhileEndsItAndDoesNotShowItsDigit()
    {
        useMenu();
        const QImage before = screen().grabAtRest();
        QVERIFY(choose("Área en 5 segundos"));
        QVERIFY(waitUntil([this] { return toasts().size() == 1; }));
        const QRect panel = toasts().front().pixels;
        QVERIFY(waitUntil([&] { return screen().grab(panel) != before.copy(panel); }));
        pressHotKey(kFullScreenKey);
        QVERIFY(isPasted(before));
        const auto shown = toasts();
        QVERIFY(std::ranges::count(shown, panel, &SeenWindow::pixels) == 0);
    }

    void openMenusOfOtherProgramsAreCaptured()
    {
        useMenu();
        QVERIFY(choose("Pantalla completa en 3 segundos"));
        QVERIFY(waitUntil([this] { return toasts().size() == 1; }));
        // What a menu does: a window of its own, keyboard and pointer taken.
        const auto menu = desktop().open({.pixels = QRect(100, 100, 150, 200),
                                          .kind = WindowKind::unmanaged,
                                          .colour = Qt::red});
        const auto owner = desktop().rival();
        QVERIFY(owner->takeKeyboard());
        QVERIFY(owner->takePointer());
        QVERIFY(waitUntil([this] { return pasted().size() == screen().pixels().size(); }));
        QCOMPARE(pasted().convertToFormat(QImage::Format_RGB32).pixelColor(150, 200),
                 QColor(Qt::red));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestCountdown)

#include "tst_countdown.moc"
