#include "near_text/run/ordered_work.h"

#include <chrono>
#include <stdexcept>
#include <system_error>

namespace near_text {

namespace {

constexpr std::size_t kLinesPerWorker = 128;
constexpr std::size_t kMostHeldBytes = std::size_t{64} << 20;
constexpr std::size_t kEnoughBytes = std::size_t{1} << 16;  // to be delivered
constexpr std::chrono::milliseconds kLongestGathering(10);

}  // namespace

OrderedWork::OrderedWork(std::size_t workers, Work doWork, Deliver deliverResult)
    : work_(std::move(doWork)),
      deliver_(std::move(deliverResult)),
      workers_(workers),
      slots_(workers * kLinesPerWorker) {
    start([this] { receive(); });
}

template <class Member>
void OrderedWork::start(Member member) {
    try {
        threads_.emplace_back(member);
    } catch (std::system_error const& error) {
        throw std::runtime_error("cannot start thread " + std::to_string(threads_.size() + 1) +
                                 " of " + std::to_string(workers_ + 1) + ": " +
                                 error.code().message() + "; fewer --jobs need fewer");
    }
}

OrderedWork::~OrderedWork() {
    end(true);
}

bool OrderedWork::add(TextRow row) {
    std::size_t const started = threads_.size() - 1;
    if (started < workers_) start([this, started] { workAs(started); });
    std::unique_lock lock(mutex_);
    forCaller_.wait(lock, [&] { return isStopped_ || added_ < delivered_ + slots_.size(); });
    if (isStopped_) return false;
    slotOf(added_).row = std::move(row);
    ++added_;
    forWorkers_.notify_one();
    return true;
}

void OrderedWork::finish() {
    end(false);
    if (failure_) std::rethrow_exception(failure_);
}

void OrderedWork::stop() {
    end(true);
    if (failure_) std::rethrow_exception(failure_);
}

void OrderedWork::end(bool isAtOnce) {
    {
        std::lock_guard const lock(mutex_);
        isComplete_ = true;
        isStopped_ |= isAtOnce;
    }
    notifyAll();
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
}

void OrderedWork::notifyAll() {
    forWorkers_.notify_all();
    forCaller_.notify_all();
    forReceiver_.notify_all();
}

// Results are held behind a line that is being worked on, so with none of those nothing is held,
// and the oldest line may always begin.
bool OrderedWork::mayBegin() const {
    return begun_ < added_ && heldBytes_ < kMostHeldBytes;
}

bool OrderedWork::isEnough() const {
    return ready_ - delivered_ >= slots_.size() / 2 || heldBytes_ >= kEnoughBytes ||
           begun_ == added_ || isStopped_;
}

bool OrderedWork::isOver() const {
    return delivered_ == begun_ && (isStopped_ || (isComplete_ && begun_ == added_));
}

void OrderedWork::workAs(std::size_t worker) {
    std::unique_lock lock(mutex_);
    while (true) {
        auto const allBegun = [&] { return isComplete_ && begun_ == added_; };
        forWorkers_.wait(lock, [&] { return isStopped_ || mayBegin() || allBegun(); });
        if (isStopped_ || !mayBegin()) break;
        Slot& slot = slotOf(begun_++);
        lock.unlock();
        try {
            slot.result = work_(worker, slot.row);
        } catch (...) {
            slot.failure = std::current_exception();
        }
        lock.lock();
        slot.isDone = true;
        heldBytes_ += slot.result.output.size();
        isStopped_ |= slot.failure != nullptr;
        while (ready_ < begun_ && slotOf(ready_).isDone)
            ++ready_;
        bool const isAwaited = isGathering_ ? isEnough() : ready_ > delivered_;
        if (isAwaited) forReceiver_.notify_one();
    }
    forWorkers_.notify_all();
    forReceiver_.notify_one();
}

void OrderedWork::receive() {
    std::unique_lock lock(mutex_);
    while (true) {
        forReceiver_.wait(lock, [&] { return ready_ > delivered_ || isOver(); });
        if (ready_ == delivered_) return;
        isGathering_ = true;
        forReceiver_.wait_for(lock, kLongestGathering, [&] { return isEnough(); });
        isGathering_ = false;
        std::size_t const begin = delivered_, end = ready_;
        std::size_t bytes = 0;
        for (std::size_t line = begin; line < end; ++line)
            bytes += slotOf(line).result.output.size();
        lock.unlock();
        bool isLast = false;
        std::exception_ptr failure;
        try {
            isLast = !deliver(begin, end);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        delivered_ = end;
        heldBytes_ -= bytes;
        isStopped_ |= isLast || failure != nullptr;
        failure_ = failure;
        forWorkers_.notify_all();
        forCaller_.notify_one();
        if (failure_) return;
    }
}

// False when the run is to stop.
bool OrderedWork::deliver(std::size_t begin, std::size_t end) {
    bool isToGoOn = true;
    for (std::size_t line = begin; line < end; ++line) {
        Slot& slot = slotOf(line);
        if (slot.failure) std::rethrow_exception(slot.failure);
        slot.isDone = false;
        LineResult const result = std::move(slot.result);
        bool const isMoreReady = line + 1 < end && !slotOf(line + 1).failure;
        isToGoOn &= deliver_(result, isMoreReady);
    }
    return isToGoOn;
}

}  // namespace near_text
