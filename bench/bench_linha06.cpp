// Line assembly: lines 06 per second, built as the purchase item generator builds them (line
// builder and the shared column table of line 06) from the rows of an open dataset, so that no
// database and no fetch is measured.
#include <benchmark/benchmark.h>

#include "registers/incoming/dtm_a_compraproduto.h"
#include "registers/linha_item.h"
#include "support/fixture.h"

namespace {

using infofiscal::testing::json;

// `itens` rows of the product purchase 1, every field valued, the amounts varied.
infofiscal::testing::Snapshot compra(int itens) {
  json rows = json::array();
  for (int i = 1; i <= itens; ++i)
    rows.push_back({{"CDCOMPRA", 1}, {"CDPRODUTO", 100000 + i}, {"ITEMCOMPRA", i},
                    {"DESCPRODUTO", "Parafuso sextavado de aço inoxidável"}, {"SIGLAUNIDADE", "CX"},
                    {"QUANTIDADE", 1 + i % 20}, {"PRECOTOTAL", (180 + i * 31 % 40000) / 100.0}, {"DESCONTO", 0},
                    {"FRETE", 0}, {"SEGURO", 0}, {"OUTRASDESPESAS", 0}, {"NUMNCM", "73181500"},
                    {"CODBARRA", "7891234567895"}, {"ICMS_CST", "000"}, {"ICMS_CFOP", "1102"},
                    {"ICMS_BASECALCULO", (180 + i * 31 % 40000) / 100.0}, {"ICMS_ALIQUOTA", 18},
                    {"ICMS_VALOR", (180 + i * 31 % 40000) * 0.0018}, {"ICMS_ST_BASECALCULO", 0}, {"ICMS_ST_VALOR", 0},
                    {"IPI_CST", "49"}, {"IPI_ENQUADRAMENTO", "999"}, {"IPI_BASECALCULO", 0}, {"IPI_VALOR", 0},
                    {"PIS_CST", "50"}, {"PIS_ALIQUOTA", 1.65}, {"PIS_BASECALCULO", 12.5}, {"PIS_QUANTUNIDADE", 0},
                    {"PIS_VALORUNIDADE", 0}, {"PIS_VALOR", 0.21}, {"COFINS_CST", "50"}, {"COFINS_ALIQUOTA", 7.6},
                    {"COFINS_BASECALCULO", 12.5}, {"COFINS_QUANTUNIDADE", 0}, {"COFINS_VALORUNIDADE", 0},
                    {"COFINS_VALOR", 0.95}});
  return infofiscal::testing::Snapshot().params("DsCompraProduto", {1}, rows);
}

void BM_Linhas06(benchmark::State& state) {
  const int itens = static_cast<int>(state.range(0));
  infofiscal::testing::Run run(compra(itens));
  infofiscal::TDTM_A_CompraProduto modulo(run.conexao);
  run.configure(modulo);
  modulo.ConsRegistro_CompraProduto(1);
  infofiscal::ClientDataSet& tab = modulo.TabCompraProduto;
  const infofiscal::ColumnTable colunas(tab, infofiscal::colunas_item_06({"DESCPRODUTO", "SIGLAUNIDADE", "OUTRASDESPESAS", "2"}));
  const int codigo = tab.FieldIndex("CDPRODUTO");
  infofiscal::TLinhaRegistro linha;
  infofiscal::TStringList lista;
  for (auto _ : state) {
    state.PauseTiming();
    lista.Clear();
    state.ResumeTiming();
    int item = 0;
    for (tab.First(); !tab.Eof(); tab.Next()) {
      linha.Head(6);
      linha.Integer(1, 2);
      linha.Integer(2, 1);
      linha.FieldText(3, tab.FieldAt(codigo));
      linha.Integer(4, ++item);
      colunas.Write(linha);
      linha.Trailer(38);
      linha.AddTo(lista);
    }
  }
  state.counters["linhas06_por_s"] =
      benchmark::Counter(static_cast<double>(itens), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_Linhas06)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
