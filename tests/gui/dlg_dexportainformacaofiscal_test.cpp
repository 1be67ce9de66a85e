// The dialog "Exporta Informação Fiscal" with real widgets under the offscreen platform: the
// save question and the general error handler are the only parts replaced.
#include "gui/dlg_dexportainformacaofiscal.h"

#include <chrono>
#include <filesystem>
#include <optional>

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QUrl>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/opcoes.h"
#include "gui/traducao.h"
#include "host/sources/snapshot_source.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using namespace testing;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

const std::string kInfo = "/Arquivos/InfoFiscal/SpedInformacao.txt";
const std::string kFiltro = "Todos (*.* )|*.*|Texto (*.txt)|*.txt";

// The info lines of a run that ends without error, before any converter line.
std::vector<std::string> log_completo() {
  auto linhas = banner();
  linhas.insert(linhas.end(), kStepTexts.begin(), kStepTexts.end());
  linhas.push_back("3-Gerar Arquivo de Informações: Final");
  return linhas;
}

// The summary of a run of kind 0 or 3 (no converter) over marco_2024() into `base`.
std::vector<std::string> resumo_sem_conversor(TRegistroFiscal tipo, const std::string& base) {
  return {std::string("Resumo: só o arquivo de informações foi gravado; o tipo ") +
              (tipo == 3 ? "3 (SPED Contribuições)" : "0 (indefinido)") + " não tem arquivo fiscal a gerar",
          "  informações: " + base + kInfo + " (3 linhas)"};
}

template <class T>
std::vector<T> juntos(std::vector<T> a, const std::vector<T>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Snapshot marco_2024() { return Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}, {"CDEMPRESA", 1}}); }

// A dialog as the host shows it, over a snapshot or another source, on fiscal register
// `registro` of March 2024. The save question records what it was asked and answers
// `resposta` (empty: cancel); the error handler records the messages.
struct Dialogo {
  explicit Dialogo(const Snapshot& snapshot, TRegistroFiscal tipo, const std::string& base)
      : Dialogo(std::make_unique<SnapshotSource>(snapshot.document(), "teste"), tipo, 7, base) {}
  Dialogo(std::unique_ptr<RecordSource> fonte_, TRegistroFiscal tipo, int registro, const std::string& base)
      : fonte(std::move(fonte_)), conexao{*fonte, TOBJ_InfoSistema_v11c([] { return 1; })}, dlg(conexao) {
    dlg.ErroGeral = [this](const std::string& m) { erros.push_back(m); };
    dlg.oArquivoSalvar.Pergunta = [this](TDialogoSalvar& d) {
      perguntas.push_back({d.Filter, d.FileName});
      if (ao_perguntar) ao_perguntar();
      if (resposta.empty()) return false;
      d.FileName = resposta;
      return true;
    };
    dlg.SetCodTipoRegistroFiscal(tipo);
    dlg.SetCodRegistroFiscal(registro);
    dlg.MesRegistro(3);
    dlg.AnoRegistro(2024);
    dlg.PastaBase(base);
    dlg.show();
  }

  void gerar() { dlg.BtGerarArquivo->click(); }
  std::vector<std::string> log() const {
    std::vector<std::string> linhas;
    const QString texto = dlg.MmInformacao->toPlainText();
    if (!texto.isEmpty())
      for (const QString& l : texto.split('\n')) linhas.push_back(l.toStdString());
    return linhas;
  }
  bool botoes_habilitados() const { return dlg.BtGerarArquivo->isEnabled() && dlg.BtFechar->isEnabled(); }

  std::unique_ptr<RecordSource> fonte;
  TDTM_ConexaoDS conexao;
  TDLG_DExportaInformacaoFiscal dlg;
  std::string resposta;
  std::function<void()> ao_perguntar;
  std::vector<std::pair<std::string, std::string>> perguntas;  // (filter, suggested name)
  std::vector<std::string> erros;
};

bool existe(const std::string& path) { return std::filesystem::exists(path); }

