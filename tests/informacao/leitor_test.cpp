// The reader of the information file: lines grouped into header, notes, catalogue lines and
// inventories, in the file's order; the catalogue reading; the saved file read a piece at a time.
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

#include "base/code_page.h"
#include "base/error.h"
#include "informacao/esquema.h"
#include "informacao/leitor.h"
#include "support/cli.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using namespace linha;

// Each group as one text: its kind, the line numbers and the first column of each line (read
// during the call, so a view that does not live long enough shows).
struct Registro final : LeitorDeInformacao {
  std::vector<std::string> grupos;

  static std::string de(const LinhaInformacao& l) { return fmt::format("{}:{}", l.numero, l.texto(1)); }
  void cabecalho(const CabecalhoInformacao& c) override {
    grupos.push_back("cabeçalho " + de(c.registro) + " " + de(c.empresa) + (c.contador ? " " + de(*c.contador) : ""));
  }
  void nota(const NotaInformacao& n) override {
    std::string s = "nota " + de(n.cabecalho) + (n.parte ? " parte " + de(*n.parte) : "");
    for (const auto& i : n.itens) s += " " + de(i);
    grupos.push_back(s);
  }
  void cadastro(const LinhaInformacao& l) override { grupos.push_back("cadastro " + de(l)); }
  // An inventory's parts join into one group, each part after the first marked by " |"; the
  // size of each part and whether the flags came right are kept apart.
  void inventario(const InventarioInformacao& inv) override {
    if (inv.primeira) grupos.push_back("inventário " + de(inv.cabecalho));
    std::string& s = grupos.back();
    if (!inv.primeira) s += " |";
    for (const auto& i : inv.itens) s += " " + de(i);
    partes.push_back(inv.itens.size());
    partes_em_ordem &= inv.primeira == !em_inventario && (inv.ultima || inv.itens.size() == kParte);
    em_inventario = !inv.ultima;
  }

  static constexpr std::size_t kParte = InventarioInformacao::kItensPorParte;
  std::vector<std::size_t> partes;
  bool partes_em_ordem = true;  // first flag on the first part only, a last part closes, the rest full
  bool em_inventario = false;
};

std::string linha(int tipo, std::initializer_list<std::string_view> colunas) {
  std::string s = fmt::format("[C00]{:02}[/C00]", tipo);
  int n = 0;
  for (const auto c : colunas) s += fmt::format("[C{0:02}]{1}[/C{0:02}]", ++n, c);
  return s + "[C99]00[/C99]";
}

const std::string kCabecalho = linha(1, {"2"}) + "\r\n" + linha(2, {"Empresa"}) + "\r\n" + linha(3, {"Contador"}) + "\r\n";

// A month with every kind of group, blank lines and LF-only line ends among them.
std::string mes() {
  return kCabecalho + linha(4, {"2", "1"}) + "\r\n" + linha(5, {"2", "1"}) + "\r\n" + linha(6, {"2", "1"}) + "\r\n" +
         linha(6, {"2", "1"}) + "\n\r\n" + linha(4, {"10", "1"}) + "\r\n" + linha(6, {"10", "1"}) + "\r\n" +
         linha(12, {"2"}) + "\r\n" + linha(13, {"1"}) + "\r\n" + "[C00]16[/C00][C02]7[/C02][C99]04[/C99]\r\n" +
         linha(17, {"1"}) + "\r\n" + linha(17, {"1"}) + "\r\n" + "[C00]18[/C00][C02]8[/C02][C99]04[/C99]";
}

const std::vector<std::string> kGruposDoMes = {
    "cabeçalho 1:2 2:Empresa 3:Contador", "nota 4:2 parte 5:2 6:2 7:2", "nota 9:10 10:10", "cadastro 11:2",
    "cadastro 12:1", "inventário 13: 14:1 15:1", "inventário 16:"};

