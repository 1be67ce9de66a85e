#include "export/arquivo_texto.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <iconv.h>
#include <unistd.h>

#include "export/string_list.h"
#include "host/error.h"

namespace infofiscal {

// One iconv conversion descriptor, for the life of its owner.
class Iconv {
 public:
  Iconv(const char* to, const char* from) : cd_(iconv_open(to, from)) {
    if (cd_ == reinterpret_cast<iconv_t>(-1)) throw Error(std::string("Conversão de código indisponível: ") + from + " para " + to);
  }
  ~Iconv() { iconv_close(cd_); }
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;

  // Converts as much as it can; returns false at a sequence it cannot convert, with `in`
  // standing on it.
  bool convert(const char*& in, std::size_t& in_left, std::string& out) {
    char buffer[16384];
    while (in_left > 0) {
      char* dst = buffer;
      std::size_t dst_left = sizeof buffer;
      const std::size_t rc = iconv(cd_, const_cast<char**>(&in), &in_left, &dst, &dst_left);
      out.append(buffer, dst - buffer);
      if (rc == static_cast<std::size_t>(-1) && errno != E2BIG) return false;
    }
    return true;
  }

 private:
  iconv_t cd_;
};

namespace {

// Length of the UTF-8 sequence that starts with `lead` (1 for a stray byte).
std::size_t utf8_length(unsigned char lead) {
  if (lead >= 0xF0 && lead < 0xF8) return 4;
  if (lead >= 0xE0) return lead < 0xF0 ? 3 : 1;
  if (lead >= 0xC0) return 2;
  return 1;
}

std::string errno_text() { return motivo_do_sistema(errno); }

// The end of the run of ASCII bytes (or, with `ascii` false, of other bytes) that starts at `i`.
std::size_t run_end(std::string_view text, std::size_t i, bool ascii) {
  if (ascii) {
    // Eight bytes at a time: the bulk of a register file is ASCII.
    for (std::uint64_t word; i + 8 <= text.size(); i += 8) {
      std::memcpy(&word, text.data() + i, 8);
      if (word & 0x8080808080808080u) break;
    }
  }
  while (i < text.size() && (static_cast<unsigned char>(text[i]) < 0x80) == ascii) ++i;
  return i;
}

}  // namespace

Windows1252::Windows1252() = default;
Windows1252::~Windows1252() = default;

void Windows1252::Append(std::string_view utf8, std::string& out) {
  // ASCII is the same in both: copied as it stands, iconv sees only the runs of other bytes.
  for (std::size_t i = 0; i < utf8.size();) {
    const std::size_t ascii = run_end(utf8, i, true);
    out.append(utf8, i, ascii - i);
    if (ascii == utf8.size()) break;
    i = run_end(utf8, ascii, false);
    if (!iconv_) iconv_ = std::make_unique<Iconv>("CP1252", "UTF-8");
    const char* in = utf8.data() + ascii;
    std::size_t left = i - ascii;
    while (!iconv_->convert(in, left, out)) {
      const std::size_t skip = std::min(left, utf8_length(static_cast<unsigned char>(*in)));
      out += '?';
      in += skip;
      left -= skip;
    }
  }
}

std::string utf8_to_windows1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  Windows1252().Append(utf8, out);
  return out;
}

std::string windows1252_to_utf8(std::string_view bytes) {
  Iconv cd("UTF-8", "CP1252");
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 8);
  const char* in = bytes.data();
  std::size_t left = bytes.size();
  while (!cd.convert(in, left, out)) {
    out += "\xEF\xBF\xBD";
    ++in;
    --left;
  }
  return out;
}

