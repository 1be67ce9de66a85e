#include "base/atomic_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/error.h"
#include "base/interruption.h"

namespace infofiscal {

namespace fs = std::filesystem;

namespace {

fs::path folder_of(const fs::path& target) { return target.has_parent_path() ? target.parent_path() : fs::path("."); }

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
  throw Error("Não foi possível gravar o arquivo '" + path + "': " + why);
}

// The checks of require_writable_target on the destination `path` is written to.
void check_destination(const std::string& path, const std::string& destination) {
  const fs::path folder = folder_of(destination);
  std::error_code ec;
  if (!fs::is_directory(folder, ec))
    throw Error("A pasta '" + folder.string() + "' não existe: o arquivo '" + path + "' não foi gravado");
  if (::access(folder.c_str(), W_OK | X_OK) != 0) refuse(path, system_reason(errno));
  struct stat st {};
  if (::stat(destination.c_str(), &st) != 0) return;  // a new file
  if (S_ISDIR(st.st_mode)) refuse(path, system_reason(EISDIR));
  // A rename over a device or a pipe would replace it with an ordinary file.
  if (!S_ISREG(st.st_mode)) refuse(path, "não é um arquivo comum");
  // The rename needs only the folder's permission: a file kept read-only on purpose (even from
  // the superuser, who may write anything) is refused here.
  if ((st.st_mode & 0222) == 0) refuse(path, "arquivo somente para leitura");
  if (::access(destination.c_str(), W_OK) != 0) refuse(path, system_reason(errno));
}

// Device and inode of an existing file; for one that does not exist yet, those of its folder
// and its name there.
struct FileId {
  dev_t device = 0;
  ino_t inode = 0;
  std::string name;
  friend bool operator==(const FileId&, const FileId&) = default;
};

std::optional<FileId> identity(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) == 0) return FileId{st.st_dev, st.st_ino, ""};
  try {
    const fs::path destination = write_destination(path);
    if (::stat(folder_of(destination).c_str(), &st) != 0) return std::nullopt;
    return FileId{st.st_dev, st.st_ino, destination.filename().string()};
  } catch (const Error&) {
    return std::nullopt;  // links in a cycle name no file
  }
}

std::string same_file(const NamedFile& target, const NamedFile& other, const char* consequence) {
  return target.name + " '" + target.path + "' é o mesmo arquivo que " + other.name + " ('" + other.path + "'): " +
         consequence + "; escolha outro nome";
}

