// base/system.h on Linux.
#include "base/system.h"

#include <fcntl.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <utility>

namespace infofiscal {

std::string system_error_text(int erro) {
  return std::string(std::strerror(erro)) + " (errno " + std::to_string(erro) + ")";
}

std::filesystem::path path_of(std::string_view utf8) { return std::filesystem::path(utf8); }

std::string utf8_of(const std::filesystem::path& path) { return path.string(); }

// --- files ---------------------------------------------------------------------------------

namespace {

int fd_of(std::intptr_t handle) { return static_cast<int>(handle); }

// A descriptor from `open`-like `fd`, or its errno.
int opened(std::intptr_t& handle, int fd) {
  if (fd < 0) return errno;
  handle = fd;
  return 0;
}

}  // namespace

int SystemFile::open_for_reading(const std::string& path) {
  close();
  if (const int erro = opened(handle_, ::open(path.c_str(), O_RDONLY | O_CLOEXEC))) return erro;
  struct stat st {};
  if (::fstat(fd_of(handle_), &st) != 0 || S_ISDIR(st.st_mode)) {  // a folder opens like a file
    const int erro = S_ISDIR(st.st_mode) ? EISDIR : errno;
    close();
    return erro;
  }
  ::posix_fadvise(fd_of(handle_), 0, 0, POSIX_FADV_SEQUENTIAL);  // a hint: its failure changes nothing
  return 0;
}

int SystemFile::create_new(const std::string& path) {
  close();
  return opened(handle_, ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
}

int SystemFile::create_scratch(const std::string& folder) {
  close();
  // O_TMPFILE makes a file that never has a name; a file system without it gets a named one,
  // removed at once.
  const int fd = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (fd >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return opened(handle_, fd);
  std::string name = (std::filesystem::path(folder) / ".infofiscal.XXXXXX").string();
  const int erro = opened(handle_, ::mkostemp(name.data(), O_CLOEXEC));
  if (erro == 0) ::unlink(name.c_str());
  return erro;
}

int SystemFile::append(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t n = ::write(fd_of(handle_), bytes.data(), bytes.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    bytes.remove_prefix(static_cast<std::size_t>(n));
  }
  return 0;
}

int SystemFile::read_at(std::uint64_t offset, char* out, std::size_t size, std::size_t& got) const {
  // pread leaves the file offset alone: writes stay at the end.
  got = 0;
  while (got < size) {
    const ssize_t n = ::pread(fd_of(handle_), out + got, size - got, static_cast<off_t>(offset + got));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return errno;
    if (n == 0) break;
    got += static_cast<std::size_t>(n);
  }
  return 0;
}

void SystemFile::start_writeback() {
  if (is_open()) ::sync_file_range(fd_of(handle_), 0, 0, SYNC_FILE_RANGE_WRITE);
}

int SystemFile::copy_permissions(const std::string& earlier) {
  struct stat st {};
  const mode_t mode = ::stat(earlier.c_str(), &st) == 0 ? st.st_mode & 07777 : 0644;
  return ::fchmod(fd_of(handle_), mode) == 0 ? 0 : errno;
}

int SystemFile::flush_to_disk() { return ::fsync(fd_of(handle_)) == 0 ? 0 : errno; }

int SystemFile::close() {
  if (!is_open()) return 0;
  const int fd = fd_of(std::exchange(handle_, kClosed));
  return ::close(fd) == 0 ? 0 : errno;
}

int replace_file(const std::string& from, const std::string& to) {
  return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

int remove_file(const std::string& path) { return ::unlink(path.c_str()) == 0 ? 0 : errno; }

PathState path_state(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) return {};
  using Kind = PathState::Kind;
  // A file kept read-only on purpose, even from the superuser, who may write anything.
  return {S_ISREG(st.st_mode) ? Kind::Regular : S_ISDIR(st.st_mode) ? Kind::Folder : Kind::Other,
          (st.st_mode & 0222) == 0};
}

int may_create_in(const std::string& folder) { return ::access(folder.c_str(), W_OK | X_OK) == 0 ? 0 : errno; }

int may_replace(const std::string& path) { return ::access(path.c_str(), W_OK) == 0 ? 0 : errno; }

std::optional<FileIdentity> file_identity(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) return std::nullopt;
  return FileIdentity{static_cast<std::uint64_t>(st.st_dev), static_cast<std::uint64_t>(st.st_ino)};
}

// --- memory --------------------------------------------------------------------------------

void advise_memory(const char* data, std::size_t size, MemoryAdvice advice) {
  const std::uintptr_t unit = advice == MemoryAdvice::Populate ? 4096 : std::uintptr_t{2} << 20;
  const auto begin = reinterpret_cast<std::uintptr_t>(data);
  const std::uintptr_t first = (begin + unit - 1) & ~(unit - 1), last = (begin + size) & ~(unit - 1);
  if (last > first)
    ::madvise(reinterpret_cast<void*>(first), last - first,
              advice == MemoryAdvice::Populate ? MADV_POPULATE_WRITE : MADV_HUGEPAGE);
}

void return_free_memory() {
#ifdef __GLIBC__
  ::malloc_trim(0);
#endif
}

// --- the running program -------------------------------------------------------------------

std::string executable_path() {
  std::error_code ec;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::string() : exe.string();
}

Utf8Arguments::Utf8Arguments(int argc, char** argv) : arguments_(argv, argv + argc) {
  for (std::string& a : arguments_) pointers_.push_back(a.data());
  pointers_.push_back(nullptr);
}

std::optional<std::string> environment_variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? std::optional<std::string>(value) : std::nullopt;
}

void prepare_standard_streams() {}

bool stderr_is_terminal() { return ::isatty(STDERR_FILENO) == 1; }

int terminal_columns() {
  winsize size{};
  return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

// --- libraries ----------------------------------------------------------------------------

bool firebird_client_available() { return true; }

// --- interruptions -------------------------------------------------------------------------

namespace {

void (*cleanup_at_interruption)() = nullptr;

// What the handler writes for each signal, prepared when it is installed.
struct Message {
  int signal;
  char text[160];
  std::size_t size;
};
Message messages[] = {{SIGINT, {}, 0}, {SIGTERM, {}, 0}, {SIGHUP, {}, 0}};

// Only async-signal-safe calls: the cleanup's, write, sigaction, sigprocmask, raise, _exit.
extern "C" void on_signal(int signal) {
  cleanup_at_interruption();
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

void install_interruption_handler(const InterruptionHandling& handling) {
  cleanup_at_interruption = handling.cleanup;
  const bool terminal = stderr_is_terminal();
  struct sigaction action {};
  action.sa_handler = on_signal;
  sigemptyset(&action.sa_mask);
  for (Message& m : messages) {
    prepare_message(m, handling.program, terminal);
    sigaddset(&action.sa_mask, m.signal);  // one interruption at a time
  }
  for (const Message& m : messages) ::sigaction(m.signal, &action, nullptr);
  ::signal(SIGPIPE, SIG_IGN);
}

void remove_file_when_interrupted(const char* path) noexcept { ::unlink(path); }

}  // namespace infofiscal
