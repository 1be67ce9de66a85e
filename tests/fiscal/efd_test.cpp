#include "fiscal/efd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fiscal/efd_informacao.h"
#include "fiscal/efd_validador.h"
#include "fiscal/lido_uma_vez.h"
#include "fiscal/saida.h"
#include "fiscal/problemas.h"
#include "base/error.h"
#include "support/cli.h"
#include "support/golden.h"

namespace infofiscal::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;

std::vector<std::string> linhas(const std::string& arquivo) {
  std::vector<std::string> out;
  for (std::size_t pos = 0; pos < arquivo.size();) {
    const auto fim = arquivo.find("\r\n", pos);
    out.push_back(arquivo.substr(pos, fim - pos));
    pos = fim + 2;
  }
  return out;
}

// The lines of the file whose register begins with one of `blocos`.
std::vector<std::string> blocos(const std::string& arquivo, std::string_view blocos) {
  std::vector<std::string> out;
  for (auto& l : linhas(arquivo))
    if (blocos.find(l[1]) != std::string_view::npos) out.push_back(l);
  return out;
}

std::string gera(const std::string& informacao) { return gerar_efd(informacao, nullptr, nullptr); }

std::string troca(std::string arquivo, const std::string& de, const std::string& para) {
  const auto pos = arquivo.find(de);
  EXPECT_NE(pos, std::string::npos) << de;
  return arquivo.replace(pos, de.size(), para);
}

const std::string kChaveCompra = "35240311444777000161550010000001231000001235";
const std::string kChaveVenda = "35240311222333000181550010000004561000004568";
const std::string kChaveCancelada = "35240311222333000181550010000004571000004573";

std::string compra(std::string_view item1 = "15", std::string_view unid1 = "UN") {
  return l04("2", "1", "123", kChaveCompra, "55", "05/03/2024", "06/03/2024", "1100,00", "0") + l05("2", "1", "2", "15") +
         l06("2", "1", item1, "1", unid1, "10,00", "1000,00", "2", "000", "1102", "1000,00", "18,00", "180,00") +
         l06("2", "1", "16", "2", "CX", "2,00", "100,00", "2", "060", "1403", "0,00", "0,00", "0,00");
}

std::string venda(std::string_view cliente = "15") {
  return l04("10", "1", "456", kChaveVenda, "55", "10/03/2024 14:30:00", "10/03/2024", "500,00", "0") +
         l05("10", "1", "1", cliente) +
         l06("10", "1", "15", "1", "UN", "5,00", "500,00", "2", "00", "5.102", "500,00", "18,00", "90,00");
}

std::string inutilizado() {
  using namespace linha;
  return linha_info(L04::kTipo, L04::kTrailer,
                    {{L04::TipoNota, "21"}, {L04::Contador, "1"}, {L04::Numero, "101"}, {L04::Modelo, "55"},
                     {L04::Total, "0,00"}, {L04::Desconto, "0,00"}, {L04::TotalProdutos, "0,00"}, {L04::Frete, "0,00"},
                     {L04::Seguro, "0,00"}, {L04::OutrasDespesas, "0,00"}, {L04::IcmsBase, "0,00"},
                     {L04::IcmsValor, "0,00"}, {L04::IcmsStBase, "0,00"}, {L04::IcmsStValor, "0,00"},
                     {L04::IpiValor, "0,00"}, {L04::PisValor, "0,00"}, {L04::CofinsValor, "0,00"}, {L04::Fixo, "0"},
                     {L04::Situacao, "5"}, {L04::IbgeDestino, ""}});
}

// March 2024: a purchase of two products (two C190 groups), a voided number (not booked from
// 2023 on), a sale, a cancelled sale, the catalogues and a month-end inventory.
std::string marco_2024() {
  return l01("01/03/2024", "31/03/2024") + l02_l03() + compra() + inutilizado() + venda() +
         l04("10", "2", "457", kChaveCancelada, "55", "11/03/2024", "11/03/2024", "10,00", "2") +
         l05("10", "2", "1", "16") +
         l06("10", "2", "16", "1", "CX", "1,00", "10,00", "2", "000", "5102", "10,00", "18,00", "1,80") + cadastros() +
         l16("7", "29/02/2024", "150,00") +
         l17_l19(17, "7", "15", "10,00", "10,00", "100,00", "UN") + l17_l19(17, "7", "16", "1,00", "50,00", "50,00", "CX");
}

