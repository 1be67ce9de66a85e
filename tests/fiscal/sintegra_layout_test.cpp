// The primitives that put values into SINTEGRA fields, and the layout tables' positions.
#include <gtest/gtest.h>

#include "fiscal/sintegra_layout.h"
#include "base/error.h"

namespace infofiscal::sintegra {
namespace {

std::string campo_com(const Campo& campo, const std::function<void(std::string&, const Campo&)>& por) {
  std::string s;
  try {
    por(s, campo);
  } catch (const Error& e) {
    return std::string("erro: ") + e.what();
  }
  return s;
}

TEST(SintegraLayout, PositionsFollowFromTheSizes) {
  EXPECT_EQ(k50.inicio(r50::Valor), 56);
  EXPECT_EQ(k50.inicio(r50::Situacao), 125);
  EXPECT_EQ(k54.inicio(r54::Produto), 37);
  EXPECT_EQ(k75.inicio(r75::BaseSt), 113);
  EXPECT_EQ(k90.inicio(r90::Quantos90), 125);
  EXPECT_EQ(layout_do_tipo(51), nullptr);
  EXPECT_EQ(ordem_do_tipo(90), static_cast<int>(kOrdemDosTipos.size()) - 1);
  EXPECT_EQ(ordem_do_tipo(52), -1);
}

TEST(SintegraLayout, NumbersAreRescaledPaddedAndNeverCutOrSigned) {
  const Campo valor = k50.campo(r50::Valor), quantidade = k54.campo(r54::Quantidade), aliquota = k50.campo(r50::Aliquota);
  const struct {
    Campo campo;
    Numero numero;
    std::string esperado;
  } casos[] = {
      {valor, {123456, 2}, "0000000123456"},
      {valor, {0, 0}, "0000000000000"},
      {quantidade, {250, 2}, "00000002500"},      // 2,50 with three decimals
      {aliquota, {1800, 2}, "1800"},              // 18%
      {valor, {12345, 3}, "0000000001235"},       // 12,345 rounds half up to 12,35
      {valor, {12344, 3}, "0000000001234"},
      {aliquota, {10000, 2}, "erro: campo 'Alíquota' (4 posições): o valor 10000 não cabe"},
      {valor, {-150, 2}, "erro: campo 'Valor total' (13 posições): valor negativo (-1,50)"},
  };
  for (const auto& c : casos)
    EXPECT_EQ(campo_com(c.campo, [&](std::string& s, const Campo& f) { por_numero(s, f, c.numero); }), c.esperado)
        << c.numero.valor;
}

TEST(SintegraLayout, DigitsAndTextFillTheirFields) {
  const Campo cep = k11.campo(r11::Cep), nome = k10.campo(r10::Nome), uf = k10.campo(r10::Uf);
  const auto digitos = [&](std::string_view t) {
    return campo_com(cep, [&](std::string& s, const Campo& f) { por_digitos(s, f, t); });
  };
  EXPECT_EQ(digitos("01234-567"), "01234567");
  EXPECT_EQ(digitos(""), "00000000");
  EXPECT_EQ(digitos("13.070/001"), "13070001");
  EXPECT_EQ(digitos("S/N 12"), "erro: campo 'CEP' (8 posições): 'S/N 12' tem o caractere 'S', e o campo é numérico");
  EXPECT_EQ(digitos("1307O001"), "erro: campo 'CEP' (8 posições): '1307O001' tem o caractere 'O', e o campo é numérico");
  EXPECT_EQ(digitos("123456789"), "erro: campo 'CEP' (8 posições): '123456789' tem dígitos demais");
  const auto texto = [&](const Campo& c, std::string_view t) {
    return campo_com(c, [&](std::string& s, const Campo& f) { por_texto(s, f, t); });
  };
  EXPECT_EQ(texto(nome, "  Açúcar & Café São João  "), "ACUCAR & CAFE SAO JOAO             ");
  // Accents stripped, what ASCII lacks transliterated, a tab a blank, DEL and C1 controls removed.
  EXPECT_EQ(texto(nome, "Meio ½ kg\tÑandu €"), "MEIO 1/2 KG NANDU EUR              ");
  EXPECT_EQ(texto(nome, "Fio 2,5 mm² nº 3 ¤"), "FIO 2,5 MM2 NO 3 ?                 ");
  EXPECT_EQ(texto(nome, "“Aço” – Ferro™\x7F\u0085 …"), "\"ACO\" - FERROTM ...                ");
  EXPECT_EQ(texto(nome, std::string(40, 'x')), std::string(35, 'X'));
  EXPECT_EQ(texto(uf, "sp"), "SP");
  EXPECT_EQ(texto(uf, ""), "  ");
}

TEST(SintegraLayout, CodeLists) {
  EXPECT_TRUE(na_lista("N S E X 2 4", "N"));
  EXPECT_TRUE(na_lista("N S E X 2 4", "4"));
  EXPECT_FALSE(na_lista("N S E X 2 4", "S E"));
  EXPECT_FALSE(na_lista("N S E X 2 4", ""));
  ASSERT_NE(mapear(kSituacoes, "2"), nullptr);
  EXPECT_EQ(*mapear(kSituacoes, "2"), "S");
  EXPECT_EQ(mapear(kFinalidades, "4"), nullptr);
}

}  // namespace
}  // namespace infofiscal::sintegra
