#pragma once

#include "Stage.h"

namespace brindlecam::bench {

class Figures;

/// What the drawer feels like with a full history: from the key to its first pixels and to all
/// tiles in their place, with and without thumbnails that are there already, what the main thread
/// has to do meanwhile, and a step of the wheel. Native pixels, on a stage of one pixel per point.
class DrawerRows final {
public:
    DrawerRows(Stage& stage, Figures& figures);

    void run();

private:
    void fillHistory();
    void forgetThumbnails();
    /// Where the drawer's lower edge comes into sight.
    [[nodiscard]] Sample doorstep() const;
    /// Opens it without haste and answers what of it can be seen on the page.
    [[nodiscard]] std::vector<Sample> rehearsed();
    void close();
    void opening(const QString& kind, bool cached, double mostWhole);
    /// How long whoever needs the main thread has to wait while it opens.
    void answering(const QString& kind, bool cached);
    void scrolling();

    Stage& m_stage;
    Figures& m_figures;
};

} // namespace brindlecam::bench
