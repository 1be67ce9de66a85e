#include "cli/progresso.h"

#include <algorithm>
#include <cstdio>

#include <fmt/format.h>

#include "base/system.h"
#include "cli/terminal.h"

namespace infofiscal {

namespace {

constexpr int kBarraMaxima = 40, kBarraMinima = 10;
constexpr int kNomeMinimo = 4;  // a name cut shorter than this says nothing

std::string_view sem_espacos_no_fim(std::string_view texto) {
  while (!texto.empty() && texto.back() == ' ') texto.remove_suffix(1);
  return texto;
}

}  // namespace

std::string linha_da_barra(std::string_view passo, int posicao, int maximo, int colunas) {
  const int permil = static_cast<int>(1000LL * std::min(posicao, maximo) / maximo);
  const std::string fracao = fmt::format("{}/{}", posicao, maximo);
  const std::string contador = fmt::format(" {:3},{}% {}", permil / 10, permil % 10, fracao);
  const int espaco = std::max(colunas - 1, 0);
  const int livre = espaco - colunas_de(contador);
  if (livre < 0) return colunas_de(fracao) <= espaco ? fracao : "";

  passo = sem_espacos_no_fim(passo);
  const int nome = colunas_de(passo);
  const int marcas = livre < kBarraMinima + 2 ? 0 : std::clamp(livre - 2 - (nome + 1), kBarraMinima, kBarraMaxima);
  const int barra = marcas == 0 ? 0 : marcas + 2;
  const int lugar_do_nome = livre - barra - 1;  // a space between the name and the bar

  std::string linha;
  if (lugar_do_nome >= kNomeMinimo && nome > 0) linha = cortar(passo, lugar_do_nome) + " ";
  if (marcas > 0) {
    const int cheias = permil * marcas / 1000;
    linha += "[" + std::string(static_cast<std::size_t>(cheias), '#') + std::string(static_cast<std::size_t>(marcas - cheias), ' ') + "]";
  }
  return linha + contador;
}

Progresso::Progresso(const std::string& modo)
    : modo_(modo == "linhas"  ? Modo::Linhas
            : modo == "barra" ? Modo::Barra
            : modo == "nada"  ? Modo::Nada
            : stderr_is_terminal()  ? Modo::Barra
                                    : Modo::Nada) {}

void Progresso::Linha(const std::string& linha) {
  Limpar();
  passo_ = linha;
}

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
  const std::string linha = linha_da_barra(passo_, posicao, maximo, largura_do_terminal());
  std::fprintf(stderr, "\r%s\033[K", linha.c_str());
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