// The two items of the purchase, lines 16 and 17 of the month's file.
const std::string kItensDaCompra =
    "|C170|1|2-15||10,00000|UN|1000,00|0,00|0|000|1102||1000,00|18,00|180,00|0,00||0,00||||0,00||0,00||0,00|0,0000|||"
    "0,00||0,00|0,0000|||0,00|||\r\n"
    "|C170|2|2-16||2,00000|CX|100,00|0,00|0|060|1403||0,00|0,00|0,00|0,00||0,00||||0,00||0,00||0,00|0,0000|||"
    "0,00||0,00|0,0000|||0,00|||\r\n";

TEST(EfdGerar, EveryRegisterOfAMonth) {
  std::vector<std::string> info;
  std::vector<std::pair<int, int>> progresso;
  const std::string arquivo = gerar_efd(
      marco_2024(), [&](const std::string& s) { info.push_back(s); },
      [&](int p, int m) { progresso.emplace_back(p, m); });
  EXPECT_TRUE(matches_golden("efd_marco_2024.txt", arquivo));
  EXPECT_THAT(info, ElementsAre("SPED EFD ICMS/IPI: período de 01/03/2024 a 31/03/2024",
                                "Números inutilizados não escriturados (a partir de 2023 não se escrituram): 1",
                                "SPED EFD ICMS/IPI: 3 documentos escriturados"));
  EXPECT_THAT(progresso, ElementsAre(std::pair{1, 4}, std::pair{2, 4}, std::pair{3, 4}, std::pair{4, 4}));
  EXPECT_TRUE(validar_efd(arquivo).empty());
}

// December 2022: voided numbers are still booked (reduced C100 of COD_SIT 05), a debit
// balance gives E116, no inventory leaves block H empty, and the layout code is 016.
TEST(EfdGerar, VoidedNumbersUpTo2022AndIcmsToPay) {
  const std::string info = l01("01/12/2022", "31/12/2022") + l02_l03() + inutilizado() +
                           l04("10", "1", "458", "35221211222333000181550010000004581000004584", "55", "20/12/2022",
                               "", "500,00", "0") +
                           l05("10", "1", "1", "15") +
                           l06("10", "1", "15", "1", "UN", "5,00", "500,00", "2", "020", "5102", "400,00", "18,00",
                               "72,00") +
                           cadastros();
  const std::string arquivo = gera(info);
  EXPECT_TRUE(matches_golden("efd_dezembro_2022.txt", arquivo));
}

// February 2024 with the month-end and the year-end inventory: one H005 each; an item listed
// twice in one inventory is merged; items and units of the inventory alone reach block 0.
TEST(EfdGerar, MonthEndAndYearEndInventories) {
  const std::string info =
      l01("01/02/2024", "29/02/2024") + l02_l03() + cadastros() +
      l16("7", "31/01/2024", "30,00") + l17_l19(17, "7", "16", "3,00", "10,00", "30,00", "CX") +
      l18("8", "31/12/2023", "25,50") + l17_l19(19, "8", "15", "2,00", "5,25", "10,50", "UN") +
      l17_l19(19, "8", "15", "3,00", "5,00", "15,00", "UN");
  const std::string arquivo = gera(info);
  EXPECT_TRUE(matches_golden("efd_fevereiro_2024.txt", arquivo));
}

// A purchase of a model neither C100 nor D100 books (electric energy, 06) is named, not booked.
TEST(EfdGerar, NotesOutsideC100AreReportedNotBooked) {
  std::vector<std::string> info;
  const std::string modelo06 = l04("4", "1", "77", "", "06", "05/03/2024", "05/03/2024", "10,00", "0") +
                               l05("4", "1", "2", "15") +
                               l06("4", "1", "15", "1", "UN", "1,00", "10,00", "3", "000", "1253", "0,00", "0,00", "0,00");
  const std::string arquivo = gerar_efd(l01("01/03/2024", "31/03/2024") + l02_l03() + modelo06 + cadastros(),
                                        [&](const std::string& s) { info.push_back(s); }, nullptr);
  EXPECT_THAT(info, ::testing::Contains("Nota 77 de compra de produtos de consumo (linha 4 do arquivo de informações): "
                                        "modelo 06 não se escritura no registro C100; não escriturada"));
  EXPECT_THAT(blocos(arquivo, "CD"), ElementsAre("|C001|1|", "|C990|2|", "|D001|1|", "|D990|2|"));
  EXPECT_THAT(blocos(arquivo, "0"), ::testing::Not(::testing::Contains(HasSubstr("|0150|"))));
}

// A problem of one note (`tipo`, the kind it is listed under) or, without a kind, one that
// stops the month at once.
struct CasoErro {
  std::string nome, informacao, mensagem, tipo{};
};

class EfdGerarErro : public ::testing::TestWithParam<CasoErro> {};

