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
    struct Call {
        std::string name;  // the function's name
        int commandId = 0;
        intptr_t data = 0;
        QString text;
        bool flag = false;
        StageDocument* document = nullptr;
    };

    // Run inside LoadDocument and RebuildControlTree, after the call was noted.
    std::function<void(StageDocument&)> onLoadDocument;
    std::function<void()> onRebuildControlTree;

    void PostCommand(int commandId, intptr_t data) override {
        Note({"PostCommand", commandId, data});
        const std::lock_guard hold(lock_);
        queue_.push_back({commandId, data});
    }
    void CancelPostedCommand(int commandId) override {
        Note({"CancelPostedCommand", commandId});
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
    void SendCommand(int commandId, intptr_t data) override { Note({"SendCommand", commandId, data}); }
    void Beep() override { Note({"Beep"}); }
    void SetStatusText(const QString& text) override { Note({"SetStatusText", 0, 0, text}); }
    void ShowTitle(bool modified) override { Note({"ShowTitle", 0, 0, QString(), modified}); }
    void LoadDocument(StageDocument& document) override {
        Note({"LoadDocument", 0, 0, QString(), false, &document});
        if (onLoadDocument) onLoadDocument(document);
    }
    void MarkErrorLines() override { Note({"MarkErrorLines"}); }
    void RefreshStageTabs() override { Note({"RefreshStageTabs"}); }
    void RefreshChannelPanel() override { Note({"RefreshChannelPanel"}); }
    void RebuildControlTree() override {
        Note({"RebuildControlTree"});
        if (onRebuildControlTree) onRebuildControlTree();
    }
    void RefreshCaretStatus() override { Note({"RefreshCaretStatus"}); }

    // A copy of what was called so far. Any thread.
    std::vector<Call> Calls() const {
        const std::lock_guard hold(lock_);
        return calls_;
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const Call& call : Calls())
            names.push_back(call.name);
        return names;
    }
    int CountOf(const std::string& name) const {
        const std::vector<std::string> names = Names();
        return int(std::count(names.begin(), names.end(), name));
    }
    // The text of the last SetStatusText.
    QString StatusText() const {
        const std::vector<Call> calls = Calls();
        for (auto call = calls.rbegin(); call != calls.rend(); ++call) {
            if (call->name == "SetStatusText") return call->text;
        }
        return QString();
    }
    void Forget() {
        const std::lock_guard hold(lock_);
        calls_.clear();
    }

  private:
    void Note(Call call) {
        const std::lock_guard hold(lock_);
        calls_.push_back(std::move(call));
    }

    mutable std::mutex lock_;
    std::vector<Call> calls_;
    std::vector<std::pair<int, intptr_t>> queue_;  // posted commands that wait
};

}  // namespace pixelgrove
