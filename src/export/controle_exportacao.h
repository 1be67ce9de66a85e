// The run shared by the dialog and the command line: build the information file, save it
// under the base folder, hand it to the converter. Keeping it in one place is what keeps the
// two fronts from drifting apart.
#pragma once

#include <cstdint>
#include <string>

#include "export/obj_exportainfofiscal.h"
#include "host/framework.h"

namespace infofiscal {

class ControleExportacao {
 public:
  // REQUIRES: `conexao` outlives this object.
  explicit ControleExportacao(TDTM_ConexaoDS& conexao) : oExportaInfoFiscal(conexao), conexao_(conexao) {}

  // The name the dialog suggests for the fiscal file: "SINTEGRA_03_2024.v1.txt" for kind 1,
  // "SPED_FISCAL_EFD_..." for 2, "SPED_FISCAL_EFD_CTB_..." for 3; empty for any other kind.
  static std::string NomeSugerido(TRegistroFiscal tipo, int mes, int ano);
  // `base`/Arquivos/InfoFiscal/SpedInformacao.txt.
  static std::string CaminhoInformacao(const std::string& base);

  // Runs the export (ACodNFeCompra / ACodNFeVenda as the orchestrator takes them) and saves
  // the information file under `base`, through a temporary file. Returns the saved text when
  // the kind has a converter (1 or 2) and SomenteInformacao is off, else an empty string.
  // Throws on the first error; an earlier information file then stays as it was.
  std::string GerarInformacao(const std::string& base, int ACodNFeCompra, int ACodNFeVenda);
  // Set when no converter follows (the command's --somente-informacao): the saved text is not
  // kept, which halves the memory of a large month.
  bool SomenteInformacao = false;

  // Hands the saved text to the converter: kind 1 SINTEGRA, kind 2 SPED EFD (first layout
  // version); any other kind calls no converter. A fiscal file that is one of the files the
  // source reads, or the information file of the last run, is refused with an Error and
  // nothing is written (a name chosen in a save dialog can be any file).
  void SalvarArquivoFiscal_A(const std::string& NomeArquivo, const std::string& Texto) const;

  // The orchestrator of every run of this controller; its callbacks are the converter's too.
  TOBJ_ExportaInfoFiscal oExportaInfoFiscal;
  TPROC_LinhaInfo LinhaInfo;
  TPROC_Progresso Progresso;

 private:
  void ExigirDestinoLivre(const std::string& NomeArquivo) const;

  TDTM_ConexaoDS& conexao_;
  std::string FCaminhoInformacao;  // of the last run, once saved
};

}  // namespace infofiscal
