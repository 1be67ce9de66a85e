#include "fiscal/arquivo_fiscal.h"

#include "fiscal/efd.h"
#include "fiscal/saida.h"
#include "fiscal/sintegra.h"

namespace infofiscal {

void TOBJ_ArquivoFiscal::Exec_Sintegra(const std::string& NomeArquivo, const std::string& Texto) {
  TextoEmMemoria informacao(Texto);
  Exec_Sintegra(NomeArquivo, informacao);
}

void TOBJ_ArquivoFiscal::Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, const std::string& Texto,
                                              TRegFiscalVersao Versao) {
  TextoEmMemoria informacao(Texto);
  Exec_SPED_Fiscal_EFD(NomeArquivo, informacao, Versao);
}

void TOBJ_ArquivoFiscal::Exec_Sintegra(const std::string& NomeArquivo, TextoDeInformacao& Informacao) {
  SaidaEmArquivo saida(NomeArquivo);
  gerar_sintegra(Informacao, saida, LinhaInfo, Progresso);
  saida.confirma();
  registros_ = saida.registros();
}

void TOBJ_ArquivoFiscal::Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, TextoDeInformacao& Informacao,
                                              TRegFiscalVersao) {
  SaidaEmArquivo saida(NomeArquivo);
  gerar_efd(Informacao, saida, LinhaInfo, Progresso);
  saida.confirma();
  registros_ = saida.registros();
}

}  // namespace infofiscal
