// Writing EFD ICMS/IPI records from the layout table: values become field text by the rules
// of the field (decimals, digits only, cleaning and size of text), records are counted per type
// and per block, and the closing records (x990, 9900, 9990, 9999) are computed from those
// counts. Also the field-value rules the validator reads back (numbers, dates).
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "fiscal/efd_layout.h"
#include "base/value.h"

namespace infofiscal::efd {

// A date as yyyymmdd, comparable as a number; 0 = none.
using Dia = std::int32_t;
inline Dia dia(const TimeStamp& t) { return t.year * 10000 + t.month * 100 + t.day; }

// A value for one field.
struct Valor {
  enum class Tipo : std::uint8_t { Vazio, Texto, Numero, Data, MesAno };
  Tipo tipo = Tipo::Vazio;
  std::string_view texto = {};
  std::int64_t numero = 0;  // Numero: in units of 10^-escala; Data: yyyymmdd; MesAno: yyyymm
  int escala = 0;
};
inline Valor vazio() { return {}; }
inline Valor texto(std::string_view s) { return {Valor::Tipo::Texto, s}; }
// An amount in hundredths (cents, or hundredths of a unit or of a percent).
inline Valor centesimos(std::int64_t v) { return {Valor::Tipo::Numero, {}, v, 2}; }
inline Valor inteiro(std::int64_t v) { return {Valor::Tipo::Numero, {}, v, 0}; }
inline Valor data(Dia d) { return d ? Valor{Valor::Tipo::Data, {}, d} : Valor{}; }
inline Valor mes_ano(int ano, int mes) { return {Valor::Tipo::MesAno, {}, ano * 100L + mes}; }

// Reads a numeric field ("1234,5", "0", "18,00") into units of 10^-escala; false when it is
// not digits with at most one decimal comma, or has more than `escala` decimals.
bool ler_numero(std::string_view s, int escala, std::int64_t& out);
// Reads ddmmaaaa; 0 when it is not a valid date.
Dia ler_data(std::string_view s);
// "ddmmaaaa" of a date.
std::string data_texto(Dia d);

// The file being written, block by block: each record goes to its block's text, so blocks
// may be written in any order and are joined in file order at the end.
class EscritorEfd {
 public:
  EscritorEfd();

  // Writes one record; `valores` are the fields after REG. Throws Error when their number
  // differs from the layout's.
  void Registro(const efd::Registro& r, std::initializer_list<Valor> valores);
  void Registro(std::string_view reg, std::initializer_list<Valor> valores) { Registro(R(reg), valores); }
  // x990 with the block's line count.
  void Fecha(char bloco);
  // Puts x001 in front of what the block holds (IND_MOV 0 when it holds records, else 1)
  // and closes it with x990: a block's records may be written before it is known whether
  // it has any.
  void Encerra(char bloco);
  // Block 9 and 9999, then the whole file in block order, in Windows-1252.
  std::string Conclui();

 private:
  std::string& Bloco(char bloco);
  int& Linhas(char bloco) { return linhas_[kBlocos.find(bloco)]; }
  void Campo(std::string& out, const efd::Campo& c, const Valor& v);

  std::array<std::string, kBlocos.size()> blocos_;
  std::array<int, kBlocos.size()> linhas_{};
  std::vector<int> contagem_;  // per register index
};

}  // namespace infofiscal::efd
