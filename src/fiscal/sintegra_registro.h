// The records of one SINTEGRA type, written field by field in the order of the type's layout
// table, kept in one buffer, sorted by the table's order fields and emitted with CR LF.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "fiscal/sintegra_layout.h"

namespace infofiscal::sintegra {

class Bloco {
 public:
  explicit Bloco(const Layout& layout) : layout_(layout) {}
  Bloco(const Bloco&) = delete;
  Bloco& operator=(const Bloco&) = delete;

  const Layout& layout() const { return layout_; }
  int quantos() const { return static_cast<int>(dados_.size() / kTamanhoRegistro); }
  std::string_view registro(int i) const { return std::string_view(dados_).substr(i * kTamanhoRegistro, kTamanhoRegistro); }

  // Starts a record: writes its type field. The remaining fields follow, one call each, in
  // the table's order; fim() closes the record.
  // REQUIRES: the previous record, if any, was closed.
  Bloco& novo();
  Bloco& numero(std::int64_t valor, int casas = 0);
  Bloco& digitos(std::string_view texto);
  Bloco& data(const TimeStamp& data);
  Bloco& texto(std::string_view texto);
  Bloco& zeros() { return numero(0); }
  Bloco& brancos() { return texto({}); }
  // REQUIRES: every field of the table was written.
  void fim();

  // Sorts the records by the layout's order fields (stable: ties keep the order written).
  void ordenar();
  // Appends every record, each followed by CR LF.
  void emitir(std::string& saida) const;

 private:
  const Campo& proximo();

  const Layout& layout_;
  std::string dados_;
  std::size_t inicio_ = 0;  // offset of the record being written
  int campo_ = 0;           // number of the last field written
};

}  // namespace infofiscal::sintegra
