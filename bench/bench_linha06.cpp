// Speed of line assembly: item lines 06 of outgoing notes per second, on one core. The notes'
// items come from memory (a source that hands out one ready packet), so that what is timed is
// the dataset walk and the line builder, as in a run: L06_Produto of the sale of products.
#include <benchmark/benchmark.h>

#include "export/string_list.h"
#include "host/framework.h"
#include "registers/outgoing/dtm_a_nf_vendaproduto.h"

namespace infofiscal {
namespace {

// Answers every fetch with the same `rows` item rows, each declared field filled by its class.
class ItensEmMemoria : public RecordSource {
 public:
  explicit ItensEmMemoria(std::size_t rows) : rows_(rows) {}

  Packet fetch(const FetchRequest& request) override {
    if (packet_.width == 0) packet_ = Build(request);
    return packet_;
  }

 private:
  Packet Build(const FetchRequest& request) const {
    Packet packet;
    packet.width = request.fields.size();
    for (std::size_t r = 1; r <= rows_; ++r)
      for (const FieldDef& f : request.fields) {
        const auto n = static_cast<std::int64_t>(r);
        switch (f.cls) {
          case FieldClass::Integer:
          case FieldClass::Smallint:
            packet.cells.emplace_back(n);
            break;
          case FieldClass::Float:
          case FieldClass::Single:
            packet.cells.emplace_back(static_cast<double>(n % 97) * 1.25 + 0.5);
            break;
          case FieldClass::TimeStamp:
            packet.cells.emplace_back(TimeStamp{2024, 3, 5, 0, 0, 0});
            break;
          default:
            packet.cells.emplace_back(std::string(f.name == "DESCPRODUTO" ? "Parafuso sextavado 1/4 x 2 aço zincado"
                                                                         : "0" + std::to_string(r % 7)));
        }
      }
    return packet;
  }

  std::size_t rows_;
  Packet packet_;
};

void BM_Linha06(benchmark::State& state) {
  const auto itens = static_cast<std::size_t>(state.range(0));
  ItensEmMemoria fonte(itens);
  TDTM_ConexaoDS conexao{fonte, TOBJ_InfoSistema_v11c([] { return 1; })};
  TDTM_A_NF_VendaProduto modulo(conexao);
  modulo.CodTipoRegistroFiscal(2);
  modulo.CodRegistroFiscal(7);
  TStringList arquivo;
  std::size_t notas = 0;
  for (auto _ : state) {
    modulo.L06_Produto(1, 1, 1001, arquivo);
    if (++notas % 4096 == 0) arquivo.Clear();  // a run's list, without holding gigabytes
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * itens));
}
// Notes of 8 items, as in the large month: each note one fetch, then its lines.
BENCHMARK(BM_Linha06)->Arg(8);

}  // namespace
}  // namespace infofiscal