TEST_P(EfdGerarErro, NamesTheCulprit) {
  const CasoErro& c = GetParam();
  try {
    gera(c.informacao);
    FAIL() << "sem erro";
  } catch (const Error& e) {
    EXPECT_EQ(e.what(), c.tipo.empty() ? c.mensagem
                                       : "1 problema no mês; o arquivo SPED EFD ICMS/IPI não foi gravado:\n" + c.tipo +
                                             " (1):\n  " + c.mensagem);
  }
}

const std::string kCabecalho = l01("01/03/2024", "31/03/2024") + l02_l03();

// A note of one item of 1,00: a sale (kind 10, client 15) or a purchase (kind 2, supplier 15).
std::string nota(std::string_view especie, std::string_view chave, std::string_view emissao, std::string_view cst,
                 std::string_view cfop) {
  const bool venda = especie == "10";
  return l04(especie, "1", venda ? "456" : "123", chave, "55", emissao, "", "1,00", "0") +
         l05(especie, "1", venda ? "1" : "2", "15") +
         l06(especie, "1", "15", "1", "UN", "1,00", "1,00", "2", cst, cfop, "0,00", "0,00", "0,00");
}

INSTANTIATE_TEST_SUITE_P(
    Efd, EfdGerarErro,
    ::testing::Values(
        CasoErro{"ParticipanteAusente", kCabecalho + venda("99") + cadastros(),
                 "Nota 456 de venda de produtos (linha 4 do arquivo de informações): participante 1-99 não consta das "
                 "linhas 14",
                 "participante fora do cadastro (linhas 14)"},
        CasoErro{"ItemAusente", kCabecalho + compra("99") + cadastros(),
                 "Nota 123 de compra de produtos (linha 4 do arquivo de informações), item 1: item 2-99 não consta das "
                 "linhas 12",
                 "item fora do cadastro (linhas 12)"},
        CasoErro{"UnidadeAusente", kCabecalho + compra("15", "PC") + cadastros(),
                 "Nota 123 de compra de produtos (linha 4 do arquivo de informações), item 1: unidade 'PC' não consta "
                 "das linhas 13",
                 "unidade fora do cadastro (linhas 13)"},
        CasoErro{"NotaSemItens", kCabecalho + l04("10", "1", "456", kChaveVenda, "55", "10/03/2024", "", "1,00", "0") +
                                     l05("10", "1", "1", "15") + cadastros(),
                 "Nota 456 de venda de produtos (linha 4 do arquivo de informações): sem itens (linhas 06)",
                 "nota sem itens"},
        CasoErro{"CstInvalido",
                 kCabecalho + nota("10", kChaveVenda, "10/03/2024", "0999", "5102") + cadastros(),
                 "Nota 456 de venda de produtos (linha 4 do arquivo de informações): item 1 com CST do ICMS '0999' "
                 "inválido",
                 "CST do ICMS inválido"},
        CasoErro{"CfopDeSaidaNaCompra",
                 kCabecalho + nota("2", kChaveCompra, "05/03/2024", "000", "5102") + cadastros(),
                 "Nota 123 de compra de produtos (linha 4 do arquivo de informações): item 1 com CFOP 5102 de saída "
                 "numa nota de entrada",
                 "CFOP de saída numa entrada, ou de entrada numa saída"},
        CasoErro{"EmitidaDepoisDoPeriodo",
                 kCabecalho + nota("10", kChaveVenda, "01/04/2024", "000", "5102") + cadastros(),
                 "Nota 456 de venda de produtos (linha 4 do arquivo de informações): emitida em 01/04/2024, depois do "
                 "período",
                 "nota emitida depois do período"},
        CasoErro{"ChaveInvalida",
                 kCabecalho + nota("10", "35240311222333000181550010000004561000004560", "10/03/2024", "000", "5102") +
                     cadastros(),
                 "Nota 456 de venda de produtos (linha 4 do arquivo de informações): chave de acesso "
                 "'35240311222333000181550010000004561000004560': dígito verificador inválido",
                 "chave de acesso inválida"},
        // Nothing rewritten in silence: a code with a letter, a quantity with more decimals than
        // its field, and the identities of the company and of a party the month uses.
        CasoErro{"CstComLetra", kCabecalho + nota("10", kChaveVenda, "10/03/2024", "1A0", "5102") + cadastros(),
                 "Nota 456 de venda de produtos (linha 4 do arquivo de informações): item 1, CST_ICMS '1A0': "
                 "caractere 'A' na posição 2 não permitido: o código é numérico",
                 "código com caractere não numérico"},
        CasoErro{"CfopComLetra", kCabecalho + nota("10", kChaveVenda, "10/03/2024", "000", "51O2") + cadastros(),
                 "Nota 456 de venda de produtos (linha 4 do arquivo de informações): item 1, CFOP '51O2': "
                 "caractere 'O' na posição 3 não permitido: o código é numérico",
                 "código com caractere não numérico"},
        CasoErro{"NcmComLetra",
                 kCabecalho + nota("2", kChaveCompra, "05/03/2024", "000", "1102") +
                     troca(cadastros(), "7318.15.00", "7318I500"),
                 "Linha 7 do arquivo de informações: item 2-15, NCM '7318I500': caractere 'I' na posição 5 não "
                 "permitido: o código é numérico",
                 "NCM inválido"},
        CasoErro{"QuantidadeComMaisCasas",
                 kCabecalho + troca(nota("2", kChaveCompra, "05/03/2024", "000", "1102"), "[C07]1,00[/C07]",
                                    "[C07]0,000004[/C07]") +
                     cadastros(),
                 "Nota 123 de compra de produtos (linha 4 do arquivo de informações), item 1, QTD: C07 da linha 06 "
                 "'0,000004' tem 6 casas decimais; o campo tem 5",
                 "valor com mais casas decimais do que o campo"},
        CasoErro{"CnpjDoParticipante",
                 kCabecalho + nota("2", kChaveCompra, "05/03/2024", "000", "1102") +
                     troca(cadastros(), "11.444.777/0001-61", "11.444.777/0001-62"),
                 "Linha 14 do arquivo de informações: participante 2-15 (FORNECEDOR SA), CNPJ '11.444.777/0001-62': "
                 "dígito verificador inválido",
                 "CNPJ inválido"},
        CasoErro{"IeDoParticipante",
                 kCabecalho + nota("2", kChaveCompra, "05/03/2024", "000", "1102") +
                     troca(cadastros(), "123.456.785.119", "123.456.789.110"),
                 "Linha 14 do arquivo de informações: participante 2-15 (FORNECEDOR SA), IE (SP) '123.456.789.110': "
                 "dígito verificador inválido",
                 "IE inválida"},
        CasoErro{"IeDaEmpresa",
                 troca(kCabecalho, "123.456.785.016", "123.456.789.012") + venda() + cadastros(),
                 "Linha 2 do arquivo de informações: IE da empresa (SP) '123.456.789.012': dígito verificador inválido",
                 "IE inválida"},
        CasoErro{"TelefoneComLetra",
                 troca(kCabecalho, "(11) 3333-4444", "(11) 3333-444A") + venda() + cadastros(),
                 "Linha 2 do arquivo de informações: telefone da empresa '(11) 3333-444A': caractere 'A' na posição 14 "
                 "não permitido: o telefone só tem dígitos",
                 "telefone inválido"},
        CasoErro{"ChaveDeOutraUf",
                 kCabecalho + nota("2", "31240311444777000161550010000001231000001236", "05/03/2024", "000", "1102") +
                     cadastros(),
                 "Nota 123 de compra de produtos (linha 4 do arquivo de informações): chave de acesso "
                 "'31240311444777000161550010000001231000001236': o código de UF 31 (MG) não é o da UF do emitente (SP)",
                 "chave de acesso com a UF de outro emitente"},
        CasoErro{"EspecieDesconhecida",
                 kCabecalho + l04("7", "1", "456", kChaveVenda, "55", "10/03/2024", "", "1,00", "0") + cadastros(),
                 "Linha 4 do arquivo de informações: espécie de nota 7 desconhecida",
                 "espécie de nota desconhecida"},
        CasoErro{"SemLinha03",
                 l01("01/03/2024", "31/03/2024") +
                     linha_info(linha::L02::kTipo, linha::L02::kTrailer,
                                {{linha::L02::Codigo, "1"}, {linha::L02::RazaoSocial, "X"}}),
                 "Arquivo de informações sem a linha 03"},
        CasoErro{"AnoSemVersao", l01("01/03/2016", "31/03/2016") + l02_l03(),
                 "Linha 1 do arquivo de informações: o leiaute do SPED EFD não tem versão para o ano 2016"},
        CasoErro{"ArquivoInvalido",
                 kCabecalho + venda() + cadastros() +
                     l16("1", "30/04/2024", "1,00") + l17_l19(17, "1", "15", "1,00", "1,00", "1,00", "UN"),
                 "Arquivo SPED EFD ICMS/IPI inválido; nada foi gravado:\n"
                 "Linha 25: H005 DT_INV 30042024 depois do fim do período em |H005|30042024|1,00|01|"}),
    [](const auto& info) { return info.param.nome; });

