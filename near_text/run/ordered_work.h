// Work on a stream of lines by several threads, its results delivered in the order of the lines.
//
//   add -> [ delivered next ... being worked on ... waiting ] -> deliver, from the oldest on
//           '------------- the window, bounded ------------'
//
// The window bounds the memory however long the stream is. One thread, the receiver, delivers. It
// takes all that is ready in one go, and lets a little gather before: waking it for each result
// would cost more than most results do. It does not wait where nothing is left to begin, since the
// next line may come only when this one is answered.
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "near_text/input/text_row.h"

namespace near_text {

struct LineResult {
    std::string output = {};
    std::string failure = {};  // empty where there is none
    bool isFound = false;
    std::size_t line = 0;              // its number
    std::optional<double> share = {};  // of all texts, up to and with this one, where that is known
    bool isCut = false;                // the text was too long
};

class OrderedWork {
public:
    // Called on the thread of the worker, which is numbered from 0.
    using Work = std::function<LineResult(std::size_t worker, TextRow const& row)>;
    // Called on the receiver's thread. Where more is ready another call follows at once; otherwise
    // nothing may be held back. False stops the run, as `stop` does.
    using Deliver = std::function<bool(LineResult const& result, bool isMoreReady)>;

    // Starts a thread for itself here, and one for each worker with a line of its own to begin: few
    // lines take few. Both throw std::runtime_error when a thread cannot be started.
    OrderedWork(std::size_t workers, Work doWork, Deliver deliverResult);
    ~OrderedWork();
    OrderedWork(OrderedWork const&) = delete;
    OrderedWork& operator=(OrderedWork const&) = delete;

    // Waits while the window is full. False when the run has ended.
    bool add(TextRow row);

    // Both wait for the threads, and rethrow what `Work` or `Deliver` threw, the results of all
    // lines before being delivered.
    void finish();  // after all lines are delivered
    void stop();    // after those that a worker has begun are delivered

private:
    struct Slot {
        TextRow row;
        LineResult result;
        std::exception_ptr failure;
        bool isDone = false;
    };

    template <class Member>
    void start(Member member);
    void workAs(std::size_t worker);
    void receive();
    bool mayBegin() const;
    bool isEnough() const;
    bool isOver() const;
    bool deliver(std::size_t begin, std::size_t end);
    void end(bool isAtOnce);
    void notifyAll();

    Slot& slotOf(std::size_t line) { return slots_[line % slots_.size()]; }

    Work const work_;
    Deliver const deliver_;
    std::size_t const workers_;
    // The window, a ring. A slot is the caller's until its line is added, the worker's that begins
    // it until it is done, and the receiver's from when it is ready until it is delivered.
    std::vector<Slot> slots_;

    std::mutex mutex_;
    std::condition_variable forCaller_;
    std::condition_variable forWorkers_;
    std::condition_variable forReceiver_;
    // All guarded by mutex_. Lines so far: each of these is at least the one before, and the last
    // exceeds the first by the size of the window at the most.
    std::size_t delivered_ = 0;
    std::size_t ready_ = 0;  // they and all before are done
    std::size_t begun_ = 0;
    std::size_t added_ = 0;
    std::size_t heldBytes_ = 0;  // of results in the window
    bool isGathering_ = false;   // the receiver, with something ready
    bool isComplete_ = false;    // no line will be added
    bool isStopped_ = false;     // no line will be begun
    std::exception_ptr failure_;

    std::vector<std::thread> threads_;  // the caller's alone; first the receiver
};

}  // namespace near_text
