// The information file read as the converters need it: the register lines grouped into what
// they describe, in the file's order, one group at a time.
//
// A note is its line 04 with the line 05 and lines 06 that follow it and carry the same note
// kind and row counter (C01, C02); an inventory is its line 16 (18) with the lines 17 (19) that
// follow it. Lines 01, 02 and 03 come one each; lines 12 to 15 one at a time.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "informacao/informacao.h"

namespace infofiscal {

struct NotaInformacao {
  const LinhaInformacao& cabecalho;      // line 04
  const LinhaInformacao* parte;          // line 05, or nullptr when the note has none
  std::span<const LinhaInformacao> itens;  // lines 06, in order
};

struct InventarioInformacao {
  const LinhaInformacao& cabecalho;      // line 16 or 18
  std::span<const LinhaInformacao> itens;  // lines 17 or 19
};

// What a converter does with each group. The lines given to a call, and the views into the
// text they hold, live only until the call returns: a converter keeps what it needs by value.
class LeitorDeInformacao {
 public:
  virtual ~LeitorDeInformacao() = default;
  virtual void cabecalho(const LinhaInformacao& linha) = 0;  // line 01, 02 or 03
  virtual void nota(const NotaInformacao& nota) = 0;
  virtual void cadastro(const LinhaInformacao& linha) = 0;   // line 12, 13, 14 or 15
  virtual void inventario(const InventarioInformacao& inventario) = 0;
  // Called every so many lines with (lines read, lines of the text).
  virtual void progresso(int lidas, int total) { (void)lidas, (void)total; }
};

// Reads `texto` (lines ending in CR LF or LF) and hands every group to `leitor`, in the file's
// order. Throws Error "Linha N do arquivo de informações: ..." for a line that is not a
// register line, a second line 01, 02 or 03, a line 05 or 06 outside a note, a line 17 or 19
// outside its inventory, or a line type the file never holds; and "O arquivo de informações
// não tem a linha 0N (...)" when line 01 or 02 is missing. Errors of `leitor` pass unchanged.
void ler_informacao(std::string_view texto, LeitorDeInformacao& leitor);

}  // namespace infofiscal
