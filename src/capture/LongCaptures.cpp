#include "capture/LongCaptures.h"

namespace brindlecam {

std::vector<Toolbar::Action> unavailableActions(const LongCaptures& longCaptures)
{
    std::vector<Toolbar::Action> missing;
    if (!longCaptures.available(LongCapture::scroll))
        missing.push_back(Toolbar::Action::scroll);
    if (!longCaptures.available(LongCapture::gif))
        missing.push_back(Toolbar::Action::gif);
    return missing;
}

} // namespace brindlecam
