// The information file's reader: lines grouped into notes and inventories, one rule for both
// converters, and the one decimal parser at any scale.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/error.h"
#include "informacao/esquema.h"
#include "informacao/leitor.h"

namespace infofiscal {
namespace {

using namespace linha;

// Writes what the reader hands over, one entry per call: "01", "04 c1/2 p 06 06", "16 17 17".
class Registro : public LeitorDeInformacao {
 public:
  std::vector<std::string> visto;
  void cabecalho(const LinhaInformacao& l) override { visto.push_back(fmt(l)); }
  void cadastro(const LinhaInformacao& l) override { visto.push_back(fmt(l)); }
  void nota(const NotaInformacao& n) override {
    std::string s = fmt(n.cabecalho) + " c" + std::string(n.cabecalho.texto(L04::TipoNota)) + "/" +
                    std::string(n.cabecalho.texto(L04::Contador));
    if (n.parte) s += " p";
    for (const auto& i : n.itens) s += " " + fmt(i) + "#" + std::string(i.texto(L06::Item));
    visto.push_back(s);
  }
  void inventario(const InventarioInformacao& inv) override {
    std::string s = fmt(inv.cabecalho);
    for (const auto& i : inv.itens) s += " " + fmt(i);
    visto.push_back(s);
  }

 private:
  static std::string fmt(const LinhaInformacao& l) { return (l.tipo < 10 ? "0" : "") + std::to_string(l.tipo); }
};

// A register line of type `tipo` with columns C01 and C02 (note kind and counter of notes).
std::string linha(int tipo, const std::string& c1 = "", const std::string& c2 = "", const std::string& c4 = "") {
  std::string s = "[C00]" + std::string(tipo < 10 ? "0" : "") + std::to_string(tipo) + "[/C00]";
  if (!c1.empty()) s += "[C01]" + c1 + "[/C01]";
  if (!c2.empty()) s += "[C02]" + c2 + "[/C02]";
  if (!c4.empty()) s += "[C04]" + c4 + "[/C04]";
  return s + "[C99]01[/C99]\r\n";
}

const std::string kCabecalho = linha(1) + linha(2) + linha(3);

std::string le(const std::string& texto, Registro& r) {
  try {
    ler_informacao(texto, r);
  } catch (const Error& e) {
    return e.what();
  }
  return "";
}

TEST(Leitor, GroupsNotesAndInventoriesInTheFilesOrder) {
  const std::string texto = kCabecalho + linha(4, "2", "1") + linha(5, "2", "1") + linha(6, "2", "1", "1") +
                            linha(6, "2", "1", "2") + linha(4, "21", "1") + linha(4, "10", "1") +
                            linha(6, "10", "1", "1") + linha(12, "2") + linha(13) + linha(14, "1") + linha(15) +
                            linha(16) + linha(17, "1") + linha(17, "1") + linha(18) + linha(16);
  Registro r;
  EXPECT_EQ(le(texto, r), "");
  EXPECT_EQ(r.visto, (std::vector<std::string>{"01", "02", "03", "04 c2/1 p 06#1 06#2", "04 c21/1", "04 c10/1 06#1",
                                               "12", "13", "14", "15", "16 17 17", "18", "16"}));
}

TEST(Leitor, LinesOutOfPlaceNameTheirNumber) {
  const struct {
    std::string texto;
    const char* erro;
  } casos[] = {
      {kCabecalho + linha(6, "2", "1"), "Linha 4 do arquivo de informações: linha 06 sem a linha 04 da sua nota"},
      {kCabecalho + linha(4, "2", "1") + linha(6, "2", "2"),
       "Linha 5 do arquivo de informações: linha 06 sem a linha 04 da sua nota"},
      {kCabecalho + linha(4, "2", "1") + linha(5, "4", "1"),
       "Linha 5 do arquivo de informações: linha 05 sem a linha 04 da sua nota"},
      {kCabecalho + linha(4, "2", "1") + linha(5, "2", "1") + linha(5, "2", "1"),
       "Linha 6 do arquivo de informações: segunda linha 05 da nota"},
      {kCabecalho + linha(4, "2", "1") + linha(12) + linha(6, "2", "1"),
       "Linha 6 do arquivo de informações: linha 06 sem a linha 04 da sua nota"},
      {kCabecalho + linha(16) + linha(19), "Linha 5 do arquivo de informações: linha 19 sem a linha 18 do seu inventário"},
      {kCabecalho + linha(17), "Linha 4 do arquivo de informações: linha 17 sem a linha 16 do seu inventário"},
      {kCabecalho + linha(2), "Linha 4 do arquivo de informações: segunda linha 02"},
      {kCabecalho + linha(20), "Linha 4 do arquivo de informações: tipo de linha 20 desconhecido"},
      {linha(2) + linha(3), "O arquivo de informações não tem a linha 01 (registro fiscal)"},
      {linha(1), "O arquivo de informações não tem a linha 02 (empresa)"},
      {kCabecalho + "\r\n[C00]04[/C00]", "Linha 5 do arquivo de informações: linha sem [C99]"},
  };
  for (const auto& c : casos) {
    Registro r;
    EXPECT_EQ(le(c.texto, r), c.erro) << c.texto;
  }
}

TEST(Leitor, DecimalsAtAnyScaleReadExactly) {
  const struct {
    const char* texto;
    int casas;
    std::int64_t valor;
  } casos[] = {
      {"1,005", 2, 101},         {"1,004", 2, 100},         {"-1,005", 2, -101},      {"0,004", 5, 400},
      {"0,004", 2, 0},           {"12", 3, 12000},          {"1.5", 1, 15},           {",5", 0, 1},
      {"0,000005", 5, 1},        {"0,0000049", 5, 0},       {"999999999999999,99", 2, 99999999999999999},
  };
  for (const auto& c : casos) {
    const std::string texto = std::string("[C00]06[/C00][C07]") + c.texto + "[/C07][C99]38[/C99]";
    EXPECT_EQ(ler_linha_informacao(texto, 1).decimal(L06::Quantidade, c.casas), c.valor) << c.texto << " " << c.casas;
  }
  for (const char* grande : {"9999999999999999999", "99999999999999999,99"}) {
    const std::string texto = std::string("[C00]06[/C00][C07]") + grande + "[/C07][C99]38[/C99]";
    try {
      ler_linha_informacao(texto, 3).centesimos(L06::Quantidade);
      ADD_FAILURE() << grande;
    } catch (const Error& e) {
      EXPECT_EQ(std::string(e.what()),
                std::string("Linha 3 do arquivo de informações: C07 da linha 06 grande demais: '") + grande + "'");
    }
  }
}

TEST(Leitor, ColumnsHaveTheirNamesForMessages) {
  EXPECT_EQ(nome_da_coluna(6, 7), "Quantidade");
  EXPECT_EQ(nome_da_coluna(4, 5), "Chave");  // the export's line 04, not the sales return's
  EXPECT_EQ(nome_da_coluna(16, 1), "");
  EXPECT_EQ(nome_da_coluna(99, 1), "");
}

}  // namespace
}  // namespace infofiscal
