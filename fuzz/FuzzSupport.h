#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

namespace kavori::fuzz {

// Every target starts the same way: an offscreen Qt application, the program's folder in a
// private scratch folder ($KAVORI_HOME), and questions answered silently with their default
// button, so nothing waits for a user.
void StartQt();

// The scratch folder (ending in "/"), made once per process.
QString ScratchFolder();

// Writes the input to a file of the scratch folder and returns its path. Readers that take a
// path read what the fuzzer gave them through the same code a user's file goes through.
QString WriteScratch(const QString& name, const uint8_t* data, size_t size);

} // namespace kavori::fuzz

// Each target defines its one input handler; StartQt runs before the first input.
#define KAVORI_FUZZ_TARGET                                                                         \
    extern "C" int LLVMFuzzerInitialize(int*, char***)                                             \
    {                                                                                              \
        kavori::fuzz::StartQt();                                                                   \
        return 0;                                                                                  \
    }                                                                                              \
    extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
