// One register line of the information file back into typed columns.
#include <gtest/gtest.h>

#include "informacao/informacao.h"
#include "base/error.h"

namespace infofiscal {
namespace {

std::string erro(const std::function<void()>& f) {
  try {
    f();
  } catch (const Error& e) {
    return e.what();
  }
  return "(sem erro)";
}

TEST(Informacao, ReadsColumnsVerbatim) {
  const auto l = ler_linha_informacao("[C00]05[/C00][C01]a[b][/C01][C03][/C03][C04][/C0x][/C04][C45]x[/C45][C99]07[/C99]", 4);
  EXPECT_EQ(l.tipo, 5);
  EXPECT_EQ(l.numero, 4);
  EXPECT_EQ(l.trailer, 7);
  EXPECT_EQ(l.texto(1), "a[b]");
  EXPECT_FALSE(l.tem(2));
  EXPECT_TRUE(l.tem(3));
  EXPECT_EQ(l.texto(4), "[/C0x]");
  EXPECT_EQ(l.texto(30), "");
  EXPECT_EQ(l.texto(45), "x");
  EXPECT_EQ(tipo_da_linha("[C00]05[/C00][C99]07[/C99]"), 5);
}

// A line parsed into the storage of an earlier one keeps nothing of it.
TEST(Informacao, ParsingAgainReusesTheLine) {
  LinhaInformacao l;
  ler_linha_informacao("[C00]06[/C00][C01]2[/C01][C38]9,99[/C38][C99]38[/C99]", 7, l);
  ler_linha_informacao("[C00]13[/C00][C02]UN[/C02][C99]03[/C99]", 8, l);
  EXPECT_EQ(l.tipo, 13);
  EXPECT_EQ(l.numero, 8);
  EXPECT_EQ(l.trailer, 3);
  EXPECT_EQ(l.texto(1), "");
  EXPECT_EQ(l.texto(2), "UN");
  EXPECT_EQ(l.texto(38), "");
  EXPECT_FALSE(l.tem(38));
}

TEST(Informacao, BadLinesNameTheirNumber) {
  const struct {
    const char* texto;
    const char* erro;
  } casos[] = {
      {"[C00]05[/C00][C01]x",
       "Linha 1 do arquivo de informações: coluna C01 sem [/C01] (linha 05, depois da coluna C00): '[C01]x': uma "
       "quebra de linha dentro do valor?"},
      {"[C00]05[/C00][C02]x[/C02][C01]y[/C01][C99]07[/C99]",
       "Linha 1 do arquivo de informações: coluna C01 fora de ordem (linha 05, depois da coluna C02)"},
      {"[C01]x[/C01]", "Linha 1 do arquivo de informações: a linha não começa com [C00], e sim com '[C01]x[/C01]'"},
      {"[C00]05[/C00]",
       "Linha 1 do arquivo de informações: a linha acaba sem [C99] (linha 05, depois da coluna C00): uma quebra de "
       "linha dentro de um valor a partiu em duas?"},
      {"[C00]5[/C00][C99]07[/C99]", "Linha 1 do arquivo de informações: tipo de linha inválido em [C00]: '5'"},
      {"[C00]05[/C00][C99]07[/C99]x", "Linha 1 do arquivo de informações: texto depois de [C99]: 'x'"},
      {"[C00]05[/C00][C99]07[/C99][C99]07[/C99]",
       "Linha 1 do arquivo de informações: texto depois de [C99]: '[C99]07[/C99]'"},
      {"[C00]05[/C00][C01]x[/C02][C99]07[/C99]",
       "Linha 1 do arquivo de informações: coluna C01 sem [/C01] (linha 05, depois da coluna C00): "
       "'[C01]x[/C02][C99]07[/C99]': uma quebra de linha dentro do valor?"},
      // A value that holds the text of its own closing tag ends the column early.
      {"[C00]05[/C00][C01]a[/C01]b[/C01][C99]07[/C99]",
       "Linha 1 do arquivo de informações: esperava uma tag [Cnn] na posição 26 (linha 05, depois da coluna C01) e "
       "achou 'b[/C01][C99]07[/C99]': um valor com o texto de uma tag?"},
      // A line break inside a value: the first part lacks its closing tags, the second its start.
      {"[C00]05[/C00][C01]RUA A",
       "Linha 1 do arquivo de informações: coluna C01 sem [/C01] (linha 05, depois da coluna C00): '[C01]RUA A': uma "
       "quebra de linha dentro do valor?"},
      {"RUA B[/C01][C99]07[/C99]",
       "Linha 1 do arquivo de informações: a linha não começa com [C00], e sim com 'RUA B[/C01][C99]07[/C99]': a "
       "continuação de uma linha partida por uma quebra de linha dentro de um valor?"},
      // Whatever is found is cut short.
      {"[C00]05[/C00][C99]07[/C99]012345678901234567890123456789012345678901234567890123456789ABC",
       "Linha 1 do arquivo de informações: texto depois de [C99]: "
       "'012345678901234567890123456789012345678901234567890123456789... (63 caracteres)'"},
  };
  for (const auto& c : casos) {
    EXPECT_EQ(erro([&] { ler_linha_informacao(c.texto, 1); }), c.erro) << c.texto;
    if (std::string_view(c.texto).starts_with("[C00]05[/C00]")) continue;
    EXPECT_EQ(tipo_da_linha(c.texto), -1) << c.texto;
  }
}

TEST(Informacao, AmountsInHundredthsAreExact) {
  const struct {
    const char* texto;
    std::int64_t centesimos;
  } casos[] = {
      {"1234,50", 123450}, {"0,00", 0}, {"-1,5", -150}, {"7", 700},
      {"2,675", 268},      {"1.005", 101}, {"-0,004", 0}, {"99999999999,99", 9999999999999},
  };
  for (const auto& c : casos) {
    const std::string texto = std::string("[C00]04[/C00][C10]") + c.texto + "[/C10][C99]26[/C99]";
    const auto l = ler_linha_informacao(texto, 1);
    EXPECT_EQ(l.centesimos(10), c.centesimos) << c.texto;
  }
  for (const char* ruim : {"", "1,2,3", "abc", "1,5x", "-"}) {
    const std::string texto = std::string("[C00]04[/C00][C10]") + ruim + "[/C10][C99]26[/C99]";  // the line's views point here
    const auto l = ler_linha_informacao(texto, 9);
    EXPECT_EQ(erro([&] { l.centesimos(10); }),
              std::string("Linha 9 do arquivo de informações: C10 da linha 04 não é um valor: '") + ruim + "'");
  }
}

TEST(Informacao, DatesWithOrWithoutTime) {
  const auto l = ler_linha_informacao("[C00]04[/C00][C08]05/03/2024 14:30:00[/C08][C09]29/02/2024[/C09][C10]30/02/2024[/C10][C99]26[/C99]", 2);
  EXPECT_EQ(l.data(8), (TimeStamp{2024, 3, 5, 14, 30, 0}));
  EXPECT_EQ(l.data(9), (TimeStamp{2024, 2, 29}));
  EXPECT_EQ(erro([&] { l.data(10); }), "Linha 2 do arquivo de informações: C10 da linha 04 não é uma data: '30/02/2024'");
}

}  // namespace
}  // namespace infofiscal
