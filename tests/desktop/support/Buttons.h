#pragma once

/// What buttons of the bars are called that are no tools, up to their keys.
namespace brindlecam::desktop::Buttons {

constexpr auto kCopy = "Copiar";
constexpr auto kPin = "Fijar flotando en pantalla";
constexpr auto kReadText = "Copiar el texto de la selección";

} // namespace brindlecam::desktop::Buttons
