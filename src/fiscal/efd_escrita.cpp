#include "fiscal/efd_escrita.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include <fmt/format.h>

#include "base/code_page.h"
#include "base/value.h"
#include "base/error.h"

namespace infofiscal::efd {

namespace {

void anexa_inteiro(std::string& out, std::int64_t v, int largura = 0) {
  char buf[24];
  const auto [fim, ec] = std::to_chars(buf, buf + sizeof buf, v);
  for (int n = static_cast<int>(fim - buf); n < largura; ++n) out.push_back('0');
  out.append(buf, fim);
}

std::int64_t potencia10(int n) {
  std::int64_t p = 1;
  while (n-- > 0) p *= 10;
  return p;
}

// v in units of 10^-escala, written with exactly `decimais` decimals (rounded half away from
// zero when the field has fewer decimals than the value).
void anexa_numero(std::string& out, std::int64_t v, int escala, int decimais) {
  if (escala > decimais) {
    const std::int64_t p = potencia10(escala - decimais);
    v = (v >= 0 ? v + p / 2 : v - p / 2) / p;
  } else {
    v *= potencia10(decimais - escala);
  }
  if (v < 0) {
    out.push_back('-');
    v = -v;
  }
  const std::int64_t p = potencia10(decimais);
  anexa_inteiro(out, v / p);
  if (decimais > 0) {
    out.push_back(',');
    anexa_inteiro(out, v % p, decimais);
  }
}

// Free text: no pipe, no control character, no blank at either end, at most `tamanho`
// characters (UTF-8 here; the file is converted to its code page at the end). A pipe, a tab or a
// line break becomes a blank (they stand between words); any other control character (DEL and
// the C1 controls U+0080-U+009F included) is removed.
void anexa_texto(std::string& out, std::string_view s, int tamanho) {
  const std::size_t inicio = out.size();
  int caracteres = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const char ch = s[i];
    const auto c = static_cast<unsigned char>(ch);
    const bool c1 = c == 0xC2 && i + 1 < s.size() && static_cast<unsigned char>(s[i + 1]) < 0xA0;
    if ((c < 32 && c != '\t' && c != '\n' && c != '\r') || c == 0x7F || c1) {
      i += c1 ? 1 : 0;
      continue;
    }
    const bool continuacao = (c & 0xC0) == 0x80;
    if (!continuacao && caracteres == tamanho) break;
    if (!continuacao) ++caracteres;
    out.push_back(c < 32 || c == '|' ? ' ' : ch);
  }
  const auto primeiro = out.find_first_not_of(' ', inicio);
  out.erase(inicio, (primeiro == std::string::npos ? out.size() : primeiro) - inicio);
  while (out.size() > inicio && out.back() == ' ') out.pop_back();
}

}  // namespace

bool ler_numero(std::string_view s, int escala, std::int64_t& out) {
  const auto virgula = s.find(',');
  const std::string_view inteira = s.substr(0, virgula);
  const std::string_view fracao = virgula == std::string_view::npos ? std::string_view() : s.substr(virgula + 1);
  const auto so_digitos = [](std::string_view t) { return t.find_first_not_of("0123456789") == std::string_view::npos; };
  if (inteira.empty() || inteira.size() > 15 || !so_digitos(inteira) || !so_digitos(fracao) ||
      static_cast<int>(fracao.size()) > escala || (virgula != std::string_view::npos && fracao.empty()))
    return false;
  std::int64_t v = 0;
  for (const char c : inteira) v = v * 10 + (c - '0');
  for (int i = 0; i < escala; ++i) v = v * 10 + (i < static_cast<int>(fracao.size()) ? fracao[i] - '0' : 0);
  out = v;
  return true;
}

void separa_campos(std::string_view linha, std::vector<std::string_view>& campos) {
  campos.clear();
  for (std::size_t p = 1; p < linha.size();) {
    const std::size_t q = linha.find('|', p);
    campos.push_back(linha.substr(p, q - p));
    p = q + 1;
  }
}

