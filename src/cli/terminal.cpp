#include "cli/terminal.h"

#include <algorithm>
#include <charconv>

#include "base/system.h"

namespace infofiscal {

namespace {

bool comeca_caractere(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

}  // namespace

int colunas_de(std::string_view texto) {
  return static_cast<int>(std::count_if(texto.begin(), texto.end(), comeca_caractere));
}

std::string cortar(std::string_view texto, int colunas) {
  if (colunas_de(texto) <= colunas) return std::string(texto);
  // Up to the start of the character in column `colunas`: room for the ellipsis there.
  std::size_t fim = 0;
  for (int vistos = 0; fim < texto.size(); ++fim)
    if (comeca_caractere(texto[fim]) && vistos++ == colunas - 1) break;
  return std::string(texto.substr(0, fim)) + "…";
}

std::string quebrar(std::string_view texto, int colunas, std::string_view recuo) {
  std::string saida;
  int linha = 0;  // columns on the current line
  while (!texto.empty()) {
    const std::size_t espaco = texto.find(' ');
    const std::string_view palavra = texto.substr(0, espaco);
    texto.remove_prefix(espaco == std::string_view::npos ? texto.size() : espaco + 1);
    if (palavra.empty()) continue;
    const int largura = colunas_de(palavra);
    if (linha > 0 && linha + 1 + largura > colunas) {
      saida += '\n';
      saida += recuo;
      linha = 0;
    } else if (linha > 0) {
      saida += ' ';
      ++linha;
    }
    saida += palavra;
    linha += largura;
  }
  return saida;
}

int largura_do_terminal() {
  if (const int colunas = terminal_columns(); colunas > 0) return colunas;
  if (const auto colunas = environment_variable("COLUMNS")) {
    int n = 0;
    const auto [fim, ec] = std::from_chars(colunas->data(), colunas->data() + colunas->size(), n);
    if (ec == std::errc() && fim == colunas->data() + colunas->size() && n > 0) return n;
  }
  return 80;
}

}  // namespace infofiscal
