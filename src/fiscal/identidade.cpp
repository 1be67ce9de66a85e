#include "fiscal/identidade.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace infofiscal::identidade {
namespace {

// IBGE codes of the units of the federation (the cUF of the NF-e manual's table).
struct Unidade {
  std::string_view sigla;
  std::string_view codigo;
};
constexpr std::array<Unidade, 27> kUnidades{{
    {"RO", "11"}, {"AC", "12"}, {"AM", "13"}, {"RR", "14"}, {"PA", "15"}, {"AP", "16"}, {"TO", "17"},
    {"MA", "21"}, {"PI", "22"}, {"CE", "23"}, {"RN", "24"}, {"PB", "25"}, {"PE", "26"}, {"AL", "27"},
    {"SE", "28"}, {"BA", "29"}, {"MG", "31"}, {"ES", "32"}, {"RJ", "33"}, {"SP", "35"}, {"PR", "41"},
    {"SC", "42"}, {"RS", "43"}, {"MS", "50"}, {"MT", "51"}, {"GO", "52"}, {"DF", "53"},
}};

bool digito(char c) { return c >= '0' && c <= '9'; }
bool maiuscula(char c) { return c >= 'A' && c <= 'Z'; }

Verificacao falha(Defeito defeito, std::string motivo) { return {defeito, std::move(motivo)}; }

Verificacao tamanho_errado(std::string_view valor, std::string_view nome, int esperado) {
  return falha(Defeito::Tamanho, fmt::format("tem {} caracteres; {} tem {}", valor.size(), nome, esperado));
}

Verificacao caractere_invalido(std::string_view valor, std::size_t i, std::string_view porque) {
  return falha(Defeito::Caractere, caractere_nao_permitido(valor, i) + std::string(porque));
}

// Modulus 11 over `texto`, each character valued ASCII - 48, with weights 2, 3, ... from the
// right that start again at 2 after `peso_maximo`; remainder 0 or 1 gives 0, any other r gives
// 11 - r. This is the CNPJ's (peso_maximo 9), the access key's (9) and the CPF's (never reached).
int digito_modulo_11(std::string_view texto, int peso_maximo) {
  int soma = 0, peso = 2;
  for (auto it = texto.rbegin(); it != texto.rend(); ++it) {
    soma += (*it - '0') * peso;
    peso = peso == peso_maximo ? 2 : peso + 1;
  }
  const int resto = soma % 11;
  return resto < 2 ? 0 : 11 - resto;
}

// Whether the last `quantos` characters are the check digits of what precedes them, each one
// computed over everything before it.
bool digitos_conferem(std::string_view texto, int quantos, int peso_maximo) {
  for (std::size_t fim = texto.size() - quantos; fim < texto.size(); ++fim)
    if (digito_modulo_11(texto.substr(0, fim), peso_maximo) != texto[fim] - '0') return false;
  return true;
}

bool um_digito_repetido(std::string_view s) {
  return std::all_of(s.begin(), s.end(), [&](char c) { return c == s.front(); });
}

Verificacao digito_invalido() { return falha(Defeito::DigitoVerificador, "dígito verificador inválido"); }

// The first character of `s` outside [0-9] (or [0-9A-Z] from `letras_de` to before `letras_ate`),
// with the reason.
Verificacao caracteres(std::string_view s, std::size_t letras_de, std::size_t letras_ate, std::string_view nome) {
  for (std::size_t i = 0; i < s.size(); ++i) {
    const char c = s[i];
    if (digito(c)) continue;
    const bool pode_letra = i >= letras_de && i < letras_ate;
    if (pode_letra && maiuscula(c)) continue;
    if (pode_letra && c >= 'a' && c <= 'z')
      return caractere_invalido(s, i, fmt::format(": {} só tem letras maiúsculas", nome));
    // The two characters after the letters are the CNPJ's check digits, in a CNPJ as in a key.
    if (maiuscula(c) && letras_ate > letras_de && i >= letras_ate && i < letras_ate + 2)
      return caractere_invalido(s, i, ": os dígitos verificadores do CNPJ são numéricos");
    return caractere_invalido(s, i, "");
  }
  return {};
}

}  // namespace

std::string caractere_nao_permitido(std::string_view valor, std::size_t posicao) {
  // Printable ASCII as itself; anything else (a byte of a UTF-8 letter, a control character) by
  // its code, so that the user can find it.
  const char c = valor[posicao];
  const auto u = static_cast<unsigned char>(c);
  const auto nome = u >= 0x20 && u < 0x7f ? fmt::format("'{}'", c) : fmt::format("de código 0x{:02X}", u);
  return fmt::format("caractere {} na posição {} não permitido", nome, posicao + 1);
}

