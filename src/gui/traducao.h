// The dialog speaks Portuguese, Qt's own windows included: the save-file window, the buttons of
// the message boxes, the context menus. Qt's translations come from Debian's
// qt6-translations-l10n.
#pragma once

#include <string>

class QApplication;

namespace infofiscal {

// Installs Qt's Brazilian Portuguese translation on `aplicacao` (owned by it) and makes
// Brazilian Portuguese the default locale (dates, sizes and numbers in Qt's windows). Returns
// an empty string, or when the translation is missing a Portuguese warning that names the file
// and the package that brings it; the windows are then in English.
std::string traduzir_qt(QApplication& aplicacao);

}  // namespace infofiscal
