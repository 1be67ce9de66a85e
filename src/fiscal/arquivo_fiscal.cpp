#include "fiscal/arquivo_fiscal.h"

#include <cerrno>
#include <cstdio>

#include "base/atomic_file.h"
#include "base/error.h"
#include "fiscal/efd.h"
#include "fiscal/problemas.h"
#include "fiscal/saida.h"
#include "fiscal/sintegra.h"

namespace infofiscal {

void TOBJ_ArquivoFiscal::Exec_Sintegra(const std::string& NomeArquivo, const std::string& Texto) {
  TextoEmMemoria informacao(Texto);
  Exec_Sintegra(NomeArquivo, informacao);
}

void TOBJ_ArquivoFiscal::Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, const std::string& Texto,
                                              TRegFiscalVersao Versao, const OpcoesEfd& Opcoes) {
  TextoEmMemoria informacao(Texto);
  Exec_SPED_Fiscal_EFD(NomeArquivo, informacao, Versao, Opcoes);
}

std::string TOBJ_ArquivoFiscal::RelatorioDeProblemas(const std::string& NomeArquivo) {
  return NomeArquivo + ".problemas.txt";
}

void TOBJ_ArquivoFiscal::Gerar(const std::string& NomeArquivo, TextoDeInformacao& Informacao, const Gerador& gerar) {
  const std::string relatorio = RelatorioDeProblemas(NomeArquivo);
  SaidaEmArquivo saida(NomeArquivo);
  try {
    gerar(Informacao, saida, LinhaInfo, Progresso);
  } catch (const MesComProblemas& m) {
    // The whole list goes beside the target, so that nothing scrolls away; the target itself
    // is not written.
    write_file_atomically(relatorio, m.lista());
    throw Error(std::string(m.what()) + "\nA lista completa está em '" + relatorio + "'");
  }
  saida.confirma();
  registros_ = saida.registros();
  // The list of an earlier run that failed would now describe a file that is not there.
  if (std::remove(relatorio.c_str()) == 0 && LinhaInfo)
    LinhaInfo("Relatório de problemas de uma execução anterior apagado: '" + relatorio + "'");
}

void TOBJ_ArquivoFiscal::Exec_Sintegra(const std::string& NomeArquivo, TextoDeInformacao& Informacao) {
  Gerar(NomeArquivo, Informacao,
        [](TextoDeInformacao& i, SaidaFiscal& s, const TProcLinhaInfo& l, const TProcProgresso& p) {
          gerar_sintegra(i, s, l, p);
        });
}

void TOBJ_ArquivoFiscal::Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, TextoDeInformacao& Informacao,
                                              TRegFiscalVersao, const OpcoesEfd& Opcoes) {
  Gerar(NomeArquivo, Informacao,
        [&Opcoes](TextoDeInformacao& i, SaidaFiscal& s, const TProcLinhaInfo& l, const TProcProgresso& p) {
          gerar_efd(i, s, l, p, Opcoes);
        });
}

}  // namespace infofiscal
