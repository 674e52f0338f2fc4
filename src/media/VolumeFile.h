// The header of a volume file: "BIN", one unread byte, then x, y, z and the sample kind as little-endian
// 32-bit numbers, then samples from offset 20, x fastest.
//
// Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace pixelgrove {

constexpr size_t kVolumeHeaderBytes = 20;

struct VolumeHeader {
    uint32_t x = 0, y = 0, z = 0;
    uint32_t sampleKind = 0;  // 1: 8-bit, 2: 16-bit, 4: four bytes a texel; others can't be uploaded
};

// The header, or nothing when the file doesn't begin with "BIN" or is shorter than its header.
std::optional<VolumeHeader> ReadVolumeHeader(std::span<const uint8_t> file);

// Bytes that one sample of a row takes, 1 (kinds 1 and 4, which are read one component a texel) or 2 (kind
// 2); 0 for another kind.
uint32_t VolumeSampleBytes(uint32_t sampleKind);

// Bytes of the x * y * z samples that are read, rows without gaps. Nothing for another kind or a size of 0 or
// above 65535; whether a driver takes the sizes is its own to say.
std::optional<uint64_t> VolumeDataBytes(const VolumeHeader& header);

// The file holds all samples that its header promises.
bool IsVolumeComplete(std::span<const uint8_t> file);

}  // namespace pixelgrove
