#include "capture/FileStep.h"

#include <algorithm>
#include <array>

namespace brindlecam {

namespace {

struct FileRow {
    FileStep::State from;
    FileStep::Event event;
    FileStep step;
};

auto fileRows()
{
    using enum FileStep::State;
    using enum FileStep::Act;
    using Event = FileStep::Event;
    return std::array{
        FileRow{entered, Event::start, {encoding, encode}},
        FileRow{encoding, Event::encoded, {encoded, letPass}},
        FileRow{encoded, Event::wayFree, {writing, write}},
        FileRow{writing, Event::written, {left, leave}},
    };
}

} // namespace

FileStep FileStep::of(State state, Event event)
{
    static const auto rows = fileRows();
    const auto found = std::ranges::find_if(rows, [state, event](const FileRow& row) {
        return row.from == state && row.event == event;
    });
    return found == rows.end() ? FileStep{state, Act::nothing} : found->step;
}

} // namespace brindlecam
