#include "Faults.h"

namespace brindlecam::soak {

std::vector<Fault> allFaults()
{
    std::vector<Fault> all;
    for (const auto& some : {surroundingsFaults(), monitorFaults(), inputFaults(),
                             clipboardFaults(), folderFaults(), runFaults(), settingsFaults()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace brindlecam::soak
