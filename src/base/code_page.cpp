#include "base/code_page.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include <iconv.h>

#include "base/error.h"

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

// Appends `text` to `out`: ASCII, the same in both code pages, as it stands; each run of other
// bytes through `iconv`, opened from `from` to `to` on the first such run. At a sequence the
// converter refuses, `refused(in, left, out)` writes its replacement and steps over it.
template <class Refused>
void convert_runs(std::string_view text, std::unique_ptr<Iconv>& iconv, const char* to, const char* from,
                  std::string& out, Refused&& refused) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t ascii = run_end(text, i, true);
    out.append(text, i, ascii - i);
    if (ascii == text.size()) break;
    i = run_end(text, ascii, false);
    if (!iconv) iconv = std::make_unique<Iconv>(to, from);
    const char* in = text.data() + ascii;
    std::size_t left = i - ascii;
    while (!iconv->convert(in, left, out)) refused(in, left, out);
  }
}

}  // namespace

Windows1252::Windows1252() = default;
Windows1252::~Windows1252() = default;

void Windows1252::append(std::string_view utf8, std::string& out) {
  convert_runs(utf8, iconv_, "CP1252", "UTF-8", out, [](const char*& in, std::size_t& left, std::string& o) {
    const std::size_t skip = std::min(left, utf8_length(static_cast<unsigned char>(*in)));
    o += '?';
    in += skip;
    left -= skip;
  });
}

std::string utf8_to_windows1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  Windows1252().append(utf8, out);
  return out;
}

Utf8FromWindows1252::Utf8FromWindows1252() = default;
Utf8FromWindows1252::~Utf8FromWindows1252() = default;

void Utf8FromWindows1252::append(std::string_view bytes, std::string& out) {
  // One of the five bytes the code page leaves undefined.
  convert_runs(bytes, iconv_, "UTF-8", "CP1252", out, [](const char*& in, std::size_t& left, std::string& o) {
    o += "\xEF\xBF\xBD";
    ++in;
    --left;
  });
}

std::string windows1252_to_utf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 8);
  Utf8FromWindows1252().append(bytes, out);
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

void TextEncoder::feed(std::string_view piece, std::string& out) {
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
      encoder_.append(std::string_view(p, stop - p), out);
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

void TextEncoder::finish(std::string& out) {
  if (line_open_) out += "\r\n";
  line_open_ = false;
}

char32_t next_code_point(std::string_view text, std::size_t& i) {
  const auto lead = static_cast<unsigned char>(text[i]);
  const std::size_t n = utf8_length(lead);
  if (n == 1 || i + n > text.size()) {
    ++i;
    return lead < 0x80 ? lead : 0xFFFD;
  }
  char32_t c = lead & (0x7F >> n);
  for (std::size_t k = 1; k < n; ++k) {
    const auto b = static_cast<unsigned char>(text[i + k]);
    if ((b & 0xC0) != 0x80) {
      ++i;
      return 0xFFFD;
    }
    c = (c << 6) | (b & 0x3F);
  }
  i += n;
  return c;
}

std::string_view transliteration(char32_t c) {
  static constexpr std::pair<char32_t, std::string_view> kTabela[] = {
      {0x2018, "'"},  {0x2019, "'"},   {0x201A, "'"},  {0x201B, "'"},  {0x2032, "'"},   {0x201C, "\""},
      {0x201D, "\""}, {0x201E, "\""}, {0x201F, "\""}, {0x2033, "\""}, {0x2010, "-"},  {0x2011, "-"},
      {0x2012, "-"},  {0x2013, "-"},   {0x2014, "-"},  {0x2015, "-"},  {0x2212, "-"},   {0x2022, "-"},
      {0x2026, "..."}, {0x20AC, "EUR"}, {0x2122, "TM"}, {0x2039, "<"},  {0x203A, ">"},   {0x0152, "OE"},
      {0x0153, "oe"}, {0x0160, "S"},   {0x0161, "s"},  {0x017D, "Z"},  {0x017E, "z"},   {0x0178, "Y"},
      // Signs of Latin-1 itself, for a file in ASCII (ISO-8859-1 keeps them).
      {0x00A0, " "},  {0x00AA, "a"},   {0x00BA, "o"},  {0x00B0, "o"},  {0x00B9, "1"},   {0x00B2, "2"},
      {0x00B3, "3"},  {0x00BC, "1/4"}, {0x00BD, "1/2"}, {0x00BE, "3/4"}, {0x00AB, "\""}, {0x00BB, "\""},
      {0x00B7, "."},  {0x00B4, "'"},
  };
  for (const auto& [de, para] : kTabela)
    if (de == c) return para;
  return {};
}

void append_latin1(std::string_view utf8, std::string& out) {
  for (std::size_t i = 0; i < utf8.size();) {
    const auto b = static_cast<unsigned char>(utf8[i]);
    if (b < 0x80) {  // ASCII, the bulk of a file
      out.push_back(static_cast<char>(b));
      ++i;
      continue;
    }
    const char32_t c = next_code_point(utf8, i);
    if (c >= 0xA0 && c <= 0xFF) {
      out.push_back(static_cast<char>(c));
    } else if (const std::string_view t = transliteration(c); !t.empty()) {
      out.append(t);
    } else {
      out.push_back('?');
    }
  }
}

}  // namespace infofiscal
