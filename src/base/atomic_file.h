// A file written whole or not at all: the fiscal files and the information file are never left
// half-written, and a failed run leaves the previous file as it was. Also the checks that a
// front makes before a long run, so that a target that cannot be written, or that is one of the
// run's own inputs, is refused before anything is read.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/system.h"

namespace infofiscal {

class RemovedOnInterruption;

// The file that writing `path` replaces: `path` itself or, when it is a symbolic link, the file
// the link leads to (followed link after link), so that the link stays a link. A link that
// leads to no file gives the path it names. Throws Error for links in a cycle.
std::string write_destination(const std::string& path);

// Throws the Error that writing `path` through an AtomicFile would end with, found before
// anything is written: the folder does not exist ("A pasta '...' não existe: o arquivo '...'
// não foi gravado") or cannot be written into; the file there is a folder, not an ordinary
// file, or read-only (no write permission bit, or none for this user).
void require_writable_target(const std::string& path);

// A file that a run reads or writes, with the words that name it in a message
// ("--arquivo-fiscal", "o banco de dados da fonte").
struct NamedFile {
  std::string path, name;
};

// The refusal of the first of `targets` that is the same file as one of `inputs` or as an
// earlier target, or nothing when there is none. Files are compared by identity (device and
// inode, links followed), not by spelling; a file that does not exist yet is the same as
// another only by name in the same folder.
std::optional<std::string> overwrite_conflict(std::span<const NamedFile> targets, std::span<const NamedFile> inputs);

// A file written whole or not at all: bytes go to a hidden temporary file beside the
// destination (see write_destination), renamed over it by commit; an existing file keeps its
// permission bits. Destroyed without commit, or interrupted by a signal (base/interruption.h),
// it removes the temporary and leaves any earlier file as it was. Every failure throws Error
// naming the target.
class AtomicFile {
 public:
  // REQUIRES: the checks of require_writable_target pass (else it throws their Error).
  explicit AtomicFile(std::string path);
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  void write(std::string_view bytes);
  // Asks the system to start writing what was written so far to disk, so that commit has less
  // left to wait for.
  void start_writeback();
  // Checks the destination again (a target made read-only during the run is refused, not
  // replaced), flushes to disk and closes the temporary: the file is complete, but the target
  // is not touched until commit. Nothing may be written after it.
  void finish();
  // Renames the temporary over the destination, finishing it first when finish was not called.
  void commit();
  // The temporary's name, for reading the finished file back before it is put in place. The
  // name is good from finish until commit (or the destructor). REQUIRES: finish has returned.
  const std::string& temporary() const { return temp_; }
  // Reads back up to `size` bytes written from `offset` into `out`; returns how many (0 past
  // the end). REQUIRES: commit has not been called.
  std::size_t read_at(std::uint64_t offset, char* out, std::size_t size) const;

 private:
  [[noreturn]] void Fail(const std::string& why);  // Discard, then throw naming the target
  void Discard();  // closes and removes the temporary
  void Create();

  std::string path_, destination_, temp_;
  std::unique_ptr<RemovedOnInterruption> on_interruption_;  // temp_, while it may exist
  SystemFile file_;  // the temporary, until finish
  bool finished_ = false;
};

// A temporary file without a name in a folder, for data that does not fit in memory: nothing
// can open it, and it is gone when closed, even if the program is killed. Every failure throws
// Error naming the folder.
class ScratchFile {
 public:
  // The folder must exist.
  explicit ScratchFile(std::string folder);

  std::uint64_t size() const { return size_; }
  // Appends `bytes` at the end.
  void append(std::string_view bytes);
  // Reads up to `size` bytes from `offset` into `out`; returns how many (0 past the end).
  std::size_t read_at(std::uint64_t offset, char* out, std::size_t size) const;

 private:
  [[noreturn]] void Fail(const std::string& why) const;

  std::string folder_;
  SystemFile file_;
  std::uint64_t size_ = 0;
};

// Writes `bytes` to `path` through a temporary file in the same folder, renamed over `path`
// only when complete: a failure leaves any earlier file as it was and no temporary behind.
// The folder must exist; it is not created. Throws Error naming the file.
void write_file_atomically(const std::string& path, std::string_view bytes);

}  // namespace infofiscal
