#include "host/client_dataset.h"

#include <gtest/gtest.h>

#include "registers/dtm_a_padrao.h"
#include "base/error.h"
#include "base/renderings.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using testing::json;
using testing::Snapshot;

// A dataset of one row holding `cell` in a field of class `cls`; the row is named by its
// number.
struct OneCell {
  OneCell(const json& cell, FieldClass cls)
      : source(Snapshot().params("DspX", json::array(), {{{"F", cell}}}).document(), "teste"),
        tab("TabX", "DspX", {{"F", cls}}, 0, 0) {
    tab.SetRemoteServer(&source);
    tab.Open();
  }
  Field field() const { return tab.FieldByName("F"); }
  SnapshotSource source;
  ClientDataSet tab;
};

TEST(FieldConversions, AsString) {
  const struct {
    json cell;
    FieldClass cls;
    const char* text;
  } cases[] = {
      {nullptr, FieldClass::String, ""},
      {"Açúcar [C01]", FieldClass::String, "Açúcar [C01]"},
      {" 12 ", FieldClass::String, " 12 "},
      {42, FieldClass::Integer, "42"},
      {-7, FieldClass::Integer, "-7"},
      {1.5, FieldClass::Float, "1,5"},
      {"2024-03-05", FieldClass::TimeStamp, "05/03/2024"},
      {"2024-03-05T10:20:30", FieldClass::TimeStamp, "05/03/2024 10:20:30"},
  };
  for (const auto& c : cases) EXPECT_EQ(OneCell(c.cell, c.cls).field().AsString(), c.text) << c.cell;
}

TEST(FieldConversions, AsInteger) {
  const struct {
    json cell;
    std::int64_t value;
  } ok[] = {{nullptr, 0}, {12, 12}, {"12", 12}, {"  -3", -3}, {"+8", 8}, {2.0, 2}};
  for (const auto& c : ok) EXPECT_EQ(OneCell(c.cell, FieldClass::Integer).field().AsInteger(), c.value) << c.cell;

  for (const char* bad : {"", "12 ", "1.5", "abc", "-", "99999999999999999999"}) {
    try {
      OneCell(bad, FieldClass::Integer).field().AsInteger();
      ADD_FAILURE() << bad;
    } catch (const Error& e) {
      EXPECT_EQ(e.what(), "'" + std::string(bad) + "' não é um valor inteiro válido (campo F de TabX, registro 1)");
    }
  }
  // Numbers past the integers' range, as a database or a snapshot may hold them.
  for (const double bad : {2.2e47, -1e300, 9223372036854775808.0}) {
    const auto cell = OneCell(bad, FieldClass::Integer);
    try {
      cell.field().AsInteger();
      ADD_FAILURE() << bad;
    } catch (const Error& e) {
      // -1e300 as text is 302 characters: the message shows its first 60.
      EXPECT_EQ(e.what(),
                "'" + excerpt(cell.field().AsString()) + "' não é um valor inteiro válido (campo F de TabX, registro 1)");
    }
  }
  EXPECT_EQ(OneCell(-9223372036854775808.0, FieldClass::Integer).field().AsInteger(), INT64_MIN);
}

TEST(FieldConversions, AsFloat) {
  EXPECT_EQ(OneCell(nullptr, FieldClass::Float).field().AsFloat(), 0.0);
  EXPECT_EQ(OneCell("1234.5", FieldClass::Float).field().AsFloat(), 1234.5);
  EXPECT_EQ(OneCell(3, FieldClass::Float).field().AsFloat(), 3.0);
  // Single precision is rounded to single precision and widened.
  EXPECT_EQ(OneCell(0.1, FieldClass::Single).field().AsFloat(), static_cast<double>(0.1f));
  for (const char* bad : {"1,5", "", "abc", "inf", " 1"}) {
    try {
      OneCell(bad, FieldClass::Float).field().AsFloat();
      ADD_FAILURE() << bad;
    } catch (const Error& e) {
      EXPECT_EQ(e.what(),
                "'" + std::string(bad) + "' não é um valor de ponto flutuante válido (campo F de TabX, registro 1)");
    }
  }
}

