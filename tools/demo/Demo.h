#pragma once

#include "desktop/support/Controls.h"
#include "desktop/support/Desktop.h"
#include "desktop/support/ProgramUnderTest.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace brindlecam::demo {

/// The program at work: a capture of the whole screen by command, and one of an annotated area by
/// keys and mouse. Places are pixels of the screen.
class Demo final {
public:
    /// Finds the program and the sample desktop in one folder, and leaves the pictures in another,
    /// which is made anew.
    Demo(const QString& programs, const QString& results);

    /// Shows it all and prints where the pictures are. True only when all of them decode; else it
    /// has said why not, unless it was interrupted.
    [[nodiscard]] bool show();
    /// Has show() come to its end before it is through. For a signal's handler.
    static void interrupt();

private:
    // The story, step by step; each says what went wrong.
    [[nodiscard]] bool openDesktop();
    [[nodiscard]] bool startProgram();
    [[nodiscard]] bool takeScreen();
    [[nodiscard]] bool openArea();
    [[nodiscard]] bool annotate();
    [[nodiscard]] bool takeArea();
    [[nodiscard]] bool tellPictures();

    /// Presses the button of this name.
    [[nodiscard]] bool choose(const QString& tool);
    void write();
    /// Waits until an action has changed a part of the screen.
    [[nodiscard]] bool draws(const QString& what, const QRect& part,
                             const std::function<void()>& action);
    /// Waits until somebody who pastes is offered a PNG, and both folders hold so many.
    [[nodiscard]] bool isKept(int count, const QString& noPicture, const QString& noCopy);
    [[nodiscard]] bool tell(const QString& title, const QStringList& pictures);

    [[nodiscard]] bool await(const QString& failure, const std::function<bool()>& condition);
    /// Says why, with the program's log.
    bool fail(const QString& why) const;
    [[nodiscard]] QString inResults(const QString& name) const;
    void keepLog() const;

    const QString m_programs;
    const QString m_results;
    std::unique_ptr<desktop::Desktop> m_desktop;
    std::unique_ptr<desktop::Process> m_sample;
    std::unique_ptr<desktop::ProgramUnderTest> m_program;
    std::unique_ptr<desktop::Controls> m_controls;
};

} // namespace brindlecam::demo
