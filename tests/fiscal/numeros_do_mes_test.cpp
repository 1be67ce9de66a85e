// The figures the report of a month shows, read from the converters' expected files of a small
// month of each kind: the counts against what the file itself declares (9900, type 90), the
// totals, the apuração and the days against sums made by hand from the records.
#include "fiscal/numeros_do_mes.h"

#include <cstdint>
#include <limits>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/golden.h"

namespace infofiscal::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::Pair;

using Contagens = std::vector<std::pair<std::string, std::int64_t>>;

// The figures of `arquivo` handed over in pieces of `pedaco` bytes.
NumerosDoMes numeros(int tipo, std::string_view arquivo, std::size_t pedaco = std::numeric_limits<std::size_t>::max()) {
  LeitorDeNumeros leitor(tipo);
  for (std::size_t p = 0; p < arquivo.size(); p += pedaco) leitor.le(arquivo.substr(p, pedaco));
  return leitor.conclui();
}

// (records, value, base, ICMS) of a total, to compare at once.
auto totais(const TotaisAnaliticos& t) { return std::tuple{t.registros, t.valor, t.base, t.icms}; }
template <class Mapa>
std::vector<std::pair<std::string, std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t>>> em_tuplas(
    const Mapa& m) {
  std::vector<std::pair<std::string, std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t>>> out;
  for (const auto& [k, t] : m) out.emplace_back(k, totais(t));
  return out;
}

// The (type, count) pairs that the 9900 records of an EFD file declare, in their order.
Contagens declaradas_no_9900(const std::string& arquivo) {
  Contagens out;
  for (std::size_t pos = 0; (pos = arquivo.find("|9900|", pos)) != std::string::npos; pos += 6) {
    const std::size_t barra = arquivo.find('|', pos + 6);
    out.emplace_back(arquivo.substr(pos + 6, barra - pos - 6),
                     std::stoll(arquivo.substr(barra + 1, arquivo.find('|', barra + 1) - barra - 1)));
  }
  return out;
}

std::string troca(std::string arquivo, const std::string& de, const std::string& para) {
  const auto pos = arquivo.find(de);
  EXPECT_NE(pos, std::string::npos) << de;
  return pos == std::string::npos ? arquivo : arquivo.replace(pos, de.size(), para);
}

// March 2024 of the EFD tests: a purchase (C190 1102 and 1403), a sale (5102), a cancelled
// sale, E110 with a credit balance; read whole and in pieces cut anywhere.
TEST(NumerosDoMes, EfdMonth) {
  const std::string arquivo = golden("efd_marco_2024.txt");
  for (const std::size_t pedaco : {arquivo.size(), std::size_t{37}, std::size_t{1}}) {
    SCOPED_TRACE(pedaco);
    const NumerosDoMes n = numeros(2, arquivo, pedaco);
    EXPECT_TRUE(n.completo);
    EXPECT_EQ(n.empresa, "EMPRESA EXEMPLO LTDA");
    EXPECT_EQ(n.cnpj, "11222333000181");
    EXPECT_EQ(n.inicio, 20240301);
    EXPECT_EQ(n.fim, 20240331);
    EXPECT_THAT(n.registros, ElementsAreArray(declaradas_no_9900(arquivo)));
    EXPECT_EQ(n.total_de_registros, 80);  // 9999
    EXPECT_THAT(em_tuplas(n.por_cfop), ElementsAre(Pair("1102", std::tuple{1, 100000, 100000, 18000}),
                                                   Pair("1403", std::tuple{1, 10000, 0, 0}),
                                                   Pair("5102", std::tuple{1, 50000, 50000, 9000})));
    EXPECT_THAT(em_tuplas(n.por_cst), ElementsAre(Pair("000", std::tuple{2, 150000, 150000, 27000}),
                                                  Pair("060", std::tuple{1, 10000, 0, 0})));
    EXPECT_TRUE(n.cst_com_icms);
    const efd::CamposE110 e110 = {0, 0, 9000, 0, 0, 0, 18000, 0, 0, 0, 0, 0, 0, 0, 9000, 0};
    EXPECT_EQ(n.apuracao, e110);
    // The purchase by its entry date (06), the sale by its issue (10); the cancelled sale has no value.
    for (int d = 1; d <= 31; ++d) {
      EXPECT_EQ(n.por_dia[d].entradas, d == 6 ? 110000 : 0) << d;
      EXPECT_EQ(n.por_dia[d].saidas, d == 10 ? 50000 : 0) << d;
    }
    EXPECT_EQ(n.fora_do_periodo.entradas + n.fora_do_periodo.saidas, 0);
    EXPECT_EQ(n.ilegiveis, 0);
  }
}

