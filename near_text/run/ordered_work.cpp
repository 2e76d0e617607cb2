#include "near_text/run/ordered_work.h"

namespace near_text {

namespace {

constexpr std::size_t kLinesPerWorker = 16;
constexpr std::size_t kMostHeldBytes = std::size_t{64} << 20;

}  // namespace

OrderedWork::OrderedWork(std::size_t workers, Work doWork, Deliver deliverResult)
    : work(std::move(doWork)),
      deliver(std::move(deliverResult)),
      windowSize(workers * kLinesPerWorker) {
    try {
        for (std::size_t i = 0; i < workers; ++i)
            threads.emplace_back([this, i] { run(i); });
    } catch (...) {
        end(true);
        throw;
    }
}

OrderedWork::~OrderedWork() {
    end(true);
}

bool OrderedWork::add(TextRow row) {
    std::unique_lock lock(mutex);
    forAdd.wait(lock, [&] { return isStopped || window.size() < windowSize; });
    if (isStopped) return false;
    window.push_back({std::move(row), {}});
    forWorkers.notify_one();
    return true;
}

void OrderedWork::finish() {
    end(false);
    if (failure) std::rethrow_exception(failure);
}

void OrderedWork::stop() {
    end(true);
    if (failure) std::rethrow_exception(failure);
}

void OrderedWork::end(bool isAtOnce) {
    {
        std::lock_guard const lock(mutex);
        isComplete = true;
        isStopped |= isAtOnce;
    }
    forWorkers.notify_all();
    for (std::thread& thread : threads)
        thread.join();
    threads.clear();
}

// Results are held behind a line that is being worked on, so with none of those nothing is held,
// and the oldest line may always begin.
bool OrderedWork::mayBegin() const {
    return begun < delivered + window.size() && heldBytes < kMostHeldBytes;
}

void OrderedWork::run(std::size_t worker) {
    std::unique_lock lock(mutex);
    while (true) {
        auto const allBegun = [&] { return isComplete && begun == delivered + window.size(); };
        forWorkers.wait(lock, [&] { return isStopped || mayBegin() || allBegun(); });
        if (isStopped || !mayBegin()) return;
        std::size_t const number = begun++;
        TextRow const row = std::move(window[number - delivered].row);
        try {
            lock.unlock();
            LineResult result = work(worker, row);
            lock.lock();
            heldBytes += result.output.size();
            window[number - delivered].result = std::move(result);
            window[number - delivered].isDone = true;
            deliverReady();
        } catch (...) {
            if (!lock.owns_lock()) lock.lock();
            if (!failure) failure = std::current_exception();
            isStopped = isBroken = true;
        }
        forWorkers.notify_all();
        forAdd.notify_one();
    }
}

void OrderedWork::deliverReady() {
    while (!isBroken && !window.empty() && window.front().isDone) {
        if (!deliver(window.front().result)) isStopped = true;
        heldBytes -= window.front().result.output.size();
        window.pop_front();
        ++delivered;
    }
}

}  // namespace near_text
