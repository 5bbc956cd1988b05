#include "long/WideRegisters.h"
#include "support/TestCase.h"

#include <array>

namespace brindlecam {

class TestWideRegisters final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void upperHalvesAreEmptyAfterwards()
    {
#if !defined(__x86_64__)
        forgetWideRegisters();
        QSKIP("this processor has no such registers");
#else
        if (!__builtin_cpu_supports("avx"))
            QSKIP("this processor has no such registers");
        std::array<std::uint64_t, 2> half{};
        const auto fill = [] {
            asm volatile("vcmptrueps %%ymm15, %%ymm15, %%ymm15" : : : "xmm15", "memory");
        };
        const auto look = [&half] {
            asm volatile("vextractf128 $1, %%ymm15, (%0)" : : "r"(half.data()) : "memory");
        };
        fill();
        look();
        const auto before = half;
        fill();
        forgetWideRegisters();
        look();
        QCOMPARE(before[0], ~std::uint64_t{0});
        QCOMPARE(half[0], std::uint64_t{0});
        QCOMPARE(half[1], std::uint64_t{0});
#endif
    }
};

BRINDLECAM_TEST(TestWideRegisters);

} // namespace brindlecam

#include "tst_wideregisters.moc"
