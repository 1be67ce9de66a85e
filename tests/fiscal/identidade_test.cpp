// CNPJ (numeric and alphanumeric), CPF, the access key and the IBGE codes of the units.
#include <gtest/gtest.h>

#include "fiscal/identidade.h"

namespace infofiscal::identidade {
namespace {

struct Caso {
  std::string_view valor;
  Defeito defeito;
  std::string_view motivo;  // exact text; empty when valid
};

void confere(const Verificacao& v, const Caso& caso) {
  EXPECT_EQ(v.defeito, caso.defeito) << caso.valor;
  EXPECT_EQ(v.motivo, caso.motivo) << caso.valor;
  EXPECT_EQ(v.valida(), caso.defeito == Defeito::Nenhum) << caso.valor;
}

TEST(IdentidadeCnpj, AlphanumericAndNumericByTheSameRule) {
  const Caso casos[] = {
      // The example published with the alphanumeric CNPJ (12.ABC.345/01DE-35).
      {"12ABC34501DE35", Defeito::Nenhum, ""},
      {"12ABC34501DE36", Defeito::DigitoVerificador, "dígito verificador inválido"},
      {"12ABC34501DF35", Defeito::DigitoVerificador, "dígito verificador inválido"},  // a letter changed
      {"12ABC34501DE53", Defeito::DigitoVerificador, "dígito verificador inválido"},  // digits swapped
      // Lower case is another value, not a spelling of the same one.
      {"12abc34501de35", Defeito::Caractere,
       "caractere 'a' na posição 3 não permitido: o CNPJ só tem letras maiúsculas"},
      {"12ABC34501DEA5", Defeito::Caractere,
       "caractere 'A' na posição 13 não permitido: os dígitos verificadores do CNPJ são numéricos"},
      {"12.ABC.345/01DE-35", Defeito::Tamanho, "tem 18 caracteres; o CNPJ tem 14"},
      {"12ABC34501DE3", Defeito::Tamanho, "tem 13 caracteres; o CNPJ tem 14"},
      {"", Defeito::Tamanho, "tem 0 caracteres; o CNPJ tem 14"},
      {"12ABC 4501DE35", Defeito::Caractere, "caractere ' ' na posição 6 não permitido"},
      {"12\xC3\x87" "BC4501DE35", Defeito::Caractere, "caractere de código 0xC3 na posição 3 não permitido"},
      // Numeric CNPJ 11.222.333/0001-81, worked by hand: sums 102 (r 3, digit 8) and 120 (r 10, 1).
      {"11222333000181", Defeito::Nenhum, ""},
      {"11222333000182", Defeito::DigitoVerificador, "dígito verificador inválido"},
      {"11222333000191", Defeito::DigitoVerificador, "dígito verificador inválido"},
      // 11.222.333/0005-05: sum 110, r 0, so the first digit is 0, not 11.
      {"11222333000505", Defeito::Nenhum, ""},
      {"11222333000515", Defeito::DigitoVerificador, "dígito verificador inválido"},
      // One repeated digit passes the digit rule but is no CNPJ.
      {"00000000000000", Defeito::Repetido, "todos os dígitos iguais"},
      {"11111111111111", Defeito::Repetido, "todos os dígitos iguais"},
      {"99999999999999", Defeito::Repetido, "todos os dígitos iguais"},
  };
  for (const auto& caso : casos) confere(verificar_cnpj(caso.valor), caso);
}

TEST(IdentidadeCpf, TwoModulus11DigitsAndNoRepeatedDigit) {
  const Caso casos[] = {
      // 111.444.777-35, worked by hand: weights 10..2 give 162 (r 8, digit 3), 11..2 give 204
      // (r 6, digit 5).
      {"11144477735", Defeito::Nenhum, ""},
      {"11144477736", Defeito::DigitoVerificador, "dígito verificador inválido"},
      {"11144477725", Defeito::DigitoVerificador, "dígito verificador inválido"},
      {"11144477753", Defeito::DigitoVerificador, "dígito verificador inválido"},
      {"111.444.777-35", Defeito::Tamanho, "tem 14 caracteres; o CPF tem 11"},
      {"1114447773", Defeito::Tamanho, "tem 10 caracteres; o CPF tem 11"},
      {"1114447773A", Defeito::Caractere, "caractere 'A' na posição 11 não permitido"},
      {"00000000000", Defeito::Repetido, "todos os dígitos iguais"},
      {"55555555555", Defeito::Repetido, "todos os dígitos iguais"},
  };
  for (const auto& caso : casos) confere(verificar_cpf(caso.valor), caso);
}

TEST(IdentidadeChave, CheckDigitCharactersSizeAndState) {
  const Caso casos[] = {
      // An NFC-e of AM and an NF-e of RJ as printed on their DANFEs.
      {"13181017921427000125650010000000309887251170", Defeito::Nenhum, ""},
      {"33150308370779000149550010001100931002410775", Defeito::Nenhum, ""},
      {"33150308370779000149550010001100931002410774", Defeito::DigitoVerificador, "dígito verificador inválido"},
      {"33150308370779000149550010001100941002410775", Defeito::DigitoVerificador, "dígito verificador inválido"},
      // An NF-e of SP issued by the alphanumeric CNPJ 12ABC34501DE35; its digit worked by hand:
      // weights 2..9 from the right over the 43 characters valued ASCII - 48 give 862, r 4, 7.
      {"3526071" "2ABC34501DE35" "550010000001231123456787", Defeito::Nenhum, ""},
      {"3526071" "2ABC34501DE35" "550010000001231123456786", Defeito::DigitoVerificador, "dígito verificador inválido"},
      {"3526071" "2abc34501de35" "550010000001231123456787", Defeito::Caractere,
       "caractere 'a' na posição 9 não permitido: o CNPJ da chave só tem letras maiúsculas"},
      {"3526071" "2ABC34501DEA5" "550010000001231123456787", Defeito::Caractere,
       "caractere 'A' na posição 19 não permitido: os dígitos verificadores do CNPJ são numéricos"},
      // Letters only in the CNPJ field: not in the series, number or code.
      {"35260712ABC34501DE3555001000000123A123456788", Defeito::Caractere,
       "caractere 'A' na posição 35 não permitido"},
      {"3318101792142700012565001000000030988725117", Defeito::Tamanho, "tem 43 caracteres; a chave de acesso tem 44"},
      {"131810179214270001256500100000003098872511700", Defeito::Tamanho,
       "tem 45 caracteres; a chave de acesso tem 44"},
      // State code 34 (no unit) with a right check digit: 13... with the state changed, digit redone.
      {"34181017921427000125650010000000309887251170", Defeito::Uf, "código de UF 34 desconhecido"},
  };
  for (const auto& caso : casos) confere(verificar_chave(caso.valor), caso);
}

TEST(IdentidadeChave, PartsForTheIssuersStateAndCnpj) {
  const auto p = partes_da_chave("3526071" "2ABC34501DE35" "550010000001231123456787");
  EXPECT_EQ(p.codigo_uf, "35");
  EXPECT_EQ(uf_do_codigo(p.codigo_uf), "SP");
  EXPECT_EQ(p.ano_mes, "2607");
  EXPECT_EQ(p.cnpj, "12ABC34501DE35");
  EXPECT_EQ(p.modelo, "55");
  EXPECT_EQ(p.serie, "001");
  EXPECT_EQ(p.numero, "000000123");
  EXPECT_EQ(p.tipo_emissao, "1");
  EXPECT_EQ(p.codigo, "12345678");
  EXPECT_EQ(p.digito, "7");
}

TEST(IdentidadeUf, IbgeCodesOfTheTwentySevenUnits) {
  const std::pair<std::string_view, std::string_view> unidades[] = {
      {"RO", "11"}, {"AC", "12"}, {"AM", "13"}, {"RR", "14"}, {"PA", "15"}, {"AP", "16"}, {"TO", "17"},
      {"MA", "21"}, {"PI", "22"}, {"CE", "23"}, {"RN", "24"}, {"PB", "25"}, {"PE", "26"}, {"AL", "27"},
      {"SE", "28"}, {"BA", "29"}, {"MG", "31"}, {"ES", "32"}, {"RJ", "33"}, {"SP", "35"}, {"PR", "41"},
      {"SC", "42"}, {"RS", "43"}, {"MS", "50"}, {"MT", "51"}, {"GO", "52"}, {"DF", "53"},
  };
  for (const auto& [sigla, codigo] : unidades) {
    EXPECT_EQ(codigo_da_uf(sigla), codigo) << sigla;
    EXPECT_EQ(uf_do_codigo(codigo), sigla) << codigo;
  }
  EXPECT_EQ(codigo_da_uf("sp"), "");
  EXPECT_EQ(codigo_da_uf("EX"), "");
  EXPECT_EQ(uf_do_codigo("34"), "");
  EXPECT_EQ(uf_do_codigo("99"), "");
}

TEST(IdentidadeUf, StateOfAMunicipalityCode) {
  EXPECT_EQ(uf_do_municipio("3550308"), "SP");  // São Paulo
  EXPECT_EQ(uf_do_municipio("5300108"), "DF");  // Brasília
  EXPECT_EQ(uf_do_municipio("4314902"), "RS");  // Porto Alegre
  EXPECT_EQ(uf_do_municipio("3450308"), "");    // no unit 34
  EXPECT_EQ(uf_do_municipio("355030"), "");     // 6 digits
  EXPECT_EQ(uf_do_municipio("35503080"), "");   // 8 digits
  EXPECT_EQ(uf_do_municipio("35A0308"), "");
  EXPECT_EQ(uf_do_municipio("9999999"), "");    // exterior, no unit
}

// A CNPJ or CPF as a register stores it, in the form the files carry.
TEST(IdentidadeDocumento, MaskDroppedAndOnlyACnpjThatLostItsZerosCompleted) {
  const struct {
    std::string_view guardado, documento;
    Defeito defeito;
    std::string_view motivo;
  } casos[] = {
      {"11.222.333/0001-81", "11222333000181", Defeito::Nenhum, ""},
      {"12.ABC.345/01DE-35", "12ABC34501DE35", Defeito::Nenhum, ""},
      {"529.982.247-25", "52998224725", Defeito::Nenhum, ""},
      // A numeric column keeps 01.234.567/0001-95 as 1234567000195: 13 digits, completed.
      {"1234567000195", "01234567000195", Defeito::Nenhum, ""},
      {"191000100", "191000100", Defeito::Tamanho, "tem 9 caracteres; o CNPJ tem 14 e o CPF 11"},
      {"000191000100", "00000191000100", Defeito::DigitoVerificador, "dígito verificador inválido"},
      // Only digits are completed: a CNPJ with letters or a mask left has lost nothing.
      {"2ABC34501DE35", "2ABC34501DE35", Defeito::Tamanho, "tem 13 caracteres; o CNPJ tem 14 e o CPF 11"},
      {"12 ABC 345 01DE 35", "12 ABC 345 01DE 35", Defeito::Tamanho, "tem 18 caracteres; o CNPJ tem 14 e o CPF 11"},
      {"52998224726", "52998224726", Defeito::DigitoVerificador, "dígito verificador inválido"},
      {"12abc34501de35", "12abc34501de35", Defeito::Caractere,
       "caractere 'a' na posição 3 não permitido: o CNPJ só tem letras maiúsculas"},
  };
  for (const auto& c : casos) {
    EXPECT_EQ(documento(c.guardado), c.documento) << c.guardado;
    const Verificacao v = verificar_documento(documento(c.guardado));
    EXPECT_EQ(v.defeito, c.defeito) << c.guardado;
    EXPECT_EQ(v.motivo, c.motivo) << c.guardado;
  }
}

// Codes keep their letters for the check to refuse: none is dropped in silence.
TEST(IdentidadeCodigo, DigitsAndMaskOnly) {
  const Caso casos[] = {
      {"5102", Defeito::Nenhum, ""},
      {"5.102", Defeito::Nenhum, ""},
      {"7318.15.00", Defeito::Nenhum, ""},
      {"", Defeito::Nenhum, ""},
      {"1A0", Defeito::Caractere, "caractere 'A' na posição 2 não permitido: o código é numérico"},
      {"51O2", Defeito::Caractere, "caractere 'O' na posição 3 não permitido: o código é numérico"},
      {"7318I500", Defeito::Caractere, "caractere 'I' na posição 5 não permitido: o código é numérico"},
      {"060 ", Defeito::Caractere, "caractere ' ' na posição 4 não permitido: o código é numérico"},
      {"51\x7F" "02", Defeito::Caractere, "caractere de código 0x7F na posição 3 não permitido: o código é numérico"},
  };
  for (const auto& c : casos) confere(verificar_codigo(c.valor), c);
}

TEST(IdentidadeTelefone, CountryCodeDroppedBeforeCountingDigits) {
  const struct {
    std::string_view guardado, digitos;
    std::string_view motivo;
  } casos[] = {
      {"+55 (19) 3242-1100", "1932421100", ""},
      {"55 19 99876-5432", "19998765432", ""},
      {"(19) 3242-1100", "1932421100", ""},
      {"5511 3333-4444", "1133334444", ""},  // 55 and 10 digits: the country code
      {"5532421100", "5532421100", ""},      // 10 digits: area code 55 (Rio Grande do Sul)
      {"0800 123 4567", "08001234567", ""},
      {"", "", ""},
      {"(19) 3242-11OO", "19324211", "caractere 'O' na posição 13 não permitido: o telefone só tem dígitos"},
      {"19 3242-1100 r.22", "193242110022", "caractere 'r' na posição 14 não permitido: o telefone só tem dígitos"},
  };
  for (const auto& c : casos) {
    const Telefone t = telefone(c.guardado);
    EXPECT_EQ(t.digitos, c.digitos) << c.guardado;
    EXPECT_EQ(t.verificacao.motivo, c.motivo) << c.guardado;
  }
}

}  // namespace
}  // namespace infofiscal::identidade
