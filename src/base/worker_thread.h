// Work done on a thread of its own, in the order it was handed over, so that the caller goes on
// meanwhile: the information file is encoded and written while the run fills the next block, a
// fiscal file is validated while the converter writes the next records.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <limits>
#include <mutex>
#include <thread>

namespace infofiscal {

// The first job that throws ends the work: the jobs after it are dropped, and finish throws
// what it threw. Whatever a job touches must outlive the object, or its finish.
class WorkerThread {
 public:
  using Job = std::function<void()>;

  // At most `capacity` jobs wait: add blocks while that many do, which bounds the memory the
  // waiting jobs hold however fast they come.
  explicit WorkerThread(std::size_t capacity = std::numeric_limits<std::size_t>::max());
  // Drops the jobs waiting and ends after the one running (a run that failed or was cancelled).
  ~WorkerThread();
  WorkerThread(const WorkerThread&) = delete;
  WorkerThread& operator=(const WorkerThread&) = delete;

  // Whether a thread was started. Without one (the system had none to spare) the caller does the
  // work itself, on its own thread.
  bool started() const { return thread_.joinable(); }
  // Queues `job`, or drops it when an earlier job failed. REQUIRES: started(), before finish.
  void add(Job job);
  // Waits until every job queued has run, ends the thread and throws what a job threw. Nothing
  // may be added after it.
  void finish();

 private:
  void work();  // the thread: the jobs queued, in order
  void stop();  // ends the thread after the job running, or after all of them when draining

  const std::size_t capacity_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Job> queue_;
  bool stopping_ = false;
  std::exception_ptr failure_;
  std::thread thread_;  // last: started once everything it uses exists
};

}  // namespace infofiscal
