// Checks a SINTEGRA file against every rule of the layout that the file alone can show: the
// record length and terminator, the characters, each field of the types in the layout tables
// (format, dates, codes, the period), the order of the types, each 54 under a 50 of the same
// document, each product of 54 and 74 in a 75, and the totals of type 90.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "fiscal/saida.h"
#include "fiscal/sintegra_layout.h"

namespace infofiscal::sintegra {

// Read a piece at a time. What it keeps past a record is what the rules of the whole file need:
// the document keys of types 50 and 54, the products used and described, the counts.
class ValidadorSintegra final : public Conferencia {
 public:
  void le(std::string_view pedaco) override;
  // One finding per broken rule, "Registro N: ..." (N the 1-based record number), in the
  // order of the records; those of the whole file last, "Arquivo: ...". Empty when the file is
  // valid.
  std::vector<std::string> conclui() override;

 private:
  struct Registro {
    int numero;
    std::string_view texto;  // without CR LF; lives while the record is read
  };
  // A document in a record, CNPJ, model, series and number as written (25 characters); with the
  // CFOP (29). Kept for every document of the file: fixed arrays, not strings on the heap.
  static constexpr std::size_t kChave = 25;
  using Chave = std::array<char, kChave>;
  using ChaveCfop = std::array<char, kChave + 4>;
  struct HashChave {
    template <std::size_t N>
    std::size_t operator()(const std::array<char, N>& k) const {
      return std::hash<std::string_view>{}(std::string_view(k.data(), N));
    }
  };
  // The item numbers of a document's 54 records, sorted; an item that is not three digits is
  // kept in itens_outros_ with its document.
  using Itens54 = std::vector<std::uint16_t>;

  void registro(std::string_view texto, bool com_lf);
  bool item_novo(Itens54& itens, const Chave& doc, std::string_view item);
  void achado(int numero, std::string texto);
  void conferir_campos(const Registro& r, const Layout& layout);
  void conferir_conteudo(const Registro& r, const Layout& layout, const Campo& campo, std::string_view valor);
  void conferir_10(const Registro& r);
  void conferir_50(const Registro& r);
  void conferir_54(const Registro& r);
  void conferir_74_75(const Registro& r, int tipo);
  void conferir_54_sem_50();
  void conferir_documentos();
  void conferir_90();

  DivisorDeLinhas divisor_;
  std::vector<std::pair<int, std::string>> achados_;
  std::unordered_map<int, int> por_tipo_;  // records of each type
  int total_ = 0;
  int ultima_ordem_ = -1, ultimo_tipo_ = 0;
  std::optional<std::string> r10_;
  std::optional<std::pair<TimeStamp, TimeStamp>> periodo_;
  // Document keys: CNPJ, model, series and number; with the CFOP for the 50-54 match.
  std::unordered_set<ChaveCfop, HashChave> chaves50_;      // of each 50
  std::vector<std::pair<int, Chave>> documentos50_;         // normal 50 of models with items
  std::unordered_map<Chave, Itens54, HashChave> documentos54_;  // of each 54, its items
  std::unordered_set<std::string> itens_outros_;
  // A 54 whose 50 was not seen when it was read: (its finding's place in achados_, key + CFOP).
  // A 50 further on still settles it.
  std::vector<std::pair<std::size_t, ChaveCfop>> sem_50_;
  std::unordered_map<std::string, std::vector<int>> produtos_usados_;  // code of 54 and 74 -> records
  std::unordered_set<std::string> produtos75_;
  std::vector<std::pair<int, std::string>> registros90_;
};

}  // namespace infofiscal::sintegra
