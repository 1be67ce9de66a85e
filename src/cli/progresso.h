// Progress on stderr: a bar on a terminal, one line per report, or nothing.
#pragma once

#include <string>

namespace infofiscal {

class Progresso {
 public:
  // `modo`: "auto" (a bar when stderr is a terminal, else nothing), "barra", "linhas", "nada".
  explicit Progresso(const std::string& modo);
  // One report of the progress callback.
  void Mostrar(int posicao, int maximo);
  // Erases the bar so that other output starts on a clean line.
  void Limpar();

 private:
  enum class Modo { Barra, Linhas, Nada } modo_;
  bool desenhada_ = false;
  int ultimo_permil_ = -1;
};

}  // namespace infofiscal
