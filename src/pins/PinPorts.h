#pragma once

namespace brindlecam {

class Displays;
class Panels;
class Pins;

/// What pins borrow of the system.
struct PinPorts {
    Panels& panels;
    Pins& pins;
    Displays& displays;
};

} // namespace brindlecam
