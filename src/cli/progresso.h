// Progress on stderr: a bar on a terminal, one line per report, or nothing.
#pragma once

#include <string>
#include <string_view>

namespace infofiscal {

class Progresso {
 public:
  // `modo`: "auto" (a bar when stderr is a terminal, else nothing), "barra", "linhas", "nada".
  explicit Progresso(const std::string& modo);
  // An info line is about to be written: erases the bar, and keeps the line as the name of the
  // step whose reports follow.
  void Linha(const std::string& linha);
  // One report of the progress callback.
  void Mostrar(int posicao, int maximo);
  // Erases the bar so that other output starts on a clean line.
  void Limpar();

 private:
  enum class Modo { Barra, Linhas, Nada } modo_;
  bool desenhada_ = false;
  int ultimo_permil_ = -1;
  std::string passo_;
};

// The bar as drawn for a terminal `colunas` wide: the step's name, the bar, the percentage and
// the counter ("2.05-Registro: Informação de Compra… [######    ]  60,0% 3/5"), in at most
// colunas - 1 columns, since writing the last column makes some terminals wrap. The name gives
// way first (cut, then left out), then the bar (from 40 marks down to 10, then left out), then
// the percentage.
// REQUIRES: 0 <= posicao, 0 < maximo.
std::string linha_da_barra(std::string_view passo, int posicao, int maximo, int colunas);

}  // namespace infofiscal
