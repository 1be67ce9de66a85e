// The code page's table against the C library's iconv, which wrote the files before: the same
// bytes for every byte, every character and broken UTF-8. Only where the C library has iconv
// (Linux); the exact bytes of the demo month's files stand for it elsewhere.
#include "base/code_page.h"

#include <cerrno>
#include <fstream>
#include <random>
#include <sstream>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#if __has_include(<iconv.h>)
#include <iconv.h>
#define INFOFISCAL_TEM_ICONV 1
#endif

namespace infofiscal {
namespace {

#ifdef INFOFISCAL_TEM_ICONV

// One iconv conversion, opened once.
class Iconv {
 public:
  Iconv(const char* to, const char* from) : cd_(iconv_open(to, from)) {}
  ~Iconv() { iconv_close(cd_); }

  // `text` converted. At a sequence iconv refuses, `replacement` is written and the sequence
  // skipped: one byte, or with `utf8_sequences` the bytes its first byte announces, up to the
  // next ASCII byte.
  std::string operator()(std::string_view text, std::string_view replacement, bool utf8_sequences) const {
    std::string out;
    char* in = const_cast<char*>(text.data());
    std::size_t left = text.size();
    char buffer[4096];
    while (left > 0) {
      char* dst = buffer;
      std::size_t room = sizeof buffer;
      const std::size_t rc = iconv(cd_, &in, &left, &dst, &room);
      out.append(buffer, dst - buffer);
      if (rc != static_cast<std::size_t>(-1) || errno == E2BIG) continue;
      const unsigned char lead = static_cast<unsigned char>(*in);
      const std::size_t announced = !utf8_sequences                ? 1
                                    : lead >= 0xF0 && lead < 0xF8 ? 4
                                    : lead >= 0xE0 && lead < 0xF0 ? 3
                                    : lead >= 0xC0 && lead < 0xE0 ? 2
                                                                  : 1;
      std::size_t n = 1;
      while (n < announced && n < left && static_cast<unsigned char>(in[n]) >= 0x80) ++n;
      out += replacement;
      in += n;
      left -= n;
      iconv(cd_, nullptr, nullptr, nullptr, nullptr);
    }
    return out;
  }

 private:
  iconv_t cd_;
};

std::string encoded_by_iconv(std::string_view utf8) {
  static const Iconv to_cp1252("CP1252", "UTF-8");
  return to_cp1252(utf8, "?", true);
}

std::string decoded_by_iconv(std::string_view bytes) {
  static const Iconv to_utf8("UTF-8", "CP1252");
  return to_utf8(bytes, "\xEF\xBF\xBD", false);
}

std::string utf8_of(char32_t c) {
  if (c < 0x80) return std::string(1, static_cast<char>(c));
  if (c < 0x800) return {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
  if (c < 0x10000)
    return {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
            static_cast<char>(0x80 | (c & 0x3F))};
  return {static_cast<char>(0xF0 | c >> 18), static_cast<char>(0x80 | (c >> 12 & 0x3F)),
          static_cast<char>(0x80 | (c >> 6 & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
}

std::string hex(std::string_view bytes) {
  std::string out;
  for (const char c : bytes) out += fmt::format("{:02X} ", static_cast<unsigned char>(c));
  return out;
}

// Each of `cases` encodes as iconv encodes it; the first few that do not are named (a case at a
// time: iconv is slow at a refusal deep inside a long text).
void expect_encoded_as_iconv(const std::vector<std::string>& cases) {
  int differ = 0;
  for (const std::string& c : cases) {
    const std::string mine = utf8_to_windows1252(c), theirs = encoded_by_iconv(c);
    if (mine != theirs && differ++ < 5) ADD_FAILURE() << hex(c) << "dá " << hex(mine) << "e no iconv " << hex(theirs);
  }
  EXPECT_EQ(differ, 0) << "de " << cases.size() << " casos";
}

TEST(CodePageIconv, EveryByteDecodesAsIconvDecodes) {
  for (int b = 0; b < 256; ++b) {
    const std::string one(1, static_cast<char>(b));
    EXPECT_EQ(windows1252_to_utf8(one), decoded_by_iconv(one)) << b;
  }
}

// Every character up to U+10FFFF but the surrogates: the code page's 251 and '?' for the rest.
TEST(CodePageIconv, EveryCharacterEncodesAsIconvEncodes) {
  std::vector<std::string> cases;
  for (char32_t c = 1; c <= 0x10FFFF; ++c)
    if (c < 0xD800 || c > 0xDFFF) cases.push_back(utf8_of(c));
  expect_encoded_as_iconv(cases);
}

// Every sequence of one, two and three bytes of 0x80 and above, each followed by ASCII: stray
// continuations, overlong forms, surrogates, cut and broken sequences.
TEST(CodePageIconv, EveryShortBrokenSequenceEncodesAsIconvEncodes) {
  std::vector<std::string> cases;
  for (int a = 0x80; a < 0x100; ++a) {
    cases.push_back({static_cast<char>(a), 'a'});
    for (int b = 0x80; b < 0x100; ++b) {
      cases.push_back({static_cast<char>(a), static_cast<char>(b), 'a'});
      for (int c = 0x80; c < 0x100; ++c)
        cases.push_back({static_cast<char>(a), static_cast<char>(b), static_cast<char>(c), 'a'});
    }
  }
  expect_encoded_as_iconv(cases);
}

// Random lines of lead bytes, continuations and characters, where one broken sequence swallows
// the start of the next; fixed seed.
TEST(CodePageIconv, MixedBrokenTextEncodesAsIconvEncodes) {
  std::mt19937 random(25);
  const std::string pool[] = {"\x80", "\x8F", "\xA9", "\xBF", "\xC0", "\xC1", "\xC2", "\xC3", "\xDF", "\xE0",
                              "\xE2", "\xED", "\xEF", "\xF0", "\xF3", "\xF4", "\xF5", "\xF8", "\xFF", "\xF3\xA0",
                              "ç", "€", "😀", "\U000E0067", "a"};
  std::vector<std::string> cases;
  for (int line = 0; line < 1 << 16; ++line) {
    std::string text;
    for (int n = random() % 12; n > 0; --n) text += pool[random() % std::size(pool)];
    cases.push_back(text + '\n');
  }
  expect_encoded_as_iconv(cases);
}

// Real text: the demo month's snapshot and the register columns' descriptions, in UTF-8, and an
// information file, in Windows-1252 (broken UTF-8 to the encoder); each result decoded back.
TEST(CodePageIconv, RealTextEncodesAndDecodesAsIconv) {
  for (const char* name : {"/snapshots/mes_marco_2024.json", "/linhas.json", "/informacao/sintegra_marco_2024.txt"}) {
    std::ifstream in(std::string(INFOFISCAL_TEST_DATA) + name, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    const std::string text = s.str();
    ASSERT_FALSE(text.empty()) << name;
    const std::string bytes = utf8_to_windows1252(text);
    EXPECT_TRUE(bytes == encoded_by_iconv(text)) << name;
    EXPECT_TRUE(windows1252_to_utf8(bytes) == decoded_by_iconv(bytes)) << name;
  }
}

#else

TEST(CodePageIconv, ComparedOnlyWhereTheCLibraryHasIconv) {
  GTEST_SKIP() << "sem iconv neste sistema: as comparações rodam no Linux";
}

#endif

}  // namespace
}  // namespace infofiscal
