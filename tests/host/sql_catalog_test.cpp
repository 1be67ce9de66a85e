// The reference catalog over the demo database: every provider returns every field that the
// datasets reading it declare, and the list providers pick and order the notes of a register.
#include <gtest/gtest.h>

#include <sstream>

#include "base/error.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "host/sources/recording_source.h"
#include "host/sources/snapshot_source.h"
#include "host/sources/sql_source.h"

namespace infofiscal {
namespace {

using namespace testing;

// The declared fields of each provider's datasets (for DspRegistroInfoFiscal, those of
// TabRegistroFiscal, which hold TabRegistroInfoFiscal's). Classes do not matter here.
const char* const kRegistro =
    "CDREGISTROFISCAL CDTIPOREGISTROFISCAL CDEMPRESA CDUSUARIO CDINVENTARIOFINALMES CDINVENTARIOFINALANO "
    "CDREGISTROFISCALEMP REGCOMPRAINSUMO REGTRANSFEQUIPAMENTOCLIENTE REGTRANSFEQUIPAMENTOFORNECEDOR "
    "REGTRANSFPRODUTOFORNECEDOR REGDEVCOMPRAEQUIPAMENTO REGDEVCOMPRAPRODCONSUMO REGDEVCOMPRAINSUMO "
    "REGDEVVENDAEQUIPAMENTO NUMREGANTERIOR PERFILAPRESENTARARQ INDICADORNATPESSOAJURIDICA "
    "INDICADORMETODOAPROPCREDITO INDICADORTIPOCONTRIBUICAO ANO CDMES ETIQUETA REG_1011 REG_1010 REG_1012 "
    "MODELO_NF SERIE_NF REGVENDAPRODUTO REGCOMPRAEQUIPAMENTO REGVENDAEQUIPAMENTO REGCOMPRAPRODUTO "
    "REGCOMPRAPRODCONSUMO REGTRANSFPRODUTOCLIENTE REGDEVVENDAPRODUTO REGDEVCOMPRAPRODUTO FINALIDADEARQUIVO OBS "
    "DATAREGISTROFISCAL INDICADORSITESPECIAL TIPOEXPORTACAO TIPOEXPORTACAOINICIO TIPOEXPORTACAOFINAL "
    "INDICADORINCIDENCIATRIBUTARIA TIPOFILTROCOMPRA INDICADORTIPOATIVIDADE INDICADORCRITESCRITURACAO "
    "REGINVENTARIOFINALMES REGINVENTARIOFINALANO";
const char* const kItemTaxes =
    "QUANTIDADE PRECOTOTAL DESCONTO FRETE SEGURO ICMS_CST ICMS_CFOP ICMS_BASECALCULO ICMS_ALIQUOTA ICMS_VALOR "
    "ICMS_ST_BASECALCULO ICMS_ST_VALOR IPI_CST IPI_ENQUADRAMENTO IPI_BASECALCULO IPI_VALOR PIS_CST PIS_ALIQUOTA "
    "PIS_BASECALCULO PIS_QUANTUNIDADE PIS_VALORUNIDADE PIS_VALOR COFINS_CST COFINS_ALIQUOTA COFINS_BASECALCULO "
    "COFINS_QUANTUNIDADE COFINS_VALORUNIDADE COFINS_VALOR NUMNCM CODBARRA ";
const std::string kCompraItem = std::string(kItemTaxes) + "CDCOMPRA ITEMCOMPRA SIGLAUNIDADE OUTRASDESPESAS ";
const char* const kParte = "RAZAOSOCIAL CNPJ_CPF IE_RG TIPOPESSOA ENDERECO ENDERECONUMERO BAIRRO IBGE_CIDADE IBGE_PAIS";
const char* const kInventario = "CDINVENTARIOEMP CDTIPOINVENTARIO DATAINVENTARIO TOTALINVENTARIO PDE";
const char* const kInventarioProduto =
    "CDINVENTARIO CDPRODUTO QUANTIDADE PRECOFABRICA PRECOTOTAL SIGLAUNIDADE CDTIPOINVENTARIO";

const std::int64_t kSintegra = 1, kEfd = 2;

struct ProviderCase {
  std::string provider, fields;
  std::vector<Value> args;
  FetchKind kind;
  std::size_t rows;  // on the demo month
};

const std::vector<ProviderCase>& provider_cases() {
  using I = std::int64_t;
  const auto P = FetchKind::ParameterOpen;
  const auto D = FetchKind::DataRequest;
  static const std::vector<ProviderCase> cases = {
      {"DspRegistroInfoFiscal", kRegistro, {kEfd}, P, 1},
      {"DspEmpresa",
       "CDEMPRESA RAZAOSOCIAL NOMEFANTASIA CNPJ IE IM SUFRAMA NOMECIDADE CDESTADO ENDERECO ENDERECONUMERO "
       "ENDERECOCOMPLEMENTO BAIRRO IBGE_CIDADE IBGE_PAIS CEP FONE FAX EMAIL",
       {I{1}}, P, 1},
      {"DspContador",
       "CDCONTADOR NOMECONTADOR FONE CPF CRC CNPJ CEP ENDERECO ENDERECONUMERO ENDERECOCOMPLEMENTO BAIRRO EMAIL FAX "
       "CODIBGE",
       {}, P, 1},
      {"DspListaCompra", "CDCOMPRA MODELO NUMNF", {kEfd, I{2}}, D, 28},
      {"DspCompra",
       "CDCOMPRA CDFORNECEDOR MODELO SERIE PDE CHAVENFEFORNECEDOR TOTALCOMPRA DESCONTO TOTALPRODUTO FRETE SEGURO "
       "OUTRASDESPESAS ICMS_BASECALCULO ICMS_VALOR ICMS_ST_BASECALCULO ICMS_ST_VALOR IPI_VALOR PIS_VALOR "
       "COFINS_VALOR NUMNF DATAEMISSAONF DATARECEBIMENTO CDTABCFOP CDCIDADEORIGEMIBGE CDCIDADEDESTINOIBGE",
       {I{2}}, P, 1},
      {"DspCompraFornecedor",
       "CDCOMPRA CDFORNECEDOR RAZAOSOCIAL TIPOPESSOA CNPJ_CPF IE CDESTADO ENDERECO ENDERECONUMERO BAIRRO", {I{2}}, P,
       1},
      {"DspCompraEquipamento", kCompraItem + "CDEQUIPAMENTO DESCEQUIPAMENTO", {I{4}}, P, 1},  // 1 + 4 % 4 items
      {"DsCompraProduto", kCompraItem + "CDPRODUTO DESCPRODUTO", {I{5}}, P, 2},
      {"DspCompraProdConsumo", kCompraItem + "CDPRODCONSUMO DESCPRODUTO", {I{7}}, P, 4},
      {"DspListaNotaFiscal", "CDTIPONOTAFISCAL CDNOTAFISCAL", {kEfd, kEfd, I{10}}, D, 317},
      {"DspNF_Venda",
       "CDTIPONOTAFISCAL CDNOTAFISCAL CDCLIENTE NUMSERIE EMISSAO PDE SAIDA CHAVENFE VALORTOTALNOTA VALORDESCONTO "
       "VALORTOTALPRODUTO VALORFRETE VALORSEGURO VALOROUTRASDESP ICMS_BASECALCULO ICMS_VALOR ICMS_ST_BASECALCULO "
       "ICMS_ST_VALOR IPI_VALOR PIS_VALOR COFINS_VALOR CDTABCFOP",
       {I{1}, I{4101}}, P, 1},
      {"DspNF_Cliente",
       "CDTIPONOTAFISCAL CDNOTAFISCAL CDCLIENTE RAZAOSOCIAL TIPOPESSOA CNPJ_CPF IE CDESTADO ENDERECO "
       "ENDERECONUMERO BAIRRO IBGE_CIDADE IBGE_PAIS",
       {I{4}, I{4113}}, P, 1},
      {"DspNF_Produto",
       std::string(kItemTaxes) + "CDTIPONOTAFISCAL CDNOTAFISCAL CDPRODUTO CDLOTE ITEMNOTAFISCAL DESCPRODUTO UNIDADE "
                                 "OUTRASDESP",
       {I{2}, I{4121}}, P, 2},
      {"DspListaNFeInutilizado", "CDNFE_INUTILIZADO DATA CDNFE_NUMINUTILIZADO", {kEfd, kEfd}, D, 4},
      {"DspListaEquipamento", "CDEQUIPAMENTO DESCEQUIPAMENTO SIGLAUNIDADE NUMNCM", {}, P, 8},
      {"DspListaProduto", "CDPRODUTO DESCPRODUTO SIGLAUNIDADE NUMNCM CODCEST", {}, P, 40},
      {"DspListaInsumo", "CDINSUMO DESCINSUMO SIGLAUNIDADE NUMNCM", {}, P, 6},
      {"DspListaProdConsumo", "CDPRODCONSUMO DESCPRODUTO SIGLAUNIDADE NUMNCM", {}, P, 10},
      {"DspListaUnidade", "CDUNIDADE SIGLAUNIDADE DESCUNIDADE", {}, P, 8},
      {"DspListaCliente", std::string("CDCLIENTE ") + kParte, {}, P, 32},
      {"DspListaFornecedor", std::string("CDFORNECEDOR ") + kParte, {}, P, 13},
      {"DspNaturezaOperacao", "CDTABCFOP DESCCFOP", {}, P, 18},
      {"DspInventario_FM", kInventario, {kEfd}, P, 1},
      {"DspInventarioProduto_FM", kInventarioProduto, {kEfd}, P, 40},
      {"DspInventario_FA", kInventario, {kSintegra}, P, 1},
      {"DspInventarioProduto_FA", kInventarioProduto, {kSintegra}, P, 40},
  };
  return cases;
}

std::vector<std::string> words(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> out;
  for (std::string w; in >> w;) out.push_back(w);
  return out;
}

// The timestamp fields; every other field is declared as text here, which takes any value.
bool is_timestamp(const std::string& name) {
  for (const char* t : {"DATAREGISTROFISCAL", "DATAEMISSAONF", "DATARECEBIMENTO", "EMISSAO", "SAIDA", "DATA",
                        "DATAINVENTARIO"})
    if (name == t) return true;
  return false;
}

Packet fetch(RecordSource& source, const std::string& provider, std::vector<Value> args,
             const std::vector<std::string>& names, FetchKind kind = FetchKind::DataRequest) {
  std::vector<FieldDef> fields;
  for (const auto& n : names) fields.push_back({n, is_timestamp(n) ? FieldClass::TimeStamp : FieldClass::String});
  return source.fetch({"Tab", provider, kind, args, fields});
}

class SqlCatalogDemo : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    SKIP_WITHOUT(GetParam());
    db_ = std::make_unique<TestDatabase>(GetParam(), "catalogo", demo_script());
    source_ = std::make_unique<SqlSource>(db_->address(), catalog_path());
  }