Dia ler_data(std::string_view s) {
  if (s.size() != 8 || s.find_first_not_of("0123456789") != std::string_view::npos) return 0;
  const int d = (s[0] - '0') * 10 + (s[1] - '0');
  const int m = (s[2] - '0') * 10 + (s[3] - '0');
  int a = 0;
  for (int i = 4; i < 8; ++i) a = a * 10 + (s[i] - '0');
  if (m < 1 || m > 12 || d < 1 || a < 1900 || d > days_in_month(m, a)) return 0;
  return a * 10000 + m * 100 + d;
}

std::string valor_texto(std::int64_t centesimos) {
  return fmt::format("{}{},{:02}", centesimos < 0 ? "-" : "", std::llabs(centesimos) / 100, std::llabs(centesimos) % 100);
}

std::string data_texto(Dia d) {
  std::string out;
  anexa_inteiro(out, d % 100, 2);
  anexa_inteiro(out, d / 100 % 100, 2);
  anexa_inteiro(out, d / 10000, 4);
  return out;
}

std::string data_legivel(Dia d) { return fmt::format("{:02}/{:02}/{:04}", d % 100, d / 100 % 100, d / 10000); }

namespace {

// The output goes out in pieces of this size.
constexpr std::size_t kPedaco = 1 << 16;

}  // namespace

// The records of a block written ahead of its turn, in memory and, past a limit, in a temporary
// file: block C of a large month does not fit in memory.
class EscritorEfd::Adiado {
 public:
  Adiado(std::string pasta, std::size_t em_memoria) : pasta_(std::move(pasta)), em_memoria_(em_memoria) {}

  std::string& buffer() { return memoria_; }
  bool vazio() const { return memoria_.empty() && !arquivo_; }
  // Moves what is in memory to the file when there is too much of it.
  void alivia() {
    if (memoria_.size() < em_memoria_) return;
    if (!arquivo_) arquivo_ = std::make_unique<ScratchFile>(pasta_);
    arquivo_->append(memoria_);
    memoria_.clear();
  }
  // Hands every byte back in order and forgets them.
  template <class F>
  void esvazia(F&& pedaco) {
    if (arquivo_) {
      std::string lido(kPedaco, '\0');
      for (std::uint64_t pos = 0, n; (n = arquivo_->read_at(pos, lido.data(), lido.size())) > 0; pos += n)
        pedaco(std::string_view(lido).substr(0, n));
      arquivo_.reset();
    }
    pedaco(std::string_view(memoria_));
    memoria_.clear();
    memoria_.shrink_to_fit();
  }

 private:
  const std::string pasta_;
  const std::size_t em_memoria_;
  std::string memoria_;
  std::unique_ptr<ScratchFile> arquivo_;
};

EscritorEfd::EscritorEfd(SaidaFiscal& saida, std::size_t em_memoria)
    : saida_(saida), em_memoria_(em_memoria), contagem_(registros().size()) {}
EscritorEfd::~EscritorEfd() = default;

void EscritorEfd::campo(std::string& out, const efd::Campo& c, const Valor& v) {
  switch (v.tipo) {
    case Valor::Tipo::Vazio:
      break;
    case Valor::Tipo::Texto:
      if (c.tipo == 'C') {
        anexa_texto(out, v.texto, c.tamanho ? c.tamanho : 255);
      } else {  // identification numbers and codes: digits only, without masks
        for (const char ch : v.texto) {
          if (ch >= '0' && ch <= '9') out.push_back(ch);
          // The converter refuses a letter in a code, naming its note; one here is a fault of the program.
          else if (ch != '.' && ch != '-' && ch != '/')
            throw Error("Campo " + std::string(c.nome) + " numérico com o valor '" + std::string(v.texto) + "'");
        }
      }
      break;
    case Valor::Tipo::Numero:
      anexa_numero(out, v.numero, v.escala, c.exato ? 0 : c.decimais);
      break;
    case Valor::Tipo::Data:
      out += data_texto(static_cast<Dia>(v.numero));
      break;
    case Valor::Tipo::MesAno:
      anexa_inteiro(out, v.numero % 100, 2);
      anexa_inteiro(out, v.numero / 100, 4);
      break;
  }
}

