// The run shared by the dialog and the command line: build the information file, save it
// under the base folder, hand it to the converter. Keeping it in one place is what keeps the
// two fronts from drifting apart.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "base/list_saver.h"
#include "export/obj_exportainfofiscal.h"
#include "fiscal/arquivo_fiscal.h"
#include "fiscal/efd.h"
#include "host/framework.h"

namespace infofiscal {

class TextoDeInformacao;

// What ends a run that was cancelled (ControleExportacao::Cancelar). It is not an Error, so that
// the converters, which prefix an Error's message with the line it is about, let it pass as it is.
class ExecucaoCancelada : public std::exception {
 public:
  const char* what() const noexcept override;
};

// One file a run wrote.
struct ArquivoGravado {
  enum class Tipo : std::uint8_t { informacao, fiscal, relatorio };
  std::string descricao;   // "informações", "SINTEGRA", "SPED EFD ICMS/IPI", "relatório"
  std::string caminho;     // absolute
  std::size_t linhas = 0;  // its lines: for a fiscal file, its records; none counted for the report
  Tipo tipo = Tipo::informacao;

  // The fiscal file of kind `tipo` (1 SINTEGRA, 2 SPED EFD) and the HTML report of the month.
  static ArquivoGravado Fiscal(TRegistroFiscal tipo, const std::string& caminho, std::size_t registros);
  static ArquivoGravado Relatorio(const std::string& caminho);
};

// The summary of the files a run wrote, for the front to show after the run's lines:
// `cabecalho` ("Resumo: 2 arquivos gravados" when empty), then one line per file with its path
// and its count ("  SINTEGRA: /srv/erp/SINTEGRA_03_2024.v1.txt (1.616 registros)").
std::vector<std::string> resumo_dos_gravados(const std::vector<ArquivoGravado>& gravados, std::string cabecalho = {});

class ControleExportacao {
 public:
  // REQUIRES: `conexao` outlives this object.
  explicit ControleExportacao(TDTM_ConexaoDS& conexao);
  // Stops a conversion still running beside the run, with nothing put in place.
  ~ControleExportacao();

  // The name the dialog suggests for the fiscal file: "SINTEGRA_03_2024.v1.txt" for kind 1,
  // "SPED_FISCAL_EFD_..." for 2, "SPED_FISCAL_EFD_CTB_..." for 3; empty for any other kind.
  static std::string NomeSugerido(TRegistroFiscal tipo, int mes, int ano);
  // `base`/Arquivos/InfoFiscal/SpedInformacao.txt.
  static std::string CaminhoInformacao(const std::string& base);

  // Runs the export (ACodNFeCompra / ACodNFeVenda as the orchestrator takes them) and writes
  // the information file for `base`, through a temporary file. Returns the saved text when a
  // converter follows and takes it (kind 1 or 2, SomenteInformacao and ConverteDoArquivo off),
  // else an empty string. When no converter follows the file is put in place here; else it
  // waits, complete, for SalvarArquivoFiscal_A, so that a run cancelled in the converter leaves
  // it as it was too.
  // Throws on the first error; an earlier information file then stays as it was.
  std::string GerarInformacao(const std::string& base, int ACodNFeCompra, int ACodNFeVenda);
  // Set when no converter follows (the command's --somente-informacao): the saved text is not
  // kept, which halves the memory of a large month.
  bool SomenteInformacao = false;
  // Set by the command line, which runs the largest months: no text is kept, and the converter
  // reads the saved file back a piece at a time (SalvarArquivoFiscal_A(NomeArquivo)), so that
  // the run needs the export's memory alone, whatever the size of the month. The converter reads
  // the same text either way: the saved text is the file read back.
  bool ConverteDoArquivo = false;
  // The fiscal file's name, when the front knows it before the run (both fronts ask for it
  // first): GerarInformacao then converts the text on a thread of its own while the export still
  // writes it, and SalvarArquivoFiscal_A(NomeAntecipado) waits for the end of that conversion.
  // The run's files, lines and errors are those of a conversion after the export: the
  // converter's lines wait for the export's, and a conversion that failed is run again from the
  // saved file, which gives its exact errors and report. A name refused by
  // SalvarArquivoFiscal_A's checks is left to it, as when none is known.
  std::string NomeAntecipado;
  // What the EFD's block E takes from the front (carried balance, E116); kind 2 only.
  OpcoesEfd OpcoesEFD;

