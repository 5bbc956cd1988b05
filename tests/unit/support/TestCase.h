#pragma once

#include <QObject>
#include <QTest>

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam::test {

/// Base of every test class: an unexpected warning in the log fails the test. What the offscreen
/// plugin says it lacks (raising, masks) is no warning of ours.
class TestCase : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(
            QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
    }
};

using Maker = std::function<std::unique_ptr<QObject>()>;

/// Every registered test class of this program.
std::vector<Maker>& registeredTests();

struct Registration {
    explicit Registration(Maker maker) { registeredTests().push_back(std::move(maker)); }
};

} // namespace brindlecam::test

/// Adds a test class to its room's program. In namespace scope, once per class.
#define BRINDLECAM_TEST(Class)                                                                     \
    static const brindlecam::test::Registration registration##Class(                               \
        [] { return std::make_unique<Class>(); })
