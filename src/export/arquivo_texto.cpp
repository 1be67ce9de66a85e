#include "export/arquivo_texto.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <iconv.h>
#include <unistd.h>

#include "host/error.h"

namespace infofiscal {

namespace {

// One iconv conversion descriptor for the life of a call.
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

// Length of the UTF-8 sequence that starts with `lead` (1 for a stray byte).
std::size_t utf8_length(unsigned char lead) {
  if (lead >= 0xF0 && lead < 0xF8) return 4;
  if (lead >= 0xE0) return lead < 0xF0 ? 3 : 1;
  if (lead >= 0xC0) return 2;
  return 1;
}

std::string errno_text() { return std::strerror(errno); }

}  // namespace

std::string utf8_to_windows1252(std::string_view utf8) {
  Iconv cd("CP1252", "UTF-8");
  std::string out;
  out.reserve(utf8.size());
  const char* in = utf8.data();
  std::size_t left = utf8.size();
  while (!cd.convert(in, left, out)) {
    const std::size_t skip = std::min(left, utf8_length(static_cast<unsigned char>(*in)));
    out += '?';
    in += skip;
    left -= skip;
  }
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

void write_file_atomically(const std::string& path, std::string_view bytes) {
  namespace fs = std::filesystem;
  const fs::path target(path);
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  std::error_code ec;
  if (!fs::is_directory(folder, ec))
    throw Error("A pasta '" + folder.string() + "' não existe: o arquivo '" + path + "' não foi gravado");
  std::string temp = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
  const int fd = mkstemp(temp.data());
  if (fd < 0) throw Error("Não foi possível gravar o arquivo '" + path + "': " + errno_text());
  const auto fail = [&](const std::string& why) {
    ::close(fd);
    ::unlink(temp.c_str());
    return Error("Não foi possível gravar o arquivo '" + path + "': " + why);
  };
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t n = ::write(fd, bytes.data() + written, bytes.size() - written);
    if (n < 0) {
      if (errno == EINTR) continue;
      throw fail(errno_text());
    }
    written += static_cast<std::size_t>(n);
  }
  if (::fchmod(fd, 0644) != 0 || ::fsync(fd) != 0) throw fail(errno_text());
  if (::close(fd) != 0) {
    const std::string why = errno_text();
    ::unlink(temp.c_str());
    throw Error("Não foi possível gravar o arquivo '" + path + "': " + why);
  }
  if (std::rename(temp.c_str(), path.c_str()) != 0) {
    const std::string why = errno_text();
    ::unlink(temp.c_str());
    throw Error("Não foi possível gravar o arquivo '" + path + "': " + why);
  }
}

std::string save_text_file(const std::string& path, std::string_view text) {
  const std::string bytes = utf8_to_windows1252(normalize_line_breaks(text));
  write_file_atomically(path, bytes);
  return windows1252_to_utf8(bytes);
}

}  // namespace infofiscal
