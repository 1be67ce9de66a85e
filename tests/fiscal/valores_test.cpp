// Both converters read an amount of the information file the same way: one purchase of one
// item, its price written as each text of the table, gives the same hundredths in the EFD
// C170 (VL_ITEM) and C190 (VL_OPR) and in the SINTEGRA 54 (valor do produto) and 50 (valor
// total).
#include <gtest/gtest.h>

#include "fiscal/efd.h"
#include "fiscal/efd_informacao.h"
#include "fiscal/sintegra.h"
#include "fiscal/sintegra_layout.h"

namespace infofiscal::testing {
namespace {

// A purchase of model 01 (no access key) whose item and total are `valor`.
std::string compra_de(std::string_view valor) {
  return l01("01/03/2024", "31/03/2024") + l02_l03() +
         l04("2", "1", "123", "", "01", "05/03/2024", "06/03/2024", valor, "0") + l05("2", "1", "2", "15") +
         l06("2", "1", "15", "1", "UN", "1,00", valor, "2", "000", "1102", "0,00", "0,00", "0,00") + cadastros();
}

std::vector<std::string> campos(const std::string& registro) {
  std::vector<std::string> out;
  for (std::size_t p = 0, q; (q = registro.find('|', p)) != std::string::npos; p = q + 1)
    out.push_back(registro.substr(p, q - p));
  return out;
}

// The record of the file that starts with `inicio`, without its CR LF.
std::string registro(const std::string& arquivo, const std::string& inicio) {
  const std::size_t p = arquivo.rfind("\r\n" + inicio) + 2;
  return arquivo.substr(p, arquivo.find("\r\n", p) - p);
}

// "1234,50" or "0000000123450" (two implied decimals) in hundredths.
std::int64_t centesimos(std::string texto) {
  std::erase(texto, ',');
  return std::stoll(texto);
}

TEST(Valores, BothConvertersReadAnAmountAlike) {
  const struct {
    const char* texto;
    std::int64_t centesimos;
  } casos[] = {
      {"1234,50", 123450}, {"7", 700},   {"0,5", 50},      {"1,005", 101},          {"2,675", 268},
      {"1.005", 101},      {"0,004", 0}, {"10,999", 1100}, {"99999,995", 10000000}, {"0,0049999", 0},
  };
  for (const auto& c : casos) {
    const std::string info = compra_de(c.texto);
    const std::string efd = gerar_efd(info, nullptr, nullptr);
    const std::string sintegra = gerar_sintegra(info, nullptr, nullptr);
    EXPECT_EQ(centesimos(campos(registro(efd, "|C170|"))[7]), c.centesimos) << c.texto << ": C170 VL_ITEM";
    EXPECT_EQ(centesimos(campos(registro(efd, "|C190|"))[5]), c.centesimos) << c.texto << ": C190 VL_OPR";
    using namespace sintegra;
    EXPECT_EQ(centesimos(std::string(k54.texto(registro(sintegra, "54"), r54::ValorProduto))), c.centesimos)
        << c.texto << ": 54 valor do produto";
    EXPECT_EQ(centesimos(std::string(k50.texto(registro(sintegra, "50"), r50::Valor))), c.centesimos)
        << c.texto << ": 50 valor total";
  }
}

}  // namespace
}  // namespace infofiscal::testing
