#include "fiscal/inscricao_estadual.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace infofiscal::identidade {
namespace {

// How a weighted sum S becomes a check digit.
enum class Calculo : std::uint8_t {
  Modulo11,         // r = S mod 11; r 0 or 1 gives 0, else 11 - r. States that write it as
                    // "(S x 10) mod 11, 10 gives 0" (AL, RN) get the same digit: 10 = -1 mod 11.
  Modulo11Menos10,  // 11 - (S mod 11), less 10 when it gives 10 or 11 (RO, PE's old form)
  Modulo10ou11,     // BA: 10 - (S mod 10) (0 when it divides) or Modulo11, by Forma::seletor
  Resto11,          // the units digit of S mod 11 (SP)
  Resto9,           // S mod 9 (RR)
  SomaAlgarismos,   // MG's first digit: the digits of each product are added, and the digit is
                    // what the sum lacks to reach a multiple of 10
  Amapa,            // 11 - ((p + S) mod 11); 10 gives 0, 11 gives d; p and d by the range
  Goias,            // Modulo11, but for the old numbers the state kept (see digito_de_goias)
};

// A check digit: its position among the IE's digits and the weight of every other position
// (0 for the positions left out of the sum, the digit's own among them).
struct Digito {
  int posicao = -1;  // -1: no such digit
  std::array<std::uint8_t, 14> pesos{};
  Calculo calculo = Calculo::Modulo11;
};

// A run of digits that may hold only some values: a fixed start, category digits.
struct Trecho {
  int inicio = 0;
  int tamanho = 0;  // 0: no such run
  std::string_view valores;    // the allowed values, separated by '|'
  std::string_view exigencia;  // the rule in words, for the message ("começar por 24")
};

// One form of a unit's IE (a unit has one or two: BA 8 or 9 digits, RO old and new...).
struct Forma {
  std::string_view uf;
  int tamanho;  // digits (after the P of SP's rural form)
  std::array<Trecho, 2> trechos{};
  std::array<Digito, 2> digitos{};
  int minimo = 0;      // MT: fewer digits, down to this many, are completed with zeros on the left
  int seletor = -1;    // BA: the digit whose value chooses modulus 10 or 11
  bool rural = false;  // SP: the form written after the letter P
};

constexpr Digito dv(int posicao, std::initializer_list<std::uint8_t> pesos, Calculo calculo = Calculo::Modulo11) {
  Digito d{posicao, {}, calculo};
  std::size_t i = 0;
  for (auto p : pesos) d.pesos[i++] = p;
  return d;
}

// Every fixed start the units publish is two digits.
constexpr Trecho inicio(std::string_view valores, std::string_view exigencia) { return {0, 2, valores, exigencia}; }

using enum Calculo;

// Weights 9 to 2 over the first eight digits, the ninth the check digit: the form most units use.
constexpr Digito kNoveDigitos = dv(8, {9, 8, 7, 6, 5, 4, 3, 2});

constexpr Forma kFormas[] = {
    // AC: SEFAZ-AC, roteiro de crítica publicado no SINTEGRA (01.004.823/001-12)
    {"AC", 13, {inicio("01", "começar por 01")},
     {dv(11, {4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2}), dv(12, {5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2})}},
    // AL: SEFAZ-AL, roteiro no SINTEGRA: 24, type of company (0 normal, 3 rural producer,
    // 5 substitute, 7 street micro-company, 8 micro-company), 5 digits, check digit
    {"AL", 9, {inicio("24", "começar por 24"), {2, 1, "0|3|5|7|8", "ter como 3º dígito (tipo de empresa) 0, 3, 5, 7 ou 8"}},
     {kNoveDigitos}},
    // AP: SEFAZ-AP, roteiro no SINTEGRA: 03, then p and d by range of the first eight digits
    {"AP", 9, {inicio("03", "começar por 03")}, {dv(8, {9, 8, 7, 6, 5, 4, 3, 2}, Amapa)}},
    // AM: SEFAZ-AM, roteiro no SINTEGRA (a sum under 11 gives 11 - sum: the same digit)
    {"AM", 9, {}, {kNoveDigitos}},
    // BA: SEFAZ-BA, "Fórmula de cálculo dos dígitos verificadores" (8 digits: the first chooses
    // the modulus; 9 digits: the second does). The last digit is computed first, then the one
    // before it over the number and the last digit.
    {"BA", 8, {}, {dv(7, {7, 6, 5, 4, 3, 2}, Modulo10ou11), dv(6, {8, 7, 6, 5, 4, 3, 0, 2}, Modulo10ou11)}, 0, 0},
    {"BA", 9, {}, {dv(8, {8, 7, 6, 5, 4, 3, 2}, Modulo10ou11), dv(7, {9, 8, 7, 6, 5, 4, 3, 0, 2}, Modulo10ou11)}, 0, 1},
    // CE: SEFAZ-CE, roteiro no SINTEGRA
    {"CE", 9, {}, {kNoveDigitos}},
    // DF: SEFAZ-DF, roteiro no SINTEGRA (07.300001.001-09)
    {"DF", 13, {inicio("07", "começar por 07")},
     {dv(11, {4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2}), dv(12, {5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2})}},
    // ES: SEFAZ-ES, roteiro no SINTEGRA
    {"ES", 9, {}, {kNoveDigitos}},
    // GO: SEFAZ-GO, roteiro no SINTEGRA (Cad_Estados/cad_GO): AB = 10, 11 or 20 to 29
    {"GO", 9, {inicio("10|11|20|21|22|23|24|25|26|27|28|29", "começar por 10, 11 ou 20 a 29")},
     {dv(8, {9, 8, 7, 6, 5, 4, 3, 2}, Goias)}},
    // MA: SEFAZ-MA, roteiro no SINTEGRA
    {"MA", 9, {inicio("12", "começar por 12")}, {kNoveDigitos}},
    // MT: SEFAZ-MT, roteiro no SINTEGRA (0013000001-9; shorter numbers completed with zeros)
    {"MT", 11, {}, {dv(10, {3, 2, 9, 8, 7, 6, 5, 4, 3, 2})}, 9},
    // MS: SEFAZ-MS, roteiro no SINTEGRA (Cad_Estados/cad_MS): first digit 2, second 8; 50 for
    // the newer registrations (not in that text, see docs/identidades.md)
    {"MS", 9, {inicio("28|50", "começar por 28 ou 50")}, {kNoveDigitos}},
    // MG: SEF-MG, rotina de cálculo do dígito verificador divulgada para o SINTEGRA
    // (062.307.904/0081). The first digit's weights alternate 1, 2 over the number with a 0
    // inserted after the 3-digit municipality code, hence the 1 repeated at the fourth digit.
    {"MG", 13, {},
     {dv(11, {1, 2, 1, 1, 2, 1, 2, 1, 2, 1, 2}, SomaAlgarismos), dv(12, {3, 2, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2})}},
    // PA: SEFA-PA, roteiro no SINTEGRA
    {"PA", 9, {inicio("15", "começar por 15")}, {kNoveDigitos}},
    // PB: SER-PB, roteiro no SINTEGRA
    {"PB", 9, {}, {kNoveDigitos}},
    // PR: SEFA-PR, "Cálculo do dígito verificador" (123.45678-50)
    {"PR", 10, {}, {dv(8, {3, 2, 7, 6, 5, 4, 3, 2}), dv(9, {4, 3, 2, 7, 6, 5, 4, 3, 2})}},
    // PE: SEFAZ-PE, roteiro no SINTEGRA: eFisco (0321418-40) and the old CACEPE number
    // (18.1.001.0000004-9)
    {"PE", 9, {}, {dv(7, {8, 7, 6, 5, 4, 3, 2}), dv(8, {9, 8, 7, 6, 5, 4, 3, 2})}},
    {"PE", 14, {}, {dv(13, {5, 4, 3, 2, 1, 9, 8, 7, 6, 5, 4, 3, 2}, Modulo11Menos10)}},
    // PI: SEFAZ-PI, roteiro no SINTEGRA
    {"PI", 9, {}, {kNoveDigitos}},
    // RJ: SEFAZ-RJ, roteiro no SINTEGRA
    {"RJ", 8, {}, {dv(7, {2, 7, 6, 5, 4, 3, 2})}},
    // RN: SET-RN, roteiro no SINTEGRA: 9 digits (20.040.040-1) and 10 (20.0.040.040-0)
    {"RN", 9, {inicio("20", "começar por 20")}, {kNoveDigitos}},
    {"RN", 10, {inicio("20", "começar por 20")}, {dv(9, {10, 9, 8, 7, 6, 5, 4, 3, 2})}},
    // RS: SEFAZ-RS, roteiro no SINTEGRA (224/3658792)
    {"RS", 10, {}, {dv(9, {2, 9, 8, 7, 6, 5, 4, 3, 2})}},
    // RO: SEFIN-RO, roteiro no SINTEGRA (Cad_Estados/cad_RO): before 01/08/2000 3 digits of
    // municipality left out of the sum (101.62521-3), since then 13 digits (0000000062521-3)
    {"RO", 9, {}, {dv(8, {0, 0, 0, 6, 5, 4, 3, 2}, Modulo11Menos10)}},
    {"RO", 14, {}, {dv(13, {6, 5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2}, Modulo11Menos10)}},
    // RR: SEFAZ-RR, roteiro no SINTEGRA
    {"RR", 9, {inicio("24", "começar por 24")}, {dv(8, {1, 2, 3, 4, 5, 6, 7, 8}, Resto9)}},
    // SC: SEF-SC, roteiro no SINTEGRA
    {"SC", 9, {}, {kNoveDigitos}},
    // SP: SEFAZ-SP, roteiro no SINTEGRA: industry and trade (110.042.490.114), rural producer
    // P0MMMSSSSD000 (P-01100424.3/002), its check digit over the eight digits after the P
    {"SP", 12, {}, {dv(8, {1, 3, 4, 5, 6, 7, 8, 10}, Resto11), dv(11, {3, 2, 10, 9, 8, 7, 6, 5, 4, 3, 2}, Resto11)}},
    {"SP", 12, {}, {dv(8, {1, 3, 4, 5, 6, 7, 8, 10}, Resto11)}, 0, -1, true},
    // SE: SEFAZ-SE, roteiro no SINTEGRA
    {"SE", 9, {}, {kNoveDigitos}},
    // TO: SEFAZ-TO, roteiro no SINTEGRA: 9 digits, and the old 11 whose 3rd and 4th digits are
    // the category, left out of the sum (29 01 022783 6)
    {"TO", 9, {}, {kNoveDigitos}},
    {"TO", 11, {{2, 2, "01|02|03|99", "ter como 3º e 4º dígitos 01, 02, 03 ou 99"}},
     {dv(10, {9, 8, 0, 0, 7, 6, 5, 4, 3, 2})}},
};

bool mascara(char c) { return c == '.' || c == '-' || c == '/'; }
bool digito(char c) { return c >= '0' && c <= '9'; }

Verificacao falha(Defeito defeito, std::string motivo) { return {defeito, std::move(motivo)}; }

int numero(std::string_view digitos) {
  int n = 0;
  for (char c : digitos) n = n * 10 + (c - '0');
  return n;
}

int modulo_11(int soma) { return soma % 11 < 2 ? 0 : 11 - soma % 11; }

// AP's ranges of the first eight digits: p is added to the sum, d is the digit when 11 - r is 11.
int digito_do_amapa(int soma, std::string_view digitos) {
  const int n = numero(digitos.substr(0, 8));
  const auto [p, d] = n <= 3017000 ? std::pair{5, 0} : n <= 3019022 ? std::pair{9, 1} : std::pair{0, 0};
  const int resultado = 11 - (p + soma) % 11;
  return resultado == 10 ? 0 : resultado == 11 ? d : resultado;
}

// GO's old numbers: from 10103105 to 10119997 a remainder of 1 gives 1, not 0; and 11094402
// takes 0 or 1 (checked in confere).
int digito_de_goias(int soma, std::string_view digitos) {
  const int n = numero(digitos.substr(0, 8));
  if (soma % 11 == 1 && n >= 10103105 && n <= 10119997) return 1;
  return modulo_11(soma);
}

int calcular(const Digito& d, std::string_view digitos, const Forma& forma) {
  int soma = 0;
  for (std::size_t i = 0; i < digitos.size(); ++i) {
    const int produto = (digitos[i] - '0') * d.pesos[i];
    soma += d.calculo == SomaAlgarismos ? produto / 10 + produto % 10 : produto;
  }
  switch (d.calculo) {
    case Modulo11: return modulo_11(soma);
    case Modulo11Menos10: return (11 - soma % 11) % 10;
    case Modulo10ou11: {
      const char c = digitos[forma.seletor];
      return c == '6' || c == '7' || c == '9' ? modulo_11(soma) : (10 - soma % 10) % 10;
    }
    case Resto11: return soma % 11 % 10;
    case Resto9: return soma % 9;
    case SomaAlgarismos: return (10 - soma % 10) % 10;
    case Amapa: return digito_do_amapa(soma, digitos);
    case Goias: return digito_de_goias(soma, digitos);
  }
  return -1;
}

bool confere(const Digito& d, std::string_view digitos, const Forma& forma) {
  const int escrito = digitos[d.posicao] - '0';
  if (d.calculo == Goias && digitos.substr(0, 8) == "11094402") return escrito <= 1;
  return calcular(d, digitos, forma) == escrito;
}

bool permitido(const Trecho& t, std::string_view digitos) {
  const auto valor = digitos.substr(t.inicio, t.tamanho);
  for (std::size_t de = 0; de <= t.valores.size();) {
    const auto ate = std::min(t.valores.find('|', de), t.valores.size());
    if (t.valores.substr(de, ate - de) == valor) return true;
    de = ate + 1;
  }
  return false;
}

Verificacao verificar_forma(const Forma& forma, std::string_view digitos) {
  for (const auto& t : forma.trechos)
    if (t.tamanho > 0 && !permitido(t, digitos)) return falha(Defeito::Prefixo, fmt::format("deve {}", t.exigencia));
  for (const auto& d : forma.digitos)
    if (d.posicao >= 0 && !confere(d, digitos, forma))
      return falha(Defeito::DigitoVerificador, "dígito verificador inválido");
  return {};
}

// "8 ou 9", "de 9 a 11", "13": the sizes of the unit's forms, for the message.
std::string tamanhos(std::string_view uf, bool rural) {
  std::string texto;
  for (const auto& f : kFormas) {
    if (f.uf != uf || f.rural != rural) continue;
    if (!texto.empty()) texto += " ou ";
    texto += f.minimo > 0 ? fmt::format("de {} a {}", f.minimo, f.tamanho) : std::to_string(f.tamanho);
  }
  return texto;
}

// The first character that is neither a digit nor a mask character (nor SP's leading P).
Verificacao caracteres(std::string_view ie, bool p_permitido) {
  for (std::size_t i = 0; i < ie.size(); ++i) {
    const char c = ie[i];
    if (digito(c) || mascara(c) || (i == 0 && c == 'P' && p_permitido)) continue;
    return falha(Defeito::Caractere, caractere_nao_permitido(ie, i));
  }
  return {};
}

bool isento_em_minusculas(std::string_view ie) {
  constexpr std::string_view kIsento = "ISENTO";
  return ie.size() == kIsento.size() && std::equal(ie.begin(), ie.end(), kIsento.begin(), [](char a, char b) {
           return (a >= 'a' && a <= 'z' ? a - 'a' + 'A' : a) == b;
         });
}

}  // namespace

