#pragma once

#include <cstddef>
#include <cstdint>

// What every target offers. libFuzzer calls these by name; so does the replay (ReplayMain.cpp).
extern "C" {

/// Once per process: the application object, with nothing of the machine's settings in it. From
/// then on a warning in the log ends the process.
int LLVMFuzzerInitialize(int* argc, char*** argv);

/// One run. Ends the process where a promise is broken.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
}
