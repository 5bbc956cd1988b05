#include "base/Result.h"
#include "support/TestCase.h"

#include <memory>

namespace brindlecam {

class TestResult final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void valueIsOkAndReadable()
    {
        const Result<int> result = 7;
        QVERIFY(result.ok());
        QVERIFY(result);
        QCOMPARE(result.value(), 7);
    }

    void errorCarriesItsMessage()
    {
        const Result<int> result = Error{QStringLiteral("no hay sitio")};
        QVERIFY(!result.ok());
        QVERIFY(!result);
        QCOMPARE(result.error().message, QStringLiteral("no hay sitio"));
    }

    void valuesThatCannotBeCopiedMoveOut()
    {
        Result<std::unique_ptr<int>> result = std::make_unique<int>(5);
        const std::unique_ptr<int> taken = std::move(result).value();
        QCOMPARE(*taken, 5);
    }
};

BRINDLECAM_TEST(TestResult);

} // namespace brindlecam

#include "tst_result.moc"
