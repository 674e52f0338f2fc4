#include "core/Host.h"

namespace pixelgrove {

namespace {

class NoHost final : public Host {
  public:
    void PostCommand(int, intptr_t) override {}
    void CancelPostedCommand(int) override {}
    void PostStatus(const QString&) override {}
    void Beep() override {}
};

}  // namespace

Host& SilentHost() {
    // Never destroyed: a thread may still post while the process ends.
    static Host* const host = new NoHost;
    return *host;
}

}  // namespace pixelgrove
