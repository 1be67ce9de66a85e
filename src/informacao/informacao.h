// One register line of the information file: "[C00]tt[/C00][C01]v[/C01]...[C99]nn[/C99]".
//
// Values are kept verbatim as views into the line's text, so the text must outlive the line.
// The columns are read by the names of informacao/esquema.h (`l.centesimos(L06::PrecoTotal)`).
#pragma once

#include <bitset>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/value.h"

namespace infofiscal {

// One register line.
struct LinhaInformacao {
  static constexpr int kColunas = 100;  // C00 to C99

  int tipo = 0;                           // the line type, 1 to 19
  int numero = 0;                         // 1-based line number in the file
  int trailer = 0;                        // the count of the [C99] element
  std::vector<std::string_view> colunas;  // colunas[n] is column n (0 unused), at least up to the
                                          // last column written; missing ones are empty
  std::bitset<kColunas> presentes;        // whether column n was written

  // Column `n` verbatim; empty when the line has no such column.
  std::string_view texto(int n) const { return n < static_cast<int>(colunas.size()) ? colunas[n] : std::string_view(); }
  bool tem(int n) const { return n >= 0 && n < kColunas && presentes[n]; }
  // Column `n` as an integer; throws Error naming the line and column when it is not one.
  std::int64_t inteiro(int n) const;
  // Column `n` as a decimal number in units of 10^-casas, read exactly from its text: "1234,50"
  // with casas 2 gives 123450, "0,004" with casas 5 gives 400; a point is taken as the decimal
  // separator too; digits past `casas` round half away from zero ("1,005" gives 101 hundredths,
  // as the line's own rendering does). The one amount parser of the converters. Throws Error
  // naming the line and column for a text that is not such a number or does not fit.
  std::int64_t decimal(int n, int casas) const;
  std::int64_t centesimos(int n) const { return decimal(n, 2); }
  // decimal(n, casas) for a field of `casas` decimals that must not round a value away (a
  // quantity of 0,004 in a field of 2 decimals): a text with more significant decimals throws
  // DataProblem naming the column, the line and the text.
  std::int64_t decimal_sem_perda(int n, int casas) const;
  // Column `n` as "dd/mm/yyyy" with an optional " hh:nn:ss"; throws Error otherwise.
  TimeStamp data(int n) const;
};

// Parses one line into `out`, reusing its storage (a reader parses millions of lines without
// allocating for each). Throws Error "Linha N do arquivo de informações: ..." when it is not a
// register line; `out` is then left half-filled.
void ler_linha_informacao(std::string_view linha, int numero, LinhaInformacao& out);
LinhaInformacao ler_linha_informacao(std::string_view linha, int numero);

// The line type of a register line, read from its leading "[C00]tt[/C00]" alone; -1 when the
// line does not start so (only ler_linha_informacao can say what is wrong with it).
int tipo_da_linha(std::string_view linha);

}  // namespace infofiscal