// The identities of 2026: a supplier with an alphanumeric CNPJ (its key carries the letters), a
// CNPJ kept by a numeric column without its leading zero, a person's RG that never becomes an
// IE, and a phone with the country code.
TEST(EfdGerar, AlphanumericCnpjZerosRestoredAndNoRgAsIe) {
  std::string info = troca(marco_2024(), "11.444.777/0001-61", "12.ABC.345/01DE-35");
  info = troca(info, kChaveCompra, "35240312ABC34501DE35550010000001231000001236");
  info = troca(info, "[C04]1SP123456[/C04][C05][/C05]", "[C04]1SP123456[/C04][C05]1234567000195[/C05]");
  info = troca(info, "(11) 3333-4444", "+55 (11) 3333-4444");
  const std::string arquivo = gera(info);
  EXPECT_THAT(linhas(arquivo), ::testing::IsSupersetOf(
      {"|0150|2-15|FORNECEDOR SA|1058|12ABC34501DE35||123456785119|3550308||RUA D|40||BRAS|",
       "|0150|1-15|JOSE DA SILVA|1058||52998224725||3550308||RUA C|30||VILA|",
       "|0005|EXEMPLO|01001000|RUA A|10|SALA 1|CENTRO|1133334444||contato@exemplo.com|"}));
  EXPECT_THAT(arquivo, HasSubstr("|0100|FULANO DE TAL|12345678909|1SP123456|01234567000195|"));
  EXPECT_THAT(arquivo, HasSubstr("|35240312ABC34501DE35550010000001231000001236|"));
  EXPECT_TRUE(validar_efd(arquivo).empty());
}

