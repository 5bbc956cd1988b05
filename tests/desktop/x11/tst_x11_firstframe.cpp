// Covers DrawingPause, PaintHold, RootBands, ServerPixels, WindowBands.
#include "platform/FirstFrame.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/grab/RootReader.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/windows/PanelWindows.h"
#include "platform/x11/windows/X11Panels.h"
#include "support/TestCase.h"
#include "x11/NoMoreFiles.h"
#include "x11/RootImage.h"
#include "x11/ThisDesktop.h"

#include <QPaintEvent>
#include <QPainter>

#include <cstring>
#include <memory>
#include <utility>

namespace brindlecam {

using test::rootImage;
using test::settle;

namespace {

constexpr QRect kAll(0, 0, 1366, 768);
constexpr QRect kCovered(101, 83, 307, 205); // native pixels

/// A picture on which every shift by a pixel shows.
QImage numbered(QSize size, int blue)
{
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            picture.setPixel(x, y, qRgb(x % 256, y % 256, blue));
    }
    return picture;
}

class PictureFrame final : public FirstFrame {
public:
    explicit PictureFrame(QImage picture)
        : m_picture(std::move(picture))
    {
    }
    QSize size() const override { return m_picture.size(); }
    void write(int firstRow, int rows, uchar* target, qsizetype bytesPerLine) const override
    {
        for (int row = 0; row < rows; ++row)
            std::memcpy(target + row * bytesPerLine, m_picture.constScanLine(firstRow + row),
                        static_cast<std::size_t>(4 * m_picture.width()));
    }

private:
    const QImage m_picture;
};

/// Paints one picture in device pixels and remembers where it was asked to.
class Sheet final : public QWidget {
public:
    explicit Sheet(QImage picture)
        : m_picture(std::move(picture))
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_NoSystemBackground);
    }

    QRegion painted; ///< points

protected:
    void paintEvent(QPaintEvent* event) override
    {
        painted += event->region();
        QPainter painter(this);
        painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
        painter.drawImage(0, 0, m_picture);
    }

private:
    const QImage m_picture;
};

/// A sheet beneath another one that covers it, as a canvas covers its window.
class CoveredSheet final {
public:
    explicit CoveredSheet(const QImage& picture)
        : below(picture)
        , above(picture)
    {
        above.setParent(&below);
        above.setGeometry(0, 0, kAll.width(), kAll.height());
    }
    ~CoveredSheet() { above.setParent(nullptr); }
    CoveredSheet(const CoveredSheet&) = delete;
    CoveredSheet& operator=(const CoveredSheet&) = delete;

    Sheet below;
    Sheet above;
};

/// Another program's window over a part of the screen.
class Cover final {
public:
    Cover()
        : m_window(xcb_generate_id(x11::connection()))
    {
        const std::uint32_t values[] = {x11::screen().white_pixel, 1};
        xcb_create_window(x11::connection(), XCB_COPY_FROM_PARENT, m_window, x11::root(),
                          kCovered.x(), kCovered.y(), kCovered.width(), kCovered.height(), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
        xcb_map_window(x11::connection(), m_window);
    }
    ~Cover() { xcb_destroy_window(x11::connection(), m_window); }
    Cover(const Cover&) = delete;
    Cover& operator=(const Cover&) = delete;

private:
    const xcb_window_t m_window;
};

} // namespace

/// Panels that show something before they have painted anything.
class TestX11FirstFrame final : public test::TestCase {
    Q_OBJECT

private:
    const QImage m_first = numbered(kAll.size(), 10);
    const QImage m_later = numbered(kAll.size(), 200);
    std::shared_ptr<ServerPixels> m_pixels = std::make_shared<ServerPixels>();
    RootReader m_reader{m_pixels};
    X11Panels m_panels{std::make_shared<PanelWindows>(std::make_shared<X11Events>()), m_pixels};
    int m_mayPaint = 0;

    void showAtOnce(Sheet& sheet, const QImage& first)
    {
        m_panels.showAtOnce(sheet, kAll, PictureFrame(first), [this] { ++m_mayPaint; });
    }
    /// The first frame with these pixels painted by the widget.
    [[nodiscard]] QImage mixed(const QRect& painted) const
    {
        QImage picture = m_first;
        QPainter(&picture).drawImage(painted, m_later, painted);
        return picture;
    }

private Q_SLOTS:
    void cleanup()
    {
        settle();
        m_mayPaint = 0;
    }

    void frameIsOnTheScreenBeforeTheWidgetPaints()
    {
        Sheet sheet(m_later);
        m_panels.assume(sheet, PanelRole::overlay, {});
        for (const QImage& first : {m_first, numbered(kAll.size(), 90)}) {
            m_mayPaint = 0;
            showAtOnce(sheet, first);
            QCOMPARE(rootImage(kAll), first); // the event loop has not run
            QVERIFY(sheet.painted.isEmpty());
            QTRY_COMPARE(m_mayPaint, 1);
            settle();
            QVERIFY(sheet.painted.isEmpty());
            QCOMPARE(rootImage(kAll), first);
            sheet.hide();
            settle();
        }
    }

