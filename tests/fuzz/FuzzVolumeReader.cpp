// Any bytes as a volume file: what a complete one says it holds lies within its bytes.
#include "FuzzTarget.h"
#include "core/VolumeFile.h"

using namespace pixelgrove;

namespace {

std::string VolumeOf(uint32_t x, uint32_t y, uint32_t z, uint32_t kind, size_t sampleBytes) {
    std::string file("BIN\0", 4);
    for (const uint32_t number : {x, y, z, kind}) {
        for (int shift = 0; shift < 32; shift += 8)
            file += static_cast<char>(number >> shift);
    }
    return file + std::string(sampleBytes, '\x55');
}

}  // namespace

const std::vector<std::string>& FuzzSeeds() {
    static const std::vector<std::string> seeds = {
        VolumeOf(4, 4, 4, 1, 64),         VolumeOf(3, 2, 2, 1, 16),  // rows of 3 bytes
        VolumeOf(3, 1, 2, 2, 16),         VolumeOf(2, 3, 1, 4, 12),
        VolumeOf(2048, 2048, 2048, 2, 8), VolumeOf(0xffffffff, 0x80000000, 2, 1, 8),
    };
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::span<const uint8_t> file(data, size);
    const std::optional<VolumeHeader> header = ReadVolumeHeader(file);
    const bool complete = IsVolumeComplete(file);
    FUZZ_CHECK(header || !complete);
    if (!header) return 0;

    const std::optional<uint64_t> upload = VolumeDataBytes(*header);
    FUZZ_CHECK(upload || !complete);
    if (!upload) return 0;
    FUZZ_CHECK(complete == (kVolumeHeaderBytes + *upload <= size));
    const uint64_t sampleBytes = header->sampleKind == 2 ? 2 : 1;
    FUZZ_CHECK(*upload >= uint64_t(header->x) * header->y * header->z * sampleBytes);
    if (!complete) return 0;
    // Cut by one byte behind its last sample, it is complete no more.
    FUZZ_CHECK(!IsVolumeComplete(file.first(kVolumeHeaderBytes + static_cast<size_t>(*upload) - 1)));
    return 0;
}