void EscritorEfd::registro(const efd::Registro& r, std::initializer_list<Valor> valores) {
  if (valores.size() + 1 != r.campos.size())
    throw Error("Registro " + std::string(r.reg) + " com " + std::to_string(valores.size() + 1) + " campos; o leiaute tem " +
                std::to_string(r.campos.size()));
  const std::size_t b = kBlocos.find(r.reg == "0000" ? '0' : r.reg == "9999" ? '9' : r.bloco());
  if (b < corrente_) throw Error("Registro " + std::string(r.reg) + " depois do fim do seu bloco");
  if (r.nivel >= 2 && !abertos_[b] && b == corrente_) {
    abertos_[b] = true;
    registro(std::string(1, kBlocos[b]) + "001", {texto("0")});
  }
  if (r.abertura()) abertos_[b] = true;
  registro_.clear();
  registro_.push_back('|');
  registro_.append(r.reg);
  registro_.push_back('|');
  const efd::Campo* c = r.campos.data() + 1;
  for (const Valor& v : valores) {
    campo(registro_, *c++, v);
    registro_.push_back('|');
  }
  registro_.append("\r\n");
  escreve(static_cast<int>(b), registro_);
  ++linhas_[b];
  ++contagem_[r.indice()];
}

void EscritorEfd::escreve(int b, std::string_view registro) {
  if (static_cast<std::size_t>(b) == corrente_) {
    append_latin1(registro, buffer_);
    if (buffer_.size() >= kPedaco) descarrega();
    return;
  }
  if (!adiados_[b]) adiados_[b] = std::make_unique<Adiado>(saida_.pasta_temporaria(), em_memoria_);
  append_latin1(registro, adiados_[b]->buffer());
  adiados_[b]->alivia();
}

void EscritorEfd::descarrega() {
  saida_.escreve(buffer_);
  buffer_.clear();
}

void EscritorEfd::encerra(char bloco) {
  for (const std::size_t ate = kBlocos.find(bloco); corrente_ <= ate; ++corrente_) {
    const char b = kBlocos[corrente_];
    if (!abertos_[corrente_]) {
      const bool adiantado = adiados_[corrente_] && !adiados_[corrente_]->vazio();
      registro(std::string(1, b) + "001", {texto(adiantado ? "0" : "1")});
    }
    if (adiados_[corrente_]) {
      descarrega();
      adiados_[corrente_]->esvazia([this](std::string_view pedaco) { saida_.escreve(pedaco); });
      adiados_[corrente_].reset();
    }
    registro(std::string(1, b) + "990", {inteiro(linhas_[corrente_] + 1)});
  }
}

void EscritorEfd::conclui() {
  encerra('1');
  // 9900 counts every type of the file, block 9's own records included.
  const auto regs = registros();
  for (const std::string_view reg : {"9001", "9990", "9999"}) contagem_[R(reg).indice()] = 1;
  int tipos = 1;  // 9900 itself
  for (std::size_t i = 0; i < regs.size(); ++i)
    if (contagem_[i] > 0 && regs[i].reg != "9900") ++tipos;
  contagem_[R("9900").indice()] = tipos;
  const std::vector<int> contagem = contagem_;
  registro("9001", {texto("0")});
  for (std::size_t i = 0; i < regs.size(); ++i)
    if (contagem[i] > 0) registro("9900", {texto(regs[i].reg), inteiro(contagem[i])});
  registro("9990", {inteiro(linhas_[kBlocos.find('9')] + 2)});
  int total = 1;
  for (const int n : linhas_) total += n;
  registro("9999", {inteiro(total)});
  descarrega();
}

}  // namespace infofiscal::efd
