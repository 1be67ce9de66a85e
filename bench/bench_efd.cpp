// Speed of the EFD ICMS/IPI converter: MB of information file converted per second (the
// written file is validated inside, as every conversion does), and of the validator alone.
#include <benchmark/benchmark.h>

#include "fiscal/efd.h"
#include "fiscal/efd_informacao.h"

namespace infofiscal::testing {
namespace {

// A month of `notas` purchases and as many sales (four and three items each), 500 products
// and a month-end inventory of them.
std::string mes_grande(int notas) {
  std::string info = l01("01/03/2024", "31/03/2024") + l02_l03();
  for (int n = 1; n <= notas; ++n) {
    const std::string num = std::to_string(n), linha = std::to_string(n);
    info += l04("2", linha, num, "35240311444777000161550010000001231000001235", "01", "05/03/2024", "06/03/2024",
                "400,00", "0") +
            l05("2", linha, "2", "15");
    for (int i = 1; i <= 4; ++i)
      info += l06("2", linha, std::to_string((n + i) % 500 + 1), std::to_string(i), "UN", "1,00", "100,00", "2",
                  i % 2 ? "000" : "060", i % 2 ? "1102" : "1403", i % 2 ? "100,00" : "0,00", i % 2 ? "18,00" : "0,00",
                  i % 2 ? "18,00" : "0,00");
    info += l04("10", linha, std::to_string(100000 + n), chave_nfe("11222333000181", 100000 + n), "55",
                "10/03/2024 14:30:00", "10/03/2024", "300,00", "0") +
            l05("10", linha, "1", "15");
    for (int i = 1; i <= 3; ++i)
      info += l06("10", linha, std::to_string(i), std::to_string(i), "UN", "1,00", "100,00", "2", "000", "5102",
                  "100,00", "18,00", "18,00");
  }
  for (int p = 1; p <= 500; ++p)
    info += l12("2", std::to_string(p), "PRODUTO", "UN", "73181500", "");
  info += cadastros() + l16("7", "29/02/2024", "0,00");
  for (int p = 1; p <= 500; ++p) info += l17_l19(17, "7", std::to_string(p), "2,00", "5,00", "10,00", "UN");
  return info;
}

void BM_GerarEfd(benchmark::State& state) {
  const std::string info = mes_grande(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(gerar_efd(info, nullptr, nullptr));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(info.size()));
}
BENCHMARK(BM_GerarEfd)->Arg(20000)->Unit(benchmark::kMillisecond);

void BM_ValidarEfd(benchmark::State& state) {
  const std::string arquivo = gerar_efd(mes_grande(static_cast<int>(state.range(0))), nullptr, nullptr);
  for (auto _ : state) benchmark::DoNotOptimize(validar_efd(arquivo));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(arquivo.size()));
}
BENCHMARK(BM_ValidarEfd)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace infofiscal::testing
