// The framework's record dialog, as far as the module's dialogs use it: the main panel, the
// button column with the close button, the window's design size, and the event dispatch that
// hands every error of an event handler to the host's general error handler.
#pragma once

#include <functional>
#include <string>

#include <QDialog>

class QFrame;
class QPushButton;
class QVBoxLayout;

namespace infofiscal {

// The host's general error handler: shows the message of an error that left an event handler.
using TratadorErro = std::function<void(const std::string& mensagem)>;

// The message box the general error handler shows, over `parent` (or alone when null).
void mostrar_erro(QWidget* parent, const std::string& mensagem);

class TDLG_DPadraoFicha_TB : public QDialog {
  Q_OBJECT

 public:
  explicit TDLG_DPadraoFicha_TB(QWidget* parent = nullptr);

  // Shows the dialog modally and returns when it is closed (the framework's `Executar`).
  int Executar() { return exec(); }
  // Shows the dialog without blocking (the framework's `VerJanela`).
  void VerJanela() { show(); }

  // Sets the window's design size, frame and title bar included, as the form designer counts it.
  void TamanhoJanela(int altura, int largura);
  // Sizes the window to its design size, within the screen's free area.
  void AjustarTamJanela();

  // Escape: refused, like closing, while the close button is disabled.
  void reject() override;

  // Where errors of event handlers go; by default a message box over this dialog.
  TratadorErro ErroGeral;

  QFrame* PnPrincipal;     // the dialog's own components
  QFrame* PnBotao;         // the button column at the right
  QFrame* PnBotaoFechar;   // the bottom of the button column
  QPushButton* BtFechar;   // closes the dialog

 protected:
  // Runs an event handler; an error that leaves it reaches ErroGeral, and the window stays open.
  void Evento(const std::function<void()>& handler);
  // Puts a button of the derived dialog in the button column: at its top (under the ones put
  // there before), or else just above the close button.
  void AdicionarBotao(QPushButton* botao, bool no_alto);
  // Runs every time the dialog is shown, before it is painted.
  virtual void FormShow() {}

  void showEvent(QShowEvent* event) override;
  // A dialog whose close button is disabled (a run in progress) cannot be closed either.
  void closeEvent(QCloseEvent* event) override;

 private:
  int FAlturaJanela = 0, FLarguraJanela = 0;
  QVBoxLayout* coluna_;  // PnBotao's: the buttons at the top, a stretch, PnBotaoFechar
  int no_alto_ = 0;      // buttons put at the top so far
};

}  // namespace infofiscal
