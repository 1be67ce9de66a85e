#include "gui/dlg_dpadraoficha_tb.h"

#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>
#include <QStyle>
#include <QVBoxLayout>

namespace infofiscal {

namespace {
// The design size counts a frame this wide and a title bar this high, as the designer does.
constexpr int kMolduraLargura = 16;
constexpr int kMolduraAltura = 39;
constexpr int kLarguraColunaBotoes = 104;
constexpr int kAlturaBotaoFechar = 45;

QFrame* painel(QWidget* parent, const char* nome, QFrame::Shape forma) {
  auto* p = new QFrame(parent);
  p->setObjectName(nome);
  p->setFrameShape(forma);
  p->setFrameShadow(QFrame::Raised);
  return p;
}
}  // namespace

void mostrar_erro(QWidget* parent, const std::string& mensagem) {
  QMessageBox::critical(parent, parent ? parent->windowTitle() : QString("infofiscal"), QString::fromStdString(mensagem));
}

TDLG_DPadraoFicha_TB::TDLG_DPadraoFicha_TB(QWidget* parent)
    : QDialog(parent),
      PnPrincipal(painel(this, "PnPrincipal", QFrame::NoFrame)),
      PnBotao(painel(this, "PnBotao", QFrame::Panel)),
      PnBotaoFechar(painel(PnBotao, "PnBotaoFechar", QFrame::NoFrame)),
      BtFechar(new QPushButton(style()->standardIcon(QStyle::SP_DialogCloseButton), tr("Fechar"), PnBotaoFechar)) {
  ErroGeral = [this](const std::string& mensagem) { mostrar_erro(this, mensagem); };
  BtFechar->setObjectName("BtFechar");
  BtFechar->setAutoDefault(false);
  connect(BtFechar, &QPushButton::clicked, this, &QDialog::close);

  auto* fechar = new QVBoxLayout(PnBotaoFechar);
  fechar->setContentsMargins(6, 6, 6, 6);
  fechar->addWidget(BtFechar);
  PnBotaoFechar->setFixedHeight(kAlturaBotaoFechar);

  coluna_ = new QVBoxLayout(PnBotao);
  coluna_->setContentsMargins(0, 0, 0, 0);
  coluna_->setSpacing(0);
  coluna_->addStretch();
  coluna_->addWidget(PnBotaoFechar);
  PnBotao->setFixedWidth(kLarguraColunaBotoes);

  auto* janela = new QHBoxLayout(this);
  janela->setContentsMargins(0, 0, 0, 0);
  janela->setSpacing(0);
  janela->addWidget(PnPrincipal, 1);
  janela->addWidget(PnBotao);
}

void TDLG_DPadraoFicha_TB::TamanhoJanela(int altura, int largura) {
  FAlturaJanela = altura;
  FLarguraJanela = largura;
}

void TDLG_DPadraoFicha_TB::AjustarTamJanela() {
  QSize tamanho(FLarguraJanela - kMolduraLargura, FAlturaJanela - kMolduraAltura);
  if (const QScreen* tela = screen()) tamanho = tamanho.boundedTo(tela->availableSize());
  resize(tamanho);
}

void TDLG_DPadraoFicha_TB::Evento(const std::function<void()>& handler) {
  try {
    handler();
  } catch (const std::exception& e) {
    ErroGeral(e.what());
  }
}

void TDLG_DPadraoFicha_TB::AdicionarBotao(QPushButton* botao, bool no_alto) {
  // In a panel with the close button's margins, so that the column's buttons line up.
  auto* painel = new QFrame(PnBotao);
  auto* margem = new QVBoxLayout(painel);
  margem->setContentsMargins(6, 6, 6, no_alto ? 0 : 6);
  margem->addWidget(botao);
  botao->setAutoDefault(false);
  coluna_->insertWidget(no_alto ? no_alto_++ : coluna_->count() - 1, painel);
}

void TDLG_DPadraoFicha_TB::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) FormShow();
  QDialog::showEvent(event);
}

void TDLG_DPadraoFicha_TB::closeEvent(QCloseEvent* event) {
  if (BtFechar->isEnabled())
    QDialog::closeEvent(event);
  else
    event->ignore();
}

void TDLG_DPadraoFicha_TB::reject() {
  if (BtFechar->isEnabled()) QDialog::reject();
}

}  // namespace infofiscal
