#include "gui/traducao.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace infofiscal {

std::string traduzir_qt(QApplication& aplicacao) {
  const QLocale brasil(QLocale::Portuguese, QLocale::Brazil);
  QLocale::setDefault(brasil);
  const QString pasta = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  auto* traducao = new QTranslator(&aplicacao);
  if (!traducao->load(brasil, "qtbase", "_", pasta)) {
    delete traducao;
    return "as traduções do Qt (" + pasta.toStdString() +
           "/qtbase_pt_BR.qm) não foram encontradas: as janelas do próprio Qt ficam em inglês "
           "(instale o pacote qt6-translations-l10n)";
  }
  aplicacao.installTranslator(traducao);
  return {};
}

}  // namespace infofiscal
