#include "update/UpdateWorker.h"

#include "net/WebWorker.h"
#include "update/UpdateCheck.h"

namespace pixelgrove {

bool UpdateWorker::Start(const QString& address, const QString& ownStamp) {
    return thread_.Start(kWebStackBytes, [this, address, ownStamp, stop = stop_.get_token()] {
        WebClient client(limits_);
        text_.Exchange(
            CheckForUpdate(address, ownStamp, [&](const QString& url) { return client.Fetch(url, stop); }));
    });
}

}  // namespace pixelgrove
