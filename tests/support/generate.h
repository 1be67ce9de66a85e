// Test support: what a generator left in a fresh list, with its failure, if any, as a last line.
#pragma once

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "base/string_list.h"
#include "support/fixture.h"

namespace infofiscal::testing {

// Runs `generator(list)` on an empty list and returns the lines it appended, followed by
// "erro: <message>" when it threw.
template <class Generator>
std::vector<std::string> lines_or_error(Generator&& generator) {
  TStringList list;
  std::string erro;
  try {
    generator(list);
  } catch (const std::exception& e) {
    erro = std::string("erro: ") + e.what();
  }
  std::vector<std::string> lines = lines_of(list);
  if (!erro.empty()) lines.push_back(erro);
  return lines;
}

// What one generator call left: its lines (and "erro: ..." last) and its progress reports.
struct Generated {
  std::vector<std::string> lines;
  std::vector<std::pair<int, int>> progress;
};

// Runs `generator` of a module derived from TDTM_A_Padrao over `snapshot`, the module set up as
// a step sets it (kind `tipo`, fiscal register 7). `on_progress`, when given, is called after
// each report is recorded (it may throw, to fail a generator mid-list).
template <class Module>
Generated generate(const Snapshot& snapshot, void (Module::*generator)(TStringList&),
                   TProcProgresso on_progress = nullptr, TRegistroFiscal tipo = 2) {
  Run run(snapshot);
  Module modulo(run.conexao);
  run.configure(modulo, tipo, 7);
  if (on_progress)
    modulo.Progresso_B([&](int p, int max) {
      run.progress.emplace_back(p, max);
      on_progress(p, max);
    });
  Generated g;
  g.lines = lines_or_error([&](TStringList& l) { (modulo.*generator)(l); });
  g.progress = run.progress;
  return g;
}

}  // namespace infofiscal::testing
