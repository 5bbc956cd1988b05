#pragma once

#include "desktop/support/Controls.h"
#include "desktop/support/Desktop.h"
#include "desktop/support/Patience.h"
#include "desktop/support/ProgramUnderTest.h"

#include <QObject>
#include <QTest>

#include <memory>

namespace brindlecam::desktop {

/// Base of every desktop test class. A test function calls useDesktop() and then drives the program
/// it starts; afterwards the program is asked to quit and must end with exit code 0 (so a
/// sanitizer's finding fails the test), and everything started is ended. A failed test leaves a
/// picture of the screen and the program's log in the folder named by BRINDLECAM_ARTIFACTS. A
/// derived class has no cleanup() of its own: it would take the place of this one.
class DesktopTest : public QObject {
    Q_OBJECT

protected:
    /// Starts a fresh desktop for the running test function.
    void useDesktop(const DesktopOptions& options = {});

    [[nodiscard]] Desktop& desktop() { return *m_desktop; }
    [[nodiscard]] ProgramUnderTest& program() { return *m_program; }
    [[nodiscard]] Input& input() { return m_desktop->input(); }
    [[nodiscard]] Screen& screen() { return m_desktop->screen(); }
    /// What the program shows, by name: on a desktop with Accessibility::on.
    [[nodiscard]] Controls& controls();
    [[nodiscard]] Windows& windows() { return m_desktop->windows(); }

    /// Rests the pointer here until the condition holds. As a person would, it moves the pointer a
    /// little when nothing comes: a change of the focus meanwhile, for one, counts as no rest.
    template <typename Condition>
    [[nodiscard]] bool restUntil(QPoint place, Condition condition)
    {
        constexpr int kRests = 10;
        for (int rest = 0; rest < kRests; ++rest) {
            input().moveTo(place - QPoint(0, rest % 2));
            if (waitUntil(condition, kPatience / kRests))
                return true;
        }
        return false;
    }

private Q_SLOTS:
    void cleanup();

private:
    void keepArtifacts() const;

    std::unique_ptr<Desktop> m_desktop;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::unique_ptr<Controls> m_controls;
};

} // namespace brindlecam::desktop
