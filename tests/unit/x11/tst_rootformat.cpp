#include "platform/x11/grab/RootFormat.h"
#include "support/TestCase.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace brindlecam {

namespace {

/// What a server says of itself, laid out as it comes over the connection.
class Server final {
public:
    struct Layout {
        int byteOrder = XCB_IMAGE_ORDER_LSB_FIRST;
        std::uint8_t depth = 24;
        std::uint8_t bitsPerPixel = 32;
        std::uint32_t red = 0xff0000;
        std::uint32_t green = 0xff00;
        std::uint32_t blue = 0xff;
        std::uint8_t linePad = 32;
    };

    explicit Server(const Layout& layout)
    {
        xcb_setup_t setup{};
        setup.image_byte_order = static_cast<std::uint8_t>(layout.byteOrder);
        setup.pixmap_formats_len = 2;
        append(m_setup, setup);
        append(m_setup, xcb_format_t{1, 1, 32, {}});
        append(m_setup, xcb_format_t{layout.depth, layout.bitsPerPixel, layout.linePad, {}});

        xcb_screen_t screen{};
        screen.root_depth = layout.depth;
        screen.root_visual = kRootVisual;
        screen.allowed_depths_len = 2;
        append(m_screen, screen);
        xcb_depth_t other{};
        other.depth = 1;
        append(m_screen, other);
        xcb_depth_t depth{};
        depth.depth = layout.depth;
        depth.visuals_len = 2;
        append(m_screen, depth);
        append(m_screen, visual(kRootVisual + 1, {.red = 1, .green = 2, .blue = 4}));
        append(m_screen, visual(kRootVisual, layout));
    }

    [[nodiscard]] RootFormat format() const
    {
        return RootFormat::of(*reinterpret_cast<const xcb_setup_t*>(m_setup.data()),
                              *reinterpret_cast<const xcb_screen_t*>(m_screen.data()));
    }

private:
    static constexpr xcb_visualid_t kRootVisual = 33;

    static xcb_visualtype_t visual(xcb_visualid_t id, const Layout& layout)
    {
        xcb_visualtype_t visual{};
        visual.visual_id = id;
        visual.red_mask = layout.red;
        visual.green_mask = layout.green;
        visual.blue_mask = layout.blue;
        return visual;
    }
    // In whole words: their addresses are right for what lies in them.
    template <typename Part>
    static void append(std::vector<std::uint32_t>& words, const Part& part)
    {
        static_assert(sizeof part % sizeof(std::uint32_t) == 0);
        const std::size_t before = words.size();
        words.resize(before + sizeof part / sizeof(std::uint32_t));
        std::memcpy(&words[before], &part, sizeof part);
    }

    std::vector<std::uint32_t> m_setup;
    std::vector<std::uint32_t> m_screen;
};

} // namespace

/// How pictures come from servers of every kind.
class TestRootFormat final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyLayoutIsReadAsWhatItIs_data()
    {
        QTest::addColumn<Server::Layout>("layout");
        QTest::addColumn<QImage::Format>("format");
        QTest::addColumn<qsizetype>("bytesOfFive"); // pixels
        using Layout = Server::Layout;
        QTest::newRow("depth 24") << Layout{} << QImage::Format_RGB32 << qsizetype(20);
        QTest::newRow("red last") << Layout{.red = 0xff, .blue = 0xff0000}
                                  << QImage::Format_RGBX8888 << qsizetype(20);
        QTest::newRow("depth 30") << Layout{.depth = 30,
                                            .red = 0x3ff00000,
                                            .green = 0xffc00,
                                            .blue = 0x3ff}
                                  << QImage::Format_RGB30 << qsizetype(20);
        QTest::newRow("depth 30, red last")
            << Layout{.depth = 30, .red = 0x3ff, .green = 0xffc00, .blue = 0x3ff00000}
            << QImage::Format_BGR30 << qsizetype(20);
        QTest::newRow("24 bits a pixel")
            << Layout{.bitsPerPixel = 24} << QImage::Format_BGR888 << qsizetype(16);
        QTest::newRow("depth 16")
            << Layout{.depth = 16, .bitsPerPixel = 16, .red = 0xf800, .green = 0x7e0, .blue = 0x1f}
            << QImage::Format_RGB16 << qsizetype(12);
        QTest::newRow("depth 15")
            << Layout{.depth = 15, .bitsPerPixel = 16, .red = 0x7c00, .green = 0x3e0, .blue = 0x1f}
            << QImage::Format_RGB555 << qsizetype(12);
        QTest::newRow("lines of whole bytes")
            << Layout{.bitsPerPixel = 24, .linePad = 8} << QImage::Format_BGR888 << qsizetype(15);
        QTest::newRow("the other byte order") << Layout{.byteOrder = XCB_IMAGE_ORDER_MSB_FIRST}
                                              << QImage::Format_Invalid << qsizetype(20);
        QTest::newRow("unknown colours")
            << Layout{.depth = 8, .bitsPerPixel = 8, .red = 0xe0, .green = 0x1c, .blue = 0x3}
            << QImage::Format_Invalid << qsizetype(8);
    }
    void everyLayoutIsReadAsWhatItIs()
    {
        QFETCH(Server::Layout, layout);
        QFETCH(QImage::Format, format);
        QFETCH(qsizetype, bytesOfFive);
        const RootFormat read = Server(layout).format();
        QCOMPARE(read.format, format);
        QCOMPARE(read.bytesPerLine(5), bytesOfFive);
        QCOMPARE(read.isDirect(), format == QImage::Format_RGB32);
    }
};

BRINDLECAM_TEST(TestRootFormat);

} // namespace brindlecam

#include "tst_rootformat.moc"
