#include "informacao/informacao.h"

#include <charconv>

#include <fmt/format.h>

#include "base/renderings.h"
#include "base/value.h"
#include "base/error.h"

namespace infofiscal {

namespace {

std::string na_linha(int numero, const std::string& why) {
  return fmt::format("Linha {} do arquivo de informações: {}", numero, why);
}

// A line that cannot be cut into columns: the reading cannot go on.
[[noreturn]] void falha(int numero, const std::string& why) { throw Error(na_linha(numero, why)); }

// A column that does not read as its type: the note or product it belongs to is at fault, and
// the others can still be read.
[[noreturn]] void ilegivel(int numero, const std::string& why) {
  throw DataProblem("valor ilegível no arquivo de informações", na_linha(numero, why));
}

bool dois_digitos(std::string_view s, std::size_t pos, int& out) {
  if (pos + 2 > s.size() || s[pos] < '0' || s[pos] > '9' || s[pos + 1] < '0' || s[pos + 1] > '9') return false;
  out = (s[pos] - '0') * 10 + (s[pos + 1] - '0');
  return true;
}

// Reads "[Cnn]" at `pos`; returns nn or -1.
int tag_de_abertura(std::string_view s, std::size_t pos) {
  int n = -1;
  if (s.substr(pos, 2) != "[C" || !dois_digitos(s, pos + 2, n) || pos + 4 >= s.size() || s[pos + 4] != ']') return -1;
  return n;
}

}  // namespace

// Where the closing tag "[/Cnn]" of the column that opens at `valor` begins; npos when the line
// has none. The first such tag closes the column, whatever the value holds before it. A plain
// loop: values are a few characters long, shorter than a library search takes to start.
std::size_t fecho(std::string_view linha, std::size_t valor, char d1, char d2) {
  const char* const fim = linha.data() + linha.size();
  for (const char* p = linha.data() + valor; p + 6 <= fim; ++p)
    if (p[0] == '[' && p[1] == '/' && p[2] == 'C' && p[3] == d1 && p[4] == d2 && p[5] == ']')
      return static_cast<std::size_t>(p - linha.data());
  return std::string_view::npos;
}

void ler_linha_informacao(std::string_view linha, int numero, LinhaInformacao& out) {
  out.tipo = out.trailer = 0;
  out.numero = numero;
  // The widest line, 06, has 38 columns: room for it without growing, cleared in one go.
  out.colunas.assign(40, std::string_view());
  out.presentes.reset();
  std::size_t pos = 0;
  int ultima = -1;
  bool fechada = false;
  // A value holding a line break splits its line in two, and one holding the text of a tag
  // ends its column early: the messages say where the line stands and what was found there.
  const auto onde = [&] {
    if (ultima < 0) return std::string();
    return out.tipo > 0 ? fmt::format(" (linha {:02}, depois da coluna C{:02})", out.tipo, ultima)
                        : fmt::format(" (depois da coluna C{:02})", ultima);
  };
  const auto achado = [&] { return excerpt(linha.substr(pos)); };
  while (pos < linha.size()) {
    if (fechada) falha(numero, fmt::format("texto depois de [C99]: '{}'", achado()));
    const int n = tag_de_abertura(linha, pos);
    if (ultima < 0 && n != 0)
      falha(numero, fmt::format("a linha não começa com [C00], e sim com '{}'{}", achado(),
                                n < 0 ? ": a continuação de uma linha partida por uma quebra de linha dentro de um valor?"
                                      : ""));
    if (n < 0)
      falha(numero, fmt::format("esperava uma tag [Cnn] na posição {}{} e achou '{}': um valor com o texto de uma tag?",
                                pos + 1, onde(), achado()));
    if (n <= ultima) falha(numero, fmt::format("coluna C{:02} fora de ordem{}", n, onde()));
    const std::size_t fim = fecho(linha, pos + 5, linha[pos + 2], linha[pos + 3]);
    if (fim == std::string_view::npos)
      falha(numero, fmt::format("coluna C{0:02} sem [/C{0:02}]{1}: '{2}': uma quebra de linha dentro do valor?", n,
                                onde(), achado()));
    const std::string_view valor = linha.substr(pos + 5, fim - pos - 5);
    if (n == 0) {
      if (!dois_digitos(valor, 0, out.tipo) || valor.size() != 2)
        falha(numero, fmt::format("tipo de linha inválido em [C00]: '{}'", excerpt(valor)));
    } else if (n == 99) {
      if (!dois_digitos(valor, 0, out.trailer) || valor.size() != 2)
        falha(numero, fmt::format("contagem inválida em [C99]: '{}'", excerpt(valor)));
      fechada = true;
    } else {
      if (out.colunas.size() <= static_cast<std::size_t>(n)) out.colunas.resize(n + 1);
      out.colunas[n] = valor;
      out.presentes[n] = true;
    }
    ultima = n;
    pos = fim + 6;
  }
  if (!fechada)
    falha(numero, fmt::format("a linha acaba sem [C99]{}: uma quebra de linha dentro de um valor a partiu em duas?",
                              onde()));
}

LinhaInformacao ler_linha_informacao(std::string_view linha, int numero) {
  LinhaInformacao out;
  ler_linha_informacao(linha, numero, out);
  return out;
}

int tipo_da_linha(std::string_view linha) {
  int tipo = -1;
  if (linha.substr(0, 5) != "[C00]" || !dois_digitos(linha, 5, tipo) || linha.substr(7, 6) != "[/C00]") return -1;
  return tipo;
}

std::int64_t LinhaInformacao::inteiro(int n) const {
  const std::string_view s = texto(n);
  std::int64_t v = 0;
  const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), v);
  if (s.empty() || ec != std::errc() || end != s.data() + s.size())
    ilegivel(numero, fmt::format("C{:02} da linha {:02} não é um número inteiro: '{}'", n, tipo, excerpt(s)));
  return v;
}

