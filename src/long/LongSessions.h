#pragma once

#include "capture/LongCaptures.h"
#include "long/ScrollCapture.h"

namespace brindlecam {

/// Takes the long captures that sessions ask for. Main thread.
class LongSessions final : public LongCaptures {
public:
    explicit LongSessions(const ScrollCapture::Rooms& rooms);

    [[nodiscard]] bool available(LongCapture kind) const override;
    void start(LongCapture kind, const QRect& native, const ScreenInfo& screen) override;
    void cancel() override;

    [[nodiscard]] ScrollCapture& scrollCapture() { return m_scroll; }

private:
    ScrollCapture m_scroll;
};

} // namespace brindlecam
