#include "base/renderings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <charconv>
#include <cmath>
#include <random>

namespace infofiscal {
namespace {

TEST(Renderings, AmountRoundsHalfAwayFromZeroOnTheShortestText) {
  const struct {
    double value;
    const char* text;
  } cases[] = {
      {1234.5, "1234,50"}, {0, "0,00"},       {-1.5, "-1,50"},    {0.333, "0,33"},   {1.005, "1,01"},
      {2.675, "2,68"},     {-0.004, "0,00"},  {-0.005, "-0,01"},  {0.995, "1,00"},   {9.999, "10,00"},
      {-0.0, "0,00"},      {1e16, "10000000000000000,00"},        {1e-05, "0,00"},   {0.1, "0,10"},
      {123456789.125, "123456789,13"},        {-999.995, "-1000,00"}, {7, "7,00"},    {0.5, "0,50"},
  };
  for (const auto& c : cases) {
    std::string out;
    append_amount(out, c.value);
    EXPECT_EQ(out, c.text) << c.value;
  }
}

// The rule written the slow, obvious way: round the shortest text at its third decimal.
std::string amount_by_the_text_rule(double value) {
  char text[400];
  const char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
  const char* p = text;
  const bool negative = *p == '-';
  if (negative) ++p;
  const char* point = std::find(p, end, '.');
  std::string digits(p, point);
  const char* decimals = point == end ? end : point + 1;
  for (int i = 0; i < 2; ++i) digits += decimals + i < end ? decimals[i] : '0';
  long long cents = std::stoll(digits) + (decimals + 2 < end && decimals[2] >= '5' ? 1 : 0);
  std::string out = negative && cents != 0 ? "-" : "";
  return out + std::to_string(cents / 100) + "," + (cents % 100 < 10 ? "0" : "") + std::to_string(cents % 100);
}

// The arithmetic shortcut must agree with the text rule everywhere, half cents above all.
TEST(Renderings, AmountShortcutAgreesWithTheTextRule) {
  std::mt19937_64 random(20240301);
  for (int i = 0; i < 400000; ++i) {
    const double sign = (random() & 1) ? 1 : -1;
    double value = 0;
    switch (i % 4) {
      case 0: value = static_cast<double>(random() % 100000000) / 1000.0; break;  // many half cents
      case 1: value = static_cast<double>(random() % 1000000000) / 100.0; break;
      case 2: value = std::ldexp(static_cast<double>(random() >> 11), -static_cast<int>(random() % 60)); break;
      default: value = static_cast<double>(random() % 100000) * 0.001 * 3.0 / 7.0; break;
    }
    std::string out;
    append_amount(out, sign * value);
    ASSERT_EQ(out, amount_by_the_text_rule(sign * value)) << sign * value;
  }
}

TEST(Renderings, DatesAndTimestamps) {
  std::string out;
  append_date(out, {2021, 3, 5});
  EXPECT_EQ(out, "05/03/2021");
  out.clear();
  append_timestamp_text(out, {2024, 2, 29});
  EXPECT_EQ(out, "29/02/2024");
  out.clear();
  append_timestamp_text(out, {2024, 2, 29, 14, 5, 9});
  EXPECT_EQ(out, "29/02/2024 14:05:09");
}

TEST(Renderings, FloatTextUsesADecimalCommaWithoutExponent) {
  const struct {
    double value;
    const char* text;
  } cases[] = {{1.5, "1,5"}, {0.333, "0,333"}, {3, "3"}, {-2.25, "-2,25"}, {1e-05, "0,00001"}, {1e16, "10000000000000000"}};
  for (const auto& c : cases) {
    std::string out;
    append_float_text(out, c.value);
    EXPECT_EQ(out, c.text) << c.value;
  }
}

TEST(Renderings, CountHasTwoDigitsAtLeastAndDotsBetweenThousands) {
  EXPECT_EQ(format_count(0), "00");
  EXPECT_EQ(format_count(7), "07");
  EXPECT_EQ(format_count(99), "99");
  EXPECT_EQ(format_count(999), "999");
  EXPECT_EQ(format_count(1234), "1.234");
  EXPECT_EQ(format_count(1234567), "1.234.567");
}

// A value quoted in a message: line breaks visible, never a whole 10 MB value, and a UTF-8
// character never cut in half.
TEST(Renderings, ExcerptShowsControlsAndCutsLongValues) {
  const struct {
    std::string texto;
    std::size_t max;
    std::string trecho;
  } casos[] = {
      {"", 40, ""},
      {"RUA A", 40, "RUA A"},
      {"RUA A\r\nRUA B\t\x7f\x01", 40, "RUA A\\r\\nRUA B\\t\\x7F\\x01"},
      {"abcde", 5, "abcde"},
      {"abcdef", 5, "abcde... (6 caracteres)"},
      {"ação é", 3, "açã... (6 caracteres)"},
      {std::string(10 * 1024 * 1024, 'x'), 60, std::string(60, 'x') + "... (10.485.760 caracteres)"},
  };
  for (const auto& c : casos) EXPECT_EQ(excerpt(c.texto, c.max), c.trecho) << c.texto.substr(0, 20);
}

// The report's numbers: counts without padding and amounts in hundredths, grouped by thousands;
// the most negative value has no positive counterpart to take the digits from.
TEST(Renderings, GroupedCountsAndHundredths) {
  const struct {
    std::int64_t valor;
    const char *inteiro, *centesimos;
  } casos[] = {
      {0, "0", "0,00"},
      {5, "5", "0,05"},
      {-5, "-5", "-0,05"},
      {99, "99", "0,99"},
      {100, "100", "1,00"},
      {123456, "123.456", "1.234,56"},
      {-100000, "-100.000", "-1.000,00"},
      {INT64_MAX, "9.223.372.036.854.775.807", "92.233.720.368.547.758,07"},
      {INT64_MIN, "-9.223.372.036.854.775.808", "-92.233.720.368.547.758,08"},
  };
  for (const auto& c : casos) {
    EXPECT_EQ(format_grouped(c.valor), c.inteiro);
    EXPECT_EQ(format_hundredths(c.valor), c.centesimos);
  }
  EXPECT_EQ(format_count(-7), "-07");
}

}  // namespace
}  // namespace infofiscal