// March 2024 of the SINTEGRA tests: the counts of type 90, totals per CFOP (50) and per CST
// (54, items 991-999 apart), the apuração computed from the CFOPs (an extemporaneous entry of
// February included), the late entry outside the month's days.
TEST(NumerosDoMes, SintegraMonth) {
  const std::string arquivo = golden("sintegra_marco_2024.txt");
  for (const std::size_t pedaco : {arquivo.size(), std::size_t{50}}) {
    SCOPED_TRACE(pedaco);
    const NumerosDoMes n = numeros(1, arquivo, pedaco);
    EXPECT_TRUE(n.completo);
    EXPECT_EQ(n.empresa, "COMERCIO EXEMPLO LTDA");
    EXPECT_EQ(n.inicio, 20240301);
    EXPECT_EQ(n.fim, 20240331);
    // Type 90 declares 50: 7, 54: 6, 74: 2, 75: 5 and 99: 23.
    EXPECT_THAT(n.registros, ElementsAre(Pair("10", 1), Pair("11", 1), Pair("50", 7), Pair("54", 6), Pair("74", 2),
                                         Pair("75", 5), Pair("90", 1)));
    EXPECT_EQ(n.total_de_registros, 23);
    EXPECT_THAT(em_tuplas(n.por_cfop),
                ElementsAre(Pair("0000", std::tuple{1, 0, 0, 0}),  // the voided number
                            Pair("1102", std::tuple{1, 118000, 100000, 18000}), Pair("1253", std::tuple{1, 20000, 20000, 3600}),
                            Pair("1403", std::tuple{1, 5000, 0, 0}), Pair("5102", std::tuple{2, 200000, 200000, 36000}),
                            Pair("6102", std::tuple{1, 50000, 50000, 6000})));
    EXPECT_THAT(em_tuplas(n.por_cst), ElementsAre(Pair("000", std::tuple{4, 350000, 350000, 0}),
                                                  Pair("060", std::tuple{1, 5000, 0, 0})));
    EXPECT_FALSE(n.cst_com_icms);
    // Debits 360,00 + 60,00; credits 180,00 + 36,00; a debit balance of 204,00 to pay.
    const efd::CamposE110 apuracao = {0, 0, 42000, 0, 0, 0, 21600, 0, 0, 0, 0, 20400, 0, 20400, 0, 0};
    EXPECT_EQ(n.apuracao, apuracao);
    EXPECT_EQ(n.por_dia[6].entradas, 123000);
    EXPECT_EQ(n.por_dia[10].saidas, 50000);
    EXPECT_EQ(n.por_dia[15].saidas, 200000);
    EXPECT_EQ(n.fora_do_periodo.entradas, 20000);  // received on 28/02, booked late
    EXPECT_EQ(n.ilegiveis, 0);
  }
}

// A file whose conversion stopped before its end is not complete; a record whose figures do not
// read (only in a file its validator refuses) is counted, and its values left out of the sums.
TEST(NumerosDoMes, IncompleteFilesAndUnreadableRecords) {
  const std::string efd = golden("efd_marco_2024.txt"), sintegra = golden("sintegra_marco_2024.txt");
  const std::string ultimo90 = sintegra.substr(sintegra.rfind("\r\n", sintegra.size() - 3) + 2);
  const struct {
    const char* nome;
    int tipo;
    std::string arquivo;
    bool completo;
    std::int64_t ilegiveis, total;
    std::size_t cfops;
  } casos[] = {
      {"EFD sem o 9999", 2, troca(efd, "|9999|80|\r\n", ""), false, 0, 79, 3},
      {"EFD cortado no bloco C", 2, efd.substr(0, efd.find("|C190|060|")), false, 0, 18, 1},
      {"SINTEGRA sem o 90", 1, sintegra.substr(0, sintegra.size() - ultimo90.size()), false, 0, 22, 6},
      {"SINTEGRA cujo 90 diz que há dois", 1, sintegra.substr(0, sintegra.size() - 3) + "2\r\n", false, 0, 23, 6},
      {"EFD com valor ilegível", 2,
       troca(efd, "|C190|000|1102|18,00|1000,00|", "|C190|000|1102|18,00|1.000,00|"), true, 1, 80, 2},
      {"EFD com E110 ilegível", 2, troca(efd, "|E110|90,00|", "|E110|-90,00|"), true, 1, 80, 3},
      {"SINTEGRA com registro curto", 1, troca(sintegra, "0000000036000000", "000000003600000"), true, 1, 23, 5},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.nome);
    const NumerosDoMes n = numeros(c.tipo, c.arquivo);
    EXPECT_EQ(n.completo, c.completo);
    EXPECT_EQ(n.ilegiveis, c.ilegiveis);
    EXPECT_EQ(n.total_de_registros, c.total);
    EXPECT_EQ(n.por_cfop.size(), c.cfops);
  }
  // The unreadable E110 leaves the apuração at zero rather than half-read.
  EXPECT_EQ(numeros(2, troca(efd, "|E110|90,00|", "|E110|-90,00|")).apuracao, efd::CamposE110{});
}

}  // namespace
}  // namespace infofiscal::testing
