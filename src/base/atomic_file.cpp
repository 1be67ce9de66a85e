#include "base/atomic_file.h"

#include <cerrno>
#include <filesystem>
#include <random>
#include <utility>

#include "base/error.h"
#include "base/interruption.h"
#include "base/system.h"

namespace infofiscal {

namespace fs = std::filesystem;

namespace {

fs::path folder_of(const fs::path& target) { return target.has_parent_path() ? target.parent_path() : fs::path("."); }

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
  throw Error("Não foi possível gravar o arquivo '" + path + "': " + why);
}

// The checks of require_writable_target on the destination `path` is written to.
void check_destination(const std::string& path, const std::string& destination) {
  const std::string folder = utf8_of(folder_of(path_of(destination)));
  std::error_code ec;
  if (!fs::is_directory(path_of(folder), ec))
    throw Error("A pasta '" + folder + "' não existe: o arquivo '" + path + "' não foi gravado");
  if (const int erro = may_create_in(folder)) refuse(path, system_reason(erro));
  const PathState state = path_state(destination);
  using Kind = PathState::Kind;
  if (state.kind == Kind::Missing) return;  // a new file
  if (state.kind == Kind::Folder) refuse(path, system_reason(EISDIR));
  // A rename over a device or a pipe would replace it with an ordinary file.
  if (state.kind != Kind::Regular) refuse(path, "não é um arquivo comum");
  // The rename needs only the folder's permission: a file kept read-only on purpose is refused.
  if (state.read_only) refuse(path, "arquivo somente para leitura");
  if (const int erro = may_replace(destination)) refuse(path, system_reason(erro));
}

// The identity of an existing file; for one that does not exist yet, that of its folder and its
// name there.
struct FileId {
  FileIdentity file;
  std::string name;
  friend bool operator==(const FileId&, const FileId&) = default;
};

std::optional<FileId> identity(const std::string& path) {
  if (const auto file = file_identity(path)) return FileId{*file, ""};
  try {
    const fs::path destination = path_of(write_destination(path));
    const auto folder = file_identity(utf8_of(folder_of(destination)));
    if (!folder) return std::nullopt;
    return FileId{*folder, utf8_of(destination.filename())};
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

}  // namespace

std::string write_destination(const std::string& path) {
  fs::path p = path_of(path);
  for (int links = 0; links < 40; ++links) {
    std::error_code ec;
    if (!fs::is_symlink(fs::symlink_status(p, ec))) return utf8_of(p);
    const fs::path target = fs::read_symlink(p, ec);
    if (ec) return utf8_of(p);
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
  const fs::path destination = path_of(destination_);
  const std::string prefix = utf8_of(folder_of(destination) / path_of("." + utf8_of(destination.filename()) + "."));
  int erro = EEXIST;
  for (int attempt = 0; attempt < 100 && erro == EEXIST; ++attempt) {
    temp_ = prefix + random_suffix();
    on_interruption_ = std::make_unique<RemovedOnInterruption>(temp_);
    erro = file_.create_new(temp_);
    if (erro == 0) return;
    on_interruption_.reset();
  }
  temp_.clear();
  refuse(path_, system_reason(erro));
}

AtomicFile::~AtomicFile() { Discard(); }

void AtomicFile::Discard() {
  file_.close();
  if (!temp_.empty()) remove_file(temp_);
  temp_.clear();
  on_interruption_.reset();
}

void AtomicFile::Fail(const std::string& why) {
  Discard();
  refuse(path_, why);
}

void AtomicFile::write(std::string_view bytes) {
  if (!file_.is_open()) Fail("arquivo já fechado");
  if (const int erro = file_.append(bytes)) Fail(system_reason(erro));
}

std::size_t AtomicFile::read_at(std::uint64_t offset, char* out, std::size_t size) const {
  std::size_t got = 0;
  const int erro = file_.is_open() ? file_.read_at(offset, out, size, got) : 0;
  if (!file_.is_open() || erro != 0)
    throw Error("Não foi possível reler o arquivo '" + path_ + "': " +
                (erro == 0 ? std::string("arquivo já fechado") : system_reason(erro)));
  return got;
}

void AtomicFile::start_writeback() { file_.start_writeback(); }

void AtomicFile::finish() {
  if (!file_.is_open()) Fail("arquivo já fechado");
  try {
    check_destination(path_, destination_);
  } catch (const Error&) {
    Discard();
    throw;
  }
  int erro = file_.copy_permissions(destination_);
  if (erro == 0) erro = file_.flush_to_disk();
  if (erro == 0) erro = file_.close();
  if (erro != 0) Fail(system_reason(erro));
  finished_ = true;
}

void AtomicFile::commit() {
  if (!finished_) finish();
  if (const int erro = replace_file(temp_, destination_)) Fail(system_reason(erro));
  temp_.clear();
  on_interruption_.reset();
}

ScratchFile::ScratchFile(std::string folder) : folder_(std::move(folder)) {
  if (const int erro = file_.create_scratch(folder_)) Fail(system_reason(erro));
}

void ScratchFile::Fail(const std::string& why) const {
  throw Error("Não foi possível usar um arquivo temporário na pasta '" + folder_ + "': " + why);
}

void ScratchFile::append(std::string_view bytes) {
  if (const int erro = file_.append(bytes)) Fail(system_reason(erro));
  size_ += bytes.size();
}

std::size_t ScratchFile::read_at(std::uint64_t offset, char* out, std::size_t size) const {
  std::size_t got = 0;
  if (const int erro = file_.read_at(offset, out, size, got)) Fail(system_reason(erro));
  return got;
}

void write_file_atomically(const std::string& path, std::string_view bytes) {
  AtomicFile file(path);
  file.write(bytes);
  file.commit();
}

}  // namespace infofiscal
