#include "desktop/AnnotatingTest.h"
#include "desktop/support/Buttons.h"
#include "desktop/support/ClipboardManager.h"

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
    [[nodiscard]] static bool keepsOnly(const ClipboardManager& manager, const QImage& picture)
    {
        return waitUntil([&] { return !manager.kept().isEmpty(); }) && manager.kept().size() == 1 &&
               samePixels(QImage::fromData(manager.kept().front(), "PNG"), picture);
    }

private Q_SLOTS:
    void managerKeepsOnlyWhatTheSessionEndsWith_data()
    {
        QTest::addColumn<std::function<void(TestClipboardHistory&)>>("end");
        using End = std::function<void(TestClipboardHistory&)>;
        QTest::newRow("Return") << End([](auto& test) { test.input().tap(Qt::Key_Return); });
        QTest::newRow("Escape") << End([](auto& test) { test.input().tap(Qt::Key_Escape); });
        QTest::newRow("save") << End([](auto& test) {
            test.input().chord({Qt::Key_Control, Qt::Key_S});
        });
        QTest::newRow("pin") << End([](auto& test) { QVERIFY(test.press(Buttons::kPin)); });
        QTest::newRow("quit") << End([](auto& test) { QCOMPARE(test.program().quit(), 0); });
    }
    void managerKeepsOnlyWhatTheSessionEndsWith()
    {
        QFETCH(std::function<void(TestClipboardHistory&)>, end);
        useProgram();
        const auto manager = desktop().startClipboardManager(KeepsBy::looking);
        QVERIFY(hides());
        QVERIFY(waitUntil([&] { return manager->secrets() >= 2; }));
        QVERIFY(manager->kept().isEmpty());
        end(*this);
        QVERIFY(keepsOnly(*manager, picture(hidden())));
    }

    void managerKeepsWhatIsSelectedWhenTheSessionEndsAtOnce()
    {
        useProgram();
        const auto manager = desktop().startClipboardManager(KeepsBy::looking);
        QVERIFY(selects());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(keepsOnly(*manager, picture({})));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestClipboardHistory>(argc,
                                                                                         argv);
}

#include "tst_clipboardhistory.moc"
