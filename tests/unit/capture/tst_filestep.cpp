#include "capture/FileStep.h"
#include "support/TestCase.h"

#include <array>

namespace brindlecam {

namespace {

constexpr std::array kFileEvents{FileStep::Event::start, FileStep::Event::encoded,
                                 FileStep::Event::wayFree, FileStep::Event::written};

const char* nameOf(FileStep::State state)
{
    switch (state) {
    case FileStep::State::entered:
        return "entered";
    case FileStep::State::encoding:
        return "encoding";
    case FileStep::State::encoded:
        return "encoded";
    case FileStep::State::writing:
        return "writing";
    case FileStep::State::left:
        return "left";
    }
    Q_UNREACHABLE();
}

const char* nameOf(FileStep::Event event)
{
    switch (event) {
    case FileStep::Event::start:
        return "start";
    case FileStep::Event::encoded:
        return "was encoded";
    case FileStep::Event::wayFree:
        return "way free";
    case FileStep::Event::written:
        return "written";
    }
    Q_UNREACHABLE();
}

/// Adds a test row for each event.
void addRow(FileStep::State state, const std::array<FileStep, kFileEvents.size()>& steps)
{
    for (std::size_t i = 0; i < kFileEvents.size(); ++i) {
        QTest::addRow("%s, %s", nameOf(state), nameOf(kFileEvents.at(i)))
            << state << kFileEvents.at(i) << steps.at(i);
    }
}

} // namespace

/// The table of the file lane, whole.
class TestFileStep final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyEventInEveryState_data()
    {
        using enum FileStep::State;
        using enum FileStep::Act;
        QTest::addColumn<FileStep::State>("state");
        QTest::addColumn<FileStep::Event>("event");
        QTest::addColumn<FileStep>("step");
        addRow(entered, {{
                            {encoding, encode},
                            {entered, nothing},
                            {entered, nothing},
                            {entered, nothing},
                        }});
        addRow(encoding, {{
                             {encoding, nothing},
                             {encoded, letPass},
                             {encoding, nothing},
                             {encoding, nothing},
                         }});
        addRow(encoded, {{
                            {encoded, nothing},
                            {encoded, nothing},
                            {writing, write},
                            {encoded, nothing},
                        }});
        addRow(writing, {{
                            {writing, nothing},
                            {writing, nothing},
                            {writing, nothing},
                            {left, leave},
                        }});
        addRow(left, {{
                         {left, nothing},
                         {left, nothing},
                         {left, nothing},
                         {left, nothing},
                     }});
    }
    void everyEventInEveryState()
    {
        QFETCH(const FileStep::State, state);
        QFETCH(const FileStep::Event, event);
        QFETCH(const FileStep, step);
        QCOMPARE(FileStep::of(state, event).next, step.next);
        QCOMPARE(FileStep::of(state, event).act, step.act);
    }
};

BRINDLECAM_TEST(TestFileStep);

} // namespace brindlecam

#include "tst_filestep.moc"
