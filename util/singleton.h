/// Types with one instance, made on first use, with an end that can be told.
#pragma once

#include <atomic>
#include <cstdlib>
#include <mutex>

namespace tvw {

/// Base of a type T with one instance in the process:
///     class CoreLibrary : public Singleton<CoreLibrary> { friend Singleton<CoreLibrary>; ... };
///
/// The instance is owned here. It ends with end(), so that the process can shut the core down and
/// start it again, else at process exit; at exit the instances end in the reverse order in which
/// they were finished, so that what a constructor used outlives what it built.
/// [instance: any thread] [end: main thread, while nobody uses the instance]
template <class T>
class Singleton
{
public:
    Singleton(const Singleton&) = delete;
    Singleton& operator=(const Singleton&) = delete;

    /// The instance, made by T's default constructor if there is none. That constructor must not
    /// ask for T itself.
    [[nodiscard]] static T& instance()
    {
        T* const present = instance_.load(std::memory_order_acquire);
        return present != nullptr ? *present : make();
    }

    [[nodiscard]] static bool exists() noexcept
    {
        return instance_.load(std::memory_order_acquire) != nullptr;
    }

    /// Destroys the instance if there is one; the next use makes a new one. The destructor may
    /// still reach the instance.
    static void end()
    {
        delete instance_.load(std::memory_order_acquire);
        instance_.store(nullptr, std::memory_order_release);
    }

protected:
    Singleton() = default;
    ~Singleton() = default;

private:
    [[gnu::noinline]] static T& make()
    {
        const std::lock_guard lock(mutex_);
        if (T* const present = instance_.load(std::memory_order_acquire)) {
            return *present;
        }
        T* const made = new T;
        instance_.store(made, std::memory_order_release);
        std::atexit([] { end(); }); // one each time: only the last one's place is right
        return *made;
    }

    static inline std::atomic<T*> instance_{nullptr};
    static inline std::mutex mutex_;
};

} // namespace tvw
