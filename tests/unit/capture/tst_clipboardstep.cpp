#include "capture/ClipboardStep.h"
#include "support/TestCase.h"

#include <array>

namespace brindlecam {

namespace {

constexpr std::array kClipboardEvents{
    ClipboardStep::Event::content,       ClipboardStep::Event::picture,
    ClipboardStep::Event::pictureInARow, ClipboardStep::Event::samePicture,
    ClipboardStep::Event::pause,         ClipboardStep::Event::encoded,
    ClipboardStep::Event::sessionEnd,
};

const char* nameOf(ClipboardStep::State state)
{
    switch (state) {
    case ClipboardStep::State::idle:
        return "idle";
    case ClipboardStep::State::waiting:
        return "waiting";
    case ClipboardStep::State::encoding:
        return "encoding";
    case ClipboardStep::State::encodingLast:
        return "encoding the last";
    case ClipboardStep::State::kept:
        return "kept";
    }
    Q_UNREACHABLE();
}

const char* nameOf(ClipboardStep::Event event)
{
    switch (event) {
    case ClipboardStep::Event::content:
        return "content";
    case ClipboardStep::Event::picture:
        return "picture";
    case ClipboardStep::Event::pictureInARow:
        return "picture in a row";
    case ClipboardStep::Event::samePicture:
        return "same picture";
    case ClipboardStep::Event::pause:
        return "pause";
    case ClipboardStep::Event::encoded:
        return "encoded";
    case ClipboardStep::Event::sessionEnd:
        return "end of the session";
    }
    Q_UNREACHABLE();
}

/// Adds a test row for each event.
void addRow(ClipboardStep::State state,
            const std::array<ClipboardStep, kClipboardEvents.size()>& steps)
{
    for (std::size_t i = 0; i < kClipboardEvents.size(); ++i) {
        QTest::addRow("%s, %s", nameOf(state), nameOf(kClipboardEvents.at(i)))
            << state << kClipboardEvents.at(i) << steps.at(i);
    }
}

} // namespace

/// The table of the clipboard lane, whole.
class TestClipboardStep final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyEventInEveryState_data()
    {
        using enum ClipboardStep::State;
        using enum ClipboardStep::Act;
        QTest::addColumn<ClipboardStep::State>("state");
        QTest::addColumn<ClipboardStep::Event>("event");
        QTest::addColumn<ClipboardStep>("step");
        addRow(idle, {{
                         {idle, makeWay},
                         {encoding, encodeNew},
                         {waiting, holdNew},
                         {idle, nothing}, // it remembers none that could be the same
                         {idle, nothing},
                         {idle, nothing},
                         {idle, reveal},
                     }});
        addRow(waiting, {{
                            {idle, makeWay},
                            {encoding, encodeNew},
                            {waiting, holdNew},
                            {waiting, join},
                            {encoding, encode},
                            {waiting, nothing},
                            {encodingLast, encode},
                        }});
        addRow(encoding, {{
                             {idle, makeWay},
                             {encoding, encodeNew},
                             {waiting, holdNew},
                             {encoding, join},
                             {encoding, nothing},
                             {kept, offer},
                             {encodingLast, nothing},
                         }});
        addRow(encodingLast, {{
                                 {idle, makeWay},
                                 {encoding, encodeNew},
                                 {waiting, holdNew},
                                 {encodingLast, join},
                                 {encodingLast, nothing},
                                 {idle, offerOpenly},
                                 {encodingLast, nothing},
                             }});
        addRow(kept, {{
                         {idle, makeWay},
                         {encoding, encodeNew},
                         {waiting, holdNew},
                         {kept, offerAgain},
                         {kept, nothing},
                         {kept, nothing},
                         {idle, reveal},
                     }});
    }
    void everyEventInEveryState()
    {
        QFETCH(const ClipboardStep::State, state);
        QFETCH(const ClipboardStep::Event, event);
        QFETCH(const ClipboardStep, step);
        QCOMPARE(ClipboardStep::of(state, event).next, step.next);
        QCOMPARE(ClipboardStep::of(state, event).act, step.act);
    }
};

BRINDLECAM_TEST(TestClipboardStep);

} // namespace brindlecam

#include "tst_clipboardstep.moc"
