#include "fiscal/saida.h"

#include <algorithm>

#include <filesystem>

#include "base/system.h"

namespace infofiscal {

namespace {

// Writes in pieces big enough that a system call costs little per record.
constexpr std::size_t kBuffer = 1 << 18;

// A batch for a reader on its own thread: large enough that handing it over costs nothing next
// to reading it, small enough to stay in the cache; four may wait.
constexpr std::size_t kLote = std::size_t{1} << 20;
constexpr std::size_t kLotesNaFila = 4;

std::string pasta_de(const std::string& caminho) {
  const std::filesystem::path p = path_of(caminho);
  return p.has_parent_path() ? utf8_of(p.parent_path()) : std::string(".");
}

}  // namespace

SaidaEmArquivo::SaidaEmArquivo(const std::string& caminho) : arquivo_(caminho), pasta_(pasta_de(caminho)) {
  buffer_.reserve(kBuffer);
}

void SaidaEmArquivo::escreve(std::string_view bytes) {
  registros_ += static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
  buffer_.append(bytes);
  if (buffer_.size() >= kBuffer) descarrega();
}

void SaidaEmArquivo::descarrega() {
  arquivo_.write(buffer_);
  escritos_ += buffer_.size();
  buffer_.clear();
}

void SaidaEmArquivo::rele(const std::function<void(std::string_view)>& pedaco) {
  descarrega();
  std::string lido(kBuffer, '\0');
  for (std::uint64_t pos = 0; pos < escritos_;) {
    const std::size_t n = arquivo_.read_at(pos, lido.data(), lido.size());
    if (n == 0) break;
    pedaco(std::string_view(lido).substr(0, n));
    pos += n;
  }
}

void SaidaEmArquivo::confirma() {
  descarrega();
  arquivo_.commit();
}

SaidaEmMemoria::SaidaEmMemoria() : pasta_(utf8_of(std::filesystem::temp_directory_path())) {}

LeitorEmParalelo::LeitorEmParalelo(LeitorDePedacos& leitor) : leitor_(leitor), leitura_(kLotesNaFila) {
  lote_.reserve(kLote);
}

void LeitorEmParalelo::le(std::string_view pedaco) {
  if (!leitura_.started()) return leitor_.le(pedaco);
  lote_.append(pedaco);
  if (lote_.size() >= kLote) entrega();
}

void LeitorEmParalelo::entrega() {
  leitura_.add([this, lote = std::move(lote_)] { leitor_.le(lote); });
  lote_ = std::string();
  lote_.reserve(kLote);
}

void LeitorEmParalelo::espera() {
  if (!leitura_.started()) return;
  if (!lote_.empty()) entrega();
  leitura_.finish();
}

}  // namespace infofiscal
