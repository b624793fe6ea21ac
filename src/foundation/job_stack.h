#pragma once

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace stowlark {

/// The number of threads worth using for work on files.
inline unsigned fileThreads() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, 8U);
}

/// Jobs that a few threads take, the newest first, until none is left. A job may push further ones.
template <typename Job>
class JobStack {
public:
    void push(Job job) {
        {
            const std::lock_guard lock(mutex_);
            jobs_.push_back(std::move(job));
        }
        wake_.notify_one();
    }

    /// Calls `work(Job)` for every job, on this thread and on helpers, and returns when all are done. The
    /// first exception that a job throws ends the run (jobs not yet begun are dropped) and is rethrown here.
    template <typename Work>
    void run(Work work) {
        std::vector<std::thread> helpers;
        try {
            for (unsigned i = 1; i < fileThreads(); ++i) {
                helpers.emplace_back([this, &work] { takeJobs(work); });
            }
        } catch (const std::system_error &) {
            // The system has no more threads to give: fewer do.
        }
        takeJobs(work);
        for (std::thread &helper : helpers) {
            helper.join();
        }
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

private:
    template <typename Work>
    void takeJobs(Work &work) {
        std::unique_lock lock(mutex_);
        while (true) {
            wake_.wait(lock, [this] { return !jobs_.empty() || running_ == 0 || failure_; });
            if (jobs_.empty() || failure_) {
                break;
            }
            Job job = std::move(jobs_.back());
            jobs_.pop_back();
            ++running_;
            lock.unlock();
            std::exception_ptr failure;
            try {
                work(std::move(job));
            } catch (...) {
                failure = std::current_exception();
            }
            lock.lock();
            --running_;
            if (failure && !failure_) {
                failure_ = failure;
            }
        }
        wake_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    std::vector<Job> jobs_;
    int running_ = 0;
    std::exception_ptr failure_;
};

} // namespace stowlark
