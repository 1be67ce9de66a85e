// Throughput of the fiscal-file converter: MB of information file turned into a SINTEGRA file
// per second (the file is also checked by the validator, as every conversion is).
#include <benchmark/benchmark.h>

#include <string>

#include <fmt/format.h>

#include "fiscal/sintegra.h"

namespace {

// A month of `notas` purchase notes of 5 items each over 1000 catalogued products, with the
// header lines the converter needs: about 4 KB of information per note.
std::string informacao(int notas) {
  std::string t;
  const auto linha = [&](int tipo, std::initializer_list<std::string_view> colunas, int trailer) {
    fmt::format_to(std::back_inserter(t), "[C00]{:02}[/C00]", tipo);
    int n = 0;
    for (const auto c : colunas) fmt::format_to(std::back_inserter(t), "[C{0:02}]{1}[/C{0:02}]", ++n, c);
    fmt::format_to(std::back_inserter(t), "[C99]{:02}[/C99]\r\n", trailer);
  };
  linha(1, {"1", "01/03/2024", "31/03/2024", "N", "N", "1", "", "", "", "", "", "", "", "", ""}, 15);
  linha(2, {"1", "Comércio Exemplo Ltda", "", "11.222.333/0001-81", "SP", "123.456.785.119", "", "", "São Paulo",
            "Rua das Flores", "01234-567", "", "100", "Centro", "(11) 3333-4444", "", "", "3550308", "1058"},
        19);
  linha(3, {"1", "José da Silva", "", "", "", "", "", "", "", "", "(11) 98888-7777", "", "", ""}, 14);
  for (int n = 1; n <= notas; ++n) {
    const std::string contador = std::to_string(n), numero = std::to_string(100000 + n);
    linha(4, {"2", contador, numero, "1102", "35240344555666000181550010000001231000001234", "55", "1", "05/03/2024",
              "06/03/2024", "1000,00", "0,00", "1000,00", "0,00", "0,00", "0,00", "1000,00", "180,00", "0,00", "0,00",
              "0,00", "16,50", "76,00", "1", "0", "3550308", "3550308"},
          26);
    linha(5, {"2", contador, "2", "55", "44.555.666/0001-81", "987.654.326.001", "SP"}, 7);
    for (int i = 1; i <= 5; ++i) {
      const std::string codigo = std::to_string((n * 5 + i) % 1000 + 1), item = std::to_string(i);
      linha(6, {"2", contador, codigo, item, "Parafuso sextavado de aço inoxidável", "CX", "10,00", "200,00", "0,00",
                "0,00", "0,00", "0,00", "7318.15.00", "7891234567895", "2", "000", "1102", "200,00", "18,00", "36,00",
                "0,00", "0,00", "50", "999", "0,00", "0,00", "01", "200,00", "1,65", "0,00", "0,00", "3,30", "01",
                "200,00", "7,60", "0,00", "0,00", "15,20"},
            38);
    }
  }
  for (int c = 1; c <= 1000; ++c)
    linha(12, {"2", std::to_string(c), "Parafuso sextavado de aço inoxidável", "CX", "7318.15.00", ""}, 6);
  return t;
}

void BM_Sintegra(benchmark::State& state) {
  const std::string texto = informacao(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::string arquivo = infofiscal::gerar_sintegra(texto, [](const std::string&) {}, [](int, int) {});
    benchmark::DoNotOptimize(arquivo);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(texto.size()));
  state.counters["MB_informacao"] = static_cast<double>(texto.size()) / 1e6;
}
BENCHMARK(BM_Sintegra)->Arg(1000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
