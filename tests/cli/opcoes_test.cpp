// What the two fronts share: where the provider catalog is found, and text fitted to a terminal.
#include "cli/opcoes.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "base/system.h"
#include "cli/progresso.h"
#include "cli/terminal.h"
#include "support/cli.h"

namespace infofiscal {
namespace {

using namespace testing;
namespace fs = std::filesystem;

// A prefix with bin/infofiscal and, when `instalado`, share/infofiscal/providers.sql; a source
// tree with db/providers.sql; a catalog of a company's own.
struct Lugares {
  Lugares() {
    const std::string raiz = fresh_dir("catalogo");
    prefixo = raiz + "/prefixo";
    arvore = raiz + "/fontes/db/providers.sql";
    proprio = raiz + "/empresa.sql";
    fs::create_directories(prefixo + "/bin");
    fs::create_directories(prefixo + "/share/infofiscal");
    fs::create_directories(raiz + "/fontes/db");
    fs::create_directories(raiz + "/pasta.sql");
    pasta = raiz + "/pasta.sql";
    for (const std::string& f : {instalado(), arvore, proprio}) write_file(f, "-- provider: DspX\nSELECT 1;\n");
  }
  std::string instalado() const { return prefixo + "/share/infofiscal/providers.sql"; }
  std::string programa() const { return prefixo + "/bin/infofiscal"; }

