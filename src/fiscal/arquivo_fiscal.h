// The fiscal-file converter: turns the information file's text into the SINTEGRA or SPED EFD
// file. Created for one call; reports through the two callbacks set before the call.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "fiscal/efd.h"
#include "fiscal/saida.h"
#include "host/framework.h"
#include "informacao/texto.h"

namespace infofiscal {

class SaidaFiscal;

// Layout versions of the EFD file; the dialog always passes the first.
enum class TRegFiscalVersao : std::uint8_t { v1 };

class TOBJ_ArquivoFiscal {
 public:
  TProcLinhaInfo LinhaInfo;
  TProcProgresso Progresso;
  // Where the HTML report of the month goes (fiscal/relatorio.h); empty for none. It is
  // written, whole or not at all, when the file is: the fiscal file is put in place only once
  // the report is complete beside it, and the report right after. It is written also when the
  // month is refused (the validator's findings, or the error that stopped the conversion, are
  // what it is for then): the Error that leaves the call then ends with a line naming it. A run
  // cancelled or stopped by anything but an Error writes none.
  std::string Relatorio;
  // Set for a first try whose failure the caller answers by converting again (the text read
  // while it was written, then the saved file): a failed call then writes neither report nor
  // list of problems, and throws its Error as it is.
  bool Tentativa = false;
  // Called, when set, once the file and the report are complete and checked, right before they
  // are put in place: the last moment a run can still be stopped (it throws) with nothing written.
  std::function<void()> AntesDeGravar;

  // Writes the SINTEGRA file `NomeArquivo` from the information text (UTF-8, CR LF lines), a
  // piece at a time, checked as it goes. Throws Error, leaving any earlier file intact, when the
  // text cannot be converted or the file written is refused. When notes, items or products of
  // the month cannot be converted, the Error lists each kind of problem with its first examples
  // and the whole list is written to RelatorioDeProblemas(NomeArquivo); a successful call
  // removes such a list left by an earlier one.
  void Exec_Sintegra(const std::string& NomeArquivo, const std::string& Texto);
  // Writes the SPED EFD ICMS/IPI file `NomeArquivo` from the information text, the same way;
  // `Opcoes` gives block E what the information file lacks (carried balance, E116).
  void Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, const std::string& Texto, TRegFiscalVersao Versao,
                            const OpcoesEfd& Opcoes = {});
  // The same from an information text read a piece at a time (the saved file, of any size).
  void Exec_Sintegra(const std::string& NomeArquivo, TextoDeInformacao& Informacao);
  void Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, TextoDeInformacao& Informacao, TRegFiscalVersao Versao,
                            const OpcoesEfd& Opcoes = {});

  // The records (lines) of the file the last successful call wrote; 0 before one.
  std::size_t Registros() const { return registros_; }
  // Whether the last call wrote the report, also a call that failed.
  bool RelatorioGravado() const { return relatorio_gravado_; }

  // A converter: gerar_sintegra or gerar_efd.
  using Gerador = std::function<void(TextoDeInformacao&, SaidaFiscal&, const TProcLinhaInfo&, const TProcProgresso&)>;

  // "`NomeArquivo`.problemas.txt": the list of every problem of a month that was not converted.
  static std::string RelatorioDeProblemas(const std::string& NomeArquivo);

 private:
  void Executar(int tipo, const std::string& NomeArquivo, TextoDeInformacao& Informacao, const Gerador& gerador);

  std::size_t registros_ = 0;
  bool relatorio_gravado_ = false;
};

}  // namespace infofiscal
