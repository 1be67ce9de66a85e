// infofiscal-dialogo: plays the host application for one fiscal register. It takes the
// options of `infofiscal exportar`, opens the record source, sets the dialog's properties and
// shows it. Errors reach the general error handler, which shows them in a message box (and
// writes them to stderr); usage errors go to stderr with exit status 2, and also to a message
// box when the program was started without any option (from a menu, with no terminal).
//
// Two hidden options serve scripts and screenshots: --executar ARQUIVO_FISCAL presses the
// generate button once the window is shown, answering the save question with that name, and
// --sair-em SEGUNDOS ends the program that long after the run (or after the window is shown,
// without --executar). The exit status is 1 when an error reached the handler, or when there is
// no display to show the window on; else 0.
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string_view>
#include <utility>

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "base/system.h"
#include "cli/opcoes.h"
#include "gui/dlg_dexportainformacaofiscal.h"
#include "gui/traducao.h"

namespace infofiscal {
namespace {

QtMessageHandler tratador_do_qt = nullptr;

// Qt's messages while the application starts. Qt ends a program that finds no window system
// with abort(), a core dump, after English warnings of its platform layer: here that end is a
// Portuguese message and exit status 1, and those warnings are not shown. Other messages go to
// Qt's own handler.
void ao_iniciar(QtMsgType tipo, const QMessageLogContext& contexto, const QString& mensagem) {
  if (tipo == QtFatalMsg) {
    const char* tela = std::getenv("DISPLAY");
    std::fprintf(stderr,
                 "infofiscal-dialogo: a janela precisa de uma tela gráfica, e nenhuma pôde ser aberta (DISPLAY %s%s). "
                 "Abra-o numa sessão gráfica, ou use o comando infofiscal exportar, que faz a mesma exportação sem "
                 "janela.\n",
                 tela != nullptr && *tela != '\0' ? "é " : "não definida", tela != nullptr ? tela : "");
    std::fflush(stderr);
    std::_Exit(1);
  }
  if (contexto.category != nullptr && std::string_view(contexto.category).starts_with("qt.qpa.")) return;
  tratador_do_qt(tipo, contexto, mensagem);
}

// The application, started with ao_iniciar watching, in Portuguese, with the product's icon.
// REQUIRES: `argc` and `argv` outlive the application.
std::unique_ptr<QApplication> iniciar_aplicacao(int& argc, char** argv) {
  tratador_do_qt = qInstallMessageHandler(ao_iniciar);
  auto aplicacao = std::make_unique<QApplication>(argc, argv);
  qInstallMessageHandler(tratador_do_qt);
  if (const std::string aviso = traduzir_qt(*aplicacao); !aviso.empty()) std::cerr << "infofiscal-dialogo: " << aviso << '\n';
  QGuiApplication::setDesktopFileName("infofiscal-dialogo");
  QApplication::setWindowIcon(QIcon::fromTheme("infofiscal"));
  return aplicacao;
}

struct OpcoesDialogo : OpcoesRegistro {
  OpcoesEfdTexto efd;
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
    const auto fonte = abrir_fonte(o);
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
    dialogo.OpcoesEFD(o.efd);
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

// What the window is and how it is opened, in a message box, for a start without options.
void mostrar_uso(int& argc, char** argv, const std::string& uso) {
  const auto aplicacao = iniciar_aplicacao(argc, argv);
  QMessageBox::information(
      nullptr, "Exporta Informação Fiscal",
      QString::fromStdString("A janela Exporta Informação Fiscal é aberta pelo ERP para um registro fiscal, com as "
                             "opções dele, e foi aberta sem nenhuma (" + uso + ").\n\nPor exemplo: "
                             "infofiscal-dialogo --fonte sqlite:erp.sqlite --registro 12 --tipo 2 --base PASTA_DO_ERP\n\n"
                             "infofiscal-dialogo --help lista as opções; o README da instalação "
                             "diz como apontá-la para o banco do ERP."));
}

// The options are read before any window system is reached, so that a usage error needs no
// display; Qt's own settings come from the environment (QT_QPA_PLATFORM ...).
int principal(int argc, char** argv) {
  CLI::App app{"infofiscal-dialogo: a janela Exporta Informação Fiscal de um registro fiscal"};
  em_portugues(app, "infofiscal-dialogo");
  OpcoesDialogo o;
  adicionar_opcoes_registro(app, o);
  adicionar_opcoes_efd(app, o.efd);
  app.add_option("--executar", o.executar)->group("");
  app.add_option("--sair-em", o.sair_em)->group("")->check(numero_positivo());
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& e) {  // --help, --version
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    const std::string uso = traduzir_erro_de_uso(e, app);
    std::cerr << "infofiscal-dialogo: " << uso << "\nUse --help para ver as opções.\n";
    // Started without any option, from a menu entry or a double click, it has no terminal where
    // that line could be read: the window says it.
    if (argc == 1) mostrar_uso(argc, argv, uso);
    return 2;
  }
  const auto aplicacao = iniciar_aplicacao(argc, argv);
  return mostrar_dialogo(o);
}

}  // namespace
}  // namespace infofiscal

// As the command line's: on Windows, the options in UTF-8 whatever the code page, and --help,
// --version and the messages with LF as on Linux.
int main(int argc, char** argv) {
  infofiscal::prepare_standard_streams();
  infofiscal::Utf8Arguments argumentos(argc, argv);
  return infofiscal::principal(argumentos.argc(), argumentos.argv());
}
