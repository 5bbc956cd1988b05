#include "platform/factory/PortChoice.h"
#include "platform/null/NullPlatform.h"
#include "platform/unix/UnixPlatform.h"
#include "support/TestCase.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace brindlecam {

/// Which ports every Unix serves, and what it makes ready. Nothing is made.
class TestUnixPlatform final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void signalsAndTextsNeedOnlyADesktop_data()
    {
        QTest::addColumn<WindowSystem>("windowSystem");
        QTest::addColumn<QStringList>("served");
        const QStringList both{QStringLiteral("textRecognizer TesseractTextRecognizer"),
                               QStringLiteral("quitSignals UnixQuitSignals")};
        QTest::newRow("X11") << WindowSystem::x11 << both;
        QTest::newRow("Wayland") << WindowSystem::wayland << both;
        QTest::newRow("no desktop") << WindowSystem::none << QStringList();
    }
    void signalsAndTextsNeedOnlyADesktop()
    {
        QFETCH(WindowSystem, windowSystem);
        QFETCH(QStringList, served);
        PortOffers offers = nullOffers();
        UnixPlatform::offer(offers);
        const auto ports =
            choosePorts(std::move(offers), Session{.windowSystem = windowSystem}, {});
        QVERIFY(ports);
        QStringList found;
        for (const ServedPort& port : ports.value().served) {
            if (!port.serves.startsWith(QLatin1String("Null")))
                found << port.name + QLatin1Char(' ') + port.serves;
        }
        QCOMPARE(found, served);
    }

    void largeBuffersAreGivenBackAtOnce()
    {
#if !defined(__GLIBC__) || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("another allocator");
#else
        constexpr qsizetype kLarge = 8 << 20;
        UnixPlatform::prepare();
        // What has been large once must not make the allocator keep what is a little smaller.
        {
            const auto first = std::make_unique<char[]>(kLarge);
        }
        const std::size_t before = ::mallinfo2().hblks; // blocks of their own
        const QByteArray second(kLarge / 2, Qt::Uninitialized);
        QCOMPARE(::mallinfo2().hblks, before + 1);
#endif
    }
};

BRINDLECAM_TEST(TestUnixPlatform);

} // namespace brindlecam

#include "tst_unixplatform.moc"
