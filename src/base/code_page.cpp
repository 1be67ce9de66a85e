#include "base/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace infofiscal {

namespace {

// The characters of bytes 0x80 to 0x9F; 0 for the five bytes the code page leaves undefined.
// Bytes 0xA0 to 0xFF are U+00A0 to U+00FF, and ASCII is itself.
constexpr char16_t kFrom80[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// A byte of 0x80 and above in UTF-8: two or three bytes, U+FFFD for an undefined one.
struct Utf8Char {
  char bytes[3];
  std::uint8_t size;
};

constexpr std::array<Utf8Char, 128> utf8_table() {
  std::array<Utf8Char, 128> table{};
  for (int b = 0x80; b <= 0xFF; ++b) {
    const char32_t c = b >= 0xA0 ? b : kFrom80[b - 0x80] ? kFrom80[b - 0x80] : 0xFFFD;
    Utf8Char& u = table[b - 0x80];
    if (c < 0x800) {
      u = {{static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F)), 0}, 2};
    } else {
      u = {{static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
            static_cast<char>(0x80 | (c & 0x3F))}, 3};
    }
  }
  return table;
}
constexpr std::array<Utf8Char, 128> kUtf8 = utf8_table();

// Length of the UTF-8 sequence that starts with `lead` (1 for a stray byte).
std::size_t utf8_length(unsigned char lead) {
  if (lead >= 0xF0 && lead < 0xF8) return 4;
  if (lead >= 0xE0) return lead < 0xF0 ? 3 : 1;
  if (lead >= 0xC0) return 2;
  return 1;
}

// Whether `sequence` is one of the invisible language tags U+E0000 to U+E007F (F3 A0 80 80 to
// F3 A0 81 BF). iconv skips them without a trace, and the files were written by iconv.
bool language_tag(std::string_view sequence) {
  return sequence.size() == 4 && sequence.substr(0, 2) == "\xF3\xA0" && (sequence[2] == '\x80' || sequence[2] == '\x81') &&
         (static_cast<unsigned char>(sequence[3]) & 0xC0) == 0x80;
}

// The Windows-1252 byte of `sequence`, which holds the bytes its first byte announces (fewer
// when the text ends or turns to ASCII first); '?' when they are not one well-formed character
// of the code page. Every such character takes two or three bytes; a longer one is none of them,
// and an overlong form (0xC0 0xA9 for U+00A9) is refused as the standard requires.
char windows1252_byte(std::string_view sequence) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(sequence[i]); };
  const std::size_t size = sequence.size();
  if (size != utf8_length(byte(0)) || size < 2 || size > 3) return '?';
  char32_t c = byte(0) & (size == 2 ? 0x1F : 0x0F);
  for (std::size_t i = 1; i < size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return '?';
    c = c << 6 | (byte(i) & 0x3F);
  }
  if (c < (size == 2 ? 0x80u : 0x800u)) return '?';
  if (c >= 0xA0 && c <= 0xFF) return static_cast<char>(c);
  for (std::size_t i = 0; i < std::size(kFrom80); ++i)
    if (kFrom80[i] != 0 && kFrom80[i] == c) return static_cast<char>(0x80 + i);
  return '?';
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
// bytes through `other(run, out)`.
template <class Other>
void convert_runs(std::string_view text, std::string& out, Other&& other) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t ascii = run_end(text, i, true);
    out.append(text, i, ascii - i);
    if (ascii == text.size()) break;
    i = run_end(text, ascii, false);
    other(text.substr(ascii, i - ascii), out);
  }
}

}  // namespace

void Windows1252::append(std::string_view utf8, std::string& out) {
  convert_runs(utf8, out, [](std::string_view run, std::string& o) {
    for (std::size_t at = 0; at < run.size();) {
      const std::size_t size = std::min(run.size() - at, utf8_length(static_cast<unsigned char>(run[at])));
      const std::string_view sequence = run.substr(at, size);
      if (!language_tag(sequence)) o += windows1252_byte(sequence);
      at += size;
    }
  });
}

std::string utf8_to_windows1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  Windows1252().append(utf8, out);
  return out;
}

void Utf8FromWindows1252::append(std::string_view bytes, std::string& out) {
  convert_runs(bytes, out, [](std::string_view run, std::string& o) {
    for (const char b : run) {
      const Utf8Char& u = kUtf8[static_cast<unsigned char>(b) - 0x80];
      o.append(u.bytes, u.size);
    }
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
