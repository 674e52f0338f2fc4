// Owned: what a C library gives away and takes back by a function of its own.
//
//     const Owned<pa_stream, pa_stream_unref> stream(pa_stream_new(...));
#pragma once

#include <memory>

namespace pixelgrove {

template <auto Free>
struct Freer {
    template <typename T>
    void operator()(T* object) const {
        Free(object);
    }
};

template <typename T, auto Free>
using Owned = std::unique_ptr<T, Freer<Free>>;

}  // namespace pixelgrove