  std::unique_ptr<TestDatabase> db_;
  std::unique_ptr<SqlSource> source_;
};

TEST_P(SqlCatalogDemo, EveryProviderReturnsEveryDeclaredField) {
  for (const auto& c : provider_cases()) {
    try {
      EXPECT_EQ(fetch(*source_, c.provider, c.args, words(c.fields), c.kind).rows(), c.rows) << c.provider;
    } catch (const Error& e) {
      ADD_FAILURE() << c.provider << ": " << e.what();
    }
  }
}

TEST_P(SqlCatalogDemo, RecordedAnswersReplayFromTheSnapshotAsTheyCame) {
  RecordingSource recorder(*source_);
  std::vector<Packet> live;
  for (const auto& c : provider_cases()) live.push_back(fetch(recorder, c.provider, c.args, words(c.fields), c.kind));
  // Through the file format, as --gravar-snapshot and --fonte snapshot: do.
  SnapshotSource replay(nlohmann::json::parse(recorder.Snapshot().dump()), "gravado");
  for (std::size_t i = 0; i < live.size(); ++i) {
    const auto& c = provider_cases()[i];
    EXPECT_EQ(fetch(replay, c.provider, c.args, words(c.fields), c.kind).cells, live[i].cells) << c.provider;
  }
}

