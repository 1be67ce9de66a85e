// The validator's reader on its own thread: it must see every byte in order, whatever the
// pieces, and a reader that fails must stop the conversion with its own error.
#include "fiscal/saida.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace infofiscal {
namespace {

// Keeps what it reads; throws at the byte `falha_em` when there is one.
class Guarda final : public LeitorDePedacos {
 public:
  explicit Guarda(std::size_t falha_em = std::string::npos) : falha_em_(falha_em) {}
  void le(std::string_view pedaco) override {
    if (lido.size() + pedaco.size() > falha_em_) throw std::runtime_error("registro ruim");
    lido.append(pedaco);
  }
  std::string lido;

 private:
  std::size_t falha_em_;
};

// A file of `n` bytes that shows any reordering or loss: each byte depends on its position.
std::string bytes(std::size_t n) {
  std::string s(n, '\0');
  for (std::size_t i = 0; i < n; ++i) s[i] = static_cast<char>('a' + (i * 7 + i / 251) % 26);
  return s;
}

TEST(LeitorEmParalelo, ReadsEveryByteInOrderWhateverThePieces) {
  const struct {
    const char* caso;
    std::size_t tamanho, pedaco;
  } casos[] = {
      {"nada", 0, 1},
      {"menos que um lote", 1000, 37},
      {"exatamente um lote", std::size_t{1} << 20, std::size_t{1} << 20},
      {"muitos lotes, fila cheia", 9 * (std::size_t{1} << 20) + 5, 4093},
      {"um pedaço maior que o lote", 3 * (std::size_t{1} << 20) + 1, 3 * (std::size_t{1} << 20) + 1},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.caso);
    const std::string arquivo = bytes(c.tamanho);
    Guarda guarda;
    LeitorEmParalelo paralelo(guarda);
    for (std::size_t at = 0; at < arquivo.size(); at += c.pedaco)
      paralelo.le(std::string_view(arquivo).substr(at, c.pedaco));
    paralelo.espera();
    EXPECT_TRUE(guarda.lido == arquivo) << guarda.lido.size() << " de " << arquivo.size() << " bytes";
  }
}

// The reader's error reaches espera, also when the converter keeps writing long after it (the
// queue must not wait for a thread that is gone), and a conversion that fails before espera
// ends without waiting for what was queued.
TEST(LeitorEmParalelo, TheReadersFailureReachesEsperaAndAFailedConversionEnds) {
  const std::string arquivo = bytes(12 * (std::size_t{1} << 20));
  for (const std::size_t falha_em : {std::size_t{10}, std::size_t{5} << 20, arquivo.size() - 1}) {
    SCOPED_TRACE(falha_em);
    Guarda guarda(falha_em);
    LeitorEmParalelo paralelo(guarda);
    for (std::size_t at = 0; at < arquivo.size(); at += 65536)
      paralelo.le(std::string_view(arquivo).substr(at, 65536));
    EXPECT_THROW(
        {
          try {
            paralelo.espera();
          } catch (const std::runtime_error& e) {
            EXPECT_STREQ(e.what(), "registro ruim");
            throw;
          }
        },
        std::runtime_error);
  }
  Guarda guarda;
  {
    LeitorEmParalelo abandonado(guarda);
    for (std::size_t at = 0; at < arquivo.size(); at += 65536) abandonado.le(std::string_view(arquivo).substr(at, 65536));
  }
  EXPECT_LE(guarda.lido.size(), arquivo.size());
}

}  // namespace
}  // namespace infofiscal
