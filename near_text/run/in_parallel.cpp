#include "near_text/run/in_parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "near_text/messages/interrupt.h"

namespace near_text {

void inParallel(std::size_t workers, std::size_t count, Progress& progress, double before,
                double after,
                std::function<void(std::size_t worker, std::size_t number)> const& work) {
    auto const tell = [&](std::size_t number) {
        double const part = static_cast<double>(number) / static_cast<double>(count);
        progress.show(number, before + (after - before) * part);
    };
    std::atomic<std::size_t> next = 0;
    std::exception_ptr failure;
    std::mutex mutex;
    auto const workAs = [&](std::size_t worker) {
        try {
            for (std::size_t number = 0; signalCaught() == 0 && (number = next++) < count;) {
                if (worker == 0) tell(number);
                work(worker, number);
            }
        } catch (...) {
            next = count;
            std::lock_guard const lock(mutex);
            if (!failure) failure = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> threads;
        try {
            for (std::size_t worker = 1; worker < std::min(workers, count); ++worker)
                threads.emplace_back(workAs, worker);
        } catch (std::system_error const&) {
            // Those that there are do all of it.
        }
        workAs(0);
    }
    if (failure) std::rethrow_exception(failure);
    if (signalCaught() != 0) throw Interrupted();
}

}  // namespace near_text
