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
  while (!bytes.empty()) {
    const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      Fail(errno_text());
    }
    bytes.remove_prefix(static_cast<std::size_t>(n));
  }
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

void write_file_atomically(const std::string& path, std::string_view bytes) {
  AtomicFile file(path);
  file.write(bytes);
  file.commit();
}

}  // namespace infofiscal