TEST(DialogoExporta, FormShowCaptionsTheButtonByKindOnlyOnce) {
  const struct {
    TRegistroFiscal tipo;
    const char* legenda;
    bool relatorio;  // a fiscal file to report on
  } casos[] = {{0, "Indefinido", false},
               {1, "Gerar Arquivo do SINTEGRA-v1", true},
               {2, "Gerar Arquivo do SPED-EFD-v1", true},
               {3, "Gerar Arquivo do SPED-Contribuição-v1", false},
               {4, "Indefinido", false}};
  const std::string base = fresh_dir("dialogo-legenda", true);
  for (const auto& c : casos) {
    Dialogo d(marco_2024(), c.tipo, base);
    EXPECT_EQ(d.dlg.BtGerarArquivo->text().toStdString(), c.legenda);
    EXPECT_EQ(d.dlg.CbRelatorio->isEnabled(), c.relatorio) << c.legenda;
    d.dlg.SetCodTipoRegistroFiscal(1);  // a later kind does not recaption the button
    EXPECT_EQ(d.dlg.BtGerarArquivo->text().toStdString(), c.legenda);
    EXPECT_EQ(d.dlg.Controle().oExportaInfoFiscal.CodTipoRegistroFiscal(), 1);
    EXPECT_EQ(d.dlg.Controle().oExportaInfoFiscal.CodRegistroFiscal(), 7);
  }
}

TEST(DialogoExporta, OpensWithItsTitleAndAnEmptyCounter) {
  Dialogo d(marco_2024(), 1, fresh_dir("dialogo-layout", true));
  EXPECT_EQ(d.dlg.windowTitle().toStdString(), "Exporta Informação Fiscal");
  EXPECT_TRUE(d.dlg.MmInformacao->isReadOnly());
  EXPECT_EQ(d.dlg.LbRegistro->text(), "");
  EXPECT_FALSE(d.dlg.BrProgresso->isVisible());
}

// A clock for Progresso_B that stands still until the test moves it.
struct RelogioParado {
  std::chrono::steady_clock::time_point agora{};
  void avanca(std::chrono::milliseconds ms) { agora += ms; }
  auto operator()() const { return agora; }
};

TEST(DialogoExporta, TheCounterFollowsProgressAndEveryInfoLineResetsIt) {
  Dialogo d(marco_2024(), 1, fresh_dir("dialogo-contador", true));
  // Reports a second apart: each one is shown.
  d.dlg.Relogio = [agora = std::chrono::steady_clock::time_point{}]() mutable { return agora += std::chrono::seconds(1); };
  const struct {
    std::function<void(TDLG_DExportaInformacaoFiscal&)> chamada;
    const char* legenda;
    bool visiveis;
  } passos[] = {
      {[](auto& g) { g.Progresso_B(7, 1234); }, "07 de 1.234", true},
      {[](auto& g) { g.Progresso_B(1234, 1234); }, "1.234 de 1.234", true},
      {[](auto& g) { g.LinhaInfo("2.15-Registro: Lista de Produtos"); }, "00 de 00", false},
      {[](auto& g) { g.Progresso_B(0, 5); }, "00 de 05", true},
      {[](auto& g) { g.Progresso_B(3, 0); }, "03 de 00", false},
      {[](auto& g) { g.Progresso_B(1000000, 2500000); }, "1.000.000 de 2.500.000", true},
  };
  for (const auto& p : passos) {
    p.chamada(d.dlg);
    EXPECT_EQ(d.dlg.LbRegistro->text().toStdString(), p.legenda);
    EXPECT_EQ(d.dlg.LbRegistro->isVisible(), p.visiveis) << p.legenda;
    EXPECT_EQ(d.dlg.BrProgresso->isVisible(), p.visiveis) << p.legenda;
  }
  d.dlg.Progresso_B(1, 2500000);
  EXPECT_EQ(d.dlg.BrProgresso->maximum(), 2500000);
  EXPECT_EQ(d.dlg.BrProgresso->value(), 1);
  EXPECT_THAT(d.log(), ElementsAre("2.15-Registro: Lista de Produtos"));
}

