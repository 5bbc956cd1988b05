#pragma once

#include "desktop/support/Process.h"
#include "platform/RegionFrames.h"
#include "platform/x11/windows/X11Panels.h"
#include "support/TestCase.h"
#include "x11/ports/Client.h"
#include "x11/ports/Page.h"
#include "x11/ports/Pattern.h"

#include <QBitmap>
#include <QImage>
#include <QWidget>

#include <initializer_list>
#include <optional>

namespace brindlecam::test {

/// What a session's panel looks like to others: half transparent, its corners round.
class PanelOfOurs final : public QWidget {
public:
    explicit PanelOfOurs(QSize pixels);
    /// As where nothing blends.
    void cut() { setMask(m_shape); }

protected:
    void paintEvent(QPaintEvent*) override;

private:
    QBitmap m_shape;
};

/// A compositor as long as it lives.
class Compositor final {
public:
    Compositor();
    ~Compositor();
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;

    [[nodiscard]] static bool runs();

private:
    desktop::Process m_process;
};

/// Base of tests with a panel of ours in the frames of a region, on a desktop with a picture on
/// which every shift shows. Native pixels.
class BeneathTest : public TestCase {
    Q_OBJECT

protected:
    static constexpr QRect kPage{200, 100, 900, 600};
    static constexpr QRect kRegion{210, 110, 880, 580};
    /// As the panel of a session lies in a selection as high as the screen.
    static constexpr QRect kPanel{330, 634, 640, 44};
    static constexpr RegionOptions kWithout{.panels = RegionOptions::Panels::leftOut};
    static constexpr int kFrames = 30;

    /// Pages over the desktop, the lowest first.
    [[nodiscard]] QImage stacked(std::initializer_list<const Page*> pages) const;

    [[nodiscard]] static bool hasComposite();
    [[nodiscard]] static bool isDepth16();
    /// Whether a panel can be left out, and a compositor run.
    [[nodiscard]] static bool canComposite() { return hasComposite() && !isDepth16(); }

    /// Rows of `composited`.
    static void desktops();
    /// As the row has it; false where the test has been skipped.
    [[nodiscard]] bool begin();

    /// On the screen when it returns.
    void showPanel();
    [[nodiscard]] xcb_window_t panelId() { return static_cast<xcb_window_t>(m_panel->winId()); }

    /// The next frame is of these pages, and of the moment in which it is asked for.
    [[nodiscard]] bool showsAtOnce(RegionFrames& frames, std::initializer_list<const Page*> pages);
    /// The same for what the panel covers; the rest comes when the compositor has shown it.
    [[nodiscard]] bool showsBeneath(RegionFrames& frames, std::initializer_list<const Page*> pages);
    [[nodiscard]] bool isPanelOnTheScreen(std::initializer_list<const Page*> pages);

    const QImage m_pattern = pattern();
    std::optional<Client> m_client;
    std::optional<Compositor> m_compositor;
    X11Panels m_panels;
    std::optional<PanelOfOurs> m_panel;

    BeneathTest();

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { m_client.reset(); }
    void cleanup();
};

} // namespace brindlecam::test