TEST(FieldConversions, AsDateTime) {
  EXPECT_EQ(OneCell("2024-02-29", FieldClass::TimeStamp).field().AsDateTime(), (TimeStamp{2024, 2, 29}));
  EXPECT_EQ(OneCell(nullptr, FieldClass::TimeStamp).field().AsDateTime(), (TimeStamp{1899, 12, 30}));
  EXPECT_THROW(OneCell("2023-02-29", FieldClass::TimeStamp).field().AsDateTime(), Error);
}

// A value that does not convert names the dataset, the field, the row (by its key fields, or
// its number) and the value as stored.
TEST(FieldConversions, AFailedConversionNamesTheFieldAndTheRow) {
  const json rows = {{{"CDNOTA", 10}, {"ITEM", 1}, {"VALOR", "1.5"}}, {{"CDNOTA", 10}, {"ITEM", 2}, {"VALOR", "dez"}}};
  SnapshotSource source(Snapshot().params("DspItens", json::array(), rows).document(), "teste");
  const std::vector<FieldDef> fields = {
      {"CDNOTA", FieldClass::Integer}, {"ITEM", FieldClass::Smallint}, {"VALOR", FieldClass::Float}};
  const struct {
    int key;
    const char* where;
  } cases[] = {
      {1, "registro CDNOTA=10"},
      {2, "registro CDNOTA=10 ITEM=2"},
      {0, "registro 2"},
  };
  for (const auto& c : cases) {
    ClientDataSet tab("TabItens", "DspItens", fields, 0, c.key);
    tab.SetRemoteServer(&source);
    tab.Open();
    tab.Next();
    try {
      tab.FieldByName("VALOR").AsFloat();
      ADD_FAILURE() << c.key;
    } catch (const Error& e) {
      EXPECT_EQ(e.what(), "'dez' não é um valor de ponto flutuante válido (campo VALOR de TabItens, " + std::string(c.where) + ")");
    }
  }
}

TEST(ClientDataSet, CursorWalksLikeTheDatasetLibrary) {
  SnapshotSource source(Snapshot().params("DspX", json::array(), {{{"F", 1}}, {{"F", 2}}, {{"F", 3}}}).document(), "t");
  ClientDataSet tab("TabX", "DspX", {{"F", FieldClass::Integer}});
  tab.SetRemoteServer(&source);
  tab.Open();
  EXPECT_EQ(tab.RecordCount(), 3);
  EXPECT_EQ(tab.RecNo(), 1);
  EXPECT_FALSE(tab.Eof());
  tab.Last();
  EXPECT_TRUE(tab.Eof());
  EXPECT_EQ(tab.FieldByName("F").AsInteger(), 3);
  // The count starts from the first row whatever the cursor, and leaves it there.
  EXPECT_EQ(TDTM_A_Padrao::ContaNumRegistro(tab), 3);
  EXPECT_EQ(tab.RecNo(), 1);
  EXPECT_FALSE(tab.Eof());
  tab.Next();
  tab.Next();
  EXPECT_FALSE(tab.Eof());
  tab.Next();
  EXPECT_TRUE(tab.Eof());
  EXPECT_EQ(tab.FieldByName("F").AsInteger(), 3);  // past the end the last row stays current
}

TEST(ClientDataSet, EmptyDatasetReadsNullsAndCountsZero) {
  SnapshotSource source(Snapshot().document(), "t");
  ClientDataSet tab("TabX", "DspX", {{"F", FieldClass::Integer}, {"G", FieldClass::String}});
  tab.SetRemoteServer(&source);
  tab.Open();
  EXPECT_TRUE(tab.Eof());
  EXPECT_EQ(TDTM_A_Padrao::ContaNumRegistro(tab), 0);
  EXPECT_EQ(tab.FieldByName("F").AsInteger(), 0);
  EXPECT_EQ(tab.FieldByName("G").AsString(), "");
}

}  // namespace
}  // namespace infofiscal
