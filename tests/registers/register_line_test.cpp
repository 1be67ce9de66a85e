#include "registers/register_line.h"

#include <gtest/gtest.h>

#include "support/fixture.h"

namespace infofiscal {
namespace {

using testing::json;
using testing::Snapshot;

struct Row {
  explicit Row(const json& row)
      : source(Snapshot().params("DspX", json::array(), json::array({row})).document(), "t"),
        tab("TabX", "DspX",
            {{"T", FieldClass::String}, {"N", FieldClass::Integer}, {"V", FieldClass::Float}, {"D", FieldClass::TimeStamp}}) {
    tab.SetRemoteServer(&source);
    tab.Open();
  }
  SnapshotSource source;
  ClientDataSet tab;
};

// A column table renders every kind of column; values go in verbatim.
TEST(RegisterLine, ColumnTableRendersEachKindVerbatim) {
  const struct {
    json row;
    const char* line;
  } cases[] = {
      {{{"T", "ABC"}, {"N", 12}, {"V", 1234.5}, {"D", "2021-03-05"}},
       "[C00]07[/C00][C01]ABC[/C01][C02]12[/C02][C03]1234,50[/C03][C04]05/03/2021[/C04][C05]05/03/2021[/C05]"
       "[C06]55[/C06][C07][/C07][C99]38[/C99]"},
      {{{"T", nullptr}, {"N", nullptr}, {"V", nullptr}, {"D", "2021-03-05T08:09:10"}},
       "[C00]07[/C00][C01][/C01][C02]0[/C02][C03]0,00[/C03][C04]05/03/2021[/C04][C05]05/03/2021 08:09:10[/C05]"
       "[C06]55[/C06][C07][/C07][C99]38[/C99]"},
      {{{"T", "a[/C01]b[x]"}, {"N", -3}, {"V", -0.004}, {"D", "1999-12-31"}},
       "[C00]07[/C00][C01]a[/C01]b[x][/C01][C02]-3[/C02][C03]0,00[/C03][C04]31/12/1999[/C04][C05]31/12/1999[/C05]"
       "[C06]55[/C06][C07][/C07][C99]38[/C99]"},
  };
  for (const auto& c : cases) {
    Row r(c.row);
    const ColumnTable table(r.tab, {{1, Render::Text, "T"},
                                    {2, Render::Integer, "N"},
                                    {3, Render::Amount, "V"},
                                    {4, Render::Date, "D"},
                                    {5, Render::DateTimeText, "D"},
                                    {6, Render::Constant, "55"},
                                    {7, Render::Empty}});
    TLinhaRegistro line;
    TStringList list;
    WriteLine(line, 7, table, 38, list);
    ASSERT_EQ(list.Count(), 1u);
    EXPECT_EQ(list[0], c.line);
  }
}

TEST(RegisterLine, TrailerStandsOnALineWithoutColumns) {
  TLinhaRegistro line;
  line.Head(13);
  line.Trailer(4);
  EXPECT_EQ(line.ToString(), "[C00]13[/C00][C99]04[/C99]");
}

TEST(RegisterLine, ALineBreakInAValueIsKeptAndSplitsTheSavedLine) {
  TStringList list;
  TLinhaRegistro line;
  line.Head(2);
  line.Text(1, "Rua A\r\nfundos");
  line.Trailer(19);
  line.AddTo(list);
  EXPECT_EQ(list.Text(), "[C00]02[/C00][C01]Rua A\r\nfundos[/C01][C99]19[/C99]\r\n");
}

TEST(RegisterLine, ErrorRulePrefixesTheCaughtMessageAndKeepsEarlierLines) {
  TStringList list;
  list.Add("anterior");
  try {
    UnderErrorRule("Erro ano Gerar Registro Linha 03 : ", [&] {
      list.Add("linha 1");
      throw Error("campo inválido");
    });
    FAIL();
  } catch (const Error& e) {
    EXPECT_STREQ(e.what(), "Erro ano Gerar Registro Linha 03 : campo inválido");
  }
  EXPECT_EQ(list.Count(), 2u);
}

TEST(StringList, TextEndsEveryLineWithCrLf) {
  TStringList list;
  EXPECT_EQ(list.Text(), "");
  list.Add("a");
  list.Add("");
  list.Add("c");
  EXPECT_EQ(list.Text(), "a\r\n\r\nc\r\n");
  EXPECT_EQ(list[1], "");
  EXPECT_EQ(list[2], "c");
  list.Clear();
  EXPECT_EQ(list.Count(), 0u);
}

}  // namespace
}  // namespace infofiscal
