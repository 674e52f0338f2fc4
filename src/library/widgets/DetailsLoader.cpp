#include "library/widgets/DetailsLoader.h"

#include <algorithm>
#include <optional>

#include "library/ShaderService.h"

namespace pixelgrove {

// What the job and the main thread lay before each other.
struct DetailsLoader::Desk {
    SynchronizedValue<std::vector<std::pair<size_t, QString>>> wanted;  // the next one last; taken by the job
    SynchronizedValue<std::vector<LoadedDetails>> loaded;               // taken by the main thread
};

namespace {

// Where one question found no way to the service the next would wait for nothing.
bool IsNoWay(FetchFailure failure) {
    return failure == FetchFailure::NoConnection || failure == FetchFailure::Refused ||
           failure == FetchFailure::TimedOut || failure == FetchFailure::Tls;
}

}  // namespace

DetailsLoader::DetailsLoader(const ServiceAddress& service, WebWorker& worker)
    : service_(service), worker_(worker) {}

void DetailsLoader::Want(std::vector<std::pair<size_t, QString>> records) {
    std::ranges::reverse(records);
    if (desk_) {
        desk_->wanted.Exchange(std::move(records));
        return;
    }
    if (records.empty() || worker_.IsBusy()) return;
    const auto desk = std::make_shared<Desk>();
    desk->wanted.Exchange(std::move(records));
    desk_ = desk;
    WebJob job;
    job.work = [desk, address = service_](const WebTask& task) {
        std::optional<FetchResult> noWay;
        const ShaderService service{address, [&](const QString& url) {
                                        if (noWay) return *noWay;
                                        FetchResult result = task.fetch(url);
                                        if (IsNoWay(result.failure)) noWay = result;
                                        return result;
                                    }};
        while (!task.stop.stop_requested()) {
            LoadedDetails next;
            {
                const Hold wanted(desk->wanted);
                if (wanted->empty()) return;
                std::tie(next.place, next.id) = std::move(wanted->back());
                wanted->pop_back();
            }
            FetchShaderInfo(service, next.id, next.info, &next.problem);
            if (task.stop.stop_requested()) return;
            {
                const Hold arrived(desk->loaded);
                arrived->push_back(std::move(next));
            }
            task.tell();
        }
    };
    job.told = [this, desk] { Hear(*desk); };
    job.done = [this, desk] {
        Hear(*desk);
        if (desk_ == desk) desk_.reset();
        if (finished) finished();
    };
    worker_.Start(std::move(job));
}

void DetailsLoader::Stop() {
    if (!desk_) return;
    desk_.reset();
    worker_.Stop();
}

void DetailsLoader::Hear(Desk& desk) const {
    for (const LoadedDetails& details : desk.loaded.Exchange({}))
        if (loaded) loaded(details);
}

}  // namespace pixelgrove
