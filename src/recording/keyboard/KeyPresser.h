// KeyPresser: presses keys as if the user did, for whichever program waits for them.
//
// The server itself counts the time to the release, on a connection of its own to which all is written at
// once, so no key stays down, whatever becomes of this process. Only X clients see the keys: under Wayland
// those of the other programs don't. Main thread, with an event loop.
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace pixelgrove {

inline constexpr std::chrono::milliseconds kKeyPressTime{100};

class KeyPresser {
  public:
    KeyPresser();
    // Waits until the keys that are down are released.
    ~KeyPresser();
    KeyPresser(const KeyPresser&) = delete;
    KeyPresser& operator=(const KeyPresser&) = delete;

    // Presses the keys, which are virtual key codes, in their order, and after kKeyPressTime releases them in
    // the same order; codes of 0 are left out. released is called then, by the event loop. False with a
    // reason for the user, and nothing happens, when they can't be pressed, and while others are down.
    bool Press(const std::vector<uint32_t>& virtualKeys, std::function<void()> released, QString& reason);

  private:
    struct Keys;
    void Finish();

    QObject later_;               // has what is queued
    std::unique_ptr<Keys> keys_;  // those that are down
};

}  // namespace pixelgrove
