// The fiscal identities the converters and validators check: CNPJ (numeric and alphanumeric),
// CPF, the 44-character access key of NF-e/NFC-e/CT-e, and the IBGE codes of the 27 units of
// the federation. The state registration (IE) is in inscricao_estadual.h and answers with the
// same Verificacao.
//
// Every check takes the value exactly as the caller holds it and changes nothing: no trimming,
// no upper-casing, no mask removal (a CNPJ with dots or a lower-case letter is refused, and the
// reason says so), so that a message can quote the value as stored. The form a file carries
// comes from sem_mascara, documento and telefone, which drop masks and never a letter. Nothing
// here keeps a reference to its argument except ChaveDeAcesso, whose views point into the
// caller's text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace infofiscal::identidade {

// What is wrong with a value; Nenhum when it is valid.
enum class Defeito : std::uint8_t {
  Nenhum,
  Tamanho,            // not the number of characters (or digits) of its kind
  Caractere,          // a character outside the allowed set, lower-case letters included
  Repetido,           // a numeric CNPJ or CPF of one repeated digit (00000000000000, 111...)
  Prefixo,            // an IE whose fixed start, category digits or range do not fit its state
  DigitoVerificador,  // a check digit that does not match
  Uf,                 // unknown unit of the federation (an IE's UF, a key's state code)
};

// The answer of every check. `motivo` is empty when valid; otherwise a Portuguese phrase that
// completes a sentence naming the culprit, e.g. "CNPJ 12ABC34501DE36 de Fulano: " + motivo
// gives "...: dígito verificador inválido". It never repeats the value itself.
struct Verificacao {
  Defeito defeito = Defeito::Nenhum;
  std::string motivo;

  bool valida() const { return defeito == Defeito::Nenhum; }
  explicit operator bool() const { return valida(); }
};

// The phrase for the character at `posicao` (0-based) of `valor` being refused: "caractere 'x'
// na posição 3 não permitido" (1-based there), a byte outside printable ASCII named by its code.
// Precondition: posicao < valor.size().
std::string caractere_nao_permitido(std::string_view valor, std::size_t posicao);

// A CNPJ of 14 characters (Instrução Normativa RFB 2.229/2024): the first 12 digits or upper-case
// letters A-Z, the last 2 digits, with no mask. Check digits by modulus 11, each character valued
// as its ASCII code minus 48 (digits keep their value, 'A' is 17), so a numeric CNPJ checks as it
// always did. A lower-case letter is refused (Caractere): the caller must not upper-case it
// silently, the stored value is wrong. A numeric CNPJ of one repeated digit is refused (Repetido),
// zeros included: a caller that takes zeros for "no CNPJ" tests for them before calling.
Verificacao verificar_cnpj(std::string_view cnpj);

// A CPF of 11 digits without mask; two mod-11 check digits; one repeated digit refused.
Verificacao verificar_cpf(std::string_view cpf);

// The fields of a 44-character access key (NF-e, NFC-e, CT-e, MDF-e), as views into the text
// given to partes_da_chave, which must outlive them.
struct ChaveDeAcesso {
  std::string_view codigo_uf;     // cUF, IBGE code of the issuer's state ("35")
  std::string_view ano_mes;       // AAMM of issue
  std::string_view cnpj;          // issuer's CNPJ (letters possible), or 000 + CPF
  std::string_view modelo;        // 55, 65, 57...
  std::string_view serie;         // 3 digits
  std::string_view numero;        // nNF, 9 digits
  std::string_view tipo_emissao;  // tpEmis, 1 digit
  std::string_view codigo;        // cNF, 8 digits
  std::string_view digito;        // cDV
};

// Checks a key: 44 characters, all digits but the CNPJ field's first 12 (0-9 or A-Z); the check
// digit by modulus 11 with weights 2 to 9 from the right over the first 43 characters, valued
// ASCII - 48 (remainder 0 or 1 gives 0); the state code one of the 27 units. The CNPJ field is
// not checked as a CNPJ (it may carry a CPF): compare it with the issuer's.
Verificacao verificar_chave(std::string_view chave);

// Splits a key into its fields. Precondition: chave.size() == 44 (verificar_chave passed).
ChaveDeAcesso partes_da_chave(std::string_view chave);

// ---- Values as a register stores them

// The text without the mask characters '.', '-' and '/' that registers keep in CNPJs, CPFs, IEs
// and codes ("12.345.678/0001-95", "7318.15.00"). Every other character is kept, so that a check
// of the result reports it.
std::string sem_mascara(std::string_view valor);

// A CNPJ or CPF as a register stores it, in the form the files carry: the mask dropped, and a
// text of 12 or 13 digits only completed with zeros on the left to 14. Such a text is a CNPJ a
// numeric column kept without its leading zeros: no CPF has more than 11 digits, and a CNPJ
// with letters never lost any. Nothing else changes; check the result with verificar_documento.
std::string documento(std::string_view valor);

// A CNPJ (14 characters) or a CPF (11), in the form documento() gives; any other size is
// Defeito::Tamanho.
Verificacao verificar_documento(std::string_view doc);

// A numeric code as stored (CFOP, CST, NCM, CEST, CEP, a note's number): digits and the mask
// characters only. Defeito::Caractere names the first other character and its position in the
// stored text: the letter of a CST "1A0" is never dropped in silence.
Verificacao verificar_codigo(std::string_view valor);

// A phone as stored ("+55 (19) 3242-1100"): digits and the characters ' ', '(', ')', '-', '.'
// and '+'. `digitos` are its digits, without the country code 55 when there are 12 or 13 of them
// (55, the area code and 8 or 9 digits); the caller checks their number against its field.
struct Telefone {
  std::string digitos;
  Verificacao verificacao;
};
Telefone telefone(std::string_view valor);

// IBGE codes of the units of the federation: "SP" <-> "35". Each returns an empty view when the
// argument names no unit (upper-case sigla, two digits). The views are static.
std::string_view codigo_da_uf(std::string_view sigla);
std::string_view uf_do_codigo(std::string_view codigo);
// The unit of a 7-digit IBGE municipality code (its first two digits); empty when the text is
// not 7 digits or its state code is unknown.
std::string_view uf_do_municipio(std::string_view codigo_municipio);

}  // namespace infofiscal::identidade
