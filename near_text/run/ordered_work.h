// Work on a stream of lines by several threads, its results delivered in the order of the lines.
//
//   add -> [ delivered next ... being worked on ... waiting ] -> deliver, from the oldest on
//           '------------- the window, bounded ------------'
//
// The window bounds the memory however long the stream is, and a result leaves it as soon as it and
// all before it are done.
#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "near_text/input/text_row.h"

namespace near_text {

struct LineResult {
    std::string output = {};
    std::string failure = {};  // empty where there is none
    bool isFound = false;
    std::size_t line = 0;  // its number
};

class OrderedWork {
public:
    // Called on the thread of the worker, which is numbered from 0.
    using Work = std::function<LineResult(std::size_t worker, TextRow const& row)>;
    // Called by one thread at a time; false stops the run, as `stop` does.
    using Deliver = std::function<bool(LineResult const& result)>;

    OrderedWork(std::size_t workers, Work doWork, Deliver deliverResult);
    ~OrderedWork();
    OrderedWork(OrderedWork const&) = delete;
    OrderedWork& operator=(OrderedWork const&) = delete;

    // Waits while the window is full. False when the run has ended.
    bool add(TextRow row);

    // Both wait for the threads and rethrow what `Work` or `Deliver` threw.
    void finish();  // after all lines are delivered
    void stop();    // after those that a worker has begun are delivered

private:
    struct Slot {
        TextRow row;
        LineResult result;
        bool isDone = false;
    };

    void run(std::size_t worker);
    bool mayBegin() const;
    void deliverReady();
    void end(bool isAtOnce);

    Work const work;
    Deliver const deliver;
    std::size_t const windowSize;

    std::mutex mutex;
    std::condition_variable forWorkers;
    std::condition_variable forAdd;
    std::deque<Slot> window;
    std::size_t delivered = 0;  // lines so far; the front of the window is the next
    std::size_t begun = 0;      // lines so far
    std::size_t heldBytes = 0;  // of results in the window
    bool isComplete = false;    // no line will be added
    bool isStopped = false;     // no line will be begun
    bool isBroken = false;      // no result will be delivered
    std::exception_ptr failure;
    std::vector<std::thread> threads;
};

}  // namespace near_text
