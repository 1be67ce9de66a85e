// Interruptions of a run (Ctrl-C, a closed terminal or console, a scheduler that stops it): the
// temporary files of the atomic writes are removed, the earlier files stay as they were, and
// the process ends as the interruption would have ended it. The system's side of it (signals,
// Windows' console handler) is in base/system.h.
#pragma once

#include <string>

namespace infofiscal {

// Installs the handling for the whole process. SIGINT, SIGTERM and SIGHUP (on Windows Ctrl-C,
// Ctrl-Break and the console closed) remove every registered temporary, write
// "<program>: interrompido (SIGINT)" to stderr and end the process as install_interruption_handler
// (base/system.h) says: on Linux by that same signal (a shell reports 128 + its number: 130,
// 143, 129). SIGPIPE is ignored: a reader that closes stdout early (`exportar ... | head -1`)
// does not stop the files from being written. REQUIRES: called once, before any other thread
// starts; `program` is a short name.
void handle_interruptions(const std::string& program);

// A temporary file that an interruption removes while this object lives. The path is copied in
// advance, so that the handler only has to unlink it. Register the path before the file is
// created, and destroy this only after the file is renamed or removed: an interruption in
// between then finds nothing or unlinks a name that is already gone. Without a free slot (more
// than a handful of temporaries alive at once) nothing is registered.
class RemovedOnInterruption {
 public:
  explicit RemovedOnInterruption(const std::string& path) noexcept;
  ~RemovedOnInterruption();
  RemovedOnInterruption(const RemovedOnInterruption&) = delete;
  RemovedOnInterruption& operator=(const RemovedOnInterruption&) = delete;

 private:
  int slot_;
};

}  // namespace infofiscal