TEST(Leitor, GroupsTheLinesInTheFilesOrder) {
  Registro r;
  const ContagemDeLinhas c = ler_informacao(mes(), r);
  EXPECT_EQ(r.grupos, kGruposDoMes);
  EXPECT_EQ(c.linhas, 16);
  EXPECT_EQ(c.notas, 2);
  EXPECT_EQ(c.itens_de_inventario, 2);
}

// An inventory of a hundred thousand items is handed over in parts, never held whole: full
// parts, then what is left, the last; one that fills its parts exactly ends with a full one.
TEST(Leitor, ALargeInventoryComesInParts) {
  constexpr std::size_t k = Registro::kParte;
  const struct {
    std::size_t linhas;
    std::vector<std::size_t> partes;
  } casos[] = {{0, {0}}, {1, {1}}, {k, {k}}, {k + 1, {k, 1}}, {2 * k + 5, {k, k, 5}}};
  for (const auto& c : casos) {
    SCOPED_TRACE(c.linhas);
    std::string texto = kCabecalho + linha(16, {"1", "01/03/2024"}) + "\r\n";
    for (std::size_t n = 0; n < c.linhas; ++n) texto += linha(17, {std::to_string(n)}) + "\r\n";
    texto += linha(12, {"depois"});
    Registro r;
    for (const Leitura leitura : {Leitura::cadastros, Leitura::completa})
      EXPECT_EQ(ler_informacao(texto, r, leitura).itens_de_inventario, static_cast<int>(c.linhas));
    EXPECT_EQ(r.partes, c.partes);
    EXPECT_TRUE(r.partes_em_ordem);
    EXPECT_FALSE(r.em_inventario);
    // Every item once, in order, each part's lines alive while it is handed over.
    std::string esperado = "inventário 4:1";
    for (std::size_t n = 0; n < c.linhas; ++n)
      esperado += (n && n % k == 0 ? " |" : "") + fmt::format(" {}:{}", n + 5, n);
    EXPECT_EQ(r.grupos.end()[-2], esperado);
    EXPECT_EQ(r.grupos.back(), fmt::format("cadastro {}:depois", c.linhas + 5));
  }
}

// The catalogue reading hands over the header and the catalogue lines alone, counts the same,
// and does not look inside the lines it skips.
TEST(Leitor, TheCatalogueReadingSkipsNotesAndInventories) {
  std::string texto = mes();
  texto.replace(texto.find("[C01]10[/C01]"), 13, "[C01]10");  // a broken line 04
  Registro r;
  const ContagemDeLinhas c = ler_informacao(texto, r, Leitura::cadastros);
  EXPECT_THAT(r.grupos, ElementsAre(kGruposDoMes[0], kGruposDoMes[3], kGruposDoMes[4]));
  EXPECT_EQ(c.linhas, 16);
  EXPECT_EQ(c.notas, 2);
  EXPECT_THROW(ler_informacao(texto, r), Error);
}