std::int64_t LinhaInformacao::decimal_sem_perda(int n, int casas) const {
  const std::string_view s = texto(n);
  if (const auto separador = s.find_first_of(",."); separador != std::string_view::npos) {
    std::string_view decimais = s.substr(separador + 1);
    while (!decimais.empty() && decimais.back() == '0') decimais.remove_suffix(1);
    if (static_cast<int>(decimais.size()) > casas)
      throw DataProblem("valor com mais casas decimais do que o campo",
                        fmt::format("C{:02} da linha {:02} '{}' tem {} casas decimais; o campo tem {}", n, tipo, s,
                                    decimais.size(), casas));
  }
  return decimal(n, casas);
}

std::int64_t LinhaInformacao::decimal(int n, int casas) const {
  const std::string_view s = texto(n);
  const auto invalido = [&] { ilegivel(numero, fmt::format("C{:02} da linha {:02} não é um valor: '{}'", n, tipo, excerpt(s))); };
  std::size_t i = s.empty() || s[0] != '-' ? 0 : 1;
  const bool negativo = i == 1;
  // 18 significant digits always fit an int64 (< 9.2e18).
  std::int64_t v = 0;
  int digitos = 0, decimais = -1;  // decimals read after the separator; -1 before it
  bool arredonda = false;
  for (; i < s.size(); ++i) {
    const char c = s[i];
    if ((c == ',' || c == '.') && decimais < 0) {
      decimais = 0;
    } else if (c >= '0' && c <= '9') {
      if (decimais < casas) {
        if (++digitos > 18) ilegivel(numero, fmt::format("C{:02} da linha {:02} grande demais: '{}'", n, tipo, excerpt(s)));
        v = v * 10 + (c - '0');
        if (decimais >= 0) ++decimais;
      } else if (decimais++ == casas) {
        arredonda = c >= '5';
      }
    } else {
      invalido();
    }
  }
  if (digitos == 0 && !arredonda) invalido();
  for (int d = decimais < 0 ? 0 : decimais; d < casas; ++d) {
    if (++digitos > 18) ilegivel(numero, fmt::format("C{:02} da linha {:02} grande demais: '{}'", n, tipo, excerpt(s)));
    v *= 10;
  }
  v += arredonda ? 1 : 0;
  return negativo ? -v : v;
}

TimeStamp LinhaInformacao::data(int n) const {
  const std::string_view s = texto(n);
  TimeStamp t;
  const bool formato = (s.size() == 10 || (s.size() == 19 && s[10] == ' ' && s[13] == ':' && s[16] == ':')) &&
                       s[2] == '/' && s[5] == '/';
  bool ok = formato && dois_digitos(s, 0, t.day) && dois_digitos(s, 3, t.month) && dois_digitos(s, 6, t.year);
  if (ok) {
    int low = 0;
    ok = dois_digitos(s, 8, low);
    t.year = t.year * 100 + low;
  }
  if (ok && s.size() == 19)
    ok = dois_digitos(s, 11, t.hour) && dois_digitos(s, 14, t.minute) && dois_digitos(s, 17, t.second);
  if (!ok || t.month < 1 || t.month > 12 || t.day < 1 || t.day > days_in_month(t.month, t.year))
    ilegivel(numero, fmt::format("C{:02} da linha {:02} não é uma data: '{}'", n, tipo, excerpt(s)));
  return t;
}

}  // namespace infofiscal