// Six letters or digits, as mkstemp's: the hidden temporary's name is chosen (and registered
// for removal on an interruption) before the file is created.
std::string random_suffix() {
  static constexpr char kChars[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
  thread_local std::mt19937_64 generator{std::random_device{}()};
  std::string suffix(6, ' ');
  for (char& c : suffix) c = kChars[generator() % (sizeof kChars - 1)];
  return suffix;
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

std::string write_destination(const std::string& path) {
  fs::path p(path);
  for (int links = 0; links < 40; ++links) {
    std::error_code ec;
    if (!fs::is_symlink(fs::symlink_status(p, ec))) return p.string();
    const fs::path target = fs::read_symlink(p, ec);
    if (ec) return p.string();
    p = target.is_absolute() ? target : folder_of(p) / target;
  }
  refuse(path, system_reason(ELOOP));
}

void require_writable_target(const std::string& path) { check_destination(path, write_destination(path)); }

std::optional<std::string> overwrite_conflict(std::span<const NamedFile> targets, std::span<const NamedFile> inputs) {
  for (std::size_t t = 0; t < targets.size(); ++t) {
    const auto id = identity(targets[t].path);
    if (!id) continue;
    for (const NamedFile& input : inputs)
      if (identity(input.path) == id) return same_file(targets[t], input, "gravar nele o destruiria");
    for (std::size_t earlier = 0; earlier < t; ++earlier)
      if (identity(targets[earlier].path) == id)
        return same_file(targets[t], targets[earlier], "um substituiria o outro");
  }
  return std::nullopt;
}

AtomicFile::AtomicFile(std::string path) : path_(std::move(path)), destination_(write_destination(path_)) {
  check_destination(path_, destination_);
  Create();
}

void AtomicFile::Create() {
  const fs::path destination(destination_);
  const std::string prefix = (folder_of(destination) / ("." + destination.filename().string() + ".")).string();
  int erro = EEXIST;
  for (int attempt = 0; attempt < 100 && erro == EEXIST; ++attempt) {
    temp_ = prefix + random_suffix();
    on_interruption_ = std::make_unique<RemovedOnInterruption>(temp_);
    fd_ = ::open(temp_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd_ >= 0) return;
    erro = errno;
    on_interruption_.reset();
  }
  temp_.clear();
  refuse(path_, system_reason(erro));
}

AtomicFile::~AtomicFile() { Discard(); }

void AtomicFile::Discard() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  if (!temp_.empty()) ::unlink(temp_.c_str());
  temp_.clear();
  on_interruption_.reset();
}

void AtomicFile::Fail(const std::string& why) {
  Discard();
  refuse(path_, why);
}

void AtomicFile::write(std::string_view bytes) {
  if (fd_ < 0) Fail("arquivo já fechado");
  if (!write_all(fd_, bytes)) Fail(system_reason(errno));
}

std::size_t AtomicFile::read_at(std::uint64_t offset, char* out, std::size_t size) const {
  const ssize_t n = fd_ < 0 ? -1 : read_all_at(fd_, offset, out, size);
  if (n < 0)
    throw Error("Não foi possível reler o arquivo '" + path_ + "': " +
                (fd_ < 0 ? std::string("arquivo já fechado") : system_reason(errno)));
  return static_cast<std::size_t>(n);
}

void AtomicFile::start_writeback() {
  if (fd_ >= 0) ::sync_file_range(fd_, 0, 0, SYNC_FILE_RANGE_WRITE);  // a hint: its failure changes nothing
}

void AtomicFile::finish() {
  if (fd_ < 0) Fail("arquivo já fechado");
  try {
    check_destination(path_, destination_);
  } catch (const Error&) {
    Discard();
    throw;
  }
  struct stat earlier {};
  const mode_t mode = ::stat(destination_.c_str(), &earlier) == 0 ? earlier.st_mode & 07777 : 0644;
  if (::fchmod(fd_, mode) != 0 || ::fsync(fd_) != 0) Fail(system_reason(errno));
  const int fd = fd_;
  fd_ = -1;
  if (::close(fd) != 0) Fail(system_reason(errno));
  finished_ = true;
}

void AtomicFile::commit() {
  if (!finished_) finish();
  if (std::rename(temp_.c_str(), destination_.c_str()) != 0) Fail(system_reason(errno));
  temp_.clear();
  on_interruption_.reset();
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
  if (fd_ < 0) Fail(system_reason(errno));
}

ScratchFile::~ScratchFile() {
  if (fd_ >= 0) ::close(fd_);
}

void ScratchFile::Fail(const std::string& why) const {
  throw Error("Não foi possível usar um arquivo temporário na pasta '" + folder_ + "': " + why);
}

void ScratchFile::append(std::string_view bytes) {
  // Reads go through pread, which leaves the file offset alone: it stays at the end.
  if (!write_all(fd_, bytes)) Fail(system_reason(errno));
  size_ += bytes.size();
}

std::size_t ScratchFile::read_at(std::uint64_t offset, char* out, std::size_t size) const {
  const ssize_t n = read_all_at(fd_, offset, out, size);
  if (n < 0) Fail(system_reason(errno));
  return static_cast<std::size_t>(n);
}

void write_file_atomically(const std::string& path, std::string_view bytes) {
  AtomicFile file(path);
  file.write(bytes);
  file.commit();
}

}  // namespace infofiscal
