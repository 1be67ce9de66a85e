// The dialog "Exporta Informação Fiscal": asks for the fiscal file's name, has the run
// controller build and save the information file and hand it to the converter, and shows the
// run's info lines in a log and the current step's progress in a bar and a counter.
//
// The host creates it over its shared connection, sets the properties below and shows it.
// Everything runs on the user-interface thread; each progress report lets the application
// handle pending events, so the window stays responsive while the generate and close buttons
// are disabled, but the counter and the bar are redrawn at most about thirty times a second
// (a month sends far more reports than a screen can show). Three buttons join the close button
// in the column at the right: "Sobre" (the version), "Abrir relatório", enabled once a run
// wrote the HTML report of the month that the box under the log asks for, and "Cancelar",
// enabled only during a run, which stops it at its next progress report with every file as it
// was. A run that ends well adds the summary of the files it wrote to the log. For the SPED EFD
// (kind 2) a row of fields above the button takes what the command line's EFD options take: the
// previous credit balance or last month's EFD file (with a file picker), the state's revenue
// code and the due date of E116.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "cli/opcoes.h"
#include "export/controle_exportacao.h"
#include "gui/dialogo_salvar.h"
#include "gui/dlg_dpadraoficha_tb.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QUrl;

namespace infofiscal {

class TDLG_DExportaInformacaoFiscal : public TDLG_DPadraoFicha_TB {
  Q_OBJECT

 public:
  // REQUIRES: `conexao` outlives the dialog.
  explicit TDLG_DExportaInformacaoFiscal(TDTM_ConexaoDS& conexao, QWidget* parent = nullptr);

  // The properties the host sets before showing the dialog. The kind and the key are copied
  // into the orchestrator as they are set.
  void SetCodTipoRegistroFiscal(TRegistroFiscal Value);
  void SetCodRegistroFiscal(std::int32_t Value);
  std::int32_t CodRegistroFiscal() const { return FCodRegistroFiscal; }
  void MesRegistro(int Value) { FMesRegistro = Value; }
  int MesRegistro() const { return FMesRegistro; }
  void AnoRegistro(int Value) { FAnoRegistro = Value; }
  int AnoRegistro() const { return FAnoRegistro; }
  void TesteCodCompra(int Value) { FTesteCodCompra = Value; }
  void TesteCodVenda(int Value) { FTesteCodVenda = Value; }
  // The application's base folder, which holds Arquivos/InfoFiscal.
  void PastaBase(std::string Value) { FPastaBase = std::move(Value); }

  // The info-line callback: resets the counter, then appends the line to the log.
  void LinhaInfo(const std::string& AInfo);
  // The progress callback: "07 de 1.234", label and bar shown only while AMaximo > 0, and the
  // dialog repainted; then pending events are handled, on every report. The counter shows a
  // report when kIntervaloPintura has passed since it last showed one, or when the report ends
  // its step (APosicao == AMaximo > 0); a report passed over is shown when the run ends.
  void Progresso_B(int APosicao, int AMaximo);
  static constexpr std::chrono::milliseconds kIntervaloPintura{33};
  // The clock of Progresso_B; a test sets its own.
  std::function<std::chrono::steady_clock::time_point()> Relogio = std::chrono::steady_clock::now;
  // Asks for the fiscal file's name with the suggestion of the kind; empty when cancelled.
  std::string RecuperarNomeArquivo_v1();
  // Hands the saved text to the converter of the kind (none for kinds 0 and 3).
  void SalvarArquivoFiscal_A(const std::string& NomeArquivo, const std::string& Texto);
  // One whole run, both buttons disabled (and Cancelar enabled) until it ends, whatever
  // happens. With CbRelatorio checked, the converter also writes the report beside the fiscal
  // file (ControleExportacao::NomeDoRelatorio), also of a month it refuses. Errors pass on; a
  // cancelled run ends with a line in the log.
  void BtGerarArquivoClick();
  // Asks the run in progress to stop at its next progress report.
  void BtCancelarClick();
  // Shows the product's name and version.
  void BtSobreClick();
  // Opens the report of the last run in the user's browser, through AbrirUrl; an Error when
  // nothing opened it.
  void BtAbrirRelatorioClick();
  // Opens a file's URL in the program the desktop has for it (QDesktopServices::openUrl); a
  // test sets its own, so that no browser opens.
  std::function<bool(const QUrl&)> AbrirUrl;
  const ControleExportacao& Controle() const { return oControle; }

  // The EFD fields, as typed; the setter fills them (the launcher's command line).
  OpcoesEfdTexto OpcoesEFD() const;
  void OpcoesEFD(const OpcoesEfdTexto& Value);

  QFrame* PnGerarArquivo;
  QPushButton* BtGerarArquivo;
  TDialogoSalvar oArquivoSalvar;
  QProgressBar* BrProgresso;
  QLabel* LbRegistro;
  QPlainTextEdit* MmInformacao;
  QPushButton* BtCancelar;
  QPushButton* BtSobre;
  QCheckBox* CbRelatorio;
  QPushButton* BtAbrirRelatorio;
  QLineEdit* EdSaldoCredorAnterior;
  QLineEdit* EdEfdAnterior;
  QPushButton* BtEfdAnterior;
  QLineEdit* EdCodigoReceita;
  QLineEdit* EdVencimento;

 protected:
  // Captions the generate button by the kind set at that moment.
  void FormShow() override;

 private:
  void FormCreate();
  // Shows the latest report in the counter and the bar, and repaints.
  void MostrarProgresso();

  TRegistroFiscal FCodTipoRegistroFiscal = 0;
  std::int32_t FCodRegistroFiscal = 0;
  std::string oInfo;  // the text saved as the information file
  int FMesRegistro = 0;
  int FAnoRegistro = 0;
  ControleExportacao oControle;  // holds the orchestrator oExportaInfoFiscal
  int FTesteCodCompra = 0;
  int FTesteCodVenda = 0;
  std::string FPastaBase;
  // The latest progress report, whether it was shown, and when one was last shown.
  std::pair<int, int> FProgresso{0, 0};
  bool FProgressoMostrado = true;
  std::optional<std::chrono::steady_clock::time_point> FUltimaPintura;
};

}  // namespace infofiscal