TEST(DialogoExporta, CancellingGeneratesNothingAndReenablesTheButtons) {
  const std::string base = fresh_dir("dialogo-cancelar", true);
  write_file(base + kInfo, "anterior\r\n");
  Dialogo d(marco_2024(), 1, base);
  d.dlg.MmInformacao->setPlainText("log da execução anterior");
  d.gerar();
  EXPECT_THAT(d.perguntas, ElementsAre(std::pair{kFiltro, std::string("SINTEGRA_03_2024.v1.txt")}));
  EXPECT_THAT(d.log(), ElementsAre());
  EXPECT_EQ(read_file(base + kInfo), "anterior\r\n");
  EXPECT_THAT(d.erros, ElementsAre());
  EXPECT_TRUE(d.botoes_habilitados());
}

TEST(DialogoExporta, SuggestsANameByKindAndKeepsThePreviousOneForOtherKinds) {
  const std::string base = fresh_dir("dialogo-nomes", true);
  const struct {
    TRegistroFiscal tipo;
    const char* sugerido;
  } casos[] = {{1, "SINTEGRA_03_2024.v1.txt"},
               {2, "SPED_FISCAL_EFD_03_2024.v1.txt"},
               {3, "SPED_FISCAL_EFD_CTB_03_2024.v1.txt"},
               {0, ""}};
  for (const auto& c : casos) {
    Dialogo d(marco_2024(), c.tipo, base);
    EXPECT_EQ(d.dlg.RecuperarNomeArquivo_v1(), "");
    EXPECT_THAT(d.perguntas, ElementsAre(std::pair{kFiltro, std::string(c.sugerido)}));
  }
  // Kind 0 suggests the name the user chose last.
  Dialogo d(marco_2024(), 0, base);
  d.resposta = base + "/meu arquivo.txt";
  EXPECT_EQ(d.dlg.RecuperarNomeArquivo_v1(), base + "/meu arquivo.txt");
  d.resposta.clear();
  EXPECT_EQ(d.dlg.RecuperarNomeArquivo_v1(), "");
  EXPECT_EQ(d.perguntas.back().second, base + "/meu arquivo.txt");
}

TEST(DialogoExporta, KindsWithoutConverterWriteOnlyTheInformationFile) {
  for (const TRegistroFiscal tipo : {0, 3}) {
    const std::string base = fresh_dir("dialogo-sem-conversor-" + std::to_string(tipo), true);
    Dialogo d(marco_2024(), tipo, base);
    d.resposta = base + "/fiscal.txt";
    d.gerar();
    EXPECT_THAT(d.erros, ElementsAre());
    EXPECT_THAT(d.log(), ElementsAreArray(juntos(log_completo(), resumo_sem_conversor(tipo, base))));
    EXPECT_EQ(read_file(base + kInfo).substr(0, 13), "[C00]01[/C00]");
    EXPECT_FALSE(existe(base + "/fiscal.txt"));
    EXPECT_TRUE(d.botoes_habilitados());
  }
}

TEST(DialogoExporta, AMissingInformationFolderFailsAfterTheExportWasBuilt) {
  const std::string base = fresh_dir("dialogo-sem-pasta");
  Dialogo d(marco_2024(), 1, base);
  d.resposta = base + "/SINTEGRA.txt";
  d.gerar();
  EXPECT_THAT(d.erros, ElementsAre("A pasta '" + base + "/Arquivos/InfoFiscal' não existe: o arquivo '" + base + kInfo +
                                   "' não foi gravado"));
  EXPECT_THAT(d.log(), ElementsAreArray(log_completo()));  // no converter line after the last step
  EXPECT_FALSE(existe(base + "/SINTEGRA.txt"));
  EXPECT_TRUE(d.botoes_habilitados());
  EXPECT_TRUE(d.dlg.isVisible());
}

