#include "base/atomic_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/error.h"

namespace infofiscal {

namespace {

std::string errno_text() { return system_reason(errno); }

std::filesystem::path folder_of(const std::filesystem::path& target) {
  return target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
}

// Writes all of `bytes`; false, with errno set, when the system refuses.
bool write_all(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t n = ::write(fd, bytes.data(), bytes.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(n));
  }
  return true;
}

// Reads up to `size` bytes at `offset`, fewer only at the end of the file; -1, with errno set,
// when the system refuses.
ssize_t read_all_at(int fd, std::uint64_t offset, char* out, std::size_t size) {
  std::size_t got = 0;
  while (got < size) {
    const ssize_t n = ::pread(fd, out + got, size - got, static_cast<off_t>(offset + got));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return -1;
    if (n == 0) break;
    got += static_cast<std::size_t>(n);
  }
  return static_cast<ssize_t>(got);
}

}  // namespace

void require_folder_of(const std::string& path) {
  const std::filesystem::path folder = folder_of(path);
  std::error_code ec;
  if (!std::filesystem::is_directory(folder, ec))
    throw Error("A pasta '" + folder.string() + "' não existe: o arquivo '" + path + "' não foi gravado");
}

AtomicFile::AtomicFile(std::string path) : path_(std::move(path)) {
  namespace fs = std::filesystem;
  require_folder_of(path_);
  const fs::path target(path_);
  const fs::path folder = folder_of(target);
  temp_ = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
  fd_ = mkstemp(temp_.data());
  if (fd_ < 0) throw Error("Não foi possível gravar o arquivo '" + path_ + "': " + errno_text());
}

AtomicFile::~AtomicFile() {
  if (fd_ >= 0) ::close(fd_);
  if (!temp_.empty()) ::unlink(temp_.c_str());
}

void AtomicFile::Fail(const std::string& why) {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  ::unlink(temp_.c_str());
  temp_.clear();
  throw Error("Não foi possível gravar o arquivo '" + path_ + "': " + why);
}

void AtomicFile::write(std::string_view bytes) {
  if (fd_ < 0) Fail("arquivo já fechado");
  if (!write_all(fd_, bytes)) Fail(errno_text());
}

std::size_t AtomicFile::read_at(std::uint64_t offset, char* out, std::size_t size) const {
  const ssize_t n = fd_ < 0 ? -1 : read_all_at(fd_, offset, out, size);
  if (n < 0) throw Error("Não foi possível reler o arquivo '" + path_ + "': " + (fd_ < 0 ? "arquivo já fechado" : errno_text()));
  return static_cast<std::size_t>(n);
}

void AtomicFile::start_writeback() {
  if (fd_ >= 0) ::sync_file_range(fd_, 0, 0, SYNC_FILE_RANGE_WRITE);  // a hint: its failure changes nothing
}

void AtomicFile::finish() {
  if (fd_ < 0) Fail("arquivo já fechado");
  if (::fchmod(fd_, 0644) != 0 || ::fsync(fd_) != 0) Fail(errno_text());
  const int fd = fd_;
  fd_ = -1;
  if (::close(fd) != 0) Fail(errno_text());
  finished_ = true;
}

void AtomicFile::commit() {
  if (!finished_) finish();
  if (std::rename(temp_.c_str(), path_.c_str()) != 0) Fail(errno_text());
  temp_.clear();
}

ScratchFile::ScratchFile(std::string folder) : folder_(std::move(folder)) {
  // O_TMPFILE makes a file that never has a name; a file system without it gets a named one,
  // removed at once.
  fd_ = ::open(folder_.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (fd_ < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
    std::string name = (std::filesystem::path(folder_) / ".infofiscal.XXXXXX").string();
    fd_ = mkostemp(name.data(), O_CLOEXEC);
    if (fd_ >= 0) ::unlink(name.c_str());
  }
  if (fd_ < 0) Fail(errno_text());
}

ScratchFile::~ScratchFile() {
  if (fd_ >= 0) ::close(fd_);
}

void ScratchFile::Fail(const std::string& why) const {
  throw Error("Não foi possível usar um arquivo temporário na pasta '" + folder_ + "': " + why);
}

void ScratchFile::append(std::string_view bytes) {
  // Reads go through pread, which leaves the file offset alone: it stays at the end.
  if (!write_all(fd_, bytes)) Fail(errno_text());
  size_ += bytes.size();
}

std::size_t ScratchFile::read_at(std::uint64_t offset, char* out, std::size_t size) const {
  const ssize_t n = read_all_at(fd_, offset, out, size);
  if (n < 0) Fail(errno_text());
  return static_cast<std::size_t>(n);
}

void write_file_atomically(const std::string& path, std::string_view bytes) {
  AtomicFile file(path);
  file.write(bytes);
  file.commit();
}

}  // namespace infofiscal
