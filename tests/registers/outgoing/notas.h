// Test data of the outgoing notes: header, party and item rows, the lines they give, and a
// runner for the five kind drivers.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/fixture.h"

namespace infofiscal::testing {

// The header row of note `nota` (type 1) with situation `pde`.
json cabecalho(int nota, const json& pde = 2, const json& overrides = json::object());
// The party row of a note.
json parte(int nota);
// The item row `n` (1-based) of a note: product 500 + n.
json item(int nota, int n, const json& overrides = json::object());
// Header, party and `itens` items of note `nota`, by parameter open [1, nota].
Snapshot& nota(Snapshot& s, int nota, int itens, const json& pde = 2);
// The note list of kind `tipo` for register 7 of kind of file 2: notes 1001, 1002, ...
Snapshot& lista(Snapshot& s, int tipo, int notas);

// The lines that cabecalho, parte and item give, with the columns that vary between tests.
std::string l04(int tipo, int registro, int nota, const std::string& c24 = "[C24]0[/C24]");
std::string l05(int tipo, int registro, int papel);
std::string l06(int tipo, int registro, int n, const std::string& quantidade = "2,00");

// What a driver left behind.
struct Saida {
  std::vector<std::string> lines;
  std::vector<std::pair<int, int>> progress;
  std::string error;  // empty when the driver ended normally
};

// One outgoing kind: its code, switch, party role, and how to run its driver.
struct Kind {
  const char* nome;
  int tipo;
  const char* chave;
  int papel;
  std::function<void(Run&, TStringList&, int ACodNotaFiscal)> driver;
};
const std::vector<Kind>& kinds();
const Kind& kind(int tipo);

// Runs `k`'s driver over the snapshot (kind of file 2, register 7).
Saida roda(const Kind& k, const Snapshot& s, int ACodNotaFiscal = 0);

}  // namespace infofiscal::testing