TEST(DialogoExporta, TheLogKeepsTheInfoLinesUpToAFailure) {
  const auto completo = log_completo();
  const std::vector<std::string> ate_2_01(completo.begin(), completo.begin() + 5);
  const struct {
    Snapshot snapshot;
    const char* mensagem;
  } casos[] = {
      {Snapshot().registro(7, {{"CDMES", 13}}), "Erro ano Gerar Registro Linha 01: Mês inválido: 13"},
      {Snapshot().error("DspRegistroInfoFiscal", {7}, "conexão recusada"), "conexão recusada"},
  };
  for (const auto& c : casos) {
    const std::string base = fresh_dir("dialogo-falha", true);
    write_file(base + kInfo, "anterior\r\n");
    Dialogo d(c.snapshot, 2, base);
    d.resposta = base + "/efd.txt";
    d.gerar();
    EXPECT_THAT(d.erros, ElementsAre(c.mensagem));
    EXPECT_THAT(d.log(), ElementsAreArray(ate_2_01));
    EXPECT_EQ(read_file(base + kInfo), "anterior\r\n");
    EXPECT_FALSE(existe(base + "/efd.txt"));
    EXPECT_TRUE(d.botoes_habilitados());
  }
}

// What the counter showed each time it was painted, a repeated painting of the same once.
struct Pinturas : QObject {
  explicit Pinturas(QLabel* contador) : contador_(contador) { contador->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* e) override {
    const std::string visto = contador_->text().toStdString();
    if (e->type() == QEvent::Paint && (vistos.empty() || vistos.back() != visto)) vistos.push_back(visto);
    return false;
  }
  std::vector<std::string> vistos;

 private:
  QLabel* contador_;
};

// Reports come far faster than a screen shows them: the counter and the bar follow at most one
// report per kIntervaloPintura, and always the one that ends a step; pending events are handled
// on every report. The clock is the test's: nothing here depends on how fast the machine is.
TEST(DialogoExporta, TheCounterIsRepaintedAtMostThirtyTimesASecond) {
  Dialogo d(marco_2024(), 1, fresh_dir("dialogo-ritmo", true));
  RelogioParado relogio;
  d.dlg.Relogio = [&] { return relogio(); };
  Pinturas pinturas(d.dlg.LbRegistro);
  int eventos = 0;
  const auto relata = [&](int posicao, int maximo) {
    QTimer::singleShot(0, &d.dlg, [&] { ++eventos; });
    d.dlg.Progresso_B(posicao, maximo);
  };
  const struct {
    int antes_ms;         // the clock moves this much before the reports
    int de, ate, maximo;  // reports de..ate of maximo
    const char* mostrado;
  } passos[] = {
      {0, 1, 1000, 5000, "01 de 5.000"},         // the first, then a thousand more in the same instant
      {33, 1001, 1001, 5000, "1.001 de 5.000"},  // a tick later
      {10, 1002, 1500, 5000, "1.001 de 5.000"},  // within the tick
      {0, 5000, 5000, 5000, "5.000 de 5.000"},   // the end of the step, at once
      {1, 1, 3, 3, "03 de 03"},                  // a short step: only its end is shown
      {40, 7, 7, 9, "07 de 09"},
  };
  std::vector<std::string> pintados;
  int relatos = 0;
  for (const auto& p : passos) {
    relogio.avanca(std::chrono::milliseconds(p.antes_ms));
    for (int i = p.de; i <= p.ate; ++i, ++relatos) relata(i, p.maximo);
    if (pintados.empty() || pintados.back() != p.mostrado) pintados.push_back(p.mostrado);
    EXPECT_EQ(d.dlg.LbRegistro->text().toStdString(), p.mostrado);
    EXPECT_EQ(pinturas.vistos, pintados) << p.mostrado;  // no report in between was ever on the screen
    EXPECT_EQ(eventos, relatos);
  }
}

// A run whose reports all come in one instant ends with its last report shown: the counter
// hidden, as the last info line left it.
TEST(DialogoExporta, TheLastReportOfARunIsShown) {
  const std::string base = fresh_dir("dialogo-ultimo", true);
  Dialogo d(marco_2024(), 3, base);
  RelogioParado relogio;
  d.dlg.Relogio = [&] { return relogio(); };
  d.dlg.Progresso_B(5, 10);  // shown: the clock starts here
  d.resposta = base + "/fiscal.txt";
  d.gerar();
  EXPECT_THAT(d.erros, ElementsAre());
  EXPECT_EQ(d.dlg.LbRegistro->text().toStdString(), "00 de 00");
  EXPECT_FALSE(d.dlg.LbRegistro->isVisible());
  EXPECT_FALSE(d.dlg.BrProgresso->isVisible());
}

