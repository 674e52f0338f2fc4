#include "core/Host.h"

namespace pixelgrove {

namespace {

class NoHost final : public Host {
  public:
    void PostCommand(int, intptr_t) override {}
    void CancelPostedCommand(int) override {}
    void SendCommand(int, intptr_t) override {}
    void Beep() override {}
    void SetStatusText(const QString&) override {}
    void ShowTitle(bool) override {}
    void LoadDocument(StageDocument&) override {}
    void MarkErrorLines() override {}
    void RefreshStageTabs() override {}
    void RefreshChannelPanel() override {}
    void RebuildControlTree() override {}
};

}  // namespace

Host& SilentHost() {
    // Never destroyed: a thread may still post while the process ends.
    static Host* const host = new NoHost;
    return *host;
}

}  // namespace pixelgrove
