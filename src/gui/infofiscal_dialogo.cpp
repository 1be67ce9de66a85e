// infofiscal-dialogo: plays the host application for one fiscal register. It takes the
// options of `infofiscal exportar`, opens the record source, sets the dialog's properties and
// shows it. Errors reach the general error handler, which shows them in a message box (and
// writes them to stderr); usage errors go to stderr with exit status 2.
//
// Two hidden options serve scripts and screenshots: --executar ARQUIVO_FISCAL presses the
// generate button once the window is shown, answering the save question with that name, and
// --sair-em SEGUNDOS ends the program that long after the run (or after the window is shown,
// without --executar). The exit status is 1 when an error reached the handler, else 0.
#include <iostream>
#include <utility>

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include "cli/opcoes.h"
#include "gui/dlg_dexportainformacaofiscal.h"

namespace infofiscal {
namespace {

struct OpcoesDialogo : OpcoesRegistro {
  std::string executar;
  double sair_em = 0;
};

int mostrar_dialogo(const OpcoesDialogo& o) {
  // With --sair-em, the application ends that long after the run (or the first error, or the
  // window being shown when nothing is to run); QApplication::exit also ends a message box's
  // loop, and no window may refuse it.
  bool saida_agendada = false;
  const auto agendar_saida = [&] {
    if (o.sair_em <= 0 || std::exchange(saida_agendada, true)) return;
    QTimer::singleShot(static_cast<int>(o.sair_em * 1000), qApp, [] { QApplication::exit(0); });
  };
  bool falhou = false;
  const auto erro_geral = [&](QWidget* janela, const std::string& mensagem) {
    falhou = true;
    agendar_saida();
    std::cerr << mensagem << '\n';
    mostrar_erro(janela, mensagem);
  };
  try {
    const auto fonte = open_record_source(o.fonte);
    TDTM_ConexaoDS conexao{*fonte, info_sistema(*fonte, o)};
    TDLG_DExportaInformacaoFiscal dialogo(conexao);
    dialogo.ErroGeral = [&](const std::string& mensagem) { erro_geral(&dialogo, mensagem); };
    dialogo.SetCodTipoRegistroFiscal(static_cast<TRegistroFiscal>(o.tipo));
    dialogo.SetCodRegistroFiscal(o.registro);
    dialogo.MesRegistro(mes_registro(*fonte, o));
    dialogo.AnoRegistro(ano_registro(*fonte, o));
    dialogo.TesteCodCompra(o.compra);
    dialogo.TesteCodVenda(o.venda);
    dialogo.PastaBase(o.base);
    if (o.executar.empty()) {
      agendar_saida();
    } else {
      dialogo.oArquivoSalvar.Pergunta = [nome = o.executar](TDialogoSalvar& d) {
        d.FileName = nome;
        return true;
      };
      QTimer::singleShot(0, &dialogo, [&] {
        dialogo.BtGerarArquivo->click();
        agendar_saida();
      });
    }
    dialogo.Executar();
  } catch (const std::exception& e) {
    erro_geral(nullptr, e.what());
  }
  return falhou ? 1 : 0;
}

// The options are read before any window system is reached, so that a usage error needs no
// display; Qt's own settings come from the environment (QT_QPA_PLATFORM ...).
int principal(int argc, char** argv) {
  CLI::App app{"infofiscal-dialogo: a janela Exporta Informação Fiscal de um registro fiscal"};
  OpcoesDialogo o;
  adicionar_opcoes_registro(app, o);
  app.add_option("--executar", o.executar)->group("");
  app.add_option("--sair-em", o.sair_em)->group("")->check(CLI::PositiveNumber);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::cerr << "infofiscal-dialogo: " << traduzir_erro_de_uso(e, app) << "\nUse --help para ver as opções.\n";
    return 2;
  }
  QApplication aplicacao(argc, argv);
  return mostrar_dialogo(o);
}

}  // namespace
}  // namespace infofiscal

int main(int argc, char** argv) { return infofiscal::principal(argc, argv); }
