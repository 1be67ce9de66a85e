// The information file read as the converters need it: the register lines grouped into what
// they describe, in the file's order, one group at a time, never the whole file at once.
//
// Lines 01, 02 and 03 open the file and come together, as its header; then, in any order, notes
// (a line 04 with the line 05 and lines 06 that follow it and carry the same note kind and row
// counter, C01 and C02), catalogue lines 12 to 15 one at a time, and inventories (a line 16 or
// 18 with the lines 17 or 19 that follow it).
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "informacao/informacao.h"
#include "informacao/texto.h"

namespace infofiscal {

struct CabecalhoInformacao {
  const LinhaInformacao& registro;  // line 01
  const LinhaInformacao& empresa;   // line 02
  const LinhaInformacao* contador;  // line 03, or nullptr when the file has none
};

struct NotaInformacao {
  const LinhaInformacao& cabecalho;        // line 04
  const LinhaInformacao* parte;            // line 05, or nullptr when the note has none
  std::span<const LinhaInformacao> itens;  // lines 06, in order
};

// An inventory comes in parts of at most kItensPorParte lines 17 or 19, each part with the
// inventory's header: a large company's inventory holds a hundred thousand items, and held whole
// it would cost more than the rest of the month. An inventory without lines comes as one empty
// part; the last part is never empty otherwise.
struct InventarioInformacao {
  static constexpr std::size_t kItensPorParte = 4096;

  const LinhaInformacao& cabecalho;        // line 16 or 18
  std::span<const LinhaInformacao> itens;  // lines 17 or 19 of this part, in order
  bool primeira;                           // the inventory's first part
  bool ultima;                             // its last part
};

// What a converter does with each group. The lines given to a call, and the views into the
// text they hold, live only until the call returns (the header's, until the reading ends): a
// converter keeps what it needs by value.
class LeitorDeInformacao {
 public:
  virtual ~LeitorDeInformacao() = default;
  virtual void cabecalho(const CabecalhoInformacao& cabecalho) = 0;  // once, before any other group
  virtual void nota(const NotaInformacao&) {}
  virtual void cadastro(const LinhaInformacao&) {}  // line 12, 13, 14 or 15
  virtual void inventario(const InventarioInformacao&) {}
};

// What a reading hands over: every group, or only the header and the catalogue lines. The
// latter reads of the notes' and inventories' lines their type alone: it is the quick first
// pass of a converter that needs the catalogues before the notes, which the file gives after.
enum class Leitura : std::uint8_t { completa, cadastros };

struct ContagemDeLinhas {
  int linhas = 0;               // the lines of the text, empty ones included
  int notas = 0;                // its lines 04
  int itens_de_inventario = 0;  // its lines 17 and 19
};

// Reads `texto` from its first line (REQUIRES: a text read once is read here for the first
// time) and hands the groups to `leitor`, in the file's order.
// Throws Error "Linha N do arquivo de informações: ..." for a line that is not a register line,
// a line type the file never holds, a second line 01, 02 or 03, one after the header, any other
// line before lines 01 and 02, a line 05 or 06 outside its note, a line 17 or 19 outside its
// inventory; and "O arquivo de informações não tem a linha 0N (...)" when the text ends without
// line 01 or 02. A `cadastros` reading does not see what is wrong inside the lines it skips.
// Errors of `leitor` pass unchanged.
ContagemDeLinhas ler_informacao(TextoDeInformacao& texto, LeitorDeInformacao& leitor,
                                Leitura leitura = Leitura::completa);
// The same over a UTF-8 text in memory.
ContagemDeLinhas ler_informacao(std::string_view texto, LeitorDeInformacao& leitor,
                                Leitura leitura = Leitura::completa);

}  // namespace infofiscal