Verificacao verificar_cnpj(std::string_view cnpj) {
  if (cnpj.size() != 14) return tamanho_errado(cnpj, "o CNPJ", 14);
  if (auto v = caracteres(cnpj, 0, 12, "o CNPJ"); !v) return v;
  if (um_digito_repetido(cnpj) && digito(cnpj.front())) return falha(Defeito::Repetido, "todos os dígitos iguais");
  if (!digitos_conferem(cnpj, 2, 9)) return digito_invalido();
  return {};
}

Verificacao verificar_cpf(std::string_view cpf) {
  if (cpf.size() != 11) return tamanho_errado(cpf, "o CPF", 11);
  if (auto v = caracteres(cpf, 0, 0, "o CPF"); !v) return v;
  if (um_digito_repetido(cpf)) return falha(Defeito::Repetido, "todos os dígitos iguais");
  if (!digitos_conferem(cpf, 2, 11)) return digito_invalido();
  return {};
}

Verificacao verificar_chave(std::string_view chave) {
  if (chave.size() != 44) return tamanho_errado(chave, "a chave de acesso", 44);
  // The CNPJ field runs from position 7 to 20; its first 12 characters may be letters.
  if (auto v = caracteres(chave, 6, 18, "o CNPJ da chave"); !v) return v;
  if (!digitos_conferem(chave, 1, 9)) return digito_invalido();
  if (uf_do_codigo(chave.substr(0, 2)).empty())
    return falha(Defeito::Uf, fmt::format("código de UF {} desconhecido", chave.substr(0, 2)));
  return {};
}

ChaveDeAcesso partes_da_chave(std::string_view chave) {
  return {chave.substr(0, 2),  chave.substr(2, 4),  chave.substr(6, 14), chave.substr(20, 2), chave.substr(22, 3),
          chave.substr(25, 9), chave.substr(34, 1), chave.substr(35, 8), chave.substr(43, 1)};
}

std::string sem_mascara(std::string_view valor) {
  std::string s;
  for (const char c : valor)
    if (c != '.' && c != '-' && c != '/') s.push_back(c);
  return s;
}

std::string documento(std::string_view valor) {
  std::string doc = sem_mascara(valor);
  if ((doc.size() == 12 || doc.size() == 13) && std::all_of(doc.begin(), doc.end(), digito))
    doc.insert(0, 14 - doc.size(), '0');
  return doc;
}

Verificacao verificar_documento(std::string_view doc) {
  if (doc.size() == 14) return verificar_cnpj(doc);
  if (doc.size() == 11) return verificar_cpf(doc);
  return falha(Defeito::Tamanho, fmt::format("tem {} caracteres; o CNPJ tem 14 e o CPF 11", doc.size()));
}

namespace {

// The first character of `valor` that is neither a digit nor one of `permitidos`.
Verificacao so_digitos_e(std::string_view valor, std::string_view permitidos, std::string_view porque) {
  for (std::size_t i = 0; i < valor.size(); ++i)
    if (!digito(valor[i]) && permitidos.find(valor[i]) == std::string_view::npos)
      return caractere_invalido(valor, i, porque);
  return {};
}

}  // namespace

Verificacao verificar_codigo(std::string_view valor) {
  return so_digitos_e(valor, ".-/", ": o código é numérico");
}

Telefone telefone(std::string_view valor) {
  Telefone t{{}, so_digitos_e(valor, " ()-.+", ": o telefone só tem dígitos")};
  for (const char c : valor)
    if (digito(c)) t.digitos.push_back(c);
  if ((t.digitos.size() == 12 || t.digitos.size() == 13) && t.digitos.starts_with("55")) t.digitos.erase(0, 2);
  return t;
}

std::string_view codigo_da_uf(std::string_view sigla) {
  for (const auto& u : kUnidades)
    if (u.sigla == sigla) return u.codigo;
  return {};
}

std::string_view uf_do_codigo(std::string_view codigo) {
  for (const auto& u : kUnidades)
    if (u.codigo == codigo) return u.sigla;
  return {};
}

std::string_view uf_do_municipio(std::string_view codigo_municipio) {
  if (codigo_municipio.size() != 7 || !std::all_of(codigo_municipio.begin(), codigo_municipio.end(), digito)) return {};
  return uf_do_codigo(codigo_municipio.substr(0, 2));
}

}  // namespace infofiscal::identidade