Verificacao verificar_inscricao_estadual(std::string_view uf, std::string_view ie) {
  if (codigo_da_uf(uf).empty()) return falha(Defeito::Uf, fmt::format("UF '{}' desconhecida", uf));
  if (ie == "ISENTO") return {};
  if (isento_em_minusculas(ie)) return falha(Defeito::Caractere, "ISENTO deve estar em maiúsculas");
  const bool rural = uf == "SP" && !ie.empty() && ie.front() == 'P';
  if (auto v = caracteres(ie, uf == "SP"); !v) return v;

  std::string digitos = sem_mascara(rural ? ie.substr(1) : ie);
  if (digitos.empty()) return falha(Defeito::Tamanho, "inscrição vazia");
  if (digitos.find_first_not_of('0') == std::string::npos) return falha(Defeito::Repetido, "inscrição só de zeros");
  for (const auto& forma : kFormas) {
    const int n = static_cast<int>(digitos.size());
    const int menor = forma.minimo > 0 ? forma.minimo : forma.tamanho;
    if (forma.uf != uf || forma.rural != rural || n < menor || n > forma.tamanho) continue;
    digitos.insert(0, forma.tamanho - n, '0');
    return verificar_forma(forma, digitos);
  }
  return falha(Defeito::Tamanho, fmt::format("tem {} dígitos{}; a inscrição {}de {} tem {}", digitos.size(),
                                             rural ? " após o P" : "", rural ? "de produtor rural " : "", uf,
                                             tamanhos(uf, rural)));
}

}  // namespace infofiscal::identidade
