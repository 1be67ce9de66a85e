// The state registration of every unit, by its own rule. The valid examples are the ones the
// states' published rules give (marked "publicado"), each recomputed by hand from the rule, or
// numbers worked by hand from the rule where the text at hand gives none (marked "à mão", with
// the sum). Each valid number has a neighbour with one digit changed that must fail.
#include <gtest/gtest.h>

#include "fiscal/inscricao_estadual.h"

namespace infofiscal::identidade {
namespace {

constexpr std::string_view kDv = "dígito verificador inválido";

struct Caso {
  std::string_view uf;
  std::string_view ie;
  Defeito defeito;
  std::string_view motivo;  // exact text; empty when valid
};

void confere(const Caso& caso) {
  const auto v = verificar_inscricao_estadual(caso.uf, caso.ie);
  EXPECT_EQ(v.defeito, caso.defeito) << caso.uf << " " << caso.ie;
  EXPECT_EQ(v.motivo, caso.motivo) << caso.uf << " " << caso.ie;
}

TEST(InscricaoEstadual, EachUnitByItsRule) {
  const Caso casos[] = {
      {"AC", "0100482300112", Defeito::Nenhum, ""},  // publicado: 01.004.823/001-12
      {"AC", "0100482300113", Defeito::DigitoVerificador, kDv},
      {"AC", "0100482300102", Defeito::DigitoVerificador, kDv},  // first digit wrong
      {"AC", "0200482300112", Defeito::Prefixo, "deve começar por 01"},
      {"AL", "240000048", Defeito::Nenhum, ""},  // publicado: 24000004-8
      {"AL", "240000047", Defeito::DigitoVerificador, kDv},
      {"AL", "241000040", Defeito::Prefixo, "deve ter como 3º dígito (tipo de empresa) 0, 3, 5, 7 ou 8"},
      {"AL", "250000048", Defeito::Prefixo, "deve começar por 24"},
      {"AP", "030123459", Defeito::Nenhum, ""},  // publicado: 03.012.345-9 (p 5: 5 + 74 = 79, r 2)
      {"AP", "030123458", Defeito::DigitoVerificador, kDv},
      {"AP", "030170007", Defeito::Nenhum, ""},  // à mão, last of p 5: 5 + 65 = 70, r 4, 7
      {"AP", "030170071", Defeito::Nenhum, ""},  // à mão, p 9 d 1: 9 + 79 = 88, r 0, 11 gives d
      {"AP", "030170070", Defeito::DigitoVerificador, kDv},
      {"AP", "030190225", Defeito::Nenhum, ""},  // à mão, last of p 9: 9 + 85 = 94, r 6, 5
      {"AP", "030190223", Defeito::DigitoVerificador, kDv},  // what p 0 would give
      {"AP", "030190231", Defeito::Nenhum, ""},  // à mão, p 0: 87, r 10, 11 - 10 = 1
      {"AP", "130123459", Defeito::Prefixo, "deve começar por 03"},
      {"AM", "999999990", Defeito::Nenhum, ""},  // à mão: 9 x 44 = 396, r 0
      {"AM", "999999991", Defeito::DigitoVerificador, kDv},
      {"BA", "12345663", Defeito::Nenhum, ""},   // publicado: 123456-63, modulus 10
      {"BA", "12345673", Defeito::DigitoVerificador, kDv},
      {"BA", "61234557", Defeito::Nenhum, ""},   // publicado: 612345-57, modulus 11 (first digit 6)
      {"BA", "61234567", Defeito::DigitoVerificador, kDv},
      {"BA", "123456748", Defeito::Nenhum, ""},  // publicado: 1234567-48, modulus 10
      {"BA", "123456749", Defeito::DigitoVerificador, kDv},
      {"BA", "162345651", Defeito::Nenhum, ""},  // publicado: 1623456-51, modulus 11 (second digit 6)
      {"BA", "162345661", Defeito::DigitoVerificador, kDv},
      {"CE", "060000015", Defeito::Nenhum, ""},  // publicado: 06000001-5 (50, r 6)
      {"CE", "060000016", Defeito::DigitoVerificador, kDv},
      {"DF", "0730000100109", Defeito::Nenhum, ""},  // publicado: 07.300001.001-09
      {"DF", "0730000100108", Defeito::DigitoVerificador, kDv},
      {"DF", "0830000100109", Defeito::Prefixo, "deve começar por 07"},
      {"ES", "999999990", Defeito::Nenhum, ""},  // publicado: 99999999-0
      {"ES", "999999992", Defeito::DigitoVerificador, kDv},
      {"GO", "109876547", Defeito::Nenhum, ""},  // publicado: 10.987.654-7
      {"GO", "109876546", Defeito::DigitoVerificador, kDv},
      {"GO", "200000080", Defeito::Nenhum, ""},  // à mão: 34, r 1 gives 0
      {"GO", "101031051", Defeito::Nenhum, ""},  // à mão: 45, r 1, in 10103105..10119997 gives 1
      {"GO", "101031050", Defeito::DigitoVerificador, kDv},
      {"GO", "110944020", Defeito::Nenhum, ""},  // 11094402 takes 0 or 1
      {"GO", "110944021", Defeito::Nenhum, ""},
      {"GO", "110944022", Defeito::DigitoVerificador, kDv},
      {"GO", "159876547", Defeito::Prefixo, "deve começar por 10, 11 ou 20 a 29"},
      {"MA", "120000385", Defeito::Nenhum, ""},  // publicado: 12000038-5
      {"MA", "120000386", Defeito::DigitoVerificador, kDv},
      {"MA", "130000385", Defeito::Prefixo, "deve começar por 12"},
      {"MT", "00130000019", Defeito::Nenhum, ""},  // publicado: 0013000001-9
      {"MT", "130000019", Defeito::Nenhum, ""},    // the same stored without its leading zeros
      {"MT", "00130000018", Defeito::DigitoVerificador, kDv},
      {"MS", "283115947", Defeito::Nenhum, ""},  // à mão: 169, r 4, 11 - 4 = 7
      {"MS", "283115948", Defeito::DigitoVerificador, kDv},
      {"MS", "501234560", Defeito::Nenhum, ""},  // à mão, newer start 50: 122, r 1 gives 0
      {"MS", "293115947", Defeito::Prefixo, "deve começar por 28 ou 50"},
      {"MG", "0623079040081", Defeito::Nenhum, ""},  // publicado: 062.307.904/0081
      {"MG", "0623079040071", Defeito::DigitoVerificador, kDv},  // first digit wrong
      {"MG", "0623079040082", Defeito::DigitoVerificador, kDv},  // second digit wrong
      {"PA", "159999995", Defeito::Nenhum, ""},  // publicado: 15-999999-5
      {"PA", "159999994", Defeito::DigitoVerificador, kDv},
      {"PA", "169999995", Defeito::Prefixo, "deve começar por 15"},
      {"PB", "060000015", Defeito::Nenhum, ""},  // publicado: 06000001-5
      {"PB", "060000025", Defeito::DigitoVerificador, kDv},
      {"PR", "1234567850", Defeito::Nenhum, ""},  // publicado: 123.45678-50
      {"PR", "1234567851", Defeito::DigitoVerificador, kDv},
      {"PR", "1234567840", Defeito::DigitoVerificador, kDv},
      {"PE", "032141840", Defeito::Nenhum, ""},       // publicado (eFisco): 0321418-40
      {"PE", "032141841", Defeito::DigitoVerificador, kDv},
      {"PE", "18100100000049", Defeito::Nenhum, ""},  // publicado (antiga): 18.1.001.0000004-9
      {"PE", "18100100000048", Defeito::DigitoVerificador, kDv},
      {"PE", "18100100000171", Defeito::Nenhum, ""},  // à mão: 66, r 0, 11 less 10 gives 1
      {"PE", "18100100000170", Defeito::DigitoVerificador, kDv},
      {"PI", "012345679", Defeito::Nenhum, ""},  // publicado: 01234567-9
      {"PI", "012345678", Defeito::DigitoVerificador, kDv},
      {"RJ", "99999993", Defeito::Nenhum, ""},  // publicado: 99.999.99-3
      {"RJ", "99999994", Defeito::DigitoVerificador, kDv},
      {"RN", "200400401", Defeito::Nenhum, ""},   // publicado: 20.040.040-1
      {"RN", "200400402", Defeito::DigitoVerificador, kDv},
      {"RN", "2000400400", Defeito::Nenhum, ""},  // publicado: 20.0.040.040-0
      {"RN", "2000400401", Defeito::DigitoVerificador, kDv},
      {"RN", "210400401", Defeito::Prefixo, "deve começar por 20"},
      {"RS", "2243658792", Defeito::Nenhum, ""},  // publicado: 224/3658792
      {"RS", "2243658793", Defeito::DigitoVerificador, kDv},
      {"RO", "101625213", Defeito::Nenhum, ""},       // publicado (antiga): 101.62521-3
      {"RO", "999625213", Defeito::Nenhum, ""},       // the municipality is left out of the sum
      {"RO", "101625223", Defeito::DigitoVerificador, kDv},
      {"RO", "101100081", Defeito::Nenhum, ""},  // à mão: 22, r 0, 11 less 10 gives 1 (not 0)
      {"RO", "101100080", Defeito::DigitoVerificador, kDv},
      {"RO", "00000000625213", Defeito::Nenhum, ""},  // publicado (nova): 0000000062521-3
      {"RO", "00000000625214", Defeito::DigitoVerificador, kDv},
      {"RR", "240066281", Defeito::Nenhum, ""},  // publicado: 24006628-1 (154 mod 9 = 1)
      {"RR", "240066282", Defeito::DigitoVerificador, kDv},
      {"RR", "250066281", Defeito::Prefixo, "deve começar por 24"},
      {"SC", "251040852", Defeito::Nenhum, ""},  // publicado: 251.040.852
      {"SC", "251040853", Defeito::DigitoVerificador, kDv},
      {"SP", "110042490114", Defeito::Nenhum, ""},  // publicado: 110.042.490.114
      {"SP", "110042491114", Defeito::DigitoVerificador, kDv},  // ninth digit wrong
      {"SP", "110042490115", Defeito::DigitoVerificador, kDv},  // twelfth digit wrong
      {"SE", "271234563", Defeito::Nenhum, ""},  // publicado: 27123456-3
      {"SE", "271234564", Defeito::DigitoVerificador, kDv},
      {"TO", "29010227836", Defeito::Nenhum, ""},  // publicado (antiga): 29 01 022783 6
      {"TO", "29020227836", Defeito::Nenhum, ""},  // the category is left out of the sum
      {"TO", "29010227837", Defeito::DigitoVerificador, kDv},
      {"TO", "29040227836", Defeito::Prefixo, "deve ter como 3º e 4º dígitos 01, 02, 03 ou 99"},
      {"TO", "290227836", Defeito::Nenhum, ""},  // à mão, 9 digits: 170, r 5, 6 (the old number without category)
      {"TO", "290227835", Defeito::DigitoVerificador, kDv},
  };
  for (const auto& caso : casos) confere(caso);
}

TEST(InscricaoEstadual, SaoPauloRuralProducer) {
  const Caso casos[] = {
      {"SP", "P011004243002", Defeito::Nenhum, ""},     // publicado: P-01100424.3/002
      {"SP", "P-01100424.3/002", Defeito::Nenhum, ""},  // as printed
      {"SP", "P011004253002", Defeito::DigitoVerificador, kDv},
      {"SP", "P01100424300", Defeito::Tamanho, "tem 11 dígitos após o P; a inscrição de produtor rural de SP tem 12"},
      {"SP", "p011004243002", Defeito::Caractere, "caractere 'p' na posição 1 não permitido"},
      {"SP", "0P11004243002", Defeito::Caractere, "caractere 'P' na posição 2 não permitido"},
      {"MG", "P011004243002", Defeito::Caractere, "caractere 'P' na posição 1 não permitido"},
  };
  for (const auto& caso : casos) confere(caso);
}

TEST(InscricaoEstadual, IsentoMasksAndCharacters) {
  const Caso casos[] = {
      {"SP", "ISENTO", Defeito::Nenhum, ""},
      {"AC", "ISENTO", Defeito::Nenhum, ""},
      {"SP", "isento", Defeito::Caractere, "ISENTO deve estar em maiúsculas"},
      {"SP", "Isento", Defeito::Caractere, "ISENTO deve estar em maiúsculas"},
      {"SP", "ISENTO ", Defeito::Caractere, "caractere 'I' na posição 1 não permitido"},
      {"SP", "ISENTA", Defeito::Caractere, "caractere 'I' na posição 1 não permitido"},
      {"AC", "01.004.823/001-12", Defeito::Nenhum, ""},
      {"BA", "1234567-48", Defeito::Nenhum, ""},
      {"SP", "110.042.490.114", Defeito::Nenhum, ""},
      {"MG", "062.307.904/0081", Defeito::Nenhum, ""},
      {"PE", "18.1.001.0000004-9", Defeito::Nenhum, ""},
      {"SP", "110.042.490.115", Defeito::DigitoVerificador, kDv},
      {"SP", " 110042490114", Defeito::Caractere, "caractere ' ' na posição 1 não permitido"},
      {"SP", "110,042,490,114", Defeito::Caractere, "caractere ',' na posição 4 não permitido"},
      {"SP", "110042490114A", Defeito::Caractere, "caractere 'A' na posição 13 não permitido"},
      {"SP", "11004249011\xC2\xBA", Defeito::Caractere, "caractere de código 0xC2 na posição 12 não permitido"},
      {"SP", "", Defeito::Tamanho, "inscrição vazia"},
      {"SP", "./-", Defeito::Tamanho, "inscrição vazia"},
      {"CE", "000000000", Defeito::Repetido, "inscrição só de zeros"},
      {"MT", "00000000000", Defeito::Repetido, "inscrição só de zeros"},
  };
  for (const auto& caso : casos) confere(caso);
}

TEST(InscricaoEstadual, WrongSizesNameTheUnitsSizes) {
  const Caso casos[] = {
      {"SP", "11004249011", Defeito::Tamanho, "tem 11 dígitos; a inscrição de SP tem 12"},
      {"BA", "1234567", Defeito::Tamanho, "tem 7 dígitos; a inscrição de BA tem 8 ou 9"},
      {"BA", "1234567480", Defeito::Tamanho, "tem 10 dígitos; a inscrição de BA tem 8 ou 9"},
      {"MT", "13000001", Defeito::Tamanho, "tem 8 dígitos; a inscrição de MT tem de 9 a 11"},
      {"MT", "001300000190", Defeito::Tamanho, "tem 12 dígitos; a inscrição de MT tem de 9 a 11"},
      {"RO", "0000000625213", Defeito::Tamanho, "tem 13 dígitos; a inscrição de RO tem 9 ou 14"},
      {"PE", "0321418400", Defeito::Tamanho, "tem 10 dígitos; a inscrição de PE tem 9 ou 14"},
      {"RJ", "999999930", Defeito::Tamanho, "tem 9 dígitos; a inscrição de RJ tem 8"},
      {"TO", "2901022783", Defeito::Tamanho, "tem 10 dígitos; a inscrição de TO tem 9 ou 11"},
      {"RN", "20040040", Defeito::Tamanho, "tem 8 dígitos; a inscrição de RN tem 9 ou 10"},
  };
  for (const auto& caso : casos) confere(caso);
}

TEST(InscricaoEstadual, UnknownUnit) {
  const Caso casos[] = {
      {"EX", "ISENTO", Defeito::Uf, "UF 'EX' desconhecida"},
      {"sp", "110042490114", Defeito::Uf, "UF 'sp' desconhecida"},
      {"", "110042490114", Defeito::Uf, "UF '' desconhecida"},
  };
  for (const auto& caso : casos) confere(caso);
}

TEST(InscricaoEstadual, MaskRemovalKeepsEveryOtherCharacter) {
  EXPECT_EQ(sem_mascara("062.307.904/0081"), "0623079040081");
  EXPECT_EQ(sem_mascara("P-01100424.3/002"), "P011004243002");
  EXPECT_EQ(sem_mascara("ISENTO"), "ISENTO");
  EXPECT_EQ(sem_mascara(" 12,3 "), " 12,3 ");
}

}  // namespace
}  // namespace infofiscal::identidade
