#include "base/worker_thread.h"

#include <system_error>
#include <utility>

namespace infofiscal {

WorkerThread::WorkerThread(std::size_t capacity) : capacity_(capacity) {
  try {
    thread_ = std::thread([this] { work(); });
  } catch (const std::system_error&) {
    // no thread to spare: started() says so, and the caller works alone
  }
}

WorkerThread::~WorkerThread() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    queue_.clear();
  }
  stop();
}

void WorkerThread::stop() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void WorkerThread::add(Job job) {
  {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [this] { return queue_.size() < capacity_ || failure_; });
    if (failure_) return;  // finish says why; nothing more runs
    queue_.push_back(std::move(job));
  }
  changed_.notify_all();
}

void WorkerThread::work() {
  std::unique_lock<std::mutex> lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
    if (queue_.empty()) return;  // stopping, and nothing left to run
    Job job = std::move(queue_.front());
    queue_.pop_front();
    lock.unlock();
    changed_.notify_all();  // a place in the queue is free
    try {
      job();
    } catch (...) {
      lock.lock();
      failure_ = std::current_exception();
      queue_.clear();
      changed_.notify_all();
      return;
    }
    lock.lock();
  }
}

void WorkerThread::finish() {
  stop();
  if (failure_) std::rethrow_exception(failure_);
}

}  // namespace infofiscal
