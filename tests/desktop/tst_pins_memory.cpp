// Covers FreedMemory.
#include "desktop/support/PinTest.h"
#include "desktop/support/ProcessMemory.h"

#include <QElapsedTimer>

namespace brindlecam::desktop {

/// What pins leave behind when they are closed.
class TestPinsMemory final : public PinTest {
    Q_OBJECT

private:
    /// In KiB.
    [[nodiscard]] qint64 memory() { return ProcessMemory::of(program().pid()).own; }
    /// Once the buffers of the last session are given back.
    [[nodiscard]] qint64 memoryAtRest()
    {
        qint64 least = memory();
        QElapsedTimer sinceLess;
        sinceLess.start();
        constexpr qint64 kLittle = 64; // kB; the system takes pages back, one by one
        static_cast<void>(waitUntil([&] {
            if (const qint64 now = memory(); now < least - kLittle) {
                least = now;
                sinceLess.start();
            }
            return sinceLess.hasExpired(6000);
        }));
        return least;
    }
    /// Opens so many pins in the same place, one above the other, and closes them all.
    [[nodiscard]] bool openAndClose(std::size_t count)
    {
        while (pins().size() < count) {
            if (!pinArea())
                return false;
        }
        while (!pins().empty()) {
            const std::size_t left = pins().size() - 1;
            // A busy machine may make two slow clicks of it.
            constexpr int kPinCloses = 2000; // ms
            const auto closesOne = [&] {
                input().doubleClick({500, 400});
                return waitUntil([&] { return pins().size() <= left; }, kPinCloses);
            };
            if (!waitUntil(closesOne))
                return false;
        }
        return true;
    }

private Q_SLOTS:
    void memoryIsGivenBackWithThePins()
    {
        usePins();
        for (int i = 0; i < 3; ++i)
            QVERIFY(openAndClose(1));
        QVERIFY(waitUntil([this] { return history().size() == 3; }));
        const qint64 before = memoryAtRest();
        QVERIFY(before > 0);
        QVERIFY(openAndClose(50));
        const qint64 after = memoryAtRest();
        QVERIFY2(after <= before * 1.1,
                 qPrintable(QStringLiteral("%1 kB, then %2 kB").arg(before).arg(after)));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPinsMemory)

#include "tst_pins_memory.moc"