TEST(Leitor, AFileOutOfShapeNamesTheLine) {
  const auto l = [](int tipo, std::initializer_list<std::string_view> c) { return linha(tipo, c) + "\r\n"; };
  const std::string nota = l(4, {"2", "1"});
  const struct {
    std::string texto, erro;
  } casos[] = {
      {"", "O arquivo de informações não tem a linha 01 (registro fiscal)"},
      {l(1, {}), "O arquivo de informações não tem a linha 02 (empresa)"},
      {l(2, {}) + l(1, {}) + l(3, {}), ""},
      {l(1, {}) + nota,
       "Linha 2 do arquivo de informações: linha 04 antes da linha 02 (empresa): as linhas 01, 02 e 03 abrem o arquivo"},
      {l(12, {}) + kCabecalho,
       "Linha 1 do arquivo de informações: linha 12 antes da linha 01 (registro fiscal): as linhas 01, 02 e 03 abrem o "
       "arquivo"},
      {l(1, {}) + l(2, {}) + nota + l(3, {}),
       "Linha 4 do arquivo de informações: linha 03 depois das notas, cadastros ou inventários: as linhas 01, 02 e 03 "
       "abrem o arquivo"},
      {kCabecalho + l(1, {}), "Linha 4 do arquivo de informações: segunda linha 01"},
      {kCabecalho + l(5, {"2", "1"}), "Linha 4 do arquivo de informações: linha 05 sem a linha 04 da sua nota"},
      {kCabecalho + nota + l(6, {"2", "2"}), "Linha 5 do arquivo de informações: linha 06 sem a linha 04 da sua nota"},
      {kCabecalho + nota + l(5, {"2", "1"}) + l(5, {"2", "1"}), "Linha 6 do arquivo de informações: segunda linha 05 da nota"},
      {kCabecalho + nota + l(17, {}), "Linha 5 do arquivo de informações: linha 17 sem a linha 16 do seu inventário"},
      {kCabecalho + l(16, {}) + l(19, {}), "Linha 5 do arquivo de informações: linha 19 sem a linha 18 do seu inventário"},
      {kCabecalho + l(20, {}), "Linha 4 do arquivo de informações: tipo de linha 20 desconhecido"},
      {kCabecalho + "[C00]06[/C00][C01]2\r\n", "Linha 4 do arquivo de informações: coluna C01 sem [/C01] (linha 06, depois da coluna C00): "
                                                  "'[C01]2': uma quebra de linha dentro do valor?"},
  };
  for (const auto& c : casos) {
    std::string erro;
    try {
      Registro r;
      ler_informacao(c.texto, r);
    } catch (const Error& e) {
      erro = e.what();
    }
    EXPECT_EQ(erro, c.erro) << c.texto;
  }
}

// The saved file (Windows-1252, lines across the pieces it is read in, a last line without a
// break) reads as its UTF-8 text does, again from the start when asked; so does the same file
// saved again in UTF-8 by an editor, its characters cut at every piece.
TEST(Leitor, TheSavedFileReadsAsItsText) {
  std::string texto = linha(1, {"Razão"}) + "\r\n" + linha(2, {"São Paulo"}) + "\r\n" + linha(3, {}) + "\r\n";
  for (int n = 1; n <= 6000; ++n)  // about 2.3 MB: lines cut at every piece of 1 MiB
    texto += linha(4, {"2", std::to_string(n)}) + "\r\n" + linha(6, {"2", std::to_string(n), "Porca Ø"}) + "\r\n" +
             linha(6, {"2", std::to_string(n), std::string(300, 'x')}) + "\r\n";
  texto += linha(12, {"Óleo"});
  const std::string dir = testing::fresh_dir("leitor-arquivo");
  Registro em_memoria;
  ler_informacao(texto, em_memoria);
  for (const auto& [nome, bytes] : {std::pair{"windows-1252", utf8_to_windows1252(texto)}, {"utf-8", texto}}) {
    SCOPED_TRACE(nome);
    testing::write_file(dir + "/info.txt", bytes);
    ArquivoDeInformacao arquivo(dir + "/info.txt");
    Registro do_arquivo;
    for (int vez = 0; vez < 2; ++vez) {
      do_arquivo.grupos.clear();
      const ContagemDeLinhas c = ler_informacao(arquivo, do_arquivo);
      EXPECT_EQ(c.linhas, 18004);
      EXPECT_EQ(c.notas, 6000);
      EXPECT_EQ(do_arquivo.grupos, em_memoria.grupos);
    }
    EXPECT_EQ(do_arquivo.grupos.back(), "cadastro 18004:Óleo");
  }
}

