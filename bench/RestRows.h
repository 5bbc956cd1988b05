#pragma once

#include "Stage.h"

namespace brindlecam::bench {

class Figures;

/// What the program costs while nothing happens: from 10 to 40 seconds after its start, and after
/// ten captures.
class RestRows final {
public:
    RestRows(Stage& stage, Figures& figures);

    void run();

private:
    void measure(const QString& when, double mostMebibytes);
    void capture();

    Stage& m_stage;
    Figures& m_figures;
};

} // namespace brindlecam::bench
