// SynchronizedValue: a value and its lock in one, so that the value is reached under the lock alone.
//
//     SynchronizedValue<Mailbox> mailbox_;
//     const Hold mailbox(mailbox_);
//     mailbox->slots.clear();
//
// Any thread. Held shortly, without a wait and without a second lock inside. The marks let Clang's analysis
// find what is reached without the lock or locked twice (scripts/check_threads); other compilers skip them.
#pragma once

#include <mutex>
#include <utility>

#if defined(__clang__)
#define PG_THREAD_MARK(x) __attribute__((x))
#else
#define PG_THREAD_MARK(x)
#endif

namespace pixelgrove {

template <typename Value>
class Hold;

template <typename T>
class PG_THREAD_MARK(capability("mutex")) SynchronizedValue {
  public:
    SynchronizedValue() = default;
    SynchronizedValue(const SynchronizedValue&) = delete;
    SynchronizedValue& operator=(const SynchronizedValue&) = delete;

    T Copy() const PG_THREAD_MARK(locks_excluded(this)) {
        const Hold hold(*this);
        return value_;
    }
    // Puts a value in place of the one that is returned, which is so freed outside the lock.
    T Exchange(T value) PG_THREAD_MARK(locks_excluded(this)) {
        const Hold hold(*this);
        std::swap(value_, value);
        return value;
    }

  private:
    template <typename Value>
    friend class Hold;

    void Lock() const PG_THREAD_MARK(acquire_capability()) { mutex_.lock(); }
    void Unlock() const PG_THREAD_MARK(release_capability()) { mutex_.unlock(); }

    mutable std::mutex mutex_;
    T value_ PG_THREAD_MARK(guarded_by(this)){};
};

// Holds the lock of a SynchronizedValue, or of a const one, and gives its value for as long.
template <typename Value>
class PG_THREAD_MARK(scoped_lockable) Hold {
  public:
    explicit Hold(Value& owner) PG_THREAD_MARK(acquire_capability(owner)) : owner_(owner) { owner.Lock(); }
    ~Hold() PG_THREAD_MARK(release_capability()) { owner_.Unlock(); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

    auto& operator*() const PG_THREAD_MARK(no_thread_safety_analysis) { return owner_.value_; }
    auto* operator->() const PG_THREAD_MARK(no_thread_safety_analysis) { return &owner_.value_; }

  private:
    Value& owner_;
};

}  // namespace pixelgrove
