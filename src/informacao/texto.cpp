#include "informacao/texto.h"

#include "base/error.h"

namespace infofiscal {

namespace {

// Big enough that a read costs little per line, small enough to stay in the caches.
constexpr std::size_t kPedaco = 1 << 20;

// Cuts the line that starts at `pos` off `texto`, which holds its LF at `lf`.
std::string_view linha_ate(std::string_view texto, std::size_t pos, std::size_t lf) {
  std::string_view linha = texto.substr(pos, lf - pos);
  if (!linha.empty() && linha.back() == '\r') linha.remove_suffix(1);
  return linha;
}

}  // namespace

bool TextoEmMemoria::proxima(std::string_view& linha) {
  if (pos_ >= texto_.size()) return false;
  std::size_t fim = texto_.find('\n', pos_);
  if (fim == std::string_view::npos) fim = texto_.size();
  linha = linha_ate(texto_, pos_, fim);
  pos_ = fim + 1;
  return true;
}

ArquivoDeInformacao::ArquivoDeInformacao(std::string caminho) : caminho_(std::move(caminho)) {
  if (const int erro = arquivo_.open_for_reading(caminho_)) falha(erro);
}

ArquivoDeInformacao::~ArquivoDeInformacao() = default;

void ArquivoDeInformacao::falha(int erro) const {
  throw Error("Não foi possível ler o arquivo '" + caminho_ + "': " + system_reason(erro));
}

void ArquivoDeInformacao::reinicia() {
  lido_ = 0;
  texto_.clear();
  pos_ = 0;
  fim_ = false;
}

bool ArquivoDeInformacao::le_mais() {
  if (fim_) return false;
  bruto_.resize(kPedaco);
  std::size_t n = 0;
  if (const int erro = arquivo_.read_at(lido_, bruto_.data(), bruto_.size(), n)) falha(erro);
  if (n == 0) return !(fim_ = true);
  lido_ += n;
  // What was handed out goes; the line begun stays, at the front.
  texto_.erase(0, pos_);
  pos_ = 0;
  utf8_.append(std::string_view(bruto_).substr(0, n), texto_);
  return true;
}

bool ArquivoDeInformacao::proxima(std::string_view& linha) {
  std::size_t procura = pos_;  // where the LF may be: what was searched before holds none
  for (;;) {
    const std::size_t lf = texto_.find('\n', procura);
    if (lf != std::string::npos) {
      linha = linha_ate(texto_, pos_, lf);
      pos_ = lf + 1;
      return true;
    }
    const std::size_t lidos = texto_.size() - pos_;
    if (!le_mais()) break;
    procura = lidos;  // le_mais moved the line begun to the front
  }
  if (pos_ >= texto_.size()) return false;
  linha = linha_ate(texto_, pos_, texto_.size());
  pos_ = texto_.size();
  return true;
}

}  // namespace infofiscal
