// A Host that notes each call in order. Register it in AppState::host for the length of a test; hooks let
// a test act inside a call as the windows would.
#pragma once

#include <algorithm>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/Host.h"

namespace pixelgrove {

class RecordingHost final : public Host {
  public:
    // Run inside LoadDocument and RebuildControlTree, after the call was noted.
    std::function<void(StageDocument&)> onLoadDocument;
    std::function<void()> onRebuildControlTree;

    void PostCommand(int commandId, intptr_t data) override {
        Note("PostCommand");
        const std::lock_guard hold(lock_);
        queue_.push_back({commandId, data});
    }
    void CancelPostedCommand(int commandId) override {
        Note("CancelPostedCommand");
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
    void SendCommand(int, intptr_t) override { Note("SendCommand"); }
    void Beep() override { Note("Beep"); }
    void SetStatusText(const QString& text) override {
        Note("SetStatusText");
        const std::lock_guard hold(lock_);
        statusText_ = text;
    }
    void ShowTitle(bool) override { Note("ShowTitle"); }
    void LoadDocument(StageDocument& document) override {
        Note("LoadDocument");
        if (onLoadDocument) onLoadDocument(document);
    }
    void MarkErrorLines() override { Note("MarkErrorLines"); }
    void RefreshStageTabs() override { Note("RefreshStageTabs"); }
    void RefreshChannelPanel() override { Note("RefreshChannelPanel"); }
    void RebuildControlTree() override {
        Note("RebuildControlTree");
        if (onRebuildControlTree) onRebuildControlTree();
    }
    void RefreshCaretStatus() override { Note("RefreshCaretStatus"); }

    // The functions called so far, in order. Any thread.
    std::vector<std::string> Names() const {
        const std::lock_guard hold(lock_);
        return names_;
    }
    int CountOf(const std::string& name) const {
        const std::vector<std::string> names = Names();
        return int(std::count(names.begin(), names.end(), name));
    }
    // The text of the last SetStatusText.
    QString StatusText() const {
        const std::lock_guard hold(lock_);
        return statusText_;
    }
    void Forget() {
        const std::lock_guard hold(lock_);
        names_.clear();
        statusText_.clear();
    }

  private:
    void Note(const char* name) {
        const std::lock_guard hold(lock_);
        names_.emplace_back(name);
    }

    mutable std::mutex lock_;
    std::vector<std::string> names_;
    QString statusText_;
    std::vector<std::pair<int, intptr_t>> queue_;  // posted commands that wait
};

}  // namespace pixelgrove
