#include "net/GzipReader.h"

#include <array>

namespace pixelgrove {

namespace {

constexpr int kGzipWindowBits = 15 + 16;
constexpr size_t kPieceBytes = 32 << 10;

}  // namespace

GzipReader::GzipReader() : isReady_(inflateInit2(&stream_, kGzipWindowBits) == Z_OK) {}

GzipReader::~GzipReader() {
    if (isReady_) inflateEnd(&stream_);
}

bool GzipReader::Take(const char* bytes, size_t count, const Sink& sink) {
    if (!isReady_) return false;
    std::array<unsigned char, kPieceBytes> piece;
    // The library's interface has no const.
    stream_.next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes));
    stream_.avail_in = uInt(count);
    do {
        if (isAtEnd_) {
            if (stream_.avail_in == 0) return true;
            if (inflateReset(&stream_) != Z_OK) return false;
            isAtEnd_ = false;
        }
        stream_.next_out = piece.data();
        stream_.avail_out = uInt(piece.size());
        const int code = inflate(&stream_, Z_NO_FLUSH);
        // What it holds back comes out with the next piece.
        if (code != Z_OK && code != Z_STREAM_END && code != Z_BUF_ERROR) return false;
        isAtEnd_ = code == Z_STREAM_END;
        const size_t decoded = piece.size() - stream_.avail_out;
        if (decoded > 0 && !sink(reinterpret_cast<const char*>(piece.data()), decoded)) return false;
    } while (stream_.avail_in > 0 || stream_.avail_out == 0);
    return true;
}

}  // namespace pixelgrove
