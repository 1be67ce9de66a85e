#include "informacao/texto.h"

#include <algorithm>

#include <fmt/format.h>

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

// How many bytes of `bytes`, from the first, are whole UTF-8 characters (RFC 3629); `incompleto`
// says whether what follows is the start of a character cut off by the end of `bytes`, rather
// than a byte that UTF-8 never holds there.
std::size_t utf8_valido(std::string_view bytes, bool& incompleto) {
  incompleto = false;
  std::size_t i = 0;
  while (i < bytes.size()) {
    const auto b = [&](std::size_t k) { return static_cast<unsigned char>(bytes[k]); };
    const unsigned char c = b(i);
    if (c < 0x80) {
      ++i;
      continue;
    }
    const std::size_t n = c >= 0xC2 && c <= 0xDF ? 2 : c >= 0xE0 && c <= 0xEF ? 3 : c >= 0xF0 && c <= 0xF4 ? 4 : 0;
    if (n == 0) return i;
    // The second byte's range depends on the first (no overlong forms, no surrogates, nothing past U+10FFFF).
    const unsigned char min = c == 0xE0 ? 0xA0 : c == 0xF0 ? 0x90 : 0x80;
    const unsigned char max = c == 0xED ? 0x9F : c == 0xF4 ? 0x8F : 0xBF;
    for (std::size_t k = 1; k < n; ++k) {
      if (i + k >= bytes.size()) {
        incompleto = true;
        return i;
      }
      const unsigned char d = b(i + k);
      if (d < (k == 1 ? min : 0x80) || d > (k == 1 ? max : 0xBF)) return i;
    }
    i += n;
  }
  return i;
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

ArquivoDeInformacao::ArquivoDeInformacao(std::string caminho, const std::string& temporario)
    : caminho_(std::move(caminho)), codificacao_(Codificacao::windows1252) {
  if (const int erro = arquivo_.open_for_reading(temporario)) falha(erro);
}

ArquivoDeInformacao::~ArquivoDeInformacao() = default;

void ArquivoDeInformacao::falha(int erro) const {
  throw Error("Não foi possível ler o arquivo '" + caminho_ + "': " + system_reason(erro));
}

void ArquivoDeInformacao::reinicia() {
  lido_ = 0;
  incompleto_.clear();
  fim_ = false;
  esquece();
}

void ArquivoDeInformacao::decide(std::string_view pedaco) {
  bool incompleto = false;
  const bool ascii = std::all_of(pedaco.begin(), pedaco.end(), [](char c) { return (c & 0x80) == 0; });
  if (ascii) return;  // the same bytes in either
  const std::size_t validos = utf8_valido(pedaco, incompleto);
  codificacao_ = validos == pedaco.size() || incompleto ? Codificacao::utf8 : Codificacao::windows1252;
}

void ArquivoDeInformacao::anexa_utf8(std::string_view pedaco, std::string& texto) {
  incompleto_.append(pedaco);
  bool incompleto = false;
  const std::size_t validos = utf8_valido(incompleto_, incompleto);
  if (validos < incompleto_.size() && (!incompleto || fim_))
    throw Error(fmt::format("O arquivo de informações '{}' está em UTF-8, e não em Windows-1252 como o sistema o "
                            "grava, mas o byte {} (0x{:02X}) não é UTF-8: grave o arquivo numa só codificação",
                            caminho_, lido_ - incompleto_.size() + validos + 1,
                            static_cast<unsigned char>(incompleto_[validos])));
  texto.append(incompleto_, 0, validos);
  incompleto_.erase(0, validos);
}

bool ArquivoDeInformacao::mais(std::string& texto) {
  if (fim_) return false;
  bruto_.resize(kPedaco);
  std::size_t n = 0;
  if (const int erro = arquivo_.read_at(lido_, bruto_.data(), bruto_.size(), n)) falha(erro);
  if (n == 0) {
    fim_ = true;
    if (!incompleto_.empty()) anexa_utf8({}, texto);  // a character cut off by the end of the file
    return false;
  }
  lido_ += n;
  const std::string_view pedaco = std::string_view(bruto_).substr(0, n);
  if (codificacao_ == Codificacao::indefinida) decide(pedaco);
  if (codificacao_ == Codificacao::utf8)
    anexa_utf8(pedaco, texto);
  else
    utf8_.append(pedaco, texto);
  return true;
}

void TextoEmPedacos::esquece() {
  texto_.clear();
  pos_ = 0;
}

bool TextoEmPedacos::proxima(std::string_view& linha) {
  std::size_t procura = pos_;  // where the LF may be: what was searched before holds none
  for (;;) {
    const std::size_t lf = texto_.find('\n', procura);
    if (lf != std::string::npos) {
      linha = linha_ate(texto_, pos_, lf);
      pos_ = lf + 1;
      return true;
    }
    // What was handed out goes; the line begun stays, at the front.
    texto_.erase(0, pos_);
    pos_ = 0;
    procura = texto_.size();
    if (!mais(texto_)) break;
  }
  if (pos_ >= texto_.size()) return false;
  linha = linha_ate(texto_, pos_, texto_.size());
  pos_ = texto_.size();
  return true;
}

const char* TextoInterrompido::what() const noexcept { return "A gravação do arquivo de informações foi interrompida"; }

void TextoEmFila::entrega(std::string_view pedaco) {
  std::unique_lock trava(mutex_);
  mudou_.wait(trava, [&] { return pedacos_.size() < kEsperando || estado_ != Estado::aberto; });
  if (estado_ != Estado::aberto) return;
  pedacos_.emplace_back(pedaco);
  mudou_.notify_all();
}

void TextoEmFila::termina() {
  std::lock_guard trava(mutex_);
  if (estado_ == Estado::aberto) estado_ = Estado::completo;
  mudou_.notify_all();
}

void TextoEmFila::abandona() {
  std::lock_guard trava(mutex_);
  if (estado_ != Estado::sem_leitor) estado_ = Estado::abandonado;
  mudou_.notify_all();
}

void TextoEmFila::desiste() {
  std::lock_guard trava(mutex_);
  estado_ = Estado::sem_leitor;
  pedacos_.clear();
  mudou_.notify_all();
}

std::uint64_t TextoEmFila::lidos() {
  const std::lock_guard trava(mutex_);
  return lidos_;
}

void TextoEmFila::reinicia() { throw Error("O arquivo de informações em gravação só pode ser lido uma vez"); }

bool TextoEmFila::mais(std::string& texto) {
  std::string pedaco;
  {
    std::unique_lock trava(mutex_);
    mudou_.wait(trava, [&] { return !pedacos_.empty() || estado_ != Estado::aberto; });
    if (estado_ == Estado::abandonado || estado_ == Estado::sem_leitor) throw TextoInterrompido();
    if (pedacos_.empty()) return false;  // complete, and all of it read
    pedaco = std::move(pedacos_.front());
    pedacos_.pop_front();
    lidos_ += pedaco.size();
    mudou_.notify_all();
  }
  utf8_.append(pedaco, texto);
  return true;
}

}  // namespace infofiscal