    void onlyWhatIsAskedForIsPainted()
    {
        Sheet sheet(m_later);
        m_panels.assume(sheet, PanelRole::overlay, {});
        showAtOnce(sheet, m_first);
        QTRY_COMPARE(m_mayPaint, 1);
        const QRect points(20, 40, 100, 60);
        sheet.update(points);
        const QRect pixels(30, 60, 150, 90);
        QTRY_COMPARE(rootImage(kAll), mixed(pixels));
        QCOMPARE(sheet.painted, QRegion(points));
    }

    void whatWasCoveredBeforeItMayPaintIsPaintedThen()
    {
        CoveredSheet sheet(m_first);
        m_panels.assume(sheet.below, PanelRole::overlay, {});
        showAtOnce(sheet.below, m_first);
        {
            const Cover cover;
            QVERIFY(rootImage(kAll) != m_first);
        }
        QVERIFY(rootImage(kAll) != m_first); // the server has lost it
        QTRY_COMPARE(rootImage(kAll), m_first);
        settle();
        QVERIFY(!sheet.above.painted.contains(QPoint(700, 400)));
    }

    void whatIsCoveredLaterIsPaintedAgain()
    {
        CoveredSheet sheet(m_first);
        m_panels.assume(sheet.below, PanelRole::overlay, {});
        showAtOnce(sheet.below, m_first);
        QTRY_COMPARE(m_mayPaint, 1);
        settle();
        for (int time = 0; time < 2; ++time) {
            {
                const Cover cover;
                QTRY_VERIFY(rootImage(kAll) != m_first);
            }
            QTRY_COMPARE(rootImage(kAll), m_first);
        }
        QVERIFY(!sheet.above.painted.contains(QPoint(700, 400)));
    }

    void frameOfAnotherSizeIsNotShown()
    {
        CoveredSheet sheet(m_later);
        m_panels.assume(sheet.below, PanelRole::overlay, {});
        showAtOnce(sheet.below, numbered({1365, 768}, 10));
        QTRY_COMPARE(rootImage(kAll), m_later);
        QCOMPARE(m_mayPaint, 1);
    }

    void widgetPaintsItselfWhereMemoryIsRefused()
    {
        CoveredSheet sheet(m_later);
        m_panels.assume(sheet.below, PanelRole::overlay, {});
        m_panels.show(sheet.below, kAll); // Qt has its own memory by then
        QTRY_COMPARE(rootImage(kAll), m_later);
        sheet.below.hide();
        settle();
        m_pixels = std::make_shared<ServerPixels>();
        X11Panels panels(std::make_shared<PanelWindows>(std::make_shared<X11Events>()), m_pixels);
        panels.assume(sheet.below, PanelRole::overlay, {});
        {
            const test::NoMoreFiles refused;
            panels.showAtOnce(sheet.below, kAll, PictureFrame(m_first), [this] { ++m_mayPaint; });
        }
        QTRY_COMPARE(rootImage(kAll), m_later);
        QCOMPARE(m_mayPaint, 1);
    }

    void widgetShownAsUsualAfterwardsPaintsItself()
    {
        Sheet sheet(m_later);
        m_panels.assume(sheet, PanelRole::overlay, {});
        showAtOnce(sheet, m_first);
        QTRY_COMPARE(m_mayPaint, 1);
        sheet.hide();
        settle();
        m_panels.show(sheet, kAll);
        QTRY_COMPARE(rootImage(kAll), m_later);
    }

    void widgetHiddenAtOnceNeedNotPaint()
    {
        Sheet sheet(m_later);
        m_panels.assume(sheet, PanelRole::overlay, {});
        showAtOnce(sheet, m_first);
        sheet.hide();
        settle();
        QCOMPARE(m_mayPaint, 0);
        showAtOnce(sheet, m_first);
        QCOMPARE(rootImage(kAll), m_first);
        QTRY_COMPARE(m_mayPaint, 1);
    }

    void childThatCameMeanwhilePaintsItself()
    {
        Sheet sheet(m_later);
        m_panels.assume(sheet, PanelRole::overlay, {});
        showAtOnce(sheet, m_first);
        Sheet child(numbered({300, 150}, 120));
        child.setParent(&sheet);
        child.setGeometry(20, 40, 200, 100);
        child.show();
        QTRY_COMPARE(m_mayPaint, 1);
        child.update();
        QTRY_COMPARE(rootImage({30, 60, 300, 150}), numbered({300, 150}, 120));
        child.setParent(nullptr);
    }

    void widgetMayGoBeforeItMayPaint()
    {
        auto sheet = std::make_unique<Sheet>(m_later);
        m_panels.assume(*sheet, PanelRole::overlay, {});
        showAtOnce(*sheet, m_first);
        sheet.reset();
        settle();
        QCOMPARE(m_mayPaint, 0);
    }

    void grabOfTheOverlayIsItsFrame()
    {
        Sheet sheet(m_later);
        m_panels.assume(sheet, PanelRole::overlay, {});
        showAtOnce(sheet, m_first);
        const auto grabbed = m_reader.read(kAll);
        QVERIFY(grabbed.ok());
        QCOMPARE(grabbed.value(), m_first);
    }
};

BRINDLECAM_TEST(TestX11FirstFrame);

} // namespace brindlecam

#include "tst_x11_firstframe.moc"
