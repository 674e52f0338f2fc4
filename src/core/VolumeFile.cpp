#include "core/VolumeFile.h"

#include <cstring>

namespace pixelgrove {
namespace {

// The largest 3D texture side that drivers commonly take. It also keeps every product below 2^35.
constexpr uint32_t kMaxVolumeSide = 2048;

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

std::optional<uint64_t> VolumeUploadBytes(const VolumeHeader& header) {
    uint64_t sampleBytes = 0;
    switch (header.sampleKind) {
        case 1:
        case 4:
            sampleBytes = 1;
            break;
        case 2:
            sampleBytes = 2;
            break;
        default:
            return std::nullopt;
    }
    if (!IsVolumeSide(header.x) || !IsVolumeSide(header.y) || !IsVolumeSide(header.z)) return std::nullopt;
    const uint64_t rowBytes = (header.x * sampleBytes + 3) / 4 * 4;
    return rowBytes * header.y * header.z;
}

bool IsVolumeComplete(std::span<const uint8_t> file) {
    const std::optional<VolumeHeader> header = ReadVolumeHeader(file);
    if (!header) return false;
    const std::optional<uint64_t> needed = VolumeUploadBytes(*header);
    return needed && *needed <= file.size() - kVolumeHeaderBytes;
}

}  // namespace pixelgrove
