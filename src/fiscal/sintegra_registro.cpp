#include "fiscal/sintegra_registro.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include <fmt/format.h>

#include "base/error.h"

namespace infofiscal::sintegra {

Bloco& Bloco::novo() {
  inicio_ = dados_.size();
  campo_ = 0;
  return numero(layout_.tipo);
}

const Campo& Bloco::proximo() {
  if (campo_ >= static_cast<int>(layout_.campos.size()))
    throw Error(fmt::format("registro {} com campos demais", layout_.tipo));
  return layout_.campo(++campo_);
}

Bloco& Bloco::numero(std::int64_t valor, int casas) {
  por_numero(dados_, proximo(), {valor, casas});
  return *this;
}

Bloco& Bloco::digitos(std::string_view texto) {
  por_digitos(dados_, proximo(), texto);
  return *this;
}

Bloco& Bloco::data(const TimeStamp& d) {
  por_data(dados_, proximo(), d);
  return *this;
}

Bloco& Bloco::texto(std::string_view t) {
  const Campo& c = proximo();
  if (c.formato == Formato::N) {
    por_digitos(dados_, c, t);
  } else {
    por_texto(dados_, c, t);
  }
  return *this;
}

void Bloco::fim() {
  if (campo_ != static_cast<int>(layout_.campos.size()) || dados_.size() - inicio_ != kTamanhoRegistro)
    throw Error(fmt::format("registro {} incompleto", layout_.tipo));
}

void Bloco::ordenar() {
  if (layout_.ordem.empty()) return;
  struct Chave {
    int inicio, tamanho;
  };
  std::vector<Chave> chaves;
  for (const int f : layout_.ordem) chaves.push_back({layout_.inicio(f), layout_.campo(f).tamanho});
  std::vector<int> indices(quantos());
  std::iota(indices.begin(), indices.end(), 0);
  std::stable_sort(indices.begin(), indices.end(), [&](int a, int b) {
    const std::string_view ra = registro(a), rb = registro(b);
    for (const auto& k : chaves) {
      const int c = ra.substr(k.inicio, k.tamanho).compare(rb.substr(k.inicio, k.tamanho));
      if (c != 0) return c < 0;
    }
    return false;
  });
  std::string ordenados;
  ordenados.reserve(dados_.size());
  for (const int i : indices) ordenados.append(registro(i));
  dados_ = std::move(ordenados);
}

void Bloco::emitir(std::string& saida) const {
  for (int i = 0; i < quantos(); ++i) {
    saida.append(registro(i));
    saida.append(kFimDeRegistro);
  }
}

}  // namespace infofiscal::sintegra
