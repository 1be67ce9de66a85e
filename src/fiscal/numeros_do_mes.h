// The figures of a fiscal file, read a piece at a time as the converter writes it: records per type, totals per CFOP and per CST, the ICMS apuração and the values
// of the month by day. They are what the report of the month (fiscal/relatorio.h) shows; the
// file is read only as far as those figures need, its rules are the validators'.
//
// EFD ICMS/IPI: C100 and D100 (the documents, by day), C190 and D190 (the totals per CFOP and
// CST), E110 (the apuração as written). SINTEGRA: 50 and 70 (the documents, by day, and the
// totals per CFOP), 54 (the items' totals per CST), and the apuração computed from 50 and 70,
// since the file carries none. Both: 0000 / 10 (company and period) and the last record (9999 /
// the last 90), which tells a whole file from one whose conversion stopped.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "fiscal/efd_escrita.h"
#include "fiscal/efd_layout.h"
#include "fiscal/saida.h"

namespace infofiscal {

// The sums of the analytic records of one CFOP or one CST, in hundredths: the operation value,
// the ICMS base and the ICMS.
struct TotaisAnaliticos {
  std::int64_t registros = 0, valor = 0, base = 0, icms = 0;
};

// The documents of one day, in hundredths of their values.
struct MovimentoDoDia {
  std::int64_t entradas = 0, saidas = 0;
};

struct NumerosDoMes {
  int tipo = 0;                // 1 SINTEGRA, 2 EFD
  std::string empresa, cnpj;   // from 0000 / type 10, in UTF-8
  efd::Dia inicio = 0, fim = 0;  // the period (yyyymmdd); 0 until the header was read
  // Records per type (EFD "C100", SINTEGRA "50"), in the order each type first appears.
  std::vector<std::pair<std::string, std::int64_t>> registros;
  std::int64_t total_de_registros = 0;
  std::map<std::string, TotaisAnaliticos> por_cfop, por_cst;
  // Whether the CST totals carry the ICMS: EFD's C190 do, SINTEGRA's 54 have only the base.
  bool cst_com_icms = false;
  // The apuração, fields 02 to 15 of E110: read from the EFD file (summed when it has several
  // periods); for SINTEGRA, debits (02) and credits (06) summed from 50 and 70 by the CFOP
  // rule of E110, the balances completed from them (efd::completa_e110).
  efd::CamposE110 apuracao{};
  // Documents by day of the period's month (index 1 to 31): entries by their entry date
  // (receipt), exits by their issue date; other dates in fora_do_periodo.
  std::array<MovimentoDoDia, 32> por_dia{};
  MovimentoDoDia fora_do_periodo;
  // Records whose figures did not read (a value that is not a number, a record of the wrong
  // size): counted per type, left out of the sums. Only a file its validator refuses has any.
  std::int64_t ilegiveis = 0;
  bool completo = false;  // its last record was read: 9999, or as many 90 as each 90 says
};

class LeitorDeNumeros final : public LeitorDePedacos {
 public:
  // `tipo` 1 SINTEGRA, 2 EFD.
  explicit LeitorDeNumeros(int tipo);
  void le(std::string_view pedaco) override;
  // The figures of what was read. REQUIRES: after the last piece; called once.
  NumerosDoMes conclui();

 private:
  void registro(std::string_view linha);
  void conta(std::string_view tipo);
  void efd(std::string_view linha);
  void sintegra(std::string_view r);
  void documento(char oper, efd::Dia data, std::int64_t valor);
  void analitico(std::string_view cst, std::string_view cfop, std::int64_t valor, std::int64_t base,
                 std::int64_t icms);

  NumerosDoMes n_;
  DivisorDeLinhas divisor_;
  std::unordered_map<std::string, std::size_t> posicao_;  // type -> its place in n_.registros
  std::vector<std::string_view> campos_;  // the fields of the EFD record being read; [1] is REG
  std::int64_t debitos_ = 0, creditos_ = 0;  // SINTEGRA
  int registros90_ = 0;
};

}  // namespace infofiscal
