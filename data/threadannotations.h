#pragma once

// Orderings between the host's worker thread and the GUI thread, told to
// ThreadSanitizer. Qt 5's QMutex and the wait of a blocking queued connection
// sleep on futexes inside Qt, which is not built with ThreadSanitizer, so it
// cannot see that they order our own reads and writes. A thread that has just
// taken such a lock, or been handed control, calls takeOver(token); a thread
// about to release it, or to hand control on, calls handOver(token) with the
// same token. Outside the ThreadSanitizer build both are empty.

#if defined(__SANITIZE_THREAD__)
#define KES_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define KES_THREAD_SANITIZER 1
#endif
#endif

#ifdef KES_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

namespace ThreadOrder {

// Everything any thread did before its handOver(token) happens before what
// the caller does next.
inline void takeOver(const void* token)
{
#ifdef KES_THREAD_SANITIZER
    __tsan_acquire(const_cast<void*>(token));
#else
    (void)token;
#endif
}

// Everything the caller did so far happens before what a later takeOver(token)
// is followed by.
inline void handOver(const void* token)
{
#ifdef KES_THREAD_SANITIZER
    __tsan_release(const_cast<void*>(token));
#else
    (void)token;
#endif
}

// The span in which a lock is held, declared right after the locker that takes
// it: taken over on construction, handed over on destruction, which comes
// before the locker's release.
class Held
{
public:
    explicit Held(const void* lock)
        : m_lock(lock)
    {
        takeOver(m_lock);
    }
    ~Held() { handOver(m_lock); }

    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    const void* m_lock;
};

} // namespace ThreadOrder
