// The fiscal-file converter: turns the information file's text into the SINTEGRA or SPED EFD
// file. Created for one call; reports through the two callbacks set before the call.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "fiscal/efd.h"
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

  // "`NomeArquivo`.problemas.txt": the list of every problem of a month that was not converted.
  static std::string RelatorioDeProblemas(const std::string& NomeArquivo);

 private:
  using Gerador = std::function<void(TextoDeInformacao&, SaidaFiscal&, const TProcLinhaInfo&, const TProcProgresso&)>;
  void Gerar(const std::string& NomeArquivo, TextoDeInformacao& Informacao, const Gerador& gerar);

  std::size_t registros_ = 0;
};

}  // namespace infofiscal
