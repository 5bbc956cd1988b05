#include "base/Tool.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestTool final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void toolsHaveTheirNamesTextsAndSizes_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("tooltip");
        QTest::addColumn<std::optional<QString>>("sizeLabel");
        QTest::addColumn<std::optional<ToolSizes>>("sizes");

        const ToolSizes stroke{.minimum = 1, .maximum = 20, .step = 1, .standard = 3};
        const ToolSizes marker{.minimum = 4, .maximum = 40, .step = 2, .standard = 16};
        const ToolSizes badge{.minimum = 16, .maximum = 48, .step = 2, .standard = 26};
        int index = 0;
        const auto row = [&index](const char* name, const char* symbol, const char* tooltip,
                                  const char* sizeLabel, std::optional<ToolSizes> sizes) {
            QTest::newRow(name) << index++ << QString::fromUtf8(name) << QString::fromUtf8(symbol)
                                << QString::fromUtf8(tooltip)
                                << (sizeLabel ? std::optional(QString::fromUtf8(sizeLabel))
                                              : std::nullopt)
                                << sizes;
        };
        row("pen", "pencil", "Lápiz", "Grosor del lápiz", stroke);
        row("line", "line.diagonal", "Línea (⇧ para ángulos rectos)", "Grosor de la línea", stroke);
        row("arrow", "arrow.up.right", "Flecha (⇧ para ángulos rectos)", "Grosor de la flecha",
            stroke);
        row("rect", "rectangle", "Rectángulo", "Grosor del rectángulo", stroke);
        row("marker", "highlighter", "Marcador (la opacidad está en el panel de color)",
            "Grosor del marcador", marker);
        row("text", "textformat", "Texto", nullptr, std::nullopt);
        row("number", "1.circle",
            "Números de paso ① ② ③ (cada clic pone el siguiente; con otro color vuelven a empezar "
            "en 1)",
            "Tamaño del número", badge);
        row("pixelate", "checkerboard.rectangle", "Pixelar (ocultar datos sensibles)", nullptr,
            std::nullopt);
    }
    void toolsHaveTheirNamesTextsAndSizes()
    {
        QFETCH(int, index);
        const Tool tool = kAllTools.at(static_cast<std::size_t>(index));
        QCOMPARE(static_cast<int>(tool), index);
        QTEST(name(tool), "name");
        QTEST(symbolName(tool), "symbol");
        QTEST(tooltip(tool), "tooltip");
        QTEST(sizeLabel(tool), "sizeLabel");
        QTEST(sizes(tool), "sizes");
    }

    void thereAreEightTools() { QCOMPARE(kAllTools.size(), std::size_t{8}); }

    void standardSizesLieInTheirRange()
    {
        for (const Tool tool : kAllTools) {
            const auto range = sizes(tool);
            QCOMPARE(range.has_value(), sizeLabel(tool).has_value());
            if (range) {
                QVERIFY(range->minimum <= range->standard && range->standard <= range->maximum);
                QVERIFY(range->step > 0);
            }
        }
        QCOMPARE(kFixedToolSize, 3.0);
    }
};

BRINDLECAM_TEST(TestTool);

} // namespace brindlecam

#include "tst_tool.moc"
