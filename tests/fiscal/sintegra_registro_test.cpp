// The block of a SINTEGRA type: records handed out sorted by the type's order fields, ties in
// the order written, the same whether they wait in memory or in sorted runs on disk.
#include <gtest/gtest.h>

#include <filesystem>

#include "fiscal/sintegra_registro.h"

namespace infofiscal::sintegra {
namespace {

// Type 74 records (sorted by date and product), told apart by their quantity.
std::string quantidades_em_ordem(int em_memoria) {
  const struct {
    int dia;
    const char* produto;
    int quantidade;
  } registros[] = {{5, "B", 1}, {3, "A", 2}, {5, "A", 3}, {3, "A", 4}, {5, "B", 5}, {1, "C", 6}, {3, "A", 7}};
  Bloco b(k74, std::filesystem::temp_directory_path().string(), em_memoria);
  for (const auto& r : registros) {
    b.novo().data(TimeStamp{2024, 3, r.dia}).texto(r.produto).numero(r.quantidade).zeros().texto(kPossePropria);
    b.zeros().brancos().brancos().brancos().fim();
  }
  EXPECT_EQ(b.quantos(), 7);
  SaidaEmMemoria saida;
  b.emitir(saida);
  const std::string& arquivo = saida.bytes();
  EXPECT_EQ(arquivo.size(), 7 * (kTamanhoRegistro + kFimDeRegistro.size()));
  std::string ordem;
  for (std::size_t p = 0; p < arquivo.size(); p += kTamanhoRegistro + kFimDeRegistro.size()) {
    EXPECT_EQ(arquivo.substr(p + kTamanhoRegistro, 2), kFimDeRegistro);
    ordem += std::to_string(std::stoi(std::string(k74.texto(arquivo.substr(p, kTamanhoRegistro), r74::Quantidade))) / 1000);
  }
  return ordem;
}

TEST(SintegraBloco, SortsTheSameInMemoryAndInRunsOnDisk) {
  for (const int em_memoria : {1, 2, 3, kRegistrosEmMemoria}) EXPECT_EQ(quantidades_em_ordem(em_memoria), "6247315") << em_memoria;
}

}  // namespace
}  // namespace infofiscal::sintegra
