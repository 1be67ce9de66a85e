#include "gui/dlg_dexportainformacaofiscal.h"

#include <filesystem>

#include <QApplication>
#include <QCheckBox>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QStyle>
#include <QUrl>
#include <QVBoxLayout>

#include "base/error.h"
#include "base/renderings.h"
#include "cli/opcoes.h"

namespace infofiscal {

namespace {

const char* const kFiltro = "Todos (*.* )|*.*|Texto (*.txt)|*.txt";

// The log's font: "Arial Narrow", or where it is missing the condensed face of a sans font.
QFont fonte_estreita() {
  QFont fonte("Arial Narrow");
  fonte.setStyleHint(QFont::SansSerif);
  fonte.setStretch(QFont::Condensed);
  fonte.setPixelSize(16);
  return fonte;
}

QString legenda_do_tipo(TRegistroFiscal tipo) {
  switch (tipo) {
    case 1: return "Gerar Arquivo do SINTEGRA-v1";
    case 2: return "Gerar Arquivo do SPED-EFD-v1";
    case 3: return "Gerar Arquivo do SPED-Contribuição-v1";
    default: return "Indefinido";
  }
}

template <class W>
W* componente(QWidget* parent, const char* nome) {
  auto* w = new W(parent);
  w->setObjectName(nome);
  return w;
}

}  // namespace

TDLG_DExportaInformacaoFiscal::TDLG_DExportaInformacaoFiscal(TDTM_ConexaoDS& conexao, QWidget* parent)
    : TDLG_DPadraoFicha_TB(parent),
      PnGerarArquivo(componente<QFrame>(PnPrincipal, "PnGerarArquivo")),
      BtGerarArquivo(componente<QPushButton>(PnGerarArquivo, "BtGerarArquivo")),
      oArquivoSalvar(this),
      BrProgresso(componente<QProgressBar>(PnGerarArquivo, "BrProgresso")),
      LbRegistro(componente<QLabel>(PnGerarArquivo, "LbRegistro")),
      MmInformacao(componente<QPlainTextEdit>(PnPrincipal, "MmInformacao")),
      BtCancelar(componente<QPushButton>(PnBotao, "BtCancelar")),
      BtSobre(componente<QPushButton>(PnBotao, "BtSobre")),
      CbRelatorio(componente<QCheckBox>(PnGerarArquivo, "CbRelatorio")),
      BtAbrirRelatorio(componente<QPushButton>(PnBotao, "BtAbrirRelatorio")),
      EdSaldoCredorAnterior(componente<QLineEdit>(PnGerarArquivo, "EdSaldoCredorAnterior")),
      EdEfdAnterior(componente<QLineEdit>(PnGerarArquivo, "EdEfdAnterior")),
      BtEfdAnterior(componente<QPushButton>(PnGerarArquivo, "BtEfdAnterior")),
      EdCodigoReceita(componente<QLineEdit>(PnGerarArquivo, "EdCodigoReceita")),
      EdVencimento(componente<QLineEdit>(PnGerarArquivo, "EdVencimento")),
      oControle(conexao) {
  setWindowTitle("Exporta Informação Fiscal");

  PnGerarArquivo->setFixedHeight(80);
  BtGerarArquivo->setGeometry(5, 39, 253, 35);
  BtGerarArquivo->setText("Gerar Arquivo");
  BtGerarArquivo->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));
  BtGerarArquivo->setAutoDefault(false);
  connect(BtGerarArquivo, &QPushButton::clicked, this, [this] { Evento([this] { BtGerarArquivoClick(); }); });

  CbRelatorio->setGeometry(7, 10, 300, 24);
  CbRelatorio->setText("Gravar também o relatório do mês (HTML)");
  CbRelatorio->setToolTip("Um relatório para ler antes de entregar, gravado ao lado do arquivo fiscal: registros por "
                          "tipo, totais por CFOP e CST, a apuração do ICMS, os valores por dia, as notas deixadas de "
                          "fora e os achados do validador");

  BrProgresso->setGeometry(264, 39, 393, 35);
  BrProgresso->setTextVisible(false);
  QPalette verde = BrProgresso->palette();
  verde.setColor(QPalette::Highlight, QColor(0, 170, 0));
  BrProgresso->setPalette(verde);

  LbRegistro->setGeometry(480, 15, 159, 17);
  LbRegistro->setFixedSize(159, 17);
  LbRegistro->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  LbRegistro->setText("................................");

  MmInformacao->setReadOnly(true);
  MmInformacao->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  MmInformacao->setFont(fonte_estreita());

  auto* principal = new QVBoxLayout(PnPrincipal);
  principal->setContentsMargins(0, 0, 0, 0);
  principal->setSpacing(0);
  principal->addWidget(MmInformacao, 1);
  principal->addWidget(PnGerarArquivo);

  BtSobre->setText("Sobre");
  AdicionarBotao(BtSobre, true);
  connect(BtSobre, &QPushButton::clicked, this, [this] { Evento([this] { BtSobreClick(); }); });
  BtAbrirRelatorio->setText("Abrir relatório");
  BtAbrirRelatorio->setEnabled(false);
  AdicionarBotao(BtAbrirRelatorio, true);
  connect(BtAbrirRelatorio, &QPushButton::clicked, this, [this] { Evento([this] { BtAbrirRelatorioClick(); }); });
  BtCancelar->setText("Cancelar");
  BtCancelar->setIcon(style()->standardIcon(QStyle::SP_DialogCancelButton));
  BtCancelar->setEnabled(false);
  AdicionarBotao(BtCancelar, false);
  connect(BtCancelar, &QPushButton::clicked, this, [this] { Evento([this] { BtCancelarClick(); }); });

  // The EFD's block E: what the information file lacks, in one row over the button.
  const std::pair<QLineEdit*, const char*> campos[] = {{EdSaldoCredorAnterior, "Saldo credor anterior"},
                                                       {EdEfdAnterior, "ou o arquivo EFD anterior"},
                                                       {EdCodigoReceita, "Código de receita"},
                                                       {EdVencimento, "Vencimento DD/MM/AAAA"}};
  // Left of the counter (x 480): 100 + 120 + the picker + 80 + 85.
  int x = 5;
  for (const auto& [campo, dica] : campos) {
    const int largura = campo == EdEfdAnterior ? 120 : campo == EdSaldoCredorAnterior ? 100 : campo == EdCodigoReceita ? 80 : 85;
    campo->setGeometry(x, 8, largura, 25);
    campo->setPlaceholderText(dica);
    campo->setToolTip(dica);
    if (campo == EdEfdAnterior) BtEfdAnterior->setGeometry(x + largura + 2, 8, 25, 25);
    x += largura + (campo == EdEfdAnterior ? 32 : 5);
  }
  BtEfdAnterior->setText("...");
  BtEfdAnterior->setAutoDefault(false);
  connect(BtEfdAnterior, &QPushButton::clicked, this, [this] {
    const QString nome = QFileDialog::getOpenFileName(this, "Arquivo EFD do mês anterior", EdEfdAnterior->text());
    if (!nome.isEmpty()) EdEfdAnterior->setText(nome);
  });

  oArquivoSalvar.Filter = kFiltro;
  FormCreate();
}

