// Expected outputs kept as files under tests/data/expected/, compared byte for byte.
#pragma once

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace infofiscal::testing {

inline std::string golden_path(const std::string& name) { return std::string(INFOFISCAL_TEST_DATA) + "/expected/" + name; }

// The bytes of the expected file `name` (empty when it is missing).
inline std::string golden(const std::string& name) {
  std::ifstream in(golden_path(name), std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

// The lines of the expected file `name`, each ended by "\n".
inline std::vector<std::string> golden_lines(const std::string& name) {
  std::vector<std::string> out;
  std::istringstream in(golden(name));
  for (std::string l; std::getline(in, l);) out.push_back(l);
  return out;
}

// The provider row `name` of tests/data/linhas.json, the rows the register tests start from.
inline nlohmann::json data_row(const std::string& name) {
  static const nlohmann::json rows = nlohmann::json::parse(golden("../linhas.json"));
  return rows.at(name);
}

// `actual` equals the file `name` byte for byte; otherwise names the first line that differs.
// INFOFISCAL_UPDATE_GOLDEN=1 rewrites the file instead (review the diff before committing).
inline ::testing::AssertionResult matches_golden(const std::string& name, const std::string& actual) {
  if (std::getenv("INFOFISCAL_UPDATE_GOLDEN")) std::ofstream(golden_path(name), std::ios::binary) << actual;
  const std::string expected = golden(name);
  if (actual == expected) return ::testing::AssertionSuccess();
  std::size_t pos = 0, line = 1;
  while (pos < actual.size() && pos < expected.size() && actual[pos] == expected[pos])
    if (actual[pos++] == '\n') ++line;
  const auto line_at = [](const std::string& s, std::size_t p) -> std::string {
    const std::size_t nl = p == 0 ? std::string::npos : s.rfind('\n', p - 1);
    const std::size_t start = nl == std::string::npos ? 0 : nl + 1;
    return start >= s.size() ? "<fim do arquivo>" : s.substr(start, s.find('\n', start) - start);
  };
  return ::testing::AssertionFailure() << name << ", linha " << line << ":\n  esperada: " << line_at(expected, pos)
                                       << "\n  obtida:   " << line_at(actual, pos);
}

// The same for lines, each ended by "\n" in the file.
inline ::testing::AssertionResult matches_golden(const std::string& name, const std::vector<std::string>& lines) {
  std::string text;
  for (const auto& l : lines) text += l + "\n";
  return matches_golden(name, text);
}

}  // namespace infofiscal::testing
