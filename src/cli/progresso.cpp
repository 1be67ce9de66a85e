#include "cli/progresso.h"

#include <unistd.h>

#include <cstdio>

namespace infofiscal {

Progresso::Progresso(const std::string& modo)
    : modo_(modo == "linhas"  ? Modo::Linhas
            : modo == "barra" ? Modo::Barra
            : modo == "nada"  ? Modo::Nada
            : isatty(STDERR_FILENO) ? Modo::Barra
                                    : Modo::Nada) {}

void Progresso::Mostrar(int posicao, int maximo) {
  if (modo_ == Modo::Linhas) {
    std::fprintf(stderr, "progresso %d/%d\n", posicao, maximo);
    return;
  }
  if (modo_ != Modo::Barra || maximo <= 0) return;
  // Redraw only when the bar moves by a tenth of a percent: a million reports stay cheap.
  const int permil = static_cast<int>(1000LL * posicao / maximo);
  if (permil == ultimo_permil_) return;
  ultimo_permil_ = permil;
  constexpr int kLargura = 40;
  const int cheio = permil * kLargura / 1000;
  std::fprintf(stderr, "\r[%.*s%*s] %5.1f%% %d/%d", cheio, "########################################",
               kLargura - cheio, "", permil / 10.0, posicao, maximo);
  std::fflush(stderr);
  desenhada_ = true;
}

void Progresso::Limpar() {
  if (!desenhada_) return;
  std::fputs("\r\033[K", stderr);
  std::fflush(stderr);
  desenhada_ = false;
  ultimo_permil_ = -1;
}

}  // namespace infofiscal