void TDLG_DExportaInformacaoFiscal::FormCreate() {
  TamanhoJanela(390, 780);
  AjustarTamJanela();
  AbrirUrl = [](const QUrl& url) { return QDesktopServices::openUrl(url); };
  oControle.LinhaInfo = [this](const std::string& AInfo) { LinhaInfo(AInfo); };
  oControle.Progresso = [this](int APosicao, int AMaximo) { Progresso_B(APosicao, AMaximo); };
  LbRegistro->setText("");
  BrProgresso->hide();
  SetCodTipoRegistroFiscal(0);
  SetCodRegistroFiscal(0);
}

void TDLG_DExportaInformacaoFiscal::FormShow() {
  BtGerarArquivo->setText(legenda_do_tipo(FCodTipoRegistroFiscal));
  // Kinds 0 and 3 have no fiscal file to report on.
  CbRelatorio->setEnabled(FCodTipoRegistroFiscal == 1 || FCodTipoRegistroFiscal == 2);
}

void TDLG_DExportaInformacaoFiscal::SetCodTipoRegistroFiscal(TRegistroFiscal Value) {
  FCodTipoRegistroFiscal = Value;
  oControle.oExportaInfoFiscal.CodTipoRegistroFiscal(Value);
  for (QWidget* w : std::initializer_list<QWidget*>{EdSaldoCredorAnterior, EdEfdAnterior, BtEfdAnterior,
                                                    EdCodigoReceita, EdVencimento})
    w->setVisible(Value == 2);
}

OpcoesEfdTexto TDLG_DExportaInformacaoFiscal::OpcoesEFD() const {
  return {EdSaldoCredorAnterior->text().trimmed().toStdString(), EdEfdAnterior->text().trimmed().toStdString(),
          EdCodigoReceita->text().trimmed().toStdString(), EdVencimento->text().trimmed().toStdString()};
}

void TDLG_DExportaInformacaoFiscal::OpcoesEFD(const OpcoesEfdTexto& Value) {
  EdSaldoCredorAnterior->setText(QString::fromStdString(Value.saldo_credor_anterior));
  EdEfdAnterior->setText(QString::fromStdString(Value.efd_anterior));
  EdCodigoReceita->setText(QString::fromStdString(Value.codigo_receita));
  EdVencimento->setText(QString::fromStdString(Value.vencimento));
}

void TDLG_DExportaInformacaoFiscal::SetCodRegistroFiscal(std::int32_t Value) {
  FCodRegistroFiscal = Value;
  oControle.oExportaInfoFiscal.CodRegistroFiscal(Value);
}

