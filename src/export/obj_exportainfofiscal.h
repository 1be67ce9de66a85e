// The export orchestrator: one run of the 23 steps, each in a data module of its own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/string_list.h"
#include "host/framework.h"

namespace infofiscal {

class TOBJ_ExportaInfoFiscal {
 public:
  // REQUIRES: `conexao` outlives this object.
  explicit TOBJ_ExportaInfoFiscal(TDTM_ConexaoDS& conexao) : conexao_(conexao) {}
  TOBJ_ExportaInfoFiscal(const TOBJ_ExportaInfoFiscal&) = delete;
  TOBJ_ExportaInfoFiscal& operator=(const TOBJ_ExportaInfoFiscal&) = delete;

  void PROC_LinhaInfo_B(TPROC_LinhaInfo value) { FProcLinhaInfo = std::move(value); }
  void PROC_Progresso_B(TPROC_Progresso value) { FProcProgresso = std::move(value); }
  void CodTipoRegistroFiscal(TRegistroFiscal value) { FCodTipoRegistroFiscal = value; }
  TRegistroFiscal CodTipoRegistroFiscal() const { return FCodTipoRegistroFiscal; }
  void CodRegistroFiscal(std::int32_t value) { FCodRegistroFiscal = value; }
  std::int32_t CodRegistroFiscal() const { return FCodRegistroFiscal; }

  // Runs one export and returns the information file's text (CR LF after every line).
  // ACodNFeCompra / ACodNFeVenda name a single purchase / outgoing note, 0 for all. The first
  // error ends the run unchanged; oArquivo then keeps the lines written so far.
  std::string RecInformacao(int ACodNFeCompra, int ACodNFeVenda);
  // The same run, leaving the text in oArquivo instead of copying it out.
  void Executar(int ACodNFeCompra, int ACodNFeVenda);

  // Lines the last run wrote in the steps that take ACodNFeCompra (2.04 to 2.06) and in the one
  // that takes ACodNFeVenda (2.08): none, with a note named, means that it matched no note.
  std::size_t LinhasDasCompras() const { return FLinhasDasCompras; }
  std::size_t LinhasDasVendas() const { return FLinhasDasVendas; }

  void LinhaInfo_B(const std::string& AInfo) const;
  void Progresso_B(int APosicao, int AMaximo) const;

  // The run's shared string list.
  TStringList oArquivo;

 private:
  // One step: info text, progress reset, a fresh module, its generator, the module freed
  // (also on failure).
  template <class Module, class Generator>
  void Passo(std::string_view info, Generator&& generator);
  void Configurar(class TDTM_A_Padrao& module) const;
  void Configurar(class TDTM_A_RegistroFiscal& module) const;
  void Configurar(class TDTM_FPadraoConsulta&) const {}

  TDTM_ConexaoDS& conexao_;
  TPROC_LinhaInfo FProcLinhaInfo;
  TPROC_Progresso FProcProgresso;
  TRegistroFiscal FCodTipoRegistroFiscal = 0;
  std::int32_t FCodRegistroFiscal = 0;
  std::size_t FLinhasDasCompras = 0, FLinhasDasVendas = 0;
};

}  // namespace infofiscal
