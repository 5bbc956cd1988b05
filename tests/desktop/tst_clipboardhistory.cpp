#include "desktop/AnnotatingTest.h"
#include "desktop/support/x11/ClipboardHistory.h"

#include <functional>

namespace brindlecam::desktop {

/// What a clipboard manager keeps of a session in which something is hidden.
class TestClipboardHistory final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QRectF kSecret{250, 70, 90, 60};

    [[nodiscard]] Marks hidden() const
    {
        return {mark(Tool::pixelate, kSecret.topLeft(), kSecret.bottomRight())};
    }
    /// A session that has copied the secret, and then the picture without it.
    [[nodiscard]] bool hides()
    {
        if (!selects() || !isPastedWith({}) || !choose(Tool::pixelate))
            return false;
        drag(kSecret.topLeft(), kSecret.bottomRight());
        return isPastedWith(hidden());
    }
    /// Waits until the manager has kept this picture, and tells whether it is the only one.
    [[nodiscard]] static bool keepsOnly(const ClipboardHistory& manager, const QImage& picture)
    {
        return waitUntil([&] { return !manager.kept().isEmpty(); }) && manager.kept().size() == 1 &&
               samePixels(QImage::fromData(manager.kept().front(), "PNG"), picture);
    }

private Q_SLOTS:
    void managerKeepsOnlyWhatTheSessionEndsWith_data()
    {
        QTest::addColumn<std::function<void(TestClipboardHistory&)>>("end");
        using End = std::function<void(TestClipboardHistory&)>;
        QTest::newRow("Return") << End([](auto& test) { test.input().tap(XK_Return); });
        QTest::newRow("Escape") << End([](auto& test) { test.input().tap(XK_Escape); });
        QTest::newRow("save") << End([](auto& test) { test.input().chord({XK_Control_L, XK_s}); });
        QTest::newRow("pin") << End([](auto& test) { test.press(Toolbar::Action::pin); });
        QTest::newRow("quit") << End([](auto& test) { QCOMPARE(test.program().quit(), 0); });
    }
    void managerKeepsOnlyWhatTheSessionEndsWith()
    {
        QFETCH(std::function<void(TestClipboardHistory&)>, end);
        useProgram();
        const ClipboardHistory manager(display());
        QVERIFY(hides());
        QVERIFY(waitUntil([&] { return manager.secrets() >= 2; }));
        QVERIFY(manager.kept().isEmpty());
        end(*this);
        QVERIFY(keepsOnly(manager, picture(hidden())));
    }

    void managerKeepsWhatIsSelectedWhenTheSessionEndsAtOnce()
    {
        useProgram();
        const ClipboardHistory manager(display());
        QVERIFY(selects());
        input().tap(XK_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(keepsOnly(manager, picture({})));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestClipboardHistory>(argc,
                                                                                         argv);
}

#include "tst_clipboardhistory.moc"