TEST_P(SqlCatalogDemo, ListsHoldTheRegistersNotesInDateAndNumberOrder) {
  using I = std::int64_t;
  const auto column = [&](const std::string& provider, std::vector<Value> args, const std::string& field) {
    std::vector<Value> out;
    const Packet p = fetch(*source_, provider, args, {field});
    for (const Value& v : p.cells) out.push_back(v);
    return out;
  };
  // Booked purchases of each kind (the inputs step asks with kind 0); none of another register's company.
  for (const I kind : {1, 2, 4, 0}) EXPECT_EQ(column("DspListaCompra", {kSintegra, kind}, "CDCOMPRA").size(), 28u);
  EXPECT_EQ(column("DspListaCompra", {I{99}, I{2}}, "CDCOMPRA").size(), 0u);
  // Purchases come by date of receipt: the receipt days never go back.
  std::vector<Value> days;
  for (const Value& code : column("DspListaCompra", {kEfd, I{2}}, "CDCOMPRA"))
    days.push_back(fetch(*source_, "DspCompra", {code}, {"DATARECEBIMENTO"}, FetchKind::ParameterOpen).cells.at(0));
  for (std::size_t i = 1; i < days.size(); ++i) {
    // Text in SQLite, a timestamp in PostgreSQL: both begin YYYY-MM-DD.
    EXPECT_LE(debug_text(days[i - 1]).substr(0, 10), debug_text(days[i]).substr(0, 10)) << i;
  }
  // Outgoing kinds, authorised and cancelled only; the notes in issue order (numbers rise with dates).
  const struct {
    I kind;
    std::size_t notes;
  } kinds[] = {{9, 9}, {10, 317}, {11, 11}, {12, 11}, {17, 6}, {0, 0}};
  for (const auto& k : kinds) {
    const auto notes = column("DspListaNotaFiscal", {kEfd, kEfd, k.kind}, "CDNOTAFISCAL");
    EXPECT_EQ(notes.size(), k.notes) << k.kind;
    for (std::size_t i = 1; i < notes.size(); ++i)
      EXPECT_LT(std::get<I>(notes[i - 1]), std::get<I>(notes[i])) << k.kind;
  }
  EXPECT_EQ(column("DspListaNFeInutilizado", {kEfd, kEfd}, "CDNFE_NUMINUTILIZADO"),
            (std::vector<Value>{I{4142}, I{4227}, I{4312}, I{4397}}));
}

// The schema alone, on every database: each provider's SELECT runs and delivers its fields.
class SqlCatalogSchema : public ::testing::TestWithParam<std::string> {};

TEST_P(SqlCatalogSchema, EveryProviderRunsOnTheEmptySchema) {
  SKIP_WITHOUT(GetParam());
  TestDatabase db(GetParam(), "esquema", read_file(INFOFISCAL_SOURCE_DIR "/db/schema.sql"));
  SqlSource source(db.address(), catalog_path());
  for (const auto& c : provider_cases()) {
    try {
      EXPECT_EQ(fetch(source, c.provider, c.args, words(c.fields), c.kind).rows(), 0u) << c.provider;
    } catch (const Error& e) {
      ADD_FAILURE() << c.provider << ": " << e.what();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Bancos, SqlCatalogSchema, ::testing::Values("sqlite", "postgresql", "firebird"));

INSTANTIATE_TEST_SUITE_P(Bancos, SqlCatalogDemo, ::testing::Values("sqlite", "postgresql", "firebird"));

}  // namespace
}  // namespace infofiscal
