// The SINTEGRA validator on the example file and on copies of it broken one rule at a time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "fiscal/sintegra.h"
#include "fiscal/sintegra_dados.h"
#include "fiscal/sintegra_validador.h"

namespace infofiscal {
namespace {

using namespace testing;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

using Registros = std::vector<std::string>;

// Record `n` (1-based) with `texto` written over it from position `pos` (1-based).
std::function<void(Registros&)> sobrescrever(int n, int pos, std::string texto) {
  return [=](Registros& r) { r[n - 1].replace(pos - 1, texto.size(), texto); };
}

TEST(SintegraValidador, TheExampleFileIsValid) { EXPECT_THAT(validar_sintegra(arquivo_de(registros_exemplo())), IsEmpty()); }

TEST(SintegraValidador, EachBrokenRuleGivesOneFindingPerLine) {
  const std::string doc = "(CNPJ 44555666000181, modelo 55, série '1', número 000123";
  const struct {
    const char* caso;
    std::function<void(Registros&)> quebrar;
    std::vector<std::string> achados;
  } casos[] = {
      {"a short record", [](Registros& r) { r[1].pop_back(); }, {"Registro 2: tem 125 caracteres; todo registro tem 126"}},
      {"a wrong grand total", sobrescrever(24, 83, "00000025"),
       {"Registro 24: total geral (99) é 25, mas o arquivo tem 24 registros"}},
      {"a 54 without its 50 (its CFOP is no 50's)", sobrescrever(11, 28, "1101"),
       {"Registro 11: item sem registro 50 do mesmo documento e CFOP " + doc + ", CFOP 1101)"}},
      {"the three at once",
       [](Registros& r) {
         r[1].pop_back();
         r[23].replace(82, 8, "00000025");
         r[10].replace(27, 4, "1101");
       },
       {"Registro 2: tem 125 caracteres; todo registro tem 126",
        "Registro 11: item sem registro 50 do mesmo documento e CFOP " + doc + ", CFOP 1101)",
        "Registro 24: total geral (99) é 25, mas o arquivo tem 24 registros"}},
      {"a type-54 total", sobrescrever(24, 43, "00000005"),
       {"Registro 24: total do tipo 54 é 5, mas o arquivo tem 6 registros desse tipo"}},
      {"a type without its total", [](Registros& r) { r[23].replace(60, 30, r[23].substr(70, 20) + std::string(10, ' ')); },
       {"Registro 24: falta o total do tipo 74"}},
      {"the count of type-90 records", sobrescrever(24, 126, "2"),
       {"Registro 24: campo 'Número de registros tipo 90' (posição 126) é 2, mas o arquivo tem 1 registros tipo 90"}},
      {"an end-of-file mark after the last record", [](Registros& r) { r.back() += "\x1a"; },
       {"Registro 24: tem 127 caracteres; todo registro tem 126",
        "Registro 24: caractere inválido na posição 127: só ASCII visível"}},
      {"a byte outside ASCII", sobrescrever(1, 31, "\xc7"),
       {"Registro 1: caractere inválido na posição 31: só ASCII visível"}},
      {"a blank inside a number", sobrescrever(3, 68, " "),
       {"Registro 3: campo 'Valor total' (posições 57-69) não é numérico: '00000000200 0'"}},
      {"text aligned to the right", sobrescrever(1, 31, " COMERCIO"),
       {"Registro 1: campo 'Nome do contribuinte' (posições 31-65) não está alinhado à esquerda: ' COMERCIOEXEMPLO LTDA"
        "              '"}},
      {"a date outside the period", sobrescrever(5, 31, "20240401"),
       {"Registro 5: campo 'Data de emissão ou recebimento' (posições 31-38) fora do período do arquivo (20240301 a "
        "20240331): '20240401'"}},
      {"a date that names no day", sobrescrever(3, 31, "20240230"),
       {"Registro 3: campo 'Data de emissão ou recebimento' (posições 31-38) não é uma data AAAAMMDD: '20240230'"}},
      {"a period that is not a whole month", sobrescrever(1, 116, "20240330"),
       {"Registro 1: o período (campos 08 e 09) deve ir do primeiro ao último dia de um mês"}},
      {"types out of order", [](Registros& r) { std::swap(r[14], r[15]); },
       {"Registro 16: registro tipo 54 depois do tipo 70: os tipos vêm agrupados, em ordem crescente"}},
      {"a 50 after the 54 of its document, which still has it",
       [](Registros& r) {
         const std::string r50 = r[4];
         r.erase(r.begin() + 4);
         r.insert(r.begin() + 14, r50);
       },
       {"Registro 15: registro tipo 50 depois do tipo 54: os tipos vêm agrupados, em ordem crescente"}},
      {"an unknown situation", sobrescrever(9, 126, "Z"),
       {"Registro 9: campo 'Situação' (posição 126) tem 'Z'; os códigos válidos são N, S, E, X, 2, 4"}},
      {"an exit issued by a third party", sobrescrever(7, 56, "T"),
       {"Registro 7: CFOP de saída 6102 com emitente 'T': toda saída é emitida pelo informante (P)"}},
      {"an interstate CFOP inside the state", sobrescrever(7, 39, "SP"),
       {"Registro 7: CFOP 6102 é de operação interestadual, mas a UF é SP"}},
      {"an internal CFOP with another state", sobrescrever(9, 39, "RJ"),
       {"Registro 9: campo 'Inscrição Estadual' (posições 17-30) não é uma inscrição estadual de RJ: '110042490114  ': "
        "tem 12 dígitos; a inscrição de RJ tem 8",
        "Registro 9: CFOP 5102 é de operação interna, mas a UF é RJ e a do informante SP"}},
      {"a cancelled note with a value", sobrescrever(8, 69, "1"),
       {"Registro 8: documento na situação S não leva valores (campos 11 a 16)"}},
      {"a CFOP of zeros on a normal note", sobrescrever(9, 52, "0000"),
       {"Registro 9: campo 'CFOP' (posições 52-55) não é um CFOP: '0000'",
        "Registro 10: item sem registro 50 do mesmo documento e CFOP (CNPJ 12345678000195, modelo 55, série '1', "
        "número 004570, CFOP 5102)"}},
      {"a note of model 55 without items",
       sobrescrever(10, 22, "004571"),
       {"Registro 9: documento sem registro 54 dos seus itens (CNPJ 12345678000195, modelo 55, série '1', número 004570)",
        "Registro 10: item sem registro 50 do mesmo documento e CFOP (CNPJ 12345678000195, modelo 55, série '1', "
        "número 004571, CFOP 5102)"}},
      {"an item number twice", sobrescrever(12, 35, "001"),
       {"Registro 12: item 001 repetido no documento " + doc + ")"}},
      {"an item number past 990 that is not special", sobrescrever(12, 35, "995"),
       {"Registro 12: campo 'Número do item' (posições 35-37) tem '995'; os itens vão de 001 a 990, ou são os especiais "
        "991, 992, 993, 997, 998, 999"}},
      {"a special item with a product", sobrescrever(13, 38, "9"),
       {"Registro 13: o item especial 991 não leva código de produto nem quantidade"}},
      {"a product without its 75", sobrescrever(22, 19, "9X"),
       {"Registro 12: produto '9' sem registro 75"}},
      {"an inventory product without its 75", sobrescrever(21, 19, "8X"),
       {"Registro 11: produto '8' sem registro 75", "Registro 18: produto '8' sem registro 75"}},
      {"a 75 ending before it starts", sobrescrever(20, 11, "20240201"),
       {"Registro 20: a data inicial é posterior à data final"}},
      {"a CNPJ with wrong check digits", sobrescrever(1, 16, "2"),
       {"Registro 1: campo 'CNPJ' (posições 3-16) não é um CNPJ válido: '11222333000182': dígito verificador inválido",
        "Registro 24: CNPJ e inscrição estadual devem ser os do registro tipo 10"}},
      {"a state registration with punctuation", sobrescrever(5, 17, "987.654"),
       {"Registro 5: campo 'Inscrição Estadual' (posições 17-30) deve ter só letras maiúsculas e dígitos, ou ISENTO: "
        "'987.65426001  '"}},
      {"a state registration by the rule of the record's state", sobrescrever(5, 17, "987654326002"),
       {"Registro 5: campo 'Inscrição Estadual' (posições 17-30) não é uma inscrição estadual de SP: '987654326002  ': "
        "dígito verificador inválido"}},
      {"the informant's registration", sobrescrever(1, 17, "123456785118"),
       {"Registro 1: campo 'Inscrição Estadual' (posições 17-30) não é uma inscrição estadual de SP: '123456785118  ': "
        "dígito verificador inválido",
        "Registro 24: CNPJ e inscrição estadual devem ser os do registro tipo 10"}},
      {"a CNPJ with letters in a numeric field", sobrescrever(5, 3, "12ABC34501DE35"),
       {"Registro 5: campo 'CNPJ' (posições 3-16) não é numérico: '12ABC34501DE35'",
        "Registro 5: documento sem registro 54 dos seus itens (CNPJ 12ABC34501DE35, modelo 55, série '1', número 000123)",
        "Registro 11: item sem registro 50 do mesmo documento e CFOP " + doc + ", CFOP 1102)",
        "Registro 12: item sem registro 50 do mesmo documento e CFOP " + doc + ", CFOP 1102)",
        "Registro 13: item sem registro 50 do mesmo documento e CFOP " + doc + ", CFOP 1102)"}},
      {"DEL", sobrescrever(1, 40, "\x7F"), {"Registro 1: caractere inválido na posição 40: só ASCII visível"}},
      {"a record of a type the layout does not have", [](Registros& r) { r.insert(r.end() - 1, std::string(126, '9')); },
       {"Registro 24: tipo '99' não existe no leiaute", "Registro 25: total geral (99) é 24, mas o arquivo tem 25 registros"}},
      {"an empty file", [](Registros& r) { r.clear(); },
       {"Arquivo: o arquivo está vazio", "Arquivo: falta o registro tipo 10", "Arquivo: falta o registro tipo 11",
        "Arquivo: falta o registro tipo 90"}},
  };
  for (const auto& c : casos) {
    Registros r = registros_exemplo();
    c.quebrar(r);
    const std::string arquivo = arquivo_de(r);
    EXPECT_THAT(validar_sintegra(arquivo), ElementsAreArray(c.achados)) << c.caso;
    // Read a piece at a time, cut anywhere, the file gives the same findings.
    sintegra::ValidadorSintegra validador;
    for (std::size_t p = 0; p < arquivo.size(); p += 37) validador.le(std::string_view(arquivo).substr(p, 37));
    EXPECT_THAT(validador.conclui(), ElementsAreArray(c.achados)) << c.caso;
  }
}

TEST(SintegraValidador, EveryRecordEndsWithCrLf) {
  std::string arquivo = arquivo_de(registros_exemplo());
  arquivo.erase(arquivo.find("\r\n"), 1);  // a lone LF
  arquivo.resize(arquivo.size() - 2);       // nothing after the last record
  EXPECT_THAT(validar_sintegra(arquivo), ElementsAre("Registro 1: termina sem CR LF", "Registro 24: termina sem CR LF"));
}

}  // namespace
}  // namespace infofiscal