std::string normalize_line_breaks(std::string_view text) {
  std::string out;
  out.reserve(text.size() + 2);
  std::size_t i = 0;
  while (i < text.size()) {
    const std::size_t end = text.find_first_of("\r\n", i);
    if (end == std::string_view::npos) {
      out.append(text.substr(i));
      out += "\r\n";
      break;
    }
    out.append(text.substr(i, end - i));
    out += "\r\n";
    i = end + (text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n' ? 2 : 1);
  }
  return out;
}

void CodificadorTexto::Feed(std::string_view piece, std::string& out) {
  // Spans between line breaks are encoded whole; each CR, LF or CR LF becomes one CR LF (a CR
  // LF split between two pieces included).
  const char* const begin = piece.data();
  const char* const end = begin + piece.size();
  const char* next_cr = static_cast<const char*>(std::memchr(begin, '\r', piece.size()));
  const char* next_lf = static_cast<const char*>(std::memchr(begin, '\n', piece.size()));
  for (const char* p = begin; p < end;) {
    if (after_cr_ && *p == '\n') {
      after_cr_ = false;
      next_lf = static_cast<const char*>(std::memchr(p + 1, '\n', end - p - 1));
      ++p;
      continue;
    }
    const char* brk = next_cr && (!next_lf || next_cr < next_lf) ? next_cr : next_lf;
    const char* stop = brk ? brk : end;
    if (stop > p) {
      encoder_.Append(std::string_view(p, stop - p), out);
      line_open_ = true;
      after_cr_ = false;
    }
    if (!brk) break;
    out += "\r\n";
    line_open_ = false;
    after_cr_ = *brk == '\r';
    if (brk == next_cr) next_cr = static_cast<const char*>(std::memchr(brk + 1, '\r', end - brk - 1));
    else next_lf = static_cast<const char*>(std::memchr(brk + 1, '\n', end - brk - 1));
    p = brk + 1;
  }
}

void CodificadorTexto::Finish(std::string& out) {
  if (line_open_) out += "\r\n";
  line_open_ = false;
}

namespace {

std::filesystem::path folder_of(const std::filesystem::path& target) {
  return target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
}

// The end of the piece of `block` that starts at `at`: just after the last line feed within
// `size` bytes (after the next one for a longer line). A line feed is ASCII, so the cut cannot
// change how the text around it encodes.
std::size_t piece_end(std::string_view block, std::size_t at, std::size_t size) {
  if (block.size() - at <= size) return block.size();
  const void* lf = memrchr(block.data() + at, '\n', size);
  if (lf == nullptr) lf = std::memchr(block.data() + at + size, '\n', block.size() - at - size);
  return lf == nullptr ? block.size() : static_cast<std::size_t>(static_cast<const char*>(lf) - block.data()) + 1;
}

}  // namespace

void exigir_pasta_de(const std::string& path) {
  const std::filesystem::path folder = folder_of(path);
  std::error_code ec;
  if (!std::filesystem::is_directory(folder, ec))
    throw Error("A pasta '" + folder.string() + "' não existe: o arquivo '" + path + "' não foi gravado");
}

ArquivoAtomico::ArquivoAtomico(std::string path) : path_(std::move(path)) {
  namespace fs = std::filesystem;
  exigir_pasta_de(path_);
  const fs::path target(path_);
  const fs::path folder = folder_of(target);
  temp_ = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
  fd_ = mkstemp(temp_.data());
  if (fd_ < 0) throw Error("Não foi possível gravar o arquivo '" + path_ + "': " + errno_text());
}

ArquivoAtomico::~ArquivoAtomico() {
  if (fd_ >= 0) ::close(fd_);
  if (!temp_.empty()) ::unlink(temp_.c_str());
}

void ArquivoAtomico::Fail(const std::string& why) {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  ::unlink(temp_.c_str());
  temp_.clear();
  throw Error("Não foi possível gravar o arquivo '" + path_ + "': " + why);
}

void ArquivoAtomico::Write(std::string_view bytes) {
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

void ArquivoAtomico::StartWriteback() {
  if (fd_ >= 0) ::sync_file_range(fd_, 0, 0, SYNC_FILE_RANGE_WRITE);  // a hint: its failure changes nothing
}

void ArquivoAtomico::Commit() {
  if (fd_ < 0) Fail("arquivo já fechado");
  if (::fchmod(fd_, 0644) != 0 || ::fsync(fd_) != 0) Fail(errno_text());
  const int fd = fd_;
  fd_ = -1;
  if (::close(fd) != 0) Fail(errno_text());
  if (std::rename(temp_.c_str(), path_.c_str()) != 0) Fail(errno_text());
  temp_.clear();
}

void write_file_atomically(const std::string& path, std::string_view bytes) {
  ArquivoAtomico file(path);
  file.Write(bytes);
  file.Commit();
}

std::string save_text_file(const std::string& path, std::string_view text) {
  const std::string bytes = utf8_to_windows1252(normalize_line_breaks(text));
  write_file_atomically(path, bytes);
  return windows1252_to_utf8(bytes);
}

GravacaoDaLista::GravacaoDaLista(std::string path, TStringList& list, bool keep_text)
    : path_(std::move(path)), list_(list), keep_text_(keep_text) {
  try {
    writer_ = std::thread([this] { Work(); });
  } catch (const std::system_error&) {
    return;  // no thread to spare: Commit writes the whole list
  }
  list_.OnBlockFull([this](std::string_view block) {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      queue_.push_back(block);
    }
    queued_.notify_one();
  });
}

GravacaoDaLista::~GravacaoDaLista() { Stop(); }

void GravacaoDaLista::Stop() {
  list_.OnBlockFull(nullptr);
  if (!writer_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  queued_.notify_one();
  writer_.join();
}

void GravacaoDaLista::Work() {
  std::unique_lock<std::mutex> lock(mutex_);
  for (;;) {
    queued_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
    if (stopping_ || failure_) return;
    const std::string_view block = queue_.front();
    queue_.pop_front();
    lock.unlock();
    try {
      Write(block);
    } catch (...) {
      failure_ = std::current_exception();
    }
    lock.lock();
  }
}

void GravacaoDaLista::Write(std::string_view block) {
  // A piece at a time, so that the encoded bytes are written from a buffer still in the cache.
  constexpr std::size_t kPiece = std::size_t{1} << 20;
  if (!file_) file_ = std::make_unique<ArquivoAtomico>(path_);
  for (std::size_t at = 0; at < block.size();) {
    const std::size_t end = piece_end(block, at, kPiece);
    codificador_.Feed(block.substr(at, end - at), bytes_);
    WriteBytes();
    at = end;
  }
  file_->StartWriteback();
  ++written_;
}

void GravacaoDaLista::WriteBytes() {
  file_->Write(bytes_);
  if (keep_text_) saved_ += windows1252_to_utf8(bytes_);
  bytes_.clear();
}

std::string GravacaoDaLista::Commit() {
  Stop();
  if (failure_) std::rethrow_exception(failure_);
  const std::vector<std::string>& blocks = list_.Blocks();
  for (std::size_t b = written_; b < blocks.size(); ++b) Write(blocks[b]);
  if (!file_) file_ = std::make_unique<ArquivoAtomico>(path_);  // an empty list: an empty file
  codificador_.Finish(bytes_);
  WriteBytes();
  file_->Commit();
  list_.Clear();
  return keep_text_ ? std::move(saved_) : std::string();
}

}  // namespace infofiscal