void TDLG_DExportaInformacaoFiscal::LinhaInfo(const std::string& AInfo) {
  Progresso_B(0, 0);
  MmInformacao->appendPlainText(QString::fromStdString(AInfo));
}

void TDLG_DExportaInformacaoFiscal::Progresso_B(int APosicao, int AMaximo) {
  FProgresso = {APosicao, AMaximo};
  FProgressoMostrado = false;
  // A repaint costs far more than the work between two reports: the counter follows the
  // clock, and the end of each step.
  const auto agora = Relogio();
  const bool mostrar = !FUltimaPintura || agora - *FUltimaPintura >= kIntervaloPintura ||
                       (AMaximo > 0 && APosicao == AMaximo);
  if (mostrar) {
    FUltimaPintura = agora;
    MostrarProgresso();
  }
  // Every report handles pending events: Cancelar works however fast the reports come.
  QApplication::processEvents();
  if (mostrar) repaint();
}

void TDLG_DExportaInformacaoFiscal::MostrarProgresso() {
  const auto [APosicao, AMaximo] = FProgresso;
  LbRegistro->setText(QString::fromStdString(format_count(APosicao) + " de " + format_count(AMaximo)));
  LbRegistro->setVisible(AMaximo > 0);
  BrProgresso->setVisible(AMaximo > 0);
  // Position first, as the module does: a position beyond the old maximum waits for the next report.
  BrProgresso->setValue(APosicao);
  BrProgresso->setMaximum(AMaximo);
  FProgressoMostrado = true;
}

std::string TDLG_DExportaInformacaoFiscal::RecuperarNomeArquivo_v1() {
  oArquivoSalvar.Filter = kFiltro;
  const std::string sugerido = ControleExportacao::NomeSugerido(FCodTipoRegistroFiscal, FMesRegistro, FAnoRegistro);
  if (!sugerido.empty()) oArquivoSalvar.FileName = sugerido;
  return oArquivoSalvar.Execute() ? oArquivoSalvar.FileName : std::string();
}

void TDLG_DExportaInformacaoFiscal::SalvarArquivoFiscal_A(const std::string& NomeArquivo, const std::string& Texto) {
  oControle.SalvarArquivoFiscal_A(NomeArquivo, Texto);
}

void TDLG_DExportaInformacaoFiscal::BtGerarArquivoClick() {
  MmInformacao->clear();
  BtGerarArquivo->setEnabled(false);
  BtFechar->setEnabled(false);
  BtAbrirRelatorio->setEnabled(false);
  const auto reabilitar = qScopeGuard([this] {
    // The run's last report, if the clock passed it over.
    if (!FProgressoMostrado) {
      MostrarProgresso();
      repaint();
    }
    BtGerarArquivo->setEnabled(true);
    BtFechar->setEnabled(true);
    BtCancelar->setEnabled(false);
    BtAbrirRelatorio->setEnabled(!oControle.RelatorioGravado().empty());
  });
  // A field that does not read stops the run before anything is asked or written.
  if (FCodTipoRegistroFiscal == 2) oControle.OpcoesEFD = opcoes_efd(OpcoesEFD());
  const std::string NomeArquivo = RecuperarNomeArquivo_v1();
  if (NomeArquivo.empty()) return;
  oControle.Relatorio = CbRelatorio->isEnabled() && CbRelatorio->isChecked()
                            ? ControleExportacao::NomeDoRelatorio(NomeArquivo)
                            : std::string();
  oControle.NomeAntecipado = NomeArquivo;  // the converter works beside the export
  BtCancelar->setEnabled(true);
  try {
    oInfo = oControle.GerarInformacao(FPastaBase, FTesteCodCompra, FTesteCodVenda);
    SalvarArquivoFiscal_A(NomeArquivo, oInfo);
  } catch (const ExecucaoCancelada& cancelada) {
    LinhaInfo(cancelada.what());
    return;
  }
  for (const std::string& linha : oControle.Resumo()) MmInformacao->appendPlainText(QString::fromStdString(linha));
}

void TDLG_DExportaInformacaoFiscal::BtCancelarClick() {
  BtCancelar->setEnabled(false);  // once is enough: the run stops at its next report
  oControle.Cancelar();
}

void TDLG_DExportaInformacaoFiscal::BtAbrirRelatorioClick() {
  const std::string caminho = std::filesystem::absolute(oControle.RelatorioGravado()).string();
  if (!AbrirUrl(QUrl::fromLocalFile(QString::fromStdString(caminho))))
    throw Error("O relatório '" + caminho +
                "' não pôde ser aberto: a área de trabalho não tem um programa para páginas HTML. Abra-o num "
                "navegador.");
}

void TDLG_DExportaInformacaoFiscal::BtSobreClick() {
  QMessageBox::about(this, "Sobre",
                     QString::fromStdString(std::string("infofiscal ") + versao() +
                                            "\n\nGera o arquivo de informações fiscais de um registro fiscal e, dele, "
                                            "o arquivo SINTEGRA ou SPED EFD ICMS/IPI."));
}

}  // namespace infofiscal
