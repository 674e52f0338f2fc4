#include "update/UpdateWorker.h"

#include "update/UpdateCheck.h"

namespace pixelgrove {

namespace {

// Name look-ups of the system take some of it.
constexpr size_t kStackBytes = 1 << 20;

}  // namespace

bool UpdateWorker::Start(const QString& address, const QString& ownStamp) {
    return thread_.Start(kStackBytes, [this, address, ownStamp, stop = stop_.get_token()] {
        WebClient client(limits_);
        text_.Exchange(
            CheckForUpdate(address, ownStamp, [&](const QString& url) { return client.Fetch(url, stop); }));
    });
}

}  // namespace pixelgrove
