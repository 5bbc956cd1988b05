#include "capture/ClipboardStep.h"

#include <algorithm>
#include <array>
#include <optional>

namespace brindlecam {

namespace {

struct ClipboardRow {
    std::optional<ClipboardStep::State> from; ///< none: any
    ClipboardStep::Event event;
    ClipboardStep step;
};

auto clipboardRows()
{
    using enum ClipboardStep::State;
    using enum ClipboardStep::Act;
    using Event = ClipboardStep::Event;
    return std::array{
        // Whatever is newer overtakes.
        ClipboardRow{std::nullopt, Event::content, {idle, makeWay}},
        ClipboardRow{std::nullopt, Event::picture, {encoding, encodeNew}},
        ClipboardRow{std::nullopt, Event::pictureInARow, {waiting, holdNew}},

        ClipboardRow{idle, Event::sessionEnd, {idle, reveal}},

        ClipboardRow{waiting, Event::samePicture, {waiting, join}},
        ClipboardRow{waiting, Event::pause, {encoding, encode}},
        ClipboardRow{waiting, Event::sessionEnd, {encodingLast, encode}},

        ClipboardRow{encoding, Event::samePicture, {encoding, join}},
        ClipboardRow{encoding, Event::encoded, {kept, offer}},
        ClipboardRow{encoding, Event::sessionEnd, {encodingLast, nothing}},

        ClipboardRow{encodingLast, Event::samePicture, {encodingLast, join}},
        ClipboardRow{encodingLast, Event::encoded, {idle, offerOpenly}},

        ClipboardRow{kept, Event::samePicture, {kept, offerAgain}},
        ClipboardRow{kept, Event::sessionEnd, {idle, reveal}},
    };
}

} // namespace

ClipboardStep ClipboardStep::of(State state, Event event)
{
    static const auto rows = clipboardRows();
    const auto found = std::ranges::find_if(rows, [state, event](const ClipboardRow& row) {
        return row.event == event && row.from.value_or(state) == state;
    });
    return found == rows.end() ? ClipboardStep{state, Act::nothing} : found->step;
}

} // namespace brindlecam