// A quantity past the second decimal reaches QTD whole (the information file carries it).
TEST(EfdGerar, AQuantityKeepsItsDecimals) {
  const std::string arquivo = gera(troca(marco_2024(), "[C07]10,00[/C07]", "[C07]0,004[/C07]"));
  EXPECT_THAT(arquivo, HasSubstr("|C170|1|2-15||0,00400|UN|"));
}

// Every problem of the month in one run, the parties' ones among them.
TEST(EfdGerar, ListsEveryProblemOfTheMonth) {
  std::string info = troca(marco_2024(), "11.444.777/0001-61", "11.444.777/0001-62");
  info = troca(info, "123.456.785.119", "123.456.785.11");
  info = troca(info, "[C16]00[/C16]", "[C16]0O[/C16]");
  try {
    gera(info);
    FAIL() << "sem erro";
  } catch (const MesComProblemas& e) {
    EXPECT_EQ(e.lista(),
              "3 problemas no mês; o arquivo SPED EFD ICMS/IPI não foi gravado:\n"
              "CNPJ inválido (1):\n"
              "  Linha 22 do arquivo de informações: participante 2-15 (FORNECEDOR SA), CNPJ '11.444.777/0001-62': "
              "dígito verificador inválido\n"
              "IE inválida (1):\n"
              "  Linha 22 do arquivo de informações: participante 2-15 (FORNECEDOR SA), IE (SP) '123.456.785.11': "
              "tem 11 dígitos; a inscrição de SP tem 12\n"
              "código com caractere não numérico (1):\n"
              "  Nota 456 de venda de produtos (linha 9 do arquivo de informações): item 1, CST_ICMS '0O': caractere "
              "'O' na posição 2 não permitido: o código é numérico\n");
  }
}

// Read once, as the export hands it over, the text brings the catalogues after the notes: a
// month whose codes are all in them gives the same file (block 0 in the same order, an item's
// unit in the place of its first use), and one with any problem of a code asks for the text
// again, which, read with its catalogues first, lists each problem with its note.
TEST(EfdGerar, ATextReadOnceGivesTheSameFileOrAsksForTheText) {
  const auto uma_vez = [](const std::string& info) {
    SaidaEmMemoria saida;
    gerar_efd(*lido_uma_vez(info), saida, nullptr, nullptr);
    return saida.bytes();
  };
  const std::string mesmo_arquivo[] = {
      marco_2024(),
      l01("01/02/2024", "29/02/2024") + l02_l03() + l16("7", "31/01/2024", "30,00") +
          l17_l19(17, "7", "16", "3,00", "10,00", "30,00", "KG") + cadastros(),
  };
  for (const std::string& info : mesmo_arquivo) EXPECT_EQ(uma_vez(info), gera(info)) << info;
  EXPECT_THAT(uma_vez(mesmo_arquivo[1]), HasSubstr("|0190|CX|CAIXA|\r\n|0190|KG|QUILO|\r\n"));
  const std::string com_problema[] = {
      troca(marco_2024(), "11.444.777/0001-61", "11.444.777/0001-62"),  // a party's CNPJ
      troca(marco_2024(), "[C02]15[/C02][C03]FORNECEDOR", "[C02]17[/C02][C03]FORNECEDOR"),  // a party not listed
      troca(marco_2024(), compra(), compra("99")),                                  // an item not listed
      troca(marco_2024(), "[C02]UN[/C02][C03]UNIDADE", "[C02]UX[/C02][C03]UNIDADE"),  // a unit not listed
      troca(marco_2024(), kChaveCompra, "31240311444777000161550010000001231000001236"),  // a key of MG from SP
  };
  for (const std::string& info : com_problema) {
    EXPECT_THROW(gera(info), MesComProblemas) << info;
    try {
      uma_vez(info);
      ADD_FAILURE() << info;
    } catch (const MesComProblemas&) {
      ADD_FAILURE() << info;
    } catch (const Error& e) {
      EXPECT_STREQ(e.what(), "SPED EFD ICMS/IPI: um código usado pelas notas falta nos cadastros ou tem problemas; "
                             "a conversão precisa ler o arquivo de informações de novo");
    }
  }
}