// What a user could do while a run handles pending events in a progress report.
struct NoMeioDaExecucao {
  bool gerar_habilitado = true, fechar_habilitado = true, fechou = true;
  std::size_t linhas_no_log = 0;
};

TEST(DialogoExporta, ButtonsStayDisabledAndTheWindowOpenDuringARun) {
  const std::string base = fresh_dir("dialogo-durante", true);
  Dialogo d(marco_2024(), 3, base);
  d.resposta = base + "/fiscal.txt";
  std::optional<NoMeioDaExecucao> visto;
  // Posted before the run starts, handled by the first progress report's event processing.
  d.ao_perguntar = [&] {
    QTimer::singleShot(0, &d.dlg, [&] {
      if (visto) return;
      visto = NoMeioDaExecucao{d.dlg.BtGerarArquivo->isEnabled(), d.dlg.BtFechar->isEnabled(), d.dlg.close(),
                               d.log().size()};
      d.dlg.BtGerarArquivo->click();  // a second run must not start
      d.dlg.BtFechar->click();
      d.dlg.reject();
    });
  };
  d.gerar();
  ASSERT_TRUE(visto.has_value()) << "no progress report handled pending events";
  EXPECT_FALSE(visto->gerar_habilitado);
  EXPECT_FALSE(visto->fechar_habilitado);
  EXPECT_FALSE(visto->fechou);
  EXPECT_EQ(visto->linhas_no_log, 0u);  // the first info line resets the counter before it is logged
  EXPECT_EQ(d.perguntas.size(), 1u);
  EXPECT_TRUE(d.dlg.isVisible());
  EXPECT_THAT(d.log(), ElementsAreArray(juntos(log_completo(), resumo_sem_conversor(3, base))));
  EXPECT_TRUE(d.botoes_habilitados());
  EXPECT_TRUE(d.dlg.close());  // and closes again once the run is over
}

// The dialog and `infofiscal exportar` on the same snapshot leave the same files, the same
// log and the same error, whatever the converter of the kind does; the summary that the
// command writes on stderr ends the dialog's log.
TEST(DialogoExporta, AWholeRunMatchesTheCommandLine) {
  const Snapshot snapshot = Snapshot().registro(
      7, {{"CDMES", 3}, {"ANO", 2024}, {"CDEMPRESA", 1}, {"REGCOMPRAPRODUTO", "S"}, {"REGVENDAPRODUTO", "S"}});
  for (const TRegistroFiscal tipo : {1, 2, 3}) {
    const std::string cli = fresh_dir("dialogo-cli-" + std::to_string(tipo), true);
    const std::string dlg = fresh_dir("dialogo-igual-" + std::to_string(tipo), true);
    write_file(cli + "/snapshot.json", snapshot.document().dump());
    const auto r = run_cli({"exportar", "--fonte", "snapshot:" + cli + "/snapshot.json", "--registro", "7", "--tipo",
                            std::to_string(tipo), "--base", cli, "--arquivo-fiscal", cli + "/fiscal.txt"});
    Dialogo d(snapshot, tipo, dlg);
    d.resposta = dlg + "/fiscal.txt";
    d.gerar();

    std::string log;
    for (const auto& l : d.log()) log += l + "\n";
    std::string resumo = r.status == 0 ? r.err : "";
    for (std::size_t p; (p = resumo.find(cli)) != std::string::npos;) resumo.replace(p, cli.size(), dlg);
    EXPECT_EQ(log, r.out + resumo) << "kind " << int(tipo);
    EXPECT_EQ(d.erros.empty() ? "" : d.erros.front() + "\n", r.status == 0 ? "" : r.err);
    EXPECT_EQ(d.erros.empty(), r.status == 0);
    ASSERT_TRUE(existe(cli + kInfo));
    EXPECT_EQ(read_file(dlg + kInfo), read_file(cli + kInfo));
    EXPECT_EQ(existe(dlg + "/fiscal.txt"), existe(cli + "/fiscal.txt"));
    EXPECT_EQ(read_file(dlg + "/fiscal.txt"), read_file(cli + "/fiscal.txt"));
  }
}

