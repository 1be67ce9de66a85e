// The base data module of every generator but the three header lines: the fiscal-register
// record of the run, the run's identity, the two callbacks and the note-kind code.
#pragma once

#include <cstdint>
#include <string_view>

#include "registers/register_line.h"
#include "host/framework.h"

namespace infofiscal {

class TDTM_A_Padrao : public TDTM_FPadraoConsulta {
 public:
  explicit TDTM_A_Padrao(TDTM_ConexaoDS& conexao);

  // The fiscal-register record (provider "DspRegistroInfoFiscal", parameter
  // ATR_REGISTROFISCAL); its switches decide which generators write.
  ClientDataSet TabRegistroFiscal;

  void CodTipoRegistroFiscal(TRegistroFiscal value) { FCodTipoRegistroFiscal = value; }
  TRegistroFiscal CodTipoRegistroFiscal() const { return FCodTipoRegistroFiscal; }
  void CodRegistroFiscal(std::int32_t value) { FCodRegistroFiscal = value; }
  std::int32_t CodRegistroFiscal() const { return FCodRegistroFiscal; }
  void LinhaInfo_B(TProcLinhaInfo value) { FProcLinhaInfo = std::move(value); }
  void Progresso_B(TProcProgresso value) { FProcProgresso = std::move(value); }

  // Reopens TabRegistroFiscal for FCodRegistroFiscal. A failure passes on unchanged.
  void ConsRegistroFiscal();

  // Rows of an open dataset, counted by walking it; the cursor is put back on the first row,
  // also when the walk fails.
  static int ContaNumRegistro(ClientDataSet& DataSet);

 protected:
  // True when the switch field of the current fiscal-register row is exactly "S".
  bool SwitchOn(std::string_view field) const;

  // The list loop of a list generator: counts the rows, then for each row adds 1 to the row
  // counter, reports (counter, count) and calls body(counter) on the current row.
  template <class Body>
  void ForEachRow(ClientDataSet& list, Body&& body) {
    const int count = ContaNumRegistro(list);
    int counter = 0;
    while (!list.Eof()) {
      ++counter;
      FProcProgresso(counter, count);
      body(counter);
      list.Next();
    }
  }

  TRegistroFiscal FCodTipoRegistroFiscal = 0;
  std::int32_t FCodRegistroFiscal = 0;
  TProcLinhaInfo FProcLinhaInfo;
  TProcProgresso FProcProgresso;
  std::uint8_t FTipoProcesso = 0;
};

}  // namespace infofiscal
