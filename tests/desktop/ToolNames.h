#pragma once

#include "base/Tool.h"

#include <optional>

namespace brindlecam::desktop {

/// What the button of a tool is called; none: the pointer's.
[[nodiscard]] inline const char* nameOf(std::optional<Tool> tool)
{
    if (!tool)
        return "Mover la selección o una anotación";
    switch (*tool) {
    case Tool::pen:
        return "Lápiz";
    case Tool::line:
        return "Línea";
    case Tool::arrow:
        return "Flecha";
    case Tool::rect:
        return "Rectángulo";
    case Tool::marker:
        return "Marcador";
    case Tool::text:
        return "Texto";
    case Tool::number:
        return "Números de paso ① ② ③";
    case Tool::pixelate:
        return "Pixelar";
    }
    return "";
}

} // namespace brindlecam::desktop
