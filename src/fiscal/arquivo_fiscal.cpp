#include "fiscal/arquivo_fiscal.h"

#include <cstdio>

#include "base/atomic_file.h"
#include "base/error.h"
#include "fiscal/efd.h"
#include "fiscal/problemas.h"
#include "fiscal/relatorio.h"
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

namespace {

// Runs the converter; a month with problems leaves the whole list in `lista` (none when empty)
// and ends in an Error that says where it is.
void converte(const TOBJ_ArquivoFiscal::Gerador& gerador, TextoDeInformacao& informacao, SaidaFiscal& saida,
              const TProcLinhaInfo& info, const TProcProgresso& progresso, const std::string& lista) {
  try {
    gerador(informacao, saida, info, progresso);
  } catch (const MesComProblemas& m) {
    if (lista.empty()) throw Error(m.what());
    write_file_atomically(lista, m.lista());
    throw Error(std::string(m.what()) + "\nA lista completa está em '" + lista + "'");
  }
}

}  // namespace

std::string TOBJ_ArquivoFiscal::RelatorioDeProblemas(const std::string& NomeArquivo) {
  return NomeArquivo + ".problemas.txt";
}

void TOBJ_ArquivoFiscal::Exec_Sintegra(const std::string& NomeArquivo, TextoDeInformacao& Informacao) {
  Executar(1, NomeArquivo, Informacao,
           [](TextoDeInformacao& i, SaidaFiscal& s, const TProcLinhaInfo& l, const TProcProgresso& p) {
             gerar_sintegra(i, s, l, p);
           });
}

void TOBJ_ArquivoFiscal::Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, TextoDeInformacao& Informacao,
                                              TRegFiscalVersao, const OpcoesEfd& Opcoes) {
  Executar(2, NomeArquivo, Informacao,
           [&Opcoes](TextoDeInformacao& i, SaidaFiscal& s, const TProcLinhaInfo& l, const TProcProgresso& p) {
             gerar_efd(i, s, l, p, Opcoes);
           });
}

void TOBJ_ArquivoFiscal::Executar(int tipo, const std::string& NomeArquivo, TextoDeInformacao& Informacao,
                                  const Gerador& gerador) {
  relatorio_gravado_ = false;
  if (!Relatorio.empty()) {
    const NamedFile destinos[] = {{NomeArquivo, "o arquivo fiscal"}, {Relatorio, "o relatório"}};
    if (const auto conflito = overwrite_conflict(destinos, {})) throw Error(*conflito);
    require_writable_target(Relatorio);  // before the conversion, not after it
  }
  const std::string lista = Tentativa ? std::string() : RelatorioDeProblemas(NomeArquivo);
  // The list of an earlier run that failed would describe a file that is now there.
  const auto sem_lista_antiga = [&] {
    const std::string antiga = RelatorioDeProblemas(NomeArquivo);
    if (std::remove(antiga.c_str()) == 0 && LinhaInfo)
      LinhaInfo("Relatório de problemas de uma execução anterior apagado: '" + antiga + "'");
  };
  SaidaEmArquivo arquivo(NomeArquivo);
  if (Relatorio.empty()) {
    converte(gerador, Informacao, arquivo, LinhaInfo, Progresso, lista);
    if (AntesDeGravar) AntesDeGravar();
    arquivo.confirma();
    registros_ = arquivo.registros();
    sem_lista_antiga();
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
    converte(gerador, Informacao, saida, info, Progresso, lista);
  } catch (const Error& erro) {
    if (Tentativa) throw;
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
  if (AntesDeGravar) AntesDeGravar();
  arquivo.confirma();
  registros_ = arquivo.registros();
  pagina.commit();
  relatorio_gravado_ = true;
  sem_lista_antiga();
}

}  // namespace infofiscal
