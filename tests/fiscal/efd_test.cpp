#include "fiscal/efd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fiscal/efd_informacao.h"
#include "host/error.h"

namespace infofiscal::testing {
namespace {

std::vector<std::string> linhas(const std::string& arquivo) {
  std::vector<std::string> out;
  for (std::size_t pos = 0; pos < arquivo.size();) {
    const auto fim = arquivo.find("\r\n", pos);
    out.push_back(arquivo.substr(pos, fim - pos));
    pos = fim + 2;
  }
  return out;
}

// March 2024: a purchase of two products (two C190 groups), a sale, a cancelled sale, a
// voided number (not booked from 2023 on), the catalogues and a month-end inventory.
std::string marco_2024() {
  return l01("01/03/2024", "31/03/2024") + l02_l03() +
         l04("2", "1", "123", "35240311444777000161550010000001231000001235", "55", "05/03/2024", "06/03/2024",
             "1100,00", "0") +
         l05("2", "1", "2", "15") +
         l06("2", "1", "15", "1", "UN", "10,00", "1000,00", "2", "000", "1102", "1000,00", "18,00", "180,00") +
         l06("2", "1", "16", "2", "CX", "2,00", "100,00", "2", "060", "1403", "0,00", "0,00", "0,00") +
         linha_info(4, {"21", "1", "101", "", "", "55", "", "", "", "0,00", "0,00", "0,00", "0,00", "0,00", "0,00",
                        "0,00", "0,00", "0,00", "0,00", "0,00", "0,00", "0,00", "0", "5", "", ""}) +
         l04("10", "1", "456", "35240311222333000181550010000004561000004568", "55", "10/03/2024 14:30:00",
             "10/03/2024", "500,00", "0") +
         l05("10", "1", "1", "15") +
         l06("10", "1", "15", "1", "UN", "5,00", "500,00", "2", "00", "5.102", "500,00", "18,00", "90,00") +
         l04("10", "2", "457", "35240311222333000181550010000004571000004573", "55", "11/03/2024", "11/03/2024",
             "10,00", "2") +
         l05("10", "2", "1", "16") +
         l06("10", "2", "16", "1", "CX", "1,00", "10,00", "2", "000", "5102", "10,00", "18,00", "1,80") + cadastros() +
         "[C00]16[/C00][C02]7[/C02][C03]29/02/2024[/C03][C04]150,00[/C04][C99]04[/C99]\r\n" +
         linha_info(17, {"1", "7", "15", "10,00", "10,00", "100,00", "UN", "2"}) +
         linha_info(17, {"1", "7", "16", "1,00", "50,00", "50,00", "CX", "2"});
}

TEST(EfdGerar, Marco2024) {
  std::vector<std::string> info;
  std::vector<std::pair<int, int>> progresso;
  const std::string arquivo = gerar_efd(
      marco_2024(), [&](const std::string& s) { info.push_back(s); },
      [&](int p, int m) { progresso.emplace_back(p, m); });
  for (auto& l : linhas(arquivo)) std::cout << l << "\n";
  for (auto& l : info) std::cout << "INFO " << l << "\n";
}

}  // namespace
}  // namespace infofiscal::testing
