// What differs between the systems the program runs on, Linux and Windows, in one place: files
// and paths, the console and its interruptions, the running program, memory hints. Each is
// implemented twice, in system_posix.cpp and system_windows.cpp (the build compiles the one of
// its system); every file above this one is the same on both.
//
// Paths are UTF-8 strings throughout the program. Failures are errno values, which
// system_reason (base/error.h) names in Portuguese; on Windows the system's own error codes are
// translated to the nearest of them.
#pragma once

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace infofiscal {

// The errno value of an exhausted disk quota. Windows' C library has no EDQUOT: its
// ERROR_DISK_QUOTA_EXCEEDED is given a value of its own, beyond the library's.
#ifdef EDQUOT
inline constexpr int kQuotaExceeded = EDQUOT;
#else
inline constexpr int kQuotaExceeded = 0x10000;
#endif

// The system's own text for an error value that system_reason has no Portuguese for, with its
// number: the C library's text and the errno value, or Windows' text and its code.
std::string system_error_text(int erro);

// --- paths ---------------------------------------------------------------------------------

// The path named by UTF-8 `utf8`, and back. Windows reads a path made from a plain std::string
// in the ANSI code page, so that "São Paulo" would name another folder; these do not.
std::filesystem::path path_of(std::string_view utf8);
std::string utf8_of(const std::filesystem::path& path);

// --- files ---------------------------------------------------------------------------------

// A file open on the system: a descriptor on Linux, a handle on Windows; closed when destroyed.
// Every call returns 0 or the errno value of its failure. One thread at a time.
class SystemFile {
 public:
  SystemFile() = default;
  ~SystemFile() { close(); }
  SystemFile(SystemFile&& other) noexcept : handle_(std::exchange(other.handle_, kClosed)) {}
  SystemFile& operator=(SystemFile&& other) noexcept {
    if (this != &other) {
      close();
      handle_ = std::exchange(other.handle_, kClosed);
    }
    return *this;
  }

  bool is_open() const { return handle_ != kClosed; }

  // Opens the existing file `path` for reading, front to back; EISDIR for a folder.
  int open_for_reading(const std::string& path);
  // Creates the file `path` for reading and writing, accessible only to its owner (on Windows,
  // as the folder's permissions say); EEXIST when anything is there. remove_file may remove it while it is open (the name goes at once on
  // Linux, at the close on Windows).
  int create_new(const std::string& path);
  // Creates a file without a name in the folder `folder` for reading and writing: nothing else
  // can open it, and it is gone when closed, even when the program is killed. Where the file
  // system cannot make a nameless file (and on Windows), a hidden name is used and removed by
  // the system at the close.
  int create_scratch(const std::string& folder);

  // Writes all of `bytes` at the end of the file (reads do not move where writes go).
  int append(std::string_view bytes);
  // Reads up to `size` bytes at `offset` into `out`, fewer only at the end of the file; `got`
  // says how many.
  int read_at(std::uint64_t offset, char* out, std::size_t size, std::size_t& got) const;
  // Asks the system to start writing the data to disk, so that flush_to_disk has less to wait
  // for. A hint: nothing is reported, and Windows has nothing of the kind.
  void start_writeback();
  // Gives the file the permission bits of the file at `earlier`, or those of a new file
  // (rw-r--r--) when nothing is there. Windows keeps no such bits: nothing to do.
  int copy_permissions(const std::string& earlier);
  // Returns once the data is on the disk.
  int flush_to_disk();
  // Closes the file, reporting the close's own failure (a write the system had deferred).
  int close();

 private:
  static constexpr std::intptr_t kClosed = -1;  // also Windows' INVALID_HANDLE_VALUE
  std::intptr_t handle_ = kClosed;
};

// Renames the file `from` over `to`, replacing whatever file was there, and makes the rename
// itself durable on Windows (MOVEFILE_WRITE_THROUGH). `from` must be closed on Windows.
int replace_file(const std::string& from, const std::string& to);
// Removes the file `path`.
int remove_file(const std::string& path);

// What is at a path about to be written.
struct PathState {
  enum class Kind { Missing, Regular, Folder, Other } kind = Kind::Missing;
  // An existing file that says it must not be written: no write permission bit for anybody
  // (Linux), the read-only attribute (Windows).
  bool read_only = false;
};
PathState path_state(const std::string& path);

// 0 when this process may create files in the folder `folder`. Windows answers that only
// when a file is created: 0 there.
int may_create_in(const std::string& folder);
// 0 when this process may replace the existing file `path`: write permission (Linux); no other
// program holding it open without letting it be replaced (Windows).
int may_replace(const std::string& path);

// The identity of an existing file, links followed: device and inode (Linux), volume and file
// index (Windows). Two paths name the same file when their identities are equal.
struct FileIdentity {
  std::uint64_t volume = 0, index = 0;
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};
std::optional<FileIdentity> file_identity(const std::string& path);

// --- memory --------------------------------------------------------------------------------

// Advice on a block of memory, for the whole pages within it: fault its pages in now (on the
// calling thread), or back it with huge pages. A hint that changes nothing but speed; nothing
// on Windows, where large pages need a privilege users do not have.
enum class MemoryAdvice { Populate, HugePages };
void advise_memory(const char* data, std::size_t size, MemoryAdvice advice);

// Gives the pages of memory that was freed back to the system. Call it after letting go of much
// memory made of small blocks while another thread goes on allocating: glibc's malloc keeps the
// freed blocks in the arena of the thread that freed them, where the other thread does not look,
// so without it the process holds both. Nothing on Windows, where the threads share one heap.
void return_free_memory();

// --- the running program -------------------------------------------------------------------

// The path of the running program's executable; empty when the system does not say.
std::string executable_path();

// The command line's arguments in UTF-8: argv as given on Linux; on Windows, the arguments as
// the system received them (UTF-16), since argv holds them in the ANSI code page. The argv()
// pointers live as long as this object.
class Utf8Arguments {
 public:
  Utf8Arguments(int argc, char** argv);
  int argc() const { return static_cast<int>(pointers_.size()) - 1; }
  char** argv() { return pointers_.data(); }

 private:
  std::vector<std::string> arguments_;
  std::vector<char*> pointers_;  // into arguments_, then a null pointer
};

// The value of the environment variable `name` in UTF-8; nothing when it is not set.
std::optional<std::string> environment_variable(const char* name);

// Makes stdout and stderr carry the program's bytes as they are: on Windows, no LF turned into
// CR LF (the info lines match Linux's) and the console shows UTF-8 (its own code page is given
// back when the program ends). Nothing to do on Linux.
void prepare_standard_streams();

// Whether stderr is a terminal (a console on Windows).
bool stderr_is_terminal();
// The width in columns of the terminal on stderr; 0 when it is none or does not say.
int terminal_columns();

// --- libraries ----------------------------------------------------------------------------

// Whether the Firebird client library can be used. Linux links it with the program. On Windows
// it is the fbclient.dll of the user's Firebird installation, which the program loads only at
// its first call (delay-loaded, so that the program starts without Firebird): without it that
// call would end the process. This loads it first.
bool firebird_client_available();

// --- interruptions -------------------------------------------------------------------------

// What to do at an interruption of the process: Ctrl-C, SIGTERM or SIGHUP on Linux; Ctrl-C,
// Ctrl-Break or the console window closed on Windows.
struct InterruptionHandling {
  // Called first, on whatever thread the system interrupts: on Linux inside a signal handler,
  // so only async-signal-safe calls (remove_file_when_interrupted is one).
  void (*cleanup)() = nullptr;
  // The program's short name, for the line "<program>: interrompido (SIGINT)" written to
  // stderr before the process ends.
  std::string program;
};

// Installs `handling` for the whole process, after which the process ends as the interruption
// would have ended it: by the same signal on Linux (a shell reports 128 + its number: 130, 143,
// 129), with status 0xC000013A (STATUS_CONTROL_C_EXIT) on Windows. On Linux SIGPIPE is
// ignored too: a reader that closes stdout early does not stop the files from being written.
// REQUIRES: called once, before any other thread starts.
void install_interruption_handler(const InterruptionHandling& handling);

// Removes the file `path` (a NUL-terminated UTF-8 path) from within an interruption's cleanup.
void remove_file_when_interrupted(const char* path) noexcept;

}  // namespace infofiscal
