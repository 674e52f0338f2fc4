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

// Bytes that an upload of this volume reads: x * y * z samples of 1 byte (kinds 1 and 4, which are read
// one component a texel) or 2 bytes (kind 2), with every row padded to 4 bytes, GL's default unpack
// alignment. Nothing for another kind, a size of 0 or above 2048, or a product that doesn't fit.
std::optional<uint64_t> VolumeUploadBytes(const VolumeHeader& header);

// The file holds all samples that its header promises and its sizes can be uploaded.
bool IsVolumeComplete(std::span<const uint8_t> file);

}  // namespace pixelgrove
