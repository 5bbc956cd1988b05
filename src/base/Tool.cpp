#include "base/Tool.h"

#include "base/Text.h"

namespace brindlecam {

namespace {

struct ToolRow {
    const char* name;
    const char* symbol;
    const char* tooltip;
    const char* sizeLabel; ///< null: no sizes
    ToolSizes sizes;
};

constexpr ToolSizes kStrokeSizes{.minimum = 1, .maximum = 20, .step = 1, .standard = 3};
constexpr ToolSizes kMarkerSizes{.minimum = 4, .maximum = 40, .step = 2, .standard = 16};
constexpr ToolSizes kBadgeSizes{.minimum = 16, .maximum = 48, .step = 2, .standard = 26};

constexpr std::array<ToolRow, kAllTools.size()> kRows{{
    {"pen", "pencil", "Lápiz", "Grosor del lápiz", kStrokeSizes},
    {"line", "line.diagonal", "Línea (⇧ para ángulos rectos)", "Grosor de la línea", kStrokeSizes},
    {"arrow", "arrow.up.right", "Flecha (⇧ para ángulos rectos)", "Grosor de la flecha",
     kStrokeSizes},
    {"rect", "rectangle", "Rectángulo", "Grosor del rectángulo", kStrokeSizes},
    {"marker", "highlighter", "Marcador (la opacidad está en el panel de color)",
     "Grosor del marcador", kMarkerSizes},
    {"text", "textformat", "Texto", nullptr, {}},
    {"number", "1.circle",
     "Números de paso ① ② ③ (cada clic pone el siguiente; con otro color vuelven a empezar en 1)",
     "Tamaño del número", kBadgeSizes},
    {"pixelate", "checkerboard.rectangle", "Pixelar (ocultar datos sensibles)", nullptr, {}},
}};

const ToolRow& row(Tool tool)
{
    return kRows.at(static_cast<std::size_t>(tool));
}

} // namespace

QString name(Tool tool)
{
    return QString::fromUtf8(row(tool).name);
}

QString symbolName(Tool tool)
{
    return QString::fromUtf8(row(tool).symbol);
}

QString tooltip(Tool tool)
{
    return text(row(tool).tooltip);
}

std::optional<QString> sizeLabel(Tool tool)
{
    if (!row(tool).sizeLabel)
        return std::nullopt;
    return text(row(tool).sizeLabel);
}

std::optional<ToolSizes> sizes(Tool tool)
{
    if (!row(tool).sizeLabel)
        return std::nullopt;
    return row(tool).sizes;
}

} // namespace brindlecam