// Hidden temporaries of the atomic writes left in `dir`.
int temporarios(const std::string& dir) {
  int n = 0;
  for (const auto& e : std::filesystem::directory_iterator(dir)) n += e.path().filename().string().rfind('.', 0) == 0;
  return n;
}

// Cancelar pressed when the log shows a line: in the first step, in the middle of the export,
// and after its last line (in the converter). The run stops at the next progress report and
// every file stays as it was, no temporary left; the next run goes through.
TEST(DialogoExporta, CancelarStopsTheRunAndLeavesEveryFileAsItWas) {
  const testing::TestDatabase db("sqlite", "dialogo-cancelar-demo", testing::demo_script());
  const char* const momentos[] = {"2.01-Registro: Informação do Registro Fiscal", "2.15-Registro: Lista de Produtos",
                                  "3-Gerar Arquivo de Informações: Final"};
  for (const TRegistroFiscal tipo : {1, 2}) {
    for (const std::string momento : momentos) {
      SCOPED_TRACE(std::to_string(tipo) + " " + momento);
      const std::string base = fresh_dir("dialogo-cancelar-run", true);
      write_file(base + kInfo, "anterior\r\n");
      write_file(base + "/fiscal.txt", "fiscal anterior\r\n");
      Dialogo d(open_record_source(db.address(), {.catalog_path = testing::catalog_path()}), tipo, tipo, base);
      d.resposta = base + "/fiscal.txt";
      EXPECT_FALSE(d.dlg.BtCancelar->isEnabled());
      bool clicado = false;
      QObject::connect(d.dlg.MmInformacao, &QPlainTextEdit::textChanged, &d.dlg, [&] {
        if (!clicado && d.dlg.MmInformacao->toPlainText().endsWith(QString::fromStdString(momento))) {
          clicado = d.dlg.BtCancelar->isEnabled();
          d.dlg.BtCancelar->click();
        }
      });
      d.gerar();
      EXPECT_TRUE(clicado);
      EXPECT_THAT(d.erros, ElementsAre());
      ASSERT_FALSE(d.log().empty());
      EXPECT_EQ(d.log().back(), "Execução cancelada: nenhum arquivo foi alterado");
      EXPECT_EQ(read_file(base + kInfo), "anterior\r\n");
      EXPECT_EQ(read_file(base + "/fiscal.txt"), "fiscal anterior\r\n");
      EXPECT_EQ(temporarios(base) + temporarios(base + "/Arquivos/InfoFiscal"), 0);
      EXPECT_TRUE(d.botoes_habilitados());
      EXPECT_FALSE(d.dlg.BtCancelar->isEnabled());

      QObject::disconnect(d.dlg.MmInformacao, nullptr, &d.dlg, nullptr);
      d.gerar();
      EXPECT_THAT(d.erros, ElementsAre());
      EXPECT_THAT(d.log(), Contains("Resumo: 2 arquivos gravados"));
      EXPECT_NE(read_file(base + "/fiscal.txt"), "fiscal anterior\r\n");
    }
  }
}

