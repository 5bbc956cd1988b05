#include "support/TestCase.h"

#ifdef BRINDLECAM_TEST_WIDGETS
#include <QApplication>
using Application = QApplication;
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif

namespace brindlecam::test {

std::vector<Maker>& registeredTests()
{
    static std::vector<Maker> tests;
    return tests;
}

} // namespace brindlecam::test

int main(int argc, char* argv[])
{
    Application application(argc, argv);
    Application::setApplicationName(QStringLiteral("brindlecam"));
    int failures = 0;
    for (const auto& make : brindlecam::test::registeredTests()) {
        const auto test = make();
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
