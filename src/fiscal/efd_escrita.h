// Writing EFD ICMS/IPI records from the layout table: values become field text by the rules
// of the field (decimals, digits only, cleaning and size of text), records are counted per type
// and per block, and the closing records (x001, x990, 9900, 9990, 9999) are computed from those
// counts. Also the field-value rules the validator reads back (numbers, dates).
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/code_page.h"
#include "base/value.h"
#include "fiscal/efd_layout.h"
#include "fiscal/saida.h"

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
// A number in units of 10^-escala (a quantity read with the field's decimals).
inline Valor decimal(std::int64_t v, int escala) { return {Valor::Tipo::Numero, {}, v, escala}; }
inline Valor data(Dia d) { return d ? Valor{Valor::Tipo::Data, {}, d} : Valor{}; }
inline Valor mes_ano(int ano, int mes) { return {Valor::Tipo::MesAno, {}, ano * 100L + mes}; }

// Reads a numeric field ("1234,5", "0", "18,00") into units of 10^-escala; false when it is
// not digits with at most one decimal comma, or has more than `escala` decimals.
bool ler_numero(std::string_view s, int escala, std::int64_t& out);
// The fields of a record line "|REG|f2|...|" (without CR LF) into `campos`, [0] being REG, as
// views of `linha`. REQUIRES: `linha` begins and ends with '|'.
void separa_campos(std::string_view linha, std::vector<std::string_view>& campos);
// Reads ddmmaaaa; 0 when it is not a valid date.
Dia ler_data(std::string_view s);
// "ddmmaaaa" of a date.
std::string data_texto(Dia d);
// "dd/mm/aaaa" of a date, as messages and the report show it.
std::string data_legivel(Dia d);
// An amount in hundredths as the file writes it: "1234,50", "-0,07".
std::string valor_texto(std::int64_t centesimos);

// The file written as it goes, into a SaidaFiscal, in ISO-8859-1 (characters the code page
// lacks transliterated, see base/code_page.h). Blocks come in file order:
// a record of the block being written goes out at once; a record of a later block waits (in
// memory, past a few MiB in a temporary file beside the output) until that block's turn. Records
// are counted per type and per block for the closing records (x001, x990, 9900, 9990, 9999).
// Records of a block written ahead of its turn stay in memory up to this size.
inline constexpr std::size_t kAdiadoEmMemoria = 4 << 20;

class EscritorEfd {
 public:
  // `saida` must outlive the writer. A block written ahead waits in a temporary file past
  // `em_memoria` bytes.
  explicit EscritorEfd(SaidaFiscal& saida, std::size_t em_memoria = kAdiadoEmMemoria);
  ~EscritorEfd();
  EscritorEfd(const EscritorEfd&) = delete;
  EscritorEfd& operator=(const EscritorEfd&) = delete;

  // Writes one record; `valores` are the fields after REG. A data record of a block not yet
  // opened opens it first (x001 with IND_MOV 0). Throws Error when their number differs from
  // the layout's, or when its block was closed already.
  void registro(const efd::Registro& r, std::initializer_list<Valor> valores);
  void registro(std::string_view reg, std::initializer_list<Valor> valores) { registro(R(reg), valores); }
  // Closes every block up to `bloco`, in file order: x001 if it was not opened (IND_MOV 0 when
  // records of it were written ahead, else 1), those records, and x990 with its line count.
  void encerra(char bloco);
  // Closes the blocks left, writes block 9 and 9999 and hands the last bytes to the output.
  void conclui();

 private:
  class Adiado;
  // The buffer a record of block `b` goes to: the output's, or the wait of a later block.
  void escreve(int b, std::string_view registro);
  void campo(std::string& out, const efd::Campo& c, const Valor& v);
  void descarrega();

  SaidaFiscal& saida_;
  const std::size_t em_memoria_;
  std::string registro_;  // the record being written, in UTF-8
  std::string buffer_;    // bytes for saida_
  std::array<std::unique_ptr<Adiado>, kBlocos.size()> adiados_;
  std::size_t corrente_ = 0;  // the block being written: those before it are closed
  std::array<bool, kBlocos.size()> abertos_{};
  std::array<int, kBlocos.size()> linhas_{};
  std::vector<int> contagem_;  // per register index
};

}  // namespace infofiscal::efd
