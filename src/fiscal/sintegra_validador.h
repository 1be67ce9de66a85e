// Checks a SINTEGRA file against every rule of the layout that the file alone can show: the
// record length and terminator, the characters, each field of the types in the layout tables
// (format, dates, codes, the period), the order of the types, each 54 under a 50 of the same
// document, each product of 54 and 74 in a 75, and the totals of type 90.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "fiscal/sintegra_layout.h"

namespace infofiscal::sintegra {

class ValidadorSintegra {
 public:
  // One finding per broken rule, "Registro N: ..." (N the 1-based record number), in the
  // order of the records; empty when the file is valid.
  // REQUIRES: called once.
  std::vector<std::string> validar(std::string_view arquivo);

 private:
  struct Registro {
    int numero;
    std::string_view texto;  // without CR LF
  };

  void achado(int numero, std::string texto);
  void conferir_campos(const Registro& r, const Layout& layout);
  void conferir_conteudo(const Registro& r, const Layout& layout, const Campo& campo, std::string_view valor);
  void conferir_10(const Registro& r);
  void conferir_50(const Registro& r);
  void conferir_54(const Registro& r);
  void conferir_74_75(const Registro& r, int tipo);
  void conferir_documentos();
  void conferir_90(const std::vector<Registro>& registros90);

  std::vector<std::pair<int, std::string>> achados_;
  std::unordered_map<int, int> por_tipo_;  // records of each type
  int total_ = 0;
  std::optional<Registro> r10_;
  std::optional<std::pair<TimeStamp, TimeStamp>> periodo_;
  // Document keys: CNPJ, model, series and number; with the CFOP for the 50-54 match.
  std::unordered_set<std::string> chaves50_;                        // key + CFOP of each 50
  std::vector<std::pair<int, std::string>> documentos50_;           // normal 50 of models with items
  std::unordered_set<std::string> documentos54_;                    // key of each 54
  std::unordered_set<std::string> itens54_;                         // key + item number
  std::vector<std::pair<int, std::string_view>> produtos_usados_;   // record, code of 54 and 74
  std::unordered_set<std::string_view> produtos75_;
};

}  // namespace infofiscal::sintegra
