// The save-file dialog as the module's dialogs use it: a filter, a suggested name and one
// question. The question itself is a seam: tests and scripted runs answer it without a window.
#pragma once

#include <functional>
#include <string>

#include <QStringList>

class QWidget;

namespace infofiscal {

class TDialogoSalvar {
 public:
  // Answers the question: true when the user confirmed, with the chosen full path in FileName.
  using TPergunta = std::function<bool(TDialogoSalvar&)>;

  // REQUIRES: `parent` outlives this object (the question's window stands over it).
  explicit TDialogoSalvar(QWidget* parent);

  // Asks the user; true when confirmed. FileName then holds the chosen full path.
  bool Execute() { return Pergunta(*this); }

  // Pairs "description|patterns" joined by "|", as the form designer writes them.
  std::string Filter;
  // The suggested name on the way in; the chosen full path after a confirmed question. It is
  // kept from one question to the next.
  std::string FileName;
  // The question; by default Qt's save-file dialog, which asks before replacing a file.
  TPergunta Pergunta;
};

// The filter's pairs as Qt name filters: "Todos (*.* )|*.*|Texto (*.txt)|*.txt" gives
// "Todos (*)" and "Texto (*.txt)". The description's own pattern list is replaced by the
// pair's patterns, and "*.*" (every file, with or without a dot) becomes "*".
QStringList filtros_qt(const std::string& filter);

}  // namespace infofiscal
