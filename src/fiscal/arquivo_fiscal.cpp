#include "fiscal/arquivo_fiscal.h"

#include "base/atomic_file.h"
#include "base/error.h"
#include "fiscal/efd.h"
#include "fiscal/relatorio.h"
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
  Executar(1, NomeArquivo, Informacao, gerar_sintegra);
}

void TOBJ_ArquivoFiscal::Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, TextoDeInformacao& Informacao,
                                              TRegFiscalVersao) {
  Executar(2, NomeArquivo, Informacao, gerar_efd);
}

void TOBJ_ArquivoFiscal::Executar(int tipo, const std::string& NomeArquivo, TextoDeInformacao& Informacao,
                                  Gerador gerador) {
  relatorio_gravado_ = false;
  if (!Relatorio.empty()) {
    const NamedFile destinos[] = {{NomeArquivo, "o arquivo fiscal"}, {Relatorio, "o relatório"}};
    if (const auto conflito = overwrite_conflict(destinos, {})) throw Error(*conflito);
    require_writable_target(Relatorio);  // before the conversion, not after it
  }
  SaidaEmArquivo arquivo(NomeArquivo);
  if (Relatorio.empty()) {
    gerador(Informacao, arquivo, LinhaInfo, Progresso);
    arquivo.confirma();
    registros_ = arquivo.registros();
    return;
  }
  // The report reads the file as it is written and hears the converter's lines.
  RelatorioDoMes relatorio(tipo, NomeArquivo);
  SaidaConferida saida(arquivo, relatorio.leitor());
  const TProcLinhaInfo info = [&](const std::string& linha) {
    relatorio.linha_info(linha);
    if (LinhaInfo) LinhaInfo(linha);
  };
  try {
    gerador(Informacao, saida, info, Progresso);
  } catch (const Error& erro) {
    relatorio.recusado(erro.what());
    std::string mensagem = erro.what();
    try {
      write_file_atomically(Relatorio, relatorio.html());
      relatorio_gravado_ = true;
      mensagem += "\nO relatório do mês está em '" + Relatorio + "'";
    } catch (const Error& e) {
      mensagem += std::string("\nO relatório do mês não foi gravado: ") + e.what();
    }
    throw Error(mensagem);
  }
  relatorio.gravado(arquivo.registros());
  AtomicFile pagina(Relatorio);
  pagina.write(relatorio.html());
  pagina.finish();
  arquivo.confirma();
  registros_ = arquivo.registros();
  pagina.commit();
  relatorio_gravado_ = true;
}

}  // namespace infofiscal
