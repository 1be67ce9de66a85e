#include "gui/dialogo_salvar.h"

#include <QFileDialog>

namespace infofiscal {

namespace {

bool perguntar_com_janela(QWidget* parent, TDialogoSalvar& dialogo) {
  QFileDialog janela(parent);
  janela.setAcceptMode(QFileDialog::AcceptSave);
  janela.setNameFilters(filtros_qt(dialogo.Filter));
  janela.selectFile(QString::fromStdString(dialogo.FileName));
  if (janela.exec() != QDialog::Accepted || janela.selectedFiles().isEmpty()) return false;
  dialogo.FileName = janela.selectedFiles().first().toStdString();
  return true;
}

}  // namespace

TDialogoSalvar::TDialogoSalvar(QWidget* parent)
    : Pergunta([parent](TDialogoSalvar& dialogo) { return perguntar_com_janela(parent, dialogo); }) {}

QStringList filtros_qt(const std::string& filter) {
  const QStringList partes = QString::fromStdString(filter).split('|');
  QStringList filtros;
  for (qsizetype i = 0; i + 1 < partes.size(); i += 2) {
    QString descricao = partes[i];
    if (const qsizetype abre = descricao.lastIndexOf('('); abre >= 0) descricao.truncate(abre);
    QStringList padroes = partes[i + 1].split(';', Qt::SkipEmptyParts);
    for (QString& p : padroes) p = p.trimmed() == "*.*" ? "*" : p.trimmed();
    filtros << descricao.trimmed() + " (" + padroes.join(' ') + ")";
  }
  return filtros;
}

}  // namespace infofiscal
