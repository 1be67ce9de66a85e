#include "base/interruption.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <climits>
#include <cstring>

namespace infofiscal {

namespace {

// One registered temporary. The handler may run on any thread while another registers or
// forgets a slot: it copies the path, and unlinks the copy only when the slot was live and
// kept the same generation throughout the copy (else the copy may be torn, and the temporary
// is the business of the thread that is changing the slot).
struct Slot {
  std::atomic<int> state{0};  // kFree, kWriting, kLive
  std::atomic<unsigned> generation{0};
  char path[PATH_MAX];
};
constexpr int kFree = 0, kWriting = 1, kLive = 2;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<unsigned>::is_always_lock_free,
              "the signal handler reads the slots");

// A run writes at most three files at once (the information file, the fiscal file, the snapshot).
Slot slots[16];

// What the handler writes for each signal, prepared when it is installed.
struct Message {
  int signal;
  char text[160];
  std::size_t size;
};
Message messages[] = {{SIGINT, {}, 0}, {SIGTERM, {}, 0}, {SIGHUP, {}, 0}};

void remove_temporaries() {
  char copy[PATH_MAX];
  for (Slot& slot : slots) {
    if (slot.state.load(std::memory_order_acquire) != kLive) continue;
    const unsigned generation = slot.generation.load(std::memory_order_acquire);
    std::memcpy(copy, slot.path, sizeof copy);
    std::atomic_thread_fence(std::memory_order_acquire);
    if (slot.state.load(std::memory_order_relaxed) == kLive &&
        slot.generation.load(std::memory_order_relaxed) == generation)
      ::unlink(copy);
  }
}

// Only async-signal-safe calls: unlink, write, sigaction, sigprocmask, raise, _exit.
extern "C" void on_interruption(int signal) {
  remove_temporaries();
  for (const Message& m : messages)
    if (m.signal == signal) {
      [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, m.text, m.size);
    }
  struct sigaction default_action {};
  default_action.sa_handler = SIG_DFL;
  ::sigaction(signal, &default_action, nullptr);
  sigset_t just_this;
  sigemptyset(&just_this);
  sigaddset(&just_this, signal);
  ::sigprocmask(SIG_UNBLOCK, &just_this, nullptr);
  ::raise(signal);
  ::_exit(128 + signal);  // only if the signal did not end the process
}

void prepare_message(Message& m, const std::string& program, bool terminal) {
  const char* name = m.signal == SIGINT ? "SIGINT" : m.signal == SIGTERM ? "SIGTERM" : "SIGHUP";
  // On a terminal a progress bar may be drawn on the current line: start on a clean one.
  const std::string text = (terminal ? "\r\033[K" : "") + program.substr(0, 64) + ": interrompido (" + name + ")\n";
  m.size = text.copy(m.text, sizeof m.text);
}

}  // namespace

void handle_interruptions(const std::string& program) {
  const bool terminal = ::isatty(STDERR_FILENO) == 1;
  struct sigaction action {};
  action.sa_handler = on_interruption;
  sigemptyset(&action.sa_mask);
  for (Message& m : messages) {
    prepare_message(m, program, terminal);
    sigaddset(&action.sa_mask, m.signal);  // one interruption at a time
  }
  for (const Message& m : messages) ::sigaction(m.signal, &action, nullptr);
  ::signal(SIGPIPE, SIG_IGN);
}

RemovedOnInterruption::RemovedOnInterruption(const std::string& path) noexcept : slot_(-1) {
  if (path.size() >= PATH_MAX) return;
  for (int i = 0; i < static_cast<int>(std::size(slots)); ++i) {
    int free = kFree;
    if (!slots[i].state.compare_exchange_strong(free, kWriting, std::memory_order_acq_rel)) continue;
    std::memcpy(slots[i].path, path.c_str(), path.size() + 1);
    slots[i].generation.fetch_add(1, std::memory_order_release);
    slots[i].state.store(kLive, std::memory_order_release);
    slot_ = i;
    return;
  }
}

RemovedOnInterruption::~RemovedOnInterruption() {
  if (slot_ >= 0) slots[slot_].state.store(kFree, std::memory_order_release);
}

}  // namespace infofiscal
