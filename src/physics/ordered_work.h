#pragma once

#include "base/denormals.h"
#include "base/index.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace keldrin {

/// Computes items 0 to count - 1 on worker threads and hands their results over on the caller's
/// thread, in the order of the items, each as soon as its turn has come.
template <class Result>
class OrderedWork {
  public:
    /// Runs on any thread and must not throw; a result may have served another item before.
    using Compute = std::function<void(int item, Result &result)>;
    /// Runs on the caller's thread; false ends the work after this item.
    using Deliver = std::function<bool(int item, const Result &result)>;

    OrderedWork(int count, Compute compute, Deliver deliver)
        : count_(count), compute_(std::move(compute)), deliver_(std::move(deliver)) {}

    OrderedWork(const OrderedWork &) = delete;
    OrderedWork &operator=(const OrderedWork &) = delete;

    ~OrderedWork() { dismiss(); }

    /// threads  workers wanted; below 2, or where none can be had, the caller's thread does it all
    void run(int threads) {
        hire(threads);
        Result own{};
        for (int item = 0; item < count_; ++item) {
            const Result &result = workers_.empty() ? computed(item, own) : awaited(item);
            if (!deliver_(item, result)) {
                break;
            }
            release(item);
        }
        dismiss();
    }

  private:
    struct Slot {
        Result result{};
        bool filled = false;
    };

    // How far a worker may be ahead of the delivery; bounds the memory.
    static constexpr std::size_t SlotsPerThread = 16;

    Slot &slotOf(int item) { return slots_[asIndex(item) % slots_.size()]; }

    void hire(int threads) {
        if (threads < 2) {
            return;
        }
        try {
            slots_.resize(SlotsPerThread * asIndex(threads));
            workers_.reserve(asIndex(threads));
            while (workers_.size() < asIndex(threads)) {
                workers_.emplace_back([this] { work(); });
            }
        } catch (const std::system_error &) { // those that did start do the work
        } catch (const std::bad_alloc &) {
        }
    }

    void dismiss() {
        {
            const std::lock_guard lock(mutex_);
            stop_ = true;
        }
        released_.notify_all();
        workers_.clear(); // joins
    }

    void work() {
        flushDenormals();
        std::unique_lock lock(mutex_);
        while (true) {
            const auto mayStart = [this] {
                return next_ - delivered_ < static_cast<int>(slots_.size());
            };
            released_.wait(lock, [&] { return stop_ || next_ >= count_ || mayStart(); });
            if (stop_ || next_ >= count_) {
                return;
            }
            const int item = next_++;
            lock.unlock();
            compute_(item, slotOf(item).result);
            lock.lock();
            slotOf(item).filled = true;
            filled_.notify_one();
        }
    }

    const Result &computed(int item, Result &own) {
        flushDenormals();
        compute_(item, own);
        return own;
    }

    const Result &awaited(int item) {
        std::unique_lock lock(mutex_);
        filled_.wait(lock, [&] { return slotOf(item).filled; });
        return slotOf(item).result;
    }

    void release(int item) {
        if (workers_.empty()) {
            return;
        }
        {
            const std::lock_guard lock(mutex_);
            slotOf(item).filled = false;
            delivered_ = item + 1;
        }
        released_.notify_all();
    }

    const int count_;
    const Compute compute_;
    const Deliver deliver_;
    std::mutex mutex_; ///< guards what follows, except a slot's result while its item is computed
    std::condition_variable filled_;
    std::condition_variable released_;
    int next_ = 0;      ///< first item that nobody has begun
    int delivered_ = 0; ///< first item that is not handed over
    bool stop_ = false;
    std::vector<Slot> slots_;
    std::vector<std::jthread> workers_; ///< last, so that they end before what they use
};

} // namespace keldrin
