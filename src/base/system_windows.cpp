// base/system.h on Windows: the wide (UTF-16) calls of the system throughout, the program's
// UTF-8 converted at each.
#include "base/system.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace infofiscal {

namespace {

// Windows error codes that have no errno value of their own are passed on as this plus the code.
constexpr int kWindowsErrors = 0x20000;
// ERROR_DISK_QUOTA_EXCEEDED, which MinGW's headers lack.
constexpr DWORD kDiskQuotaExceeded = 1295;

std::wstring widen(std::string_view utf8) {
  if (utf8.empty()) return {};
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string narrow(std::wstring_view wide) {
  if (wide.empty()) return {};
  const int size = static_cast<int>(wide.size());
  std::string utf8(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
                   '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr);
  return utf8;
}

// The errno value of the calling thread's last Windows error.
int last_error() {
  const DWORD code = GetLastError();
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME: return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_PRIVILEGE_NOT_HELD: return EACCES;
    // Another program holds the file open and does not let it be written or replaced.
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE: return ETXTBSY;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return EEXIST;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL: return ENOSPC;
    case kDiskQuotaExceeded: return kQuotaExceeded;
    case ERROR_WRITE_PROTECT: return EROFS;
    case ERROR_DIRECTORY: return ENOTDIR;
    case ERROR_FILENAME_EXCED_RANGE: return ENAMETOOLONG;
    case ERROR_TOO_MANY_OPEN_FILES: return EMFILE;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY: return ENOMEM;
    case ERROR_CRC:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_IO_DEVICE: return EIO;
    default: return kWindowsErrors + static_cast<int>(code);
  }
}

HANDLE handle_of(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

// A handle from CreateFileW's `handle`, or the error.
int opened(std::intptr_t& into, HANDLE handle) {
  if (handle == INVALID_HANDLE_VALUE) return last_error();
  into = reinterpret_cast<std::intptr_t>(handle);
  return 0;
}

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace

std::filesystem::path path_of(std::string_view utf8) { return std::filesystem::path(widen(utf8)); }

std::string utf8_of(const std::filesystem::path& path) { return narrow(path.native()); }

// --- files ---------------------------------------------------------------------------------

int SystemFile::open_for_reading(const std::string& path) {
  close();
  const std::wstring name = widen(path);
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) return EISDIR;
  return opened(handle_, CreateFileW(name.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
}

int SystemFile::create_new(const std::string& path) {
  close();
  // Shared for deletion, so that an interruption can remove it while it is open.
  return opened(handle_, CreateFileW(widen(path).c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                     nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
}

int SystemFile::create_scratch(const std::string& folder) {
  close();
  // A fresh name the system picks (it creates the file empty), opened so that the system
  // removes it at the close, also when the process is killed.
  const std::wstring where = widen(folder);
  if (GetFileAttributesW(where.c_str()) == INVALID_FILE_ATTRIBUTES) return last_error();  // as Linux says it
  wchar_t name[MAX_PATH];
  if (GetTempFileNameW(where.c_str(), L".if", 0, name) == 0) return last_error();
  const int erro = opened(handle_, CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                               FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE,
                                               nullptr));
  if (erro != 0) DeleteFileW(name);
  return erro;
}

int SystemFile::append(std::string_view bytes) {
  // Reads through an offset move the file pointer on Windows: back to the end first.
  if (!SetFilePointerEx(handle_of(handle_), LARGE_INTEGER{}, nullptr, FILE_END)) return last_error();
  while (!bytes.empty()) {
    DWORD written = 0;
    const DWORD size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 30));
    if (!WriteFile(handle_of(handle_), bytes.data(), size, &written, nullptr)) return last_error();
    bytes.remove_prefix(written);
  }
  return 0;
}

int SystemFile::read_at(std::uint64_t offset, char* out, std::size_t size, std::size_t& got) const {
  got = 0;
  while (got < size) {
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(offset + got);
    at.OffsetHigh = static_cast<DWORD>((offset + got) >> 32);
    DWORD n = 0;
    const DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(size - got, 1u << 30));
    if (!ReadFile(handle_of(handle_), out + got, wanted, &n, &at)) {
      if (GetLastError() == ERROR_HANDLE_EOF) break;
      return last_error();
    }
    if (n == 0) break;
    got += n;
  }
  return 0;
}

void SystemFile::start_writeback() {}

int SystemFile::copy_permissions(const std::string&) { return 0; }

int SystemFile::flush_to_disk() { return FlushFileBuffers(handle_of(handle_)) ? 0 : last_error(); }

int SystemFile::close() {
  if (!is_open()) return 0;
  return CloseHandle(handle_of(std::exchange(handle_, kClosed))) ? 0 : last_error();
}

int replace_file(const std::string& from, const std::string& to) {
  return MoveFileExW(widen(from).c_str(), widen(to).c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
             ? 0
             : last_error();
}

int remove_file(const std::string& path) { return DeleteFileW(widen(path).c_str()) ? 0 : last_error(); }

PathState path_state(const std::string& path) {
  const std::wstring name = widen(path);
  // Opened without access, to ask what it is: a device (NUL, CON, COM1) or a pipe is no file on
  // a disk. Backup semantics: folders open too.
  // Without access asked, another program's sharing mode does not refuse the open.
  using Kind = PathState::Kind;
  const HANDLE h = CreateFileW(name.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (h != INVALID_HANDLE_VALUE) {
    const DWORD type = GetFileType(h);
    CloseHandle(h);
    if (type != FILE_TYPE_DISK) return {Kind::Other, false};
  }
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return {};
  return {attributes & FILE_ATTRIBUTE_DIRECTORY ? Kind::Folder : Kind::Regular, (attributes & FILE_ATTRIBUTE_READONLY) != 0};
}

int may_create_in(const std::string&) { return 0; }

int may_replace(const std::string& path) {
  // The rename over it needs to delete it: a program that holds it open without sharing that
  // refuses the open too.
  const HANDLE h = CreateFileW(widen(path).c_str(), DELETE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  if (h == INVALID_HANDLE_VALUE) return last_error();
  CloseHandle(h);
  return 0;
}

std::optional<FileIdentity> file_identity(const std::string& path) {
  // Backup semantics: folders open too.
  const HANDLE h = CreateFileW(widen(path).c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (h == INVALID_HANDLE_VALUE) return std::nullopt;
  BY_HANDLE_FILE_INFORMATION info{};
  const bool known = GetFileInformationByHandle(h, &info);
  CloseHandle(h);
  if (!known) return std::nullopt;
  return FileIdentity{info.dwVolumeSerialNumber, std::uint64_t{info.nFileIndexHigh} << 32 | info.nFileIndexLow};
}

// --- memory --------------------------------------------------------------------------------

void advise_memory(const char*, std::size_t, MemoryAdvice) {}

void return_free_memory() {}

// --- the running program -------------------------------------------------------------------

std::string executable_path() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (size == 0) return {};
    if (size < name.size()) return narrow(std::wstring_view(name).substr(0, size));
    name.resize(name.size() * 2);
  }
}

Utf8Arguments::Utf8Arguments(int argc, char** argv) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) arguments_.assign(argv, argv + argc);  // the ANSI ones, rather than none
  for (int i = 0; wide != nullptr && i < count; ++i) arguments_.push_back(narrow(wide[i]));
  LocalFree(wide);
  for (std::string& a : arguments_) pointers_.push_back(a.data());
  pointers_.push_back(nullptr);
}

std::optional<std::string> environment_variable(const char* name) {
  const wchar_t* value = _wgetenv(widen(name).c_str());
  return value ? std::optional<std::string>(narrow(value)) : std::nullopt;
}

namespace {

// The console's code page before the program set UTF-8: the console outlives the program, and
// the commands run in it after it expect their own.
UINT console_code_page = 0;

void restore_console_code_page() {
  if (console_code_page != 0) SetConsoleOutputCP(console_code_page);
}

}  // namespace

void prepare_standard_streams() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  console_code_page = GetConsoleOutputCP();
  if (console_code_page != 0 && SetConsoleOutputCP(CP_UTF8)) std::atexit(restore_console_code_page);
  // The progress bar redraws its line with the terminal's escape sequences.
  const HANDLE err = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  if (GetConsoleMode(err, &mode)) SetConsoleMode(err, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

bool stderr_is_terminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

int terminal_columns() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info)) return 0;
  return info.srWindow.Right - info.srWindow.Left + 1;
}

