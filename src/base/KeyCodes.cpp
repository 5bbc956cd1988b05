#include "base/KeyCodes.h"

#include <array>

namespace brindlecam::KeyCodes {

namespace {

struct Pair {
    int virtualCode;
    int evdevCode;
};

constexpr std::array kPairs{
    Pair{53, 1},                                                                  // Escape
    Pair{18, 2},    Pair{19, 3},    Pair{20, 4},    Pair{21, 5},    Pair{23, 6},  // 1 … 5
    Pair{22, 7},    Pair{26, 8},    Pair{28, 9},    Pair{25, 10},   Pair{29, 11}, // 6 … 0
    Pair{27, 12},   Pair{24, 13},   Pair{51, 14},   Pair{48, 15}, // minus, equal, backspace, tab
    Pair{12, 16},   Pair{13, 17},   Pair{14, 18},   Pair{15, 19},   Pair{17, 20}, // Q W E R T
    Pair{16, 21},   Pair{32, 22},   Pair{34, 23},   Pair{31, 24},   Pair{35, 25}, // Y U I O P
    Pair{33, 26},   Pair{30, 27},   Pair{36, 28},                                 // [ ] Return
    Pair{0, 30},    Pair{1, 31},    Pair{2, 32},    Pair{3, 33},    Pair{5, 34},  // A S D F G
    Pair{4, 35},    Pair{38, 36},   Pair{40, 37},   Pair{37, 38},                 // H J K L
    Pair{41, 39},   Pair{39, 40},   Pair{50, 41},   Pair{42, 43},                 // ; ' ` backslash
    Pair{6, 44},    Pair{7, 45},    Pair{8, 46},    Pair{9, 47},    Pair{11, 48}, // Z X C V B
    Pair{45, 49},   Pair{46, 50},   Pair{43, 51},   Pair{47, 52},   Pair{44, 53}, // N M , . /
    Pair{67, 55},   Pair{49, 57},                                                 // keypad *, space
    Pair{122, 59},  Pair{120, 60},  Pair{99, 61},   Pair{118, 62},  Pair{96, 63}, // F1 … F5
    Pair{97, 64},   Pair{98, 65},   Pair{100, 66},  Pair{101, 67},  Pair{109, 68}, // F6 … F10
    Pair{89, 71},   Pair{91, 72},   Pair{92, 73},   Pair{78, 74},                  // keypad 7 8 9 -
    Pair{86, 75},   Pair{87, 76},   Pair{88, 77},   Pair{69, 78},                  // keypad 4 5 6 +
    Pair{83, 79},   Pair{84, 80},   Pair{85, 81},   Pair{82, 82},                  // keypad 1 2 3 0
    Pair{65, 83},   Pair{10, 86},   Pair{103, 87},  Pair{111, 88},  // keypad ., ISO <, F11, F12
    Pair{76, 96},   Pair{75, 98},   Pair{105, 99},                  // keypad Enter, /, Print
    Pair{115, 102}, Pair{126, 103}, Pair{116, 104}, Pair{123, 105}, // Home, Up, PgUp, Left
    Pair{124, 106}, Pair{119, 107}, Pair{125, 108}, Pair{121, 109}, // Right, End, Down, PgDn
    Pair{114, 110}, Pair{117, 111}, Pair{81, 117},                  // Insert, Delete, keypad =
    Pair{107, 70},  Pair{113, 119},                                 // Scroll Lock, Pause
    Pair{105, 183}, Pair{107, 184}, Pair{113, 185}, Pair{106, 186}, // F13 … F16
    Pair{64, 187},  Pair{79, 188},  Pair{80, 189},  Pair{90, 190},  // F17 … F20
};

} // namespace

std::vector<int> toEvdev(int virtualKeyCode)
{
    std::vector<int> codes;
    for (const Pair& pair : kPairs) {
        if (pair.virtualCode == virtualKeyCode)
            codes.push_back(pair.evdevCode);
    }
    return codes;
}

std::optional<int> fromEvdev(int evdevCode)
{
    for (const Pair& pair : kPairs) {
        if (pair.evdevCode == evdevCode)
            return pair.virtualCode;
    }
    return std::nullopt;
}

} // namespace brindlecam::KeyCodes
