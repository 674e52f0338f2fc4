// The shape that all fuzz targets share: one entry point that takes any bytes, and a few good inputs from
// which the seeded loop makes bad ones. libFuzzer calls the entry point by itself and needs no seeds.
//
// Each target is one file that defines both; each program links exactly one target.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

const std::vector<std::string>& FuzzSeeds();

// Ends the process with a line that names the broken rule. Unlike assert it is there in every build.
#define FUZZ_CHECK(condition)                                                            \
    do {                                                                                 \
        if (!(condition)) {                                                              \
            std::fprintf(stderr, "%s:%d: broken: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                \
        }                                                                                \
    } while (false)
