// A Host that keeps the commands and texts that are posted. Register it in AppState::host for the length of a
// test.
#pragma once

#include <QStringList>
#include <atomic>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "core/Host.h"

namespace pixelgrove {

class RecordingHost final : public Host {
  public:
    void PostCommand(int commandId, intptr_t data) override {
        const std::lock_guard hold(lock_);
        queue_.push_back({commandId, data});
    }
    void CancelPostedCommand(int commandId) override {
        const std::lock_guard hold(lock_);
        std::erase_if(queue_, [commandId](const auto& posted) { return posted.first == commandId; });
    }
    // The data of the oldest posted command of this id that was neither taken nor cancelled. Any thread.
    std::optional<intptr_t> TakePosted(int commandId) {
        const std::lock_guard hold(lock_);
        for (auto it = queue_.begin(); it != queue_.end(); ++it) {
            if (it->first != commandId) continue;
            const intptr_t data = it->second;
            queue_.erase(it);
            return data;
        }
        return std::nullopt;
    }
    void PostStatus(const QString& text) override {
        const std::lock_guard hold(lock_);
        texts_.append(text);
    }
    // What was posted since the last call, in its order. Any thread.
    QStringList TakeTexts() {
        const std::lock_guard hold(lock_);
        return std::exchange(texts_, {});
    }
    void Beep() override { ++beeps; }

    std::atomic<int> beeps{0};

  private:
    std::mutex lock_;
    std::vector<std::pair<int, intptr_t>> queue_;  // posted commands that wait
    QStringList texts_;
};

}  // namespace pixelgrove