  // Hands the saved text to the converter: kind 1 SINTEGRA, kind 2 SPED EFD (first layout
  // version); any other kind calls no converter. A fiscal file or report that is one of the
  // files the source reads, the information file of this run, or the other of the two, is
  // refused with an Error and nothing is written (a name chosen in a save dialog can be any
  // file). Then puts the information file in place: also when the converter failed (the file it
  // refused is the reason to look at), but not when the run was cancelled. For NomeAntecipado,
  // what the conversion beside the export read is the text: REQUIRES then that `Texto` is what
  // GerarInformacao returned.
  void SalvarArquivoFiscal_A(const std::string& NomeArquivo, const std::string& Texto);
  // The same from the information file of the last run, read back from where it waits (set
  // ConverteDoArquivo first, or the text is kept for nothing). REQUIRES: GerarInformacao
  // returned last.
  void SalvarArquivoFiscal_A(const std::string& NomeArquivo);
  // Where the converter writes the HTML report of the month (TOBJ_ArquivoFiscal::Relatorio),
  // also of a month it refuses; empty for none. Kinds without a converter write no report.
  std::string Relatorio;
  // The report beside the fiscal file `NomeArquivo`, as the dialog names it:
  // "SINTEGRA_03_2024.v1.txt" gives "SINTEGRA_03_2024.v1.relatorio.html".
  static std::string NomeDoRelatorio(const std::string& NomeArquivo);

  // Asks the run to stop: its next progress report, once the front has shown it, throws
  // ExecucaoCancelada, and every file stays as it was. May be called from the front's progress
  // callback (the dialog handles its button there) or from another thread. A new run clears it.
  void Cancelar() { cancelado_ = true; }

  // The summary of the last run, for the front to show after the run's lines: the files
  // written, each with its path and count, or, when no fiscal file was made, why. REQUIRES: the
  // last run ended without an error.
  std::vector<std::string> Resumo() const;
  // The files the last run put in place, the information file first.
  const std::vector<ArquivoGravado>& Gravados() const { return gravados_; }
  // The report the last run wrote, also a run whose fiscal file was refused; empty when none.
  const std::string& RelatorioGravado() const { return relatorio_gravado_; }

  // The orchestrator of every run of this controller; its callbacks are the converter's too.
  TOBJ_ExportaInfoFiscal oExportaInfoFiscal;
  TPROC_LinhaInfo LinhaInfo;
  TPROC_Progresso Progresso;

 private:
  bool TemConversor() const;
  // SalvarArquivoFiscal_A of the text `Texto`, or of the saved file when it is null; of the
  // conversion beside the export, when it was named `NomeArquivo`. The lines `ditas` were said
  // already, by a first try that failed: the front does not hear them again while the converter
  // says the same.
  void Converter(const std::string& NomeArquivo, const std::string* Texto, std::vector<std::string> ditas = {});
  // What the converter reads: `Texto`, or the saved file when it is null.
  std::unique_ptr<TextoDeInformacao> AbrirInformacao(const std::string* Texto) const;
  void ExigirDestinosLivres(const std::string& NomeArquivo) const;
  // The front's progress report, then the cancel check.
  void Relatar(int APosicao, int AMaximo);
  // Renames the waiting information file over the old one, if one waits.
  void ConfirmarInformacao();
  // The information file and the fiscal file `NomeArquivo` (and its report) that `conversor`
  // wrote, put in place and listed.
  void Concluir(const std::string& NomeArquivo, const TOBJ_ArquivoFiscal& conversor);
  // Starts the conversion beside the export into NomeAntecipado, when the run allows it.
  void Antecipar(bool converte);
  // SalvarArquivoFiscal_A of the conversion started beside the export.
  void ConcluirAntecipada(const std::string& NomeArquivo);

  class ConversaoAntecipada;

  TDTM_ConexaoDS& conexao_;
  std::atomic<bool> cancelado_ = false;
  std::unique_ptr<ListSaver> informacao_;  // the information file waiting for the converter
  std::unique_ptr<ConversaoAntecipada> antecipada_;  // after informacao_: gone before the saver
  std::string caminho_informacao_;
  std::vector<ArquivoGravado> gravados_;
  std::string relatorio_gravado_;
};

}  // namespace infofiscal