  std::string prefixo, arvore, proprio, pasta;
};

TEST(Catalogo, TheOptionThenTheVariableThenBesideTheProgramThenTheSourceTree) {
  const Lugares l;
  const std::string sumiu = l.prefixo + "/sumiu.sql";
  const struct {
    LugaresDoCatalogo lugares;
    std::string achado;
  } casos[] = {
      {{l.proprio, l.proprio + "x", l.programa(), l.arvore}, l.proprio},
      {{"", l.proprio, l.programa(), l.arvore}, l.proprio},
      {{"", std::nullopt, l.programa(), l.arvore}, caminho_normal(l.instalado())},
      {{"", std::nullopt, l.prefixo + "/sem-share/bin/infofiscal", l.arvore}, l.arvore},
      {{"", std::nullopt, l.prefixo + "/sem-share/bin/infofiscal", ""}, ""},
      {{sumiu, l.proprio, l.programa(), l.arvore}, ""},
      {{"", sumiu, l.programa(), l.arvore}, ""},
      {{l.pasta, std::nullopt, l.programa(), l.arvore}, ""},
  };
  for (const auto& c : casos) {
    try {
      EXPECT_EQ(localizar_catalogo(c.lugares), c.achado);
    } catch (const Error&) {
      EXPECT_EQ(c.achado, "") << c.lugares.opcao << " " << c.lugares.variavel.value_or("-");
    }
  }
}

// Every failure names each place looked at, and how to name another.
TEST(Catalogo, ItsAbsenceNamesWhereItWasLookedFor) {
  const Lugares l;
  const std::string sem_share = l.prefixo + "/sem-share/bin/infofiscal";
  const std::string sumiu = l.prefixo + "/sumiu.sql";
  const struct {
    LugaresDoCatalogo lugares;
    std::string mensagem;
  } casos[] = {
      {{sumiu, l.proprio, l.programa(), l.arvore},
       "O catálogo de provedores '" + sumiu + "' (--catalogo) não existe ou não pode ser lido"},
      {{"", sumiu, l.programa(), l.arvore},
       "O catálogo de provedores '" + sumiu + "' (INFOFISCAL_CATALOGO) não existe ou não pode ser lido"},
      {{l.pasta, std::nullopt, l.programa(), l.arvore},
       "O catálogo de provedores '" + l.pasta + "' (--catalogo) não existe ou não pode ser lido"},
      {{"", std::nullopt, sem_share, l.arvore + "x"},
       "Catálogo de provedores não encontrado: procurado em '" +
           caminho_normal(l.prefixo + "/sem-share/share/infofiscal/providers.sql") + "' (ao lado do programa) e em '" + l.arvore +
           "x' (árvore de fontes) (--catalogo não dado, INFOFISCAL_CATALOGO não definida). Indique-o com "
           "--catalogo ARQUIVO ou INFOFISCAL_CATALOGO"},
      {{"", std::nullopt, sem_share, ""},
       "Catálogo de provedores não encontrado: procurado em '" +
           caminho_normal(l.prefixo + "/sem-share/share/infofiscal/providers.sql") + "' (ao lado do programa) (--catalogo não dado, "
           "INFOFISCAL_CATALOGO não definida). Indique-o com --catalogo ARQUIVO ou INFOFISCAL_CATALOGO"},
  };
  for (const auto& c : casos) {
    try {
      localizar_catalogo(c.lugares);
      ADD_FAILURE() << c.mensagem;
    } catch (const Error& e) {
      EXPECT_EQ(e.what(), c.mensagem);
    }
  }
}

// A program run from the build tree it was built in (this test) finds the source tree's catalog.
TEST(Catalogo, AProgramInItsBuildTreeLooksInTheSourceTree) {
  LugaresDoCatalogo l = lugares_do_catalogo("");
  // The same file: under Wine the program names the build machine's drive (Z:).
  EXPECT_TRUE(fs::equivalent(path_of(l.arvore), path_of(INFOFISCAL_SOURCE_DIR "/db/providers.sql"))) << l.arvore;
  l.variavel.reset();
  EXPECT_EQ(localizar_catalogo(l), l.arvore);
}

TEST(Terminal, TextIsCutAndWrappedByCharactersNotBytes) {
  EXPECT_EQ(colunas_de("Informação"), 10);
  const struct {
    const char* texto;
    int colunas;
    const char* cortado;
  } cortes[] = {{"Informação", 10, "Informação"}, {"Informação", 9, "Informaç…"}, {"ção", 2, "ç…"}, {"", 3, ""}};
  for (const auto& c : cortes) EXPECT_EQ(cortar(c.texto, c.colunas), c.cortado) << c.texto << " " << c.colunas;
  const struct {
    const char* texto;
    int colunas;
    const char* quebrado;
  } quebras[] = {
      {"só dá o nome, não escolhe os dados", 12, "só dá o\n> nome, não\n> escolhe os\n> dados"},
      {"palavra-longa-demais aqui", 5, "palavra-longa-demais\n> aqui"},
      {"  espaços  dobrados ", 80, "espaços dobrados"},
      {"", 10, ""},
  };
  for (const auto& q : quebras) EXPECT_EQ(quebrar(q.texto, q.colunas, "> "), q.quebrado) << q.texto;
}

TEST(BarraDeProgresso, ShowsTheStepAndFitsTheTerminal) {
  const std::string passo = "2.05-Registro: Informação de Compra de Produtos";
  const struct {
    int posicao, maximo, colunas;
    std::string linha;
  } casos[] = {
      {3, 5, 120, passo + " [########################                ]  60,0% 3/5"},
      {3, 5, 80, passo + " [##########        ]  60,0% 3/5"},
      {1234, 5678, 50, "2.05-Registro: Inf… [##        ]  21,7% 1234/5678"},
      {5, 5, 35, "2.05-Regi… [##########] 100,0% 5/5"},
      {5, 5, 24, "[##########] 100,0% 5/5"},
      {0, 5, 20, "2.05-R…    0,0% 0/5"},
      {5, 5, 8, "5/5"},
      {5, 5, 3, ""},
  };
  for (const auto& c : casos) {
    const std::string linha = linha_da_barra(passo, c.posicao, c.maximo, c.colunas);
    EXPECT_EQ(linha, c.linha) << c.colunas;
  }
  // Never the terminal's last column, whatever the width and the name.
  for (const std::string& nome : {passo, std::string(), std::string("RECUPERANDO INFORMAÇÕES      ")})
    for (int colunas = 1; colunas <= 140; ++colunas)
      EXPECT_LE(colunas_de(linha_da_barra(nome, 999999, 1000000, colunas)), std::max(colunas - 1, 0)) << colunas;
}

// What the EFD options take as typed (the command line and the dialog's fields): a Brazilian
// amount, a real date; anything else, or the balance given twice, is a usage error naming the
// option and the value.
TEST(OpcoesEfd, TheBalanceAndTheDueDateAsTyped) {
  const struct {
    OpcoesEfdTexto texto;
    std::int64_t saldo;
    std::int32_t vencimento;
    const char* erro;
  } casos[] = {
      {{}, 0, 0, ""},
      {{"1.234,56", "", "", "10/04/2024"}, 123456, 20240410, ""},
      {{"1234,5", "", "", ""}, 123450, 0, ""},
      {{"0", "", "046-2", "29/02/2024"}, 0, 20240229, ""},
      {{"1.000.000", "", "", ""}, 100000000, 0, ""},
      {{"1.23,45"}, 0, 0, "--saldo-credor-anterior '1.23,45' não é um valor como 1.234,56"},
      {{"1234.56"}, 0, 0, "--saldo-credor-anterior '1234.56' não é um valor como 1.234,56"},
      {{"-10,00"}, 0, 0, "--saldo-credor-anterior '-10,00' não é um valor como 1.234,56"},
      {{"10,"}, 0, 0, "--saldo-credor-anterior '10,' não é um valor como 1.234,56"},
      {{"10,001"}, 0, 0, "--saldo-credor-anterior '10,001' não é um valor como 1.234,56"},
      {{"", "", "", "31/02/2024"}, 0, 0, "--vencimento '31/02/2024' não é uma data DD/MM/AAAA"},
      {{"", "", "", "2024-04-10"}, 0, 0, "--vencimento '2024-04-10' não é uma data DD/MM/AAAA"},
      {{"10,00", "fevereiro.txt"}, 0, 0,
       "--saldo-credor-anterior e --efd-anterior não se usam juntas: o saldo vem de um ou do outro"},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.texto.saldo_credor_anterior + " | " + c.texto.vencimento);
    if (*c.erro) {
      try {
        opcoes_efd(c.texto);
        ADD_FAILURE() << "aceito";
      } catch (const ErroDeUso& e) {
        EXPECT_STREQ(e.what(), c.erro);
      }
      continue;
    }
    const OpcoesEfd o = opcoes_efd(c.texto);
    EXPECT_EQ(o.saldo_credor_anterior, c.saldo);
    EXPECT_EQ(o.vencimento, c.vencimento);
    EXPECT_EQ(o.codigo_receita, c.texto.codigo_receita);
  }
}

}  // namespace
}  // namespace infofiscal
