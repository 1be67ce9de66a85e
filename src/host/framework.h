// The host framework as the data modules see it: the shared connection to the record source,
// the system information and the query data-module base.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "host/client_dataset.h"
#include "host/record_source.h"

namespace infofiscal {

// Kind of fiscal file: 0 undefined, 1 SINTEGRA, 2 SPED EFD, 3 SPED contributions.
using TRegistroFiscal = std::uint8_t;

// Info-line and progress callbacks (the orchestrator's TPROC_ types have the same shapes).
using TProcLinhaInfo = std::function<void(const std::string& AInfo)>;
using TProcProgresso = std::function<void(int APosicao, int AMaximo)>;
using TPROC_LinhaInfo = TProcLinhaInfo;
using TPROC_Progresso = TProcProgresso;

// The system information: the company the user is working in. The front decides where the
// code comes from (an option, or the fiscal register); it is asked only when a line needs it.
class TOBJ_InfoSistema_v11c {
 public:
  explicit TOBJ_InfoSistema_v11c(std::function<int()> cod_empresa = [] { return 0; })
      : cod_empresa_(std::move(cod_empresa)) {}
  int CodEmpresa() const { return cod_empresa_(); }

 private:
  std::function<int()> cod_empresa_;
};

// The host's shared, logged-in connection that every data module reads through.
struct TDTM_ConexaoDS {
  RecordSource& Conexao;
  TOBJ_InfoSistema_v11c InfoSistema;
};

// The framework's query data module: a provider connection over the shared connection, bound
// to the server class "TDAO_DExportaInfoFiscal".
class TDTM_FPadraoConsulta {
 public:
  static constexpr const char* kServerClassName = "TDAO_DExportaInfoFiscal";

  explicit TDTM_FPadraoConsulta(TDTM_ConexaoDS& conexao) : conexao_(conexao) {}
  virtual ~TDTM_FPadraoConsulta() = default;
  TDTM_FPadraoConsulta(const TDTM_FPadraoConsulta&) = delete;
  TDTM_FPadraoConsulta& operator=(const TDTM_FPadraoConsulta&) = delete;

 protected:
  // Binds a dataset of the module to the provider connection.
  void Bind(ClientDataSet& dataset) { dataset.SetRemoteServer(&conexao_.Conexao); }
  const TOBJ_InfoSistema_v11c& InfoSistema() const { return conexao_.InfoSistema; }

 private:
  TDTM_ConexaoDS& conexao_;
};

}  // namespace infofiscal