// With its box checked, a run writes the report of the month beside the fiscal file, the log's
// summary names it, and "Abrir relatório" hands its URL to the desktop (here a stand-in: no
// browser opens); a desktop that opens nothing is told in the error box. Unchecked, no report.
TEST(DialogoExporta, TheReportIsWrittenOnRequestAndOpened) {
  const testing::TestDatabase db("sqlite", "dialogo-relatorio-demo", testing::demo_script());
  for (const TRegistroFiscal tipo : {1, 2}) {
    SCOPED_TRACE(int(tipo));
    const std::string base = fresh_dir("dialogo-relatorio", true);
    const std::string relatorio = base + "/fiscal.relatorio.html";
    Dialogo d(open_record_source(db.address(), {.catalog_path = testing::catalog_path()}), tipo, tipo, base);
    std::vector<QUrl> abertos;
    bool abre = true;
    d.dlg.AbrirUrl = [&](const QUrl& url) {
      abertos.push_back(url);
      return abre;
    };
    d.resposta = base + "/fiscal.txt";
    EXPECT_TRUE(d.dlg.CbRelatorio->isEnabled());
    EXPECT_FALSE(d.dlg.CbRelatorio->isChecked());
    d.gerar();
    EXPECT_FALSE(existe(relatorio));
    EXPECT_FALSE(d.dlg.BtAbrirRelatorio->isEnabled());

    d.dlg.CbRelatorio->setChecked(true);
    d.gerar();
    EXPECT_THAT(d.erros, ElementsAre());
    EXPECT_THAT(read_file(relatorio), HasSubstr("Arquivo gravado: <code>" + base + "/fiscal.txt</code>"));
    EXPECT_EQ(d.log().back(), "  relatório: " + relatorio);
    ASSERT_TRUE(d.dlg.BtAbrirRelatorio->isEnabled());
    d.dlg.BtAbrirRelatorio->click();
    EXPECT_THAT(abertos, ElementsAre(QUrl::fromLocalFile(QString::fromStdString(relatorio))));
    abre = false;
    d.dlg.BtAbrirRelatorio->click();
    EXPECT_THAT(d.erros, ElementsAre("O relatório '" + relatorio +
                                     "' não pôde ser aberto: a área de trabalho não tem um programa para páginas "
                                     "HTML. Abra-o num navegador."));
  }
}

// The first modal window that opens, once it is open: `ver` looks at it and closes it.
void ao_abrir_janela(const std::function<void(QWidget*)>& ver) {
  QTimer::singleShot(0, qApp, [ver] {
    QWidget* janela = QApplication::activeModalWidget();
    if (janela == nullptr) return ao_abrir_janela(ver);
    ver(janela);
  });
}

TEST(DialogoExporta, SobreShowsTheVersion) {
  Dialogo d(marco_2024(), 1, fresh_dir("dialogo-sobre", true));
  QString texto;
  ao_abrir_janela([&](QWidget* janela) {
    texto = qobject_cast<QMessageBox*>(janela)->text();
    janela->close();
  });
  d.dlg.BtSobre->click();
  EXPECT_TRUE(texto.startsWith(QString("infofiscal ") + versao() + "\n")) << texto.toStdString();
  EXPECT_THAT(d.erros, ElementsAre());
}

// Qt's own save window, with Qt's Portuguese translation: its buttons in Portuguese, and a
// question before a file is replaced.
TEST(DialogoSalvar, QtsSaveWindowSpeaksPortugueseAndAsksBeforeReplacingAFile) {
  ASSERT_EQ(traduzir_qt(*qobject_cast<QApplication*>(QCoreApplication::instance())), "");
  const std::string dir = fresh_dir("dialogo-salvar");
  write_file(dir + "/existe.txt", "x");
  QWidget pai;
  TDialogoSalvar salvar(&pai);
  salvar.Filter = kFiltro;
  salvar.FileName = dir + "/existe.txt";
  QStringList botoes;
  QString pergunta;
  ao_abrir_janela([&](QWidget* janela) {
    auto* arquivo = qobject_cast<QFileDialog*>(janela);
    ASSERT_NE(arquivo, nullptr);
    for (const QPushButton* b : arquivo->findChildren<QPushButton*>()) botoes << b->text();
    // Accepting an existing file opens the question; "No" leaves the save window open.
    ao_abrir_janela([&](QWidget* questao) {
      pergunta = qobject_cast<QMessageBox*>(questao)->text();
      qobject_cast<QMessageBox*>(questao)->button(QMessageBox::No)->click();
    });
    static_cast<QDialog*>(arquivo)->accept();  // QFileDialog's own is protected
    arquivo->reject();
  });
  EXPECT_FALSE(salvar.Execute());
  EXPECT_THAT(botoes, Contains(QString("&Salvar")));
  EXPECT_THAT(botoes, Contains(QString("Cancelar")));
  EXPECT_THAT(pergunta.toStdString(), HasSubstr("existe.txt já existe"));
}

}  // namespace
}  // namespace infofiscal