// --- libraries ----------------------------------------------------------------------------

bool firebird_client_available() {
  // Searched where the delay-load helper searches: the program's folder, the system's, PATH.
  static const bool loaded = LoadLibraryW(L"fbclient.dll") != nullptr;
  return loaded;
}

// --- interruptions -------------------------------------------------------------------------

namespace {

InterruptionHandling interruption;
bool interruption_on_terminal = false;

// Runs on a thread of its own that the system starts for the event.
BOOL WINAPI on_console_event(DWORD event) {
  const char* name = event == CTRL_C_EVENT       ? "Ctrl+C"
                     : event == CTRL_BREAK_EVENT ? "Ctrl+Break"
                     : event == CTRL_CLOSE_EVENT ? "console fechado"
                                                 : "fim da sessão";
  interruption.cleanup();
  // On a terminal a progress bar may be drawn on the current line: start on a clean one.
  const std::string text =
      (interruption_on_terminal ? "\r\033[K" : "") + interruption.program + ": interrompido (" + name + ")\n";
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  restore_console_code_page();
  TerminateProcess(GetCurrentProcess(), STATUS_CONTROL_C_EXIT);
  return TRUE;
}

}  // namespace

void install_interruption_handler(const InterruptionHandling& handling) {
  interruption = handling;
  interruption.program = handling.program.substr(0, 64);
  interruption_on_terminal = stderr_is_terminal();
  SetConsoleCtrlHandler(on_console_event, TRUE);
}

void remove_file_when_interrupted(const char* path) noexcept { DeleteFileW(widen(path).c_str()); }

// --- errors --------------------------------------------------------------------------------

std::string system_error_text(int erro) {
  if (erro < kWindowsErrors) return std::string(std::strerror(erro)) + " (errno " + std::to_string(erro) + ")";
  const DWORD code = static_cast<DWORD>(erro - kWindowsErrors);
  wchar_t* text = nullptr;
  const DWORD size = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                    nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::string message = size > 0 ? narrow(std::wstring_view(text, size)) : "erro desconhecido";
  LocalFree(text);
  while (!message.empty() && (message.back() == '\n' || message.back() == '\r' || message.back() == ' ' || message.back() == '.'))
    message.pop_back();
  return message + " (erro " + std::to_string(code) + " do Windows)";
}

}  // namespace infofiscal
