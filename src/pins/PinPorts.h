#pragma once

namespace brindlecam {

class Compositing;
class Displays;
class Panels;
class Pins;

/// What pins borrow of the system.
struct PinPorts {
    Panels& panels;
    Pins& pins;
    Displays& displays;
    Compositing& compositing;
};

} // namespace brindlecam