// Characters outside ISO-8859-1 are transliterated, accents kept, control characters removed.
TEST(EfdCli, ConverterTransliteratesWhatTheCodePageLacks) {
  const std::string dir = fresh_dir("efd_cli_transliteracao");
  // In the saved Windows-1252 file: quotes 0x93 0x94, an em dash 0x97, the euro 0x80, the trade
  // mark 0x99 and a DEL.
  write_file(dir + "/SpedInformacao.txt",
             troca(marco_2024(), "FORNECEDOR SA", "FORNECEDOR \x93" "A\xC7O\x94 \x97 \x80 1\x7F LTDA\x99"));
  const CliResult r = run_cli({"converter", "--tipo", "2", "--informacao", dir + "/SpedInformacao.txt",
                               "--arquivo-fiscal", dir + "/efd.txt"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_THAT(read_file(dir + "/efd.txt"), HasSubstr("|0150|2-15|FORNECEDOR \"A\xC7O\" - EUR 1 LTDATM|1058|"));
}

// ---- the validator on broken files

std::string valido() {
  static const std::string arquivo = gera(marco_2024());
  return arquivo;
}

struct CasoValidacao {
  std::string nome, de, para;
  std::vector<std::string> achados;
};

class EfdValidar : public ::testing::TestWithParam<CasoValidacao> {};

TEST_P(EfdValidar, GivesExactlyTheseFindings) {
  const std::string arquivo = troca(valido(), GetParam().de, GetParam().para);
  EXPECT_THAT(validar_efd(arquivo), ElementsAreArray(GetParam().achados));
  // Read a piece at a time, cut anywhere, the file gives the same findings.
  efd::ValidadorEfd validador;
  for (std::size_t p = 0; p < arquivo.size(); p += 37) validador.le(std::string_view(arquivo).substr(p, 37));
  EXPECT_THAT(validador.conclui(), ElementsAreArray(GetParam().achados));
}

INSTANTIATE_TEST_SUITE_P(
    Efd, EfdValidar,
    ::testing::Values(
        CasoValidacao{"Sem0150", "|0150|1-15|JOSE DA SILVA|1058||52998224725||3550308||RUA C|30||VILA|\r\n", "",
                      {"Linha 10: 0990 QTD_LIN 11 difere das 10 linhas do bloco",
                       "Linha 19: C100 COD_PART '1-15' não consta do registro 0150",
                       "Linha 46: 9900 de 0150 conta 2; o arquivo tem 1",
                       "Linha 79: 9999 QTD_LIN 80 difere das 79 linhas do arquivo"}},
        CasoValidacao{"Contagem9900Errada", "|9900|C100|3|", "|9900|C100|4|",
                      {"Linha 54: 9900 de C100 conta 4; o arquivo tem 3"}},
        CasoValidacao{"E110QueNaoFecha",
                      "|E110|90,00|0,00|0,00|0,00|180,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|90,00|0,00|",
                      "|E110|100,00|0,00|0,00|0,00|180,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|90,00|0,00|",
                      {"Linha 28: E110 VL_TOT_DEBITOS 100,00 difere do ICMS dos C190 de saída (90,00)",
                       "Linha 28: E110 VL_SLD_CREDOR_TRANSPORTAR 90,00 não fecha com a apuração (80,00)"}},
        CasoValidacao{"CanceladaComValores", "|C100|1|0||55|02|1|457|" + kChaveCancelada + "||||",
                      "|C100|1|0||55|02|1|457|" + kChaveCancelada + "|11032024||10,00|",
                      {"Linha 22: C100 de COD_SIT 02 com o campo DT_DOC preenchido",
                       "Linha 22: C100 de COD_SIT 02 com o campo VL_DOC preenchido"}},
        CasoValidacao{"FilhoDeCancelada", "|C990|10|",
                      "|C190|000|5102|18,00|10,00|10,00|1,80|0,00|0,00|0,00|0,00||\r\n|C990|10|",
                      {"Linha 23: C190 sob C100 de COD_SIT 02, que não tem registros filhos",
                       "Linha 24: C990 QTD_LIN 10 difere das 11 linhas do bloco",
                       "Linha 57: 9900 de C190 conta 3; o arquivo tem 4",
                       "Linha 81: 9999 QTD_LIN 80 difere das 81 linhas do arquivo"}},
        CasoValidacao{"NumItemRepetido", "|C170|2|2-16||2,00000|CX|", "|C170|1|2-16||2,00000|CX|",
                      {"Linha 17: C170 NUM_ITEM 1 repetido no documento"}},
        CasoValidacao{"TerceirosSemC170", kItensDaCompra, "",
                      {"Linha 15: C100 de terceiros sem os itens (C170)",
                       "Linha 21: C990 QTD_LIN 10 difere das 8 linhas do bloco",
                       "Linha 53: 9900 de C170, registro ausente do arquivo",
                       "Linha 78: 9999 QTD_LIN 80 difere das 78 linhas do arquivo"}},
        CasoValidacao{"C190ContraC170", "|C190|000|1102|18,00|1000,00|1000,00|180,00|",
                      "|C190|000|1102|18,00|1000,00|1000,00|170,00|",
                      {"Linha 15: C100 VL_ICMS 180,00 difere da soma dos C190 (170,00)",
                       "Linha 18: C190 VL_ICMS 170,00 difere da soma dos C170 do grupo (180,00)",
                       "Linha 28: E110 VL_TOT_CREDITOS 180,00 difere do ICMS dos C190 de entrada (170,00)"}},
        CasoValidacao{"H005QueNaoSoma", "|H005|29022024|150,00|01|", "|H005|29022024|160,00|01|",
                      {"Linha 33: H005 VL_INV 160,00 difere da soma dos H010 (150,00)"}},
        CasoValidacao{"Formatos", "|0005|EXEMPLO|01001000|RUA A|10|SALA 1|CENTRO|",
                      "|0005|EXEMPLO |0100100|RUA A|10|SALA 1|CENTRO|",
                      {"Linha 3: 0005 campo FANTASIA com brancos nas pontas",
                       "Linha 3: 0005 campo CEP '0100100' deve ter exatamente 8 caracteres"}},
        CasoValidacao{"NumerosEDatas", "|H010|2-15|UN|10,000|10,000000|100,00|0|",
                      "|H010|2-15|UN|010,0000|10,000000|100,00|3|",
                      {"Linha 34: H010 campo QTD '010,0000' não é um número com até 3 decimais",
                       "Linha 34: H010 campo IND_PROP '3' fora dos valores permitidos (0|1|2)"}},
        CasoValidacao{"ChaveDeOutroDocumento", "|456|" + kChaveVenda + "|", "|457|" + kChaveVenda + "|",
                      {"Linha 20: C100 CHV_NFE não confere com o NUM_DOC"}},
        CasoValidacao{"ChaveDeOutroEmitente", "|0150|2-15|FORNECEDOR SA|1058|11444777000161|",
                      "|0150|2-15|FORNECEDOR SA|1058|11222333000181|",
                      {"Linha 15: C100 CHV_NFE não confere com o CNPJ do emitente"}},
        CasoValidacao{"DataForaDoPeriodo", "|06032024|1100,00|", "|06042024|1100,00|",
                      {"Linha 15: C100 DT_E_S 06042024 fora de DT_DOC a fim do período"}},
        CasoValidacao{"CamposAMais", "|1001|0|", "|1001|0||",
                      {"Linha 39: 1001 com 3 campos; o leiaute tem 2"}},
        CasoValidacao{"ForaDeOrdem", "|0190|UN|UNIDADE|\r\n|0190|CX|CAIXA|\r\n",
                      "|0190|UN|UNIDADE|\r\n|0190|CX|CAIXA|\r\n|0150|1-16|X|1058||52998224725||3550308||R||||\r\n",
                      {"Linha 9: 0150 fora de ordem", "Linha 9: '1-16' não é usado por nenhum registro do arquivo",
                       "Linha 12: 0990 QTD_LIN 11 difere das 12 linhas do bloco",
                       "Linha 48: 9900 de 0150 conta 2; o arquivo tem 3",
                       "Linha 81: 9999 QTD_LIN 80 difere das 81 linhas do arquivo"}},
        CasoValidacao{"VersaoDeOutroAno", "|0000|018|", "|0000|017|",
                      {"Linha 1: 0000 COD_VER '017' não é o do período 03/2024 ('018')"}},
        CasoValidacao{"BlocoVazioComMovimento", "|D001|1|", "|D001|0|",
                      {"Linha 25: bloco D com IND_MOV 0 e nenhum registro de dados"}},
        CasoValidacao{"E100QueNaoCobreOPeriodo", "|E100|01032024|31032024|", "|E100|01032024|30032024|",
                      {"Linha 80: os E100 não cobrem o período do 0000 até o fim"}},
        CasoValidacao{"TipoSem9900", "|9900|K990|1|\r\n", "",
                      {"Linha 75: 9900 de 9900 conta 36; o arquivo tem 35",
                       "Linha 78: 9990 QTD_LIN 39 difere das 38 linhas do bloco",
                       "Linha 79: 9999 QTD_LIN 80 difere das 79 linhas do arquivo", "Linha 79: registro K990 sem 9900"}},
        // Identities and the code page.
        CasoValidacao{"IeDaEmpresa", "|SP|123456785016|", "|SP|123456789012|",
                      {"Linha 1: 0000 IE '123456789012' (SP): dígito verificador inválido"}},
        CasoValidacao{"IeDoParticipante", "|11444777000161||123456785119|", "|11444777000161||123456789110|",
                      {"Linha 5: 0150 IE '123456789110' (SP): dígito verificador inválido"}},
        CasoValidacao{"RgComoIe", "|52998224725||3550308|", "|52998224725|12345678|3550308|",
                      {"Linha 6: 0150 de pessoa física (CPF) com IE '12345678'"}},
        CasoValidacao{"CnpjAlfanumericoInvalido", "|1058|11444777000161|", "|1058|12ABC34501DE36|",
                      {"Linha 5: 0150 CNPJ '12ABC34501DE36': dígito verificador inválido",
                       "Linha 15: C100 CHV_NFE não confere com o CNPJ do emitente"}},
        CasoValidacao{"ChaveDeOutraUf", kChaveCompra, "31240311444777000161550010000001231000001236",
                      {"Linha 15: C100 CHV_NFE não confere com o código da UF do emitente"}},
        CasoValidacao{"ChaveComLetraForaDoCnpj", kChaveCompra, "3524031144477700016155001000000123100000123A",
                      {"Linha 15: C100 CHV_NFE '3524031144477700016155001000000123100000123A': caractere 'A' na "
                       "posição 44 não permitido"}},
        CasoValidacao{"Del", "|0005|EXEMPLO|", "|0005|EXEM\x7FPLO|",
                      {"Linha 3: byte 0x7F na posição 11, fora da página de código ISO-8859-1"}},
        CasoValidacao{"ControleC1", "|0005|EXEMPLO|", "|0005|EXEM\x81PLO|",
                      {"Linha 3: byte 0x81 na posição 11, fora da página de código ISO-8859-1"}},
        CasoValidacao{"SemCrLf", "|9999|80|\r\n", "|9999|80|\n", {"Linha 80: linha sem CR LF no fim"}}),
    [](const auto& info) { return info.param.nome; });

TEST(EfdCli, ValidarExitsOneWithOneFindingPerLine) {
  const std::string dir = fresh_dir("efd_cli");
  write_file(dir + "/bom.txt", valido());
  write_file(dir + "/ruim.txt", troca(valido(), "|9900|C100|3|", "|9900|C100|4|"));
  EXPECT_EQ(run_cli({"validar", "--tipo", "2", "--arquivo-fiscal", dir + "/bom.txt"}).status, 0);
  const CliResult ruim = run_cli({"validar", "--tipo", "2", "--arquivo-fiscal", dir + "/ruim.txt"});
  EXPECT_EQ(ruim.status, 1);
  EXPECT_EQ(ruim.out, "Linha 54: 9900 de C100 conta 4; o arquivo tem 3\n");
}

TEST(EfdCli, ConverterWritesTheFileInItsCodePage) {
  const std::string dir = fresh_dir("efd_cli_converter");
  std::string info = marco_2024();
  info = troca(info, "FORNECEDOR SA", "FORNECEDOR AÇÃO SA");
  write_file(dir + "/SpedInformacao.txt", troca(info, "AÇÃO", "A\xC7\xC3O"));  // the saved file is Windows-1252
  const CliResult r = run_cli({"converter", "--tipo", "2", "--informacao", dir + "/SpedInformacao.txt",
                               "--arquivo-fiscal", dir + "/efd.txt"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_THAT(read_file(dir + "/efd.txt"), HasSubstr("|0150|2-15|FORNECEDOR A\xC7\xC3O SA|1058|"));
}

}  // namespace
}  // namespace infofiscal::testing
