#pragma once

#include "base/Error.h"
#include "base/Text.h"

/// Why nothing can be read, in the words that the user is told.
namespace brindlecam::GrabErrors {

[[nodiscard]] inline Error outside()
{
    return {text("La zona está fuera de la pantalla.")};
}

[[nodiscard]] inline Error unknownFormat()
{
    return {text("La pantalla usa un formato de color desconocido.")};
}

[[nodiscard]] inline Error noMemory()
{
    return {text("No hay memoria suficiente para la captura.")};
}

[[nodiscard]] inline Error noAnswer()
{
    return {text("El servidor X no responde.")};
}

} // namespace brindlecam::GrabErrors
