// A file written whole or not at all: the fiscal files and the information file are never left
// half-written, and a failed run leaves the previous file as it was.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace infofiscal {

// Throws the error of a file that cannot be written because its folder does not exist; lets a
// front refuse such a path before a long run rather than after it.
void require_folder_of(const std::string& path);

// A file written whole or not at all: bytes go to a temporary file in the target's folder,
// renamed over the target by commit. Destroyed without commit, it removes the temporary and
// leaves any earlier file as it was. Every failure throws Error naming the target.
class AtomicFile {
 public:
  // The folder must exist; it is not created.
  explicit AtomicFile(std::string path);
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  void write(std::string_view bytes);
  // Asks the system to start writing what was written so far to disk, so that commit has less
  // left to wait for.
  void start_writeback();
  // Flushes to disk and closes the temporary: the file is complete, but the target is not
  // touched until commit. Nothing may be written after it.
  void finish();
  // Renames the temporary over the target, finishing it first when finish was not called.
  void commit();
  // Reads back up to `size` bytes written from `offset` into `out`; returns how many (0 past
  // the end). REQUIRES: commit has not been called.
  std::size_t read_at(std::uint64_t offset, char* out, std::size_t size) const;

 private:
  [[noreturn]] void Fail(const std::string& why);

  std::string path_, temp_;
  int fd_ = -1;
  bool finished_ = false;
};

// A temporary file without a name in a folder, for data that does not fit in memory: nothing
// can open it, and it is gone when closed, even if the program is killed. Every failure throws
// Error naming the folder.
class ScratchFile {
 public:
  // The folder must exist.
  explicit ScratchFile(std::string folder);
  ~ScratchFile();
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  std::uint64_t size() const { return size_; }
  // Appends `bytes` at the end.
  void append(std::string_view bytes);
  // Reads up to `size` bytes from `offset` into `out`; returns how many (0 past the end).
  std::size_t read_at(std::uint64_t offset, char* out, std::size_t size) const;

 private:
  [[noreturn]] void Fail(const std::string& why) const;

  std::string folder_;
  int fd_ = -1;
  std::uint64_t size_ = 0;
};

// Writes `bytes` to `path` through a temporary file in the same folder, renamed over `path`
// only when complete: a failure leaves any earlier file as it was and no temporary behind.
// The folder must exist; it is not created. Throws Error naming the file.
void write_file_atomically(const std::string& path, std::string_view bytes);

}  // namespace infofiscal
