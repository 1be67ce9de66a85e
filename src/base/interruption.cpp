#include "base/interruption.h"

#include <atomic>
#include <cstring>
#include <iterator>

#include "base/system.h"

namespace infofiscal {

namespace {

// The longest path registered, in bytes.
constexpr std::size_t kMaxPath = 4096;

// One registered temporary. The handler may run on any thread while another registers or
// forgets a slot: it copies the path, and removes the copy only when the slot was live and
// kept the same generation throughout the copy (else the copy may be torn, and the temporary
// is the business of the thread that is changing the slot).
struct Slot {
  std::atomic<int> state{0};  // kFree, kWriting, kLive
  std::atomic<unsigned> generation{0};
  char path[kMaxPath];
};
constexpr int kFree = 0, kWriting = 1, kLive = 2;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<unsigned>::is_always_lock_free,
              "the signal handler reads the slots");

// A run writes at most three files at once (the information file, the fiscal file, the snapshot).
Slot slots[16];

// Async-signal-safe: run inside the signal handler on Linux.
void remove_temporaries() {
  char copy[kMaxPath];
  for (Slot& slot : slots) {
    if (slot.state.load(std::memory_order_acquire) != kLive) continue;
    const unsigned generation = slot.generation.load(std::memory_order_acquire);
    std::memcpy(copy, slot.path, sizeof copy);
    std::atomic_thread_fence(std::memory_order_acquire);
    if (slot.state.load(std::memory_order_relaxed) == kLive &&
        slot.generation.load(std::memory_order_relaxed) == generation)
      remove_file_when_interrupted(copy);
  }
}

}  // namespace

void handle_interruptions(const std::string& program) { install_interruption_handler({remove_temporaries, program}); }

RemovedOnInterruption::RemovedOnInterruption(const std::string& path) noexcept : slot_(-1) {
  if (path.size() >= kMaxPath) return;
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