// The saved bytes handed over by another thread while they are written, in pieces cut anywhere
// (inside a line, right after a CR), read as the text does; the reading waits for the pieces.
TEST(Leitor, TheTextHandedOverWhileWrittenReadsAsItsText) {
  std::string texto = linha(1, {"Razão"}) + "\r\n" + linha(2, {"São Paulo"}) + "\r\n" + linha(3, {}) + "\r\n";
  for (int n = 1; n <= 500; ++n)
    texto += linha(4, {"2", std::to_string(n)}) + "\r\n" + linha(6, {"2", std::to_string(n), "Porca Ø"}) + "\r\n";
  texto += linha(12, {"Óleo"});
  Registro em_memoria;
  ler_informacao(texto, em_memoria);
  const std::string bytes = utf8_to_windows1252(texto);
  for (const std::size_t tamanho : {std::size_t{1}, std::size_t{7}, std::size_t{4096}, bytes.size()}) {
    SCOPED_TRACE(tamanho);
    TextoEmFila fila;
    std::thread escritor([&] {
      for (std::size_t at = 0; at < bytes.size(); at += tamanho) fila.entrega(std::string_view(bytes).substr(at, tamanho));
      fila.termina();
    });
    Registro lido;
    const ContagemDeLinhas c = ler_informacao(fila, lido);
    escritor.join();
    EXPECT_EQ(c.notas, 500);
    EXPECT_EQ(lido.grupos, em_memoria.grupos);
  }
}

// A text whose writer gives up ends the reading with TextoInterrompido, not an Error (the writer
// says why); a reader that gives up never keeps the writer waiting; the text is read once.
TEST(Leitor, TheTextHandedOverEndsWithEitherSideGivingUp) {
  const std::string inicio = linha(1, {}) + "\r\n" + linha(2, {}) + "\r\n" + linha(3, {}) + "\r\n";
  {
    TextoEmFila fila;
    fila.entrega(inicio);
    fila.abandona();
    Registro r;
    EXPECT_THROW(ler_informacao(fila, r), TextoInterrompido);
  }
  {
    TextoEmFila fila;
    fila.desiste();
    for (std::size_t n = 0; n < 4 * TextoEmFila::kEsperando; ++n) fila.entrega(inicio);  // would wait if kept
    fila.termina();
    std::string_view l;
    EXPECT_THROW(fila.proxima(l), TextoInterrompido);
  }
  TextoEmFila fila;
  fila.entrega(inicio);
  fila.termina();
  Registro r;
  ler_informacao(fila, r);
  EXPECT_THROW(fila.reinicia(), Error);
}

// A file in UTF-8 that holds a Windows-1252 byte further on (two files pasted together) is
// refused at that byte, also when it ends inside a character.
TEST(Leitor, AMixedFileIsRefusedAtItsFirstForeignByte) {
  const std::string inicio = linha(1, {"Razão"}) + "\r\n" + linha(2, {std::string(2 << 20, 'x')}) + "\r\n";
  const struct {
    std::string bytes;
    std::size_t posicao;
    const char* byte;
  } casos[] = {
      {inicio + linha(2, {"S\xE3o Paulo"}) + "\r\n", inicio.size() + 20, "E3"},
      {inicio + "\xC3", inicio.size() + 1, "C3"},
  };
  const std::string dir = testing::fresh_dir("leitor-misto");
  for (const auto& c : casos) {
    testing::write_file(dir + "/info.txt", c.bytes);
    ArquivoDeInformacao arquivo(dir + "/info.txt");
    Registro registro;
    try {
      ler_informacao(arquivo, registro);
      ADD_FAILURE() << c.posicao;
    } catch (const Error& e) {
      EXPECT_EQ(e.what(), "O arquivo de informações '" + dir + "/info.txt' está em UTF-8, e não em Windows-1252 como o " +
                              "sistema o grava, mas o byte " + std::to_string(c.posicao) + " (0x" + c.byte +
                              ") não é UTF-8: grave o arquivo numa só codificação");
    }
  }
}

TEST(Leitor, AFileThatCannotBeReadIsAClearError) {
  const std::string dir = testing::fresh_dir("leitor-sem-arquivo");
  for (const auto& [caminho, motivo] : {std::pair{dir + "/sumiu.txt", "arquivo ou pasta inexistente"}, {dir, "é uma pasta"}}) {
    try {
      ArquivoDeInformacao arquivo(caminho);
      ADD_FAILURE() << caminho;
    } catch (const Error& e) {
      EXPECT_EQ(e.what(), "Não foi possível ler o arquivo '" + caminho + "': " + motivo);
    }
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
