// UTF-8 to ISO-8859-1 with the one table of transliterations: the EFD file's code page.
#include <gtest/gtest.h>

#include "base/code_page.h"

namespace infofiscal {
namespace {

TEST(Latin1, KeepsItsLettersAndTransliteratesWhatItLacks) {
  const struct {
    std::string_view utf8, latin1;
  } casos[] = {
      {"Ação ÇÃO ü ½ ° ª", "A\xE7\xE3o \xC7\xC3O \xFC \xBD \xB0 \xAA"},
      {"“aspas” ‘simples’", "\"aspas\" 'simples'"},
      {"a – b — c … d", "a - b - c ... d"},
      {"10 € ™", "10 EUR TM"},
      {"CR LF\r\n", "CR LF\r\n"},
      // No text uses the C1 controls; a character without a plain form and an invalid byte.
      {"\u0085|\u4E2D|\xFF|", "?|?|?|"},
  };
  for (const auto& c : casos) {
    std::string out;
    append_latin1(c.utf8, out);
    EXPECT_EQ(out, c.latin1) << c.utf8;
  }
}

TEST(Latin1, TheTableOfTransliterations) {
  for (const char32_t c : {U'A', U'ç', U'\u00A4'}) EXPECT_EQ(transliteration(c), "") << static_cast<unsigned>(c);
  EXPECT_EQ(transliteration(U'\u201C'), "\"");
  EXPECT_EQ(transliteration(U'²'), "2");  // for ASCII; ISO-8859-1 keeps it
  EXPECT_EQ(transliteration(U'\u20AC'), "EUR");
}

}  // namespace
}  // namespace infofiscal
