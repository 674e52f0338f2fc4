// DetailsLoader: fills records of shaders that are to be shown, one after the other, on the browser's worker.
//
// Main thread; owned by the browser, like the worker, which outlives it.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "core/ShaderProject.h"
#include "library/ServiceAddress.h"
#include "net/WebWorker.h"

namespace pixelgrove {

struct LoadedDetails {
    size_t place = 0;  // as it was asked for
    QString id;
    ShaderInfo info;
    QString problem;  // a clause for the user when there are none
};

class DetailsLoader {
  public:
    DetailsLoader(const ServiceAddress& service, WebWorker& worker);

    std::function<void(const LoadedDetails& details)> loaded;
    // All that was wanted was loaded, tried or dropped; the worker is free for more, unless it has something
    // else to do.
    std::function<void()> finished;

    // The records that are wanted from now on, by place and id, the first one first; what was wanted before
    // and isn't among them is left. Nothing while the worker has something else to do.
    void Want(std::vector<std::pair<size_t, QString>> records);
    // Nothing more is wanted; the one under way is dropped.
    void Stop();
    bool IsLoading() const { return desk_ != nullptr; }

  private:
    struct Desk;
    void Hear(Desk& desk) const;

    const ServiceAddress& service_;
    WebWorker& worker_;
    std::shared_ptr<Desk> desk_;  // of the job that runs
};

}  // namespace pixelgrove
