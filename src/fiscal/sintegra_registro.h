// The records of one SINTEGRA type, written field by field in the order of the type's layout
// table, handed out sorted by the table's order fields, each followed by CR LF.
//
// A type the file sorts (50, 54, 74, 75) may have more records than memory should hold (type 54
// has one per item of the month): past a number of records, those in memory are sorted and
// moved to a temporary file as one run, and the runs are merged when the block is handed out.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/atomic_file.h"
#include "fiscal/saida.h"
#include "fiscal/sintegra_layout.h"

namespace infofiscal::sintegra {

// 8 MiB of records: four sorted types hold 32 MiB at most.
inline constexpr int kRegistrosEmMemoria = 65536;

class Bloco {
 public:
  // Runs go to a temporary file in `pasta` (a sorted type past `em_memoria` records).
  Bloco(const Layout& layout, std::string pasta, int em_memoria = kRegistrosEmMemoria);
  ~Bloco();
  Bloco(const Bloco&) = delete;
  Bloco& operator=(const Bloco&) = delete;

  const Layout& layout() const { return layout_; }
  int quantos() const { return quantos_; }

  // Starts a record: writes its type field. The remaining fields follow, one call each, in
  // the table's order; fim() closes the record.
  // A record begun and not closed (a field refused its value) is dropped.
  Bloco& novo();
  Bloco& numero(std::int64_t valor, int casas = 0);
  Bloco& digitos(std::string_view texto);
  Bloco& data(const TimeStamp& data);
  Bloco& texto(std::string_view texto);
  Bloco& zeros() { return numero(0); }
  Bloco& brancos() { return texto({}); }
  // REQUIRES: every field of the table was written.
  void fim();

  // Writes every record to `saida`, each followed by CR LF, sorted by the layout's order
  // fields; ties keep the order written. REQUIRES: called once, after the last record.
  void emitir(SaidaFiscal& saida);

 private:
  struct Trecho {  // a sorted run in the temporary file
    std::uint64_t inicio;
    int quantos;
  };
  class Leitura;

  const Campo& proximo();
  bool menor(std::string_view a, std::string_view b) const;
  // Sorts the records in memory (stable), then, when asked, moves them to the file as a run.
  void ordena();
  void despeja();

  const Layout& layout_;
  // Where the fields that sort the records lie (offset, size), in priority: found once, as
  // sorting compares them millions of times.
  std::vector<std::pair<int, int>> chave_;
  const std::string pasta_;
  const int em_memoria_;
  std::string dados_;       // the records in memory, back to back
  std::size_t inicio_ = 0;  // offset of the record being written
  bool aberto_ = false;     // a record was begun and not closed
  int campo_ = 0;           // number of the last field written
  int quantos_ = 0;
  std::unique_ptr<ScratchFile> arquivo_;
  std::vector<Trecho> trechos_;
};

}  // namespace infofiscal::sintegra
