#include "export/renderings.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace infofiscal
