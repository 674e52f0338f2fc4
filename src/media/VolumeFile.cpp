#include "media/VolumeFile.h"

#include <cstring>

namespace pixelgrove {
namespace {

// Keeps every product below 2^49.
constexpr uint32_t kMaxVolumeSide = 65535;

uint32_t ReadU32(const uint8_t* bytes) {
    return uint32_t(bytes[0]) | uint32_t(bytes[1]) << 8 | uint32_t(bytes[2]) << 16 | uint32_t(bytes[3]) << 24;
}

bool IsVolumeSide(uint32_t side) {
    return side >= 1 && side <= kMaxVolumeSide;
}

}  // namespace

std::optional<VolumeHeader> ReadVolumeHeader(std::span<const uint8_t> file) {
    if (file.size() < kVolumeHeaderBytes || std::memcmp(file.data(), "BIN", 3) != 0) return std::nullopt;
    VolumeHeader header;
    header.x = ReadU32(file.data() + 4);
    header.y = ReadU32(file.data() + 8);
    header.z = ReadU32(file.data() + 12);
    header.sampleKind = ReadU32(file.data() + 16);
    return header;
}

uint32_t VolumeSampleBytes(uint32_t sampleKind) {
    if (sampleKind == 2) return 2;
    return sampleKind == 1 || sampleKind == 4 ? 1 : 0;
}

std::optional<uint64_t> VolumeDataBytes(const VolumeHeader& header) {
    const uint64_t sampleBytes = VolumeSampleBytes(header.sampleKind);
    if (sampleBytes == 0) return std::nullopt;
    if (!IsVolumeSide(header.x) || !IsVolumeSide(header.y) || !IsVolumeSide(header.z)) return std::nullopt;
    return sampleBytes * header.x * header.y * header.z;
}

bool IsVolumeComplete(std::span<const uint8_t> file) {
    const std::optional<VolumeHeader> header = ReadVolumeHeader(file);
    if (!header) return false;
    const std::optional<uint64_t> needed = VolumeDataBytes(*header);
    return needed && *needed <= file.size() - kVolumeHeaderBytes;
}

}  // namespace pixelgrove
