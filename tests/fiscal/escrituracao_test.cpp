// The ICMS bookkeeping of the EFD beyond the documents' own figures: entries without a right to
// credit, freight documents in block D, the balance carried from last month's file, E116's
// placeholders and the month of the year-end inventory.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "fiscal/efd.h"
#include "fiscal/efd_informacao.h"
#include "fiscal/identidade.h"
#include "support/cli.h"

namespace infofiscal::testing {
namespace {

using ::testing::ElementsAreArray;

// The lines of `arquivo` whose register starts with one of `blocos`, each with its CR LF.
std::string blocos(const std::string& arquivo, std::string_view blocos) {
  std::string out;
  for (std::size_t pos = 0; pos < arquivo.size();) {
    const std::size_t fim = arquivo.find("\r\n", pos) + 2;
    if (blocos.find(arquivo[pos + 1]) != std::string_view::npos) out += arquivo.substr(pos, fim - pos);
    pos = fim;
  }
  return out;
}

// A purchase (note kind `especie`) of supplier 15 with one item of catalogue `tipo`, CFOP
// `cfop`, 1000,00 with ICMS 18%.
std::string compra(std::string_view especie, std::string_view modelo, std::string_view chave, std::string_view tipo,
                   std::string_view cfop) {
  return l04(especie, "1", "123", chave, modelo, "05/03/2024", "06/03/2024", "1000,00", "0") +
         l05(especie, "1", "2", "15") +
         l06(especie, "1", "15", "1", "UN", "1,00", "1000,00", tipo, "000", cfop, "1000,00", "18,00", "180,00");
}

// A sale of 500,00 with ICMS 90,00: a debit that the credits below meet.
std::string venda() {
  return l04("10", "1", "456", chave_nfe("11222333000181", 456), "55", "10/03/2024", "10/03/2024", "500,00", "0") +
         l05("10", "1", "1", "15") +
         l06("10", "1", "15", "1", "UN", "5,00", "500,00", "2", "000", "5102", "500,00", "18,00", "90,00");
}

// The key of a CT-e (model 57) of March 2024 of supplier 15, series 1, number 123.
std::string chave_cte() {
  const std::string k = "35240311444777000161570010000001231000001230";
  for (char d = '0'; d <= '9'; ++d)
    if (identidade::verificar_chave(k.substr(0, 43) + d)) return k.substr(0, 43) + d;
  return k;
}

// Catalogues with an equipment 15 (a fixed asset) besides the usual ones.
std::string cadastros_com_equipamento() { return cadastros() + l12("1", "15", "EMPILHADEIRA", "UN", "84272010", ""); }

std::string mes(const std::string& notas) {
  return l01("01/03/2024", "31/03/2024") + l02_l03() + notas + venda() + cadastros_com_equipamento();
}

const std::string kChaveCompra = chave_nfe("11444777000161", 123);

struct CasoEscrituracao {
  std::string nome, informacao;
  std::string blocos_c_d_e;        // the lines of blocks C, D and E, exactly
  std::vector<std::string> infos;  // the run's info lines, exactly
  OpcoesEfd opcoes = {};
};

class EfdEscrituracao : public ::testing::TestWithParam<CasoEscrituracao> {};

TEST_P(EfdEscrituracao, BooksTheseBlocks) {
  const CasoEscrituracao& c = GetParam();
  std::vector<std::string> infos;
  const std::string arquivo =
      gerar_efd(c.informacao, [&](const std::string& s) { infos.push_back(s); }, nullptr, c.opcoes);
  EXPECT_EQ(blocos(arquivo, "CDE"), c.blocos_c_d_e);
  EXPECT_THAT(infos, ElementsAreArray(c.infos));
}

const std::string kPeriodo = "SPED EFD ICMS/IPI: período de 01/03/2024 a 31/03/2024";
const std::string kPlaceholders =
    "E116: o código de receita 000 e o vencimento 10/04/2024 são marcadores; confirme com as regras do estado antes "
    "de transmitir (opções --codigo-receita e --vencimento)";

// The sale's lines of block C, and its debit: 90,00.
const std::string kVendaC =
    "|C100|1|0|1-15|55|00|1|456|35240311222333000181550010000004561000004568|10032024|10032024|500,00|2|0,00|0,00|"
    "500,00|9|0,00|0,00|0,00|500,00|90,00|0,00|0,00|0,00|0,00|0,00|||\r\n"
    "|C190|000|5102|18,00|500,00|500,00|90,00|0,00|0,00|0,00|0,00||\r\n";
const std::string kBlocoDVazio = "|D001|1|\r\n|D990|2|\r\n";
const std::string kE100 = "|E001|0|\r\n|E100|01032024|31032024|\r\n";
// A purchase of 1000,00 booked without credit: C100 and C170 with ICMS 0, C190 of rate 0.
std::string compra_sem_credito(std::string_view item, std::string_view cfop) {
  return fmt::format(
      "|C100|0|1|2-15|55|00|1|123|35240311444777000161550010000001231000001235|05032024|06032024|1000,00|2|0,00|0,00|"
      "1000,00|9|0,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|||\r\n"
      "|C170|1|{}||1,00000|UN|1000,00|0,00|0|000|{}||0,00|0,00|0,00|0,00||0,00||||0,00||0,00||0,00|0,0000|||0,00||"
      "0,00|0,0000|||0,00|||\r\n"
      "|C190|000|{}|0,00|1000,00|0,00|0,00|0,00|0,00|0,00|0,00||\r\n",
      item, cfop, cfop);
}
// Debits 90,00 and no credit: 90,00 to pay, E116 with its placeholders.
const std::string kE110Devedor =
    "|E110|90,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|90,00|0,00|90,00|0,00|0,00|\r\n"
    "|E116|000|90,00|10042024|000|||||032024|\r\n|E990|5|\r\n";
const std::string kDoisDocumentos = "SPED EFD ICMS/IPI: 2 documentos escriturados";

INSTANTIATE_TEST_SUITE_P(
    Efd, EfdEscrituracao,
    ::testing::Values(
        CasoEscrituracao{"UsoEConsumo", mes(compra("4", "55", kChaveCompra, "3", "1556")),
                         "|C001|0|\r\n" + compra_sem_credito("3-15", "1556") + kVendaC + "|C990|7|\r\n" + kBlocoDVazio +
                             kE100 + kE110Devedor,
                         {kPeriodo, kPlaceholders,
                          "ICMS não creditado de entradas para uso e consumo (CFOP 1556, 2556, 3556, 1407, 2407): "
                          "180,00; a Lei Complementar 87/96, art. 33, I, não dá crédito a essas entradas",
                          kDoisDocumentos}},
        CasoEscrituracao{"AtivoImobilizado", mes(compra("1", "55", kChaveCompra, "1", "2551")),
                         "|C001|0|\r\n" + compra_sem_credito("1-15", "2551") + kVendaC + "|C990|7|\r\n" + kBlocoDVazio +
                             kE100 + kE110Devedor,
                         {kPeriodo, kPlaceholders,
                          "ICMS não creditado de entradas para o ativo imobilizado (CFOP 1551, 2551, 3551, 1406, 2406): "
                          "180,00; o crédito se apropria só pelo CIAP, 1/48 por mês (Lei Complementar 87/96, art. 20, "
                          "§ 5º), e o bloco G não é gerado: lance-o à parte",
                          kDoisDocumentos}},
        // Freight of goods for resale: its ICMS is credited; the credit balance (90,00) is carried.
        CasoEscrituracao{"ConhecimentoDeTransporte", mes(compra("4", "57", chave_cte(), "3", "1353")),
                         "|C001|0|\r\n" + kVendaC + "|C990|4|\r\n|D001|0|\r\n|D100|0|1|2-15|57|00|1||123|" + chave_cte() +
                             "|05032024|06032024|0||1000,00|0,00|1|1000,00|1000,00|180,00|0,00|||||\r\n"
                             "|D190|000|1353|18,00|1000,00|1000,00|180,00|0,00||\r\n|D990|4|\r\n" +
                             kE100 + "|E110|90,00|0,00|0,00|0,00|180,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|90,00|0,00|\r\n"
                             "|E990|4|\r\n",
                         {kPeriodo, kDoisDocumentos, "SPED EFD ICMS/IPI: 1 conhecimentos de transporte no registro D100"}},
        CasoEscrituracao{"SaldoCredorEE116DasOpcoes", mes(""),
                         "|C001|0|\r\n" + kVendaC + "|C990|4|\r\n" + kBlocoDVazio + kE100 +
                             "|E110|90,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|12,34|77,66|0,00|77,66|0,00|0,00|\r\n"
                             "|E116|000|77,66|20042024|046-2|||||032024|\r\n|E990|5|\r\n",
                         {kPeriodo, "SPED EFD ICMS/IPI: 1 documentos escriturados"}, OpcoesEfd{1234, "", "046-2", 20240420}}),
    [](const auto& info) { return info.param.nome; });

// Last month's file: February 2024 with one purchase whose credit (180,00) is carried.
std::string efd_de_fevereiro() {
  const std::string fevereiro =
      l01("01/02/2024", "29/02/2024") + l02_l03() +
      l04("2", "1", "123", chave_nfe("11444777000161", 123), "55", "05/02/2024", "06/02/2024", "1000,00", "0") +
      l05("2", "1", "2", "15") +
      l06("2", "1", "15", "1", "UN", "1,00", "1000,00", "2", "000", "1102", "1000,00", "18,00", "180,00") + cadastros();
  return gerar_efd(fevereiro, nullptr, nullptr);
}

std::string troca(std::string s, const std::string& de, const std::string& para) {
  const std::size_t pos = s.find(de);
  EXPECT_NE(pos, std::string::npos) << de;
  return pos == std::string::npos ? s : s.replace(pos, de.size(), para);
}

struct CasoAnterior {
  std::string nome, de, para;  // the change to February's file
  std::string e110_ou_erro;    // March's E110, or the refusal (`{}` the file's path)
};

class EfdAnterior : public ::testing::TestWithParam<CasoAnterior> {};

TEST_P(EfdAnterior, CarriesTheBalanceOfTheSameCompanyAndTheMonthBefore) {
  const CasoAnterior& c = GetParam();
  const std::string dir = fresh_dir("efd-anterior-" + c.nome);
  const std::string anterior = dir + "/fevereiro.txt";
  const std::string fevereiro = efd_de_fevereiro();
  ASSERT_NE(fevereiro.find("|E110|0,00|0,00|0,00|0,00|180,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|180,00|0,00|"),
            std::string::npos);
  write_file(anterior, c.de.empty() ? fevereiro : troca(fevereiro, c.de, c.para));
  OpcoesEfd opcoes;
  opcoes.efd_anterior = anterior;
  const std::string marco = l01("01/03/2024", "31/03/2024") + l02_l03() + venda() + cadastros();
  try {
    const std::string arquivo = gerar_efd(marco, nullptr, nullptr, opcoes);
    const std::size_t e110 = arquivo.find("|E110|");
    EXPECT_EQ(arquivo.substr(e110, arquivo.find("\r\n", e110) - e110), c.e110_ou_erro);
  } catch (const Error& e) {
    EXPECT_EQ(e.what(), fmt::format(fmt::runtime(c.e110_ou_erro), anterior));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Efd, EfdAnterior,
    ::testing::Values(
        CasoAnterior{"MesmaEmpresaMesAnterior", "", "",
                     "|E110|90,00|0,00|0,00|0,00|0,00|0,00|0,00|0,00|180,00|0,00|0,00|0,00|90,00|0,00|"},
        CasoAnterior{"OutraEmpresa", "|11222333000181|", "|11444777000161|",
                     "O arquivo EFD anterior '{}' é de outra empresa: CNPJ 11444777000161 e IE 123456785016 no seu "
                     "0000; este arquivo é do CNPJ 11222333000181 e IE 123456785016"},
        CasoAnterior{"OutraInscricao", "|SP|123456785016|", "|SP|110777667118|",
                     "O arquivo EFD anterior '{}' é de outra empresa: CNPJ 11222333000181 e IE 110777667118 no seu "
                     "0000; este arquivo é do CNPJ 11222333000181 e IE 123456785016"},
        CasoAnterior{"OutroMes", "|01022024|29022024|", "|01012024|31012024|",
                     "O arquivo EFD anterior '{}' é do período de 01/01/2024 a 31/01/2024; o mês anterior ao deste "
                     "arquivo (01/03/2024 a 31/03/2024) vai de 01/02/2024 a 29/02/2024"},
        CasoAnterior{"SemE110", "|E110|", "|E111|", "O arquivo EFD anterior '{}' não tem o registro E110"}),
    [](const auto& info) { return info.param.nome; });

}  // namespace
}  // namespace infofiscal::testing
