// The figures the report of a month shows, read from the converters' expected files of a small
// month of each kind: the counts against what the file itself declares (9900, type 90), the
// totals, the apuração and the days against sums made by hand from the records.
#include "fiscal/numeros_do_mes.h"

#include <cstdint>
#include <limits>
#include <map>
#include <tuple>

#include <gtest/gtest.h>

#include "support/golden.h"

namespace infofiscal::testing {
namespace {


using Contagens = std::vector<std::pair<std::string, std::int64_t>>;

// The figures of `arquivo` handed over in pieces of `pedaco` bytes.
NumerosDoMes numeros(int tipo, std::string_view arquivo, std::size_t pedaco = std::numeric_limits<std::size_t>::max()) {
  LeitorDeNumeros leitor(tipo);
  for (std::size_t p = 0; p < arquivo.size(); p += pedaco) leitor.le(arquivo.substr(p, pedaco));
  return leitor.conclui();
}

// The totals per key as (records, value, base, ICMS), to compare at once.
std::vector<std::pair<std::string, std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t>>> em_tuplas(
    const std::map<std::string, TotaisAnaliticos>& m) {
  std::vector<std::pair<std::string, std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t>>> out;
  for (const auto& [k, t] : m) out.emplace_back(k, std::tuple{t.registros, t.valor, t.base, t.icms});
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

using Totais = std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t>;
using PorChave = std::vector<std::pair<std::string, Totais>>;

// The expected files of March 2024 of both converters' tests, read whole and in pieces cut
// anywhere. EFD: a purchase (C190 1102 and 1403), a sale (5102), a cancelled sale, E110 with a
// credit balance; the purchase counted on its entry date (06), the sale on its issue (10).
// SINTEGRA: the counts of type 90, totals per CFOP (50 and the CT-e's 70) and per CST (54, items 991-999 apart),
// the apuração computed from the CFOPs (debits 360,00 + 60,00, credits 180,00 + 36,00: 204,00
// to pay), an energy bill received on 28/02 and booked late outside the month's days.
TEST(NumerosDoMes, TheMonthsOfBothKinds) {
  const struct {
    int tipo;
    std::string arquivo, empresa;
    Contagens registros;
    std::int64_t total;
    PorChave cfop, cst;
    bool cst_com_icms;
    efd::CamposE110 apuracao;
    std::map<int, MovimentoDoDia> dias;  // the days with documents
    MovimentoDoDia fora;
  } casos[] = {
      {2, golden("efd_marco_2024.txt"), "EMPRESA EXEMPLO LTDA",
       declaradas_no_9900(golden("efd_marco_2024.txt")), 80,
       {{"1102", {1, 100000, 100000, 18000}}, {"1403", {1, 10000, 0, 0}}, {"5102", {1, 50000, 50000, 9000}}},
       {{"000", {2, 150000, 150000, 27000}}, {"060", {1, 10000, 0, 0}}}, true,
       {0, 0, 9000, 0, 0, 0, 18000, 0, 0, 0, 0, 0, 0, 0, 9000, 0},
       {{6, {110000, 0}}, {10, {0, 50000}}}, {}},
      {1, golden("sintegra_marco_2024.txt"), "COMERCIO EXEMPLO LTDA",
       {{"10", 1}, {"11", 1}, {"50", 7}, {"54", 6}, {"70", 1}, {"74", 2}, {"75", 5}, {"90", 1}}, 24,  // as type 90 declares
       {{"0000", {1, 0, 0, 0}},  // the voided number
        {"1102", {1, 118000, 100000, 18000}}, {"1253", {1, 20000, 20000, 3600}}, {"1353", {1, 8000, 0, 0}},
        {"1403", {1, 5000, 0, 0}},
        {"5102", {2, 200000, 200000, 36000}}, {"6102", {1, 50000, 50000, 6000}}},
       {{"000", {4, 350000, 350000, 0}}, {"060", {1, 5000, 0, 0}}}, false,
       {0, 0, 42000, 0, 0, 0, 21600, 0, 0, 0, 0, 20400, 0, 20400, 0, 0},
       {{6, {123000, 0}}, {7, {8000, 0}}, {10, {0, 50000}}, {15, {0, 200000}}}, {20000, 0}},
  };
  for (const auto& c : casos) {
    for (const std::size_t pedaco : {c.arquivo.size(), std::size_t{37}, std::size_t{1}}) {
      SCOPED_TRACE(c.empresa + " em pedaços de " + std::to_string(pedaco));
      const NumerosDoMes n = numeros(c.tipo, c.arquivo, pedaco);
      EXPECT_TRUE(n.completo);
      EXPECT_EQ(n.empresa, c.empresa);
      EXPECT_EQ(n.inicio, 20240301);
      EXPECT_EQ(n.fim, 20240331);
      EXPECT_EQ(n.registros, c.registros);
      EXPECT_EQ(n.total_de_registros, c.total);
      EXPECT_EQ(em_tuplas(n.por_cfop), c.cfop);
      EXPECT_EQ(em_tuplas(n.por_cst), c.cst);
      EXPECT_EQ(n.cst_com_icms, c.cst_com_icms);
      EXPECT_EQ(n.apuracao, c.apuracao);
      for (int d = 1; d <= 31; ++d) {
        const auto it = c.dias.find(d);
        const MovimentoDoDia esperado = it == c.dias.end() ? MovimentoDoDia{} : it->second;
        EXPECT_EQ(std::pair(n.por_dia[d].entradas, n.por_dia[d].saidas), std::pair(esperado.entradas, esperado.saidas))
            << "dia " << d;
      }
      EXPECT_EQ(std::pair(n.fora_do_periodo.entradas, n.fora_do_periodo.saidas), std::pair(c.fora.entradas, c.fora.saidas));
      EXPECT_EQ(n.ilegiveis, 0);
    }
  }
}

// Transport documents: EFD D100/D190 (an entry counted on its acquisition date, DT_A_P) and
// SINTEGRA 70 (a credit of the apuração).
TEST(NumerosDoMes, TransportDocuments) {
  const std::string efd =
      "|0000|018|0|01032024|31032024|EMPRESA|11222333000181||SP|1|3550308|||A|1|\r\n"
      "|D100|0|1|2-15|57|00|1||123|35240311444777000161570010000001231000001235|05032024|07032024|0||150,00|0,00|1|"
      "150,00|150,00|18,00|0,00||||\r\n"
      "|D190|000|1353|12,00|150,00|150,00|18,00|0,00||\r\n|9999|4|\r\n";
  const std::string r10 = golden("sintegra_marco_2024.txt").substr(0, 128);
  const std::string r70 = "70" + std::string("44555666000181") + "ISENTO        " + "20240308" + "SP" + "57" + "1" +
                          "  " + "000123" + "1353" + "0000000015000" + "00000000015000" + "00000000001800" +
                          std::string(28, '0') + "1" + "N";
  const std::string r90 = "90" + r10.substr(2, 28) + "70000000019900000003" + std::string(75, ' ') + "1";
  ASSERT_EQ(r70.size(), 126u);
  ASSERT_EQ(r90.size(), 126u);
  const auto e = numeros(2, efd);
  const auto s = numeros(1, r10 + r70 + "\r\n" + r90 + "\r\n");
  for (const NumerosDoMes* n : {&e, &s}) {
    EXPECT_TRUE(n->completo);
    EXPECT_EQ(em_tuplas(n->por_cfop), (PorChave{{"1353", {1, 15000, 15000, 1800}}}));
    EXPECT_EQ(n->ilegiveis, 0);
  }
  EXPECT_EQ(e.por_dia[7].entradas, 15000);
  EXPECT_EQ(em_tuplas(e.por_cst), (PorChave{{"000", {1, 15000, 15000, 1800}}}));
  EXPECT_EQ(s.por_dia[8].entradas, 15000);
  EXPECT_EQ(s.apuracao[6], 1800);
  EXPECT_EQ(s.apuracao[14], 1800);
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
      {"SINTEGRA sem o 90", 1, sintegra.substr(0, sintegra.size() - ultimo90.size()), false, 0, 23, 7},
      {"SINTEGRA cujo 90 diz que há dois", 1, sintegra.substr(0, sintegra.size() - 3) + "2\r\n", false, 0, 24, 7},
      {"EFD com valor ilegível", 2,
       troca(efd, "|C190|000|1102|18,00|1000,00|", "|C190|000|1102|18,00|1.000,00|"), true, 1, 80, 2},
      {"EFD com E110 ilegível", 2, troca(efd, "|E110|90,00|", "|E110|-90,00|"), true, 1, 80, 3},
      {"SINTEGRA com registro curto", 1, troca(sintegra, "0000000036000000", "000000003600000"), true, 1, 24, 6},
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
