// GzipReader: decodes a gzip stream that comes in pieces, and knows whether it came to its end, which the web
// client's library doesn't tell where the stream is shorter than it says but as long as the answer.
//
// One thread at a time; owned by who reads the stream.
#pragma once

#include <zlib.h>

#include <functional>

namespace pixelgrove {

class GzipReader {
  public:
    // Takes decoded bytes; false ends the reading.
    using Sink = std::function<bool(const char* bytes, size_t count)>;

    GzipReader();
    ~GzipReader();
    GzipReader(const GzipReader&) = delete;
    GzipReader& operator=(const GzipReader&) = delete;

    // False where the bytes are no gzip, no memory is left or the sink ends it.
    bool Take(const char* bytes, size_t count, const Sink& sink);
    // Between two streams, of which one or several follow each other; also before the first byte.
    bool IsAtEnd() const { return isAtEnd_; }

  private:
    z_stream stream_{};
    bool isReady_ = false;
    bool isAtEnd_ = true;
};

}  // namespace pixelgrove
