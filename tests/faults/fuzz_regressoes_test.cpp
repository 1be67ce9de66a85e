// Replays, in the ordinary test run, every input the fuzzers ever made fail (kept in
// tests/data/fuzz-regressions/<target>/ once fixed) and the seed files they start from: each
// must end in success or an infofiscal::Error, never a crash or another exception.
#include <filesystem>

#include <gtest/gtest.h>

#include "../../fuzz/alvos.h"
#include "support/cli.h"

namespace infofiscal {
namespace {

namespace fs = std::filesystem;

using Alvo = void (*)(const std::uint8_t*, std::size_t);

const struct {
  const char* nome;
  Alvo alvo;
} kAlvos[] = {
    {"snapshot", fuzz::snapshot},
    {"informacao", fuzz::informacao},
    {"validar_sintegra", fuzz::validar_sintegra},
    {"validar_efd", fuzz::validar_efd},
};

TEST(FuzzRegressoes, EveryKeptInputEndsInAnErrorOrSuccess) {
  int replayed = 0;
  for (const auto& a : kAlvos) {
    for (const char* pasta : {"fuzz-regressions", "seeds"}) {
      const fs::path dir = fs::path(INFOFISCAL_TEST_DATA) / pasta / a.nome;
      if (!fs::is_directory(dir)) continue;
      for (const auto& entry : fs::directory_iterator(dir)) {
        const std::string bytes = testing::read_file(entry.path().string());
        SCOPED_TRACE(entry.path().string());
        EXPECT_NO_THROW(a.alvo(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
        ++replayed;
      }
    }
  }
  EXPECT_GT(replayed, 0);
}

}  // namespace
}  // namespace infofiscal
