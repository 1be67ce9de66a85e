#include "fiscal/sintegra_registro.h"

#include <algorithm>
#include <numeric>
#include <queue>

#include <fmt/format.h>

#include "base/error.h"

namespace infofiscal::sintegra {

namespace {

constexpr std::size_t kRegistro = kTamanhoRegistro;
// A run is read back this many records at a time; the output goes out in pieces as large.
constexpr int kLote = 512;

}  // namespace

// Reads a run back a batch at a time.
class Bloco::Leitura {
 public:
  Leitura(const ScratchFile& arquivo, const Trecho& trecho) : arquivo_(arquivo), trecho_(trecho) { carrega(); }
  bool fim() const { return lido_ == trecho_.quantos && pos_ == lote_.size(); }
  std::string_view atual() const { return std::string_view(lote_).substr(pos_, kRegistro); }
  void avanca() {
    pos_ += kRegistro;
    if (pos_ == lote_.size()) carrega();
  }

 private:
  void carrega() {
    const int n = std::min(kLote, trecho_.quantos - lido_);
    lote_.resize(static_cast<std::size_t>(n) * kRegistro);
    if (n > 0 && arquivo_.read_at(trecho_.inicio + lido_ * kRegistro, lote_.data(), lote_.size()) != lote_.size())
      throw Error("O arquivo temporário do SINTEGRA terminou antes do esperado");
    lido_ += n;
    pos_ = 0;
  }

  const ScratchFile& arquivo_;
  const Trecho trecho_;
  std::string lote_;
  std::size_t pos_ = 0;
  int lido_ = 0;  // records of the run loaded so far
};

Bloco::Bloco(const Layout& layout, std::string pasta, int em_memoria)
    : layout_(layout), pasta_(std::move(pasta)), em_memoria_(em_memoria) {
  for (const int f : layout_.ordem) chave_.emplace_back(layout_.inicio(f), layout_.campo(f).tamanho);
}

Bloco::~Bloco() = default;

Bloco& Bloco::novo() {
  if (aberto_) dados_.resize(inicio_);
  aberto_ = true;
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
  if (campo_ != static_cast<int>(layout_.campos.size()) || dados_.size() - inicio_ != kRegistro)
    throw Error(fmt::format("registro {} incompleto", layout_.tipo));
  aberto_ = false;
  ++quantos_;
  if (!layout_.ordem.empty() && static_cast<int>(dados_.size() / kRegistro) >= em_memoria_) despeja();
}

bool Bloco::menor(std::string_view a, std::string_view b) const {
  for (const auto& [inicio, tamanho] : chave_) {
    const int c = a.substr(inicio, tamanho).compare(b.substr(inicio, tamanho));
    if (c != 0) return c < 0;
  }
  return false;
}

void Bloco::ordena() {
  if (layout_.ordem.empty()) return;
  const auto registro = [this](int i) { return std::string_view(dados_).substr(i * kRegistro, kRegistro); };
  std::vector<int> indices(dados_.size() / kRegistro);
  std::iota(indices.begin(), indices.end(), 0);
  std::stable_sort(indices.begin(), indices.end(), [&](int a, int b) { return menor(registro(a), registro(b)); });
  std::string ordenados;
  ordenados.reserve(dados_.size());
  for (const int i : indices) ordenados.append(registro(i));
  dados_ = std::move(ordenados);
}

void Bloco::despeja() {
  ordena();
  if (!arquivo_) arquivo_ = std::make_unique<ScratchFile>(pasta_);
  trechos_.push_back({arquivo_->size(), static_cast<int>(dados_.size() / kRegistro)});
  arquivo_->append(dados_);
  dados_.clear();
}

void Bloco::emitir(SaidaFiscal& saida) {
  std::string pedaco;
  const auto escreve = [&](std::string_view registro) {
    pedaco.append(registro);
    pedaco.append(kFimDeRegistro);
    if (pedaco.size() >= kLote * (kRegistro + kFimDeRegistro.size())) {
      saida.escreve(pedaco);
      pedaco.clear();
    }
  };
  if (trechos_.empty()) {
    ordena();
    for (std::size_t p = 0; p < dados_.size(); p += kRegistro) escreve(std::string_view(dados_).substr(p, kRegistro));
  } else {
    if (!dados_.empty()) despeja();
    // The least record of the runs' heads goes first; between equal ones, the earlier run's,
    // which was written first: the same order as one stable sort of every record.
    std::vector<Leitura> trechos;
    trechos.reserve(trechos_.size());
    for (const Trecho& t : trechos_) trechos.emplace_back(*arquivo_, t);
    const auto depois = [&](std::size_t a, std::size_t b) {
      return menor(trechos[b].atual(), trechos[a].atual()) ||
             (!menor(trechos[a].atual(), trechos[b].atual()) && b < a);
    };
    std::priority_queue<std::size_t, std::vector<std::size_t>, decltype(depois)> cabecas(depois);
    for (std::size_t i = 0; i < trechos.size(); ++i)
      if (!trechos[i].fim()) cabecas.push(i);
    while (!cabecas.empty()) {
      const std::size_t i = cabecas.top();
      cabecas.pop();
      escreve(trechos[i].atual());
      trechos[i].avanca();
      if (!trechos[i].fim()) cabecas.push(i);
    }
  }
  if (!pedaco.empty()) saida.escreve(pedaco);
  dados_.clear();
  dados_.shrink_to_fit();
  arquivo_.reset();
}

}  // namespace infofiscal::sintegra
