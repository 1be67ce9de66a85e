// Installed as a user installs it: `cmake --install` into a temporary prefix, then the demo
// month from the installed files only. The source and build trees are hidden behind empty
// folders (a mount namespace of an unprivileged user, `unshare -rm`), so that nothing read from
// them can pass unnoticed.
#include <cstdlib>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/opcoes.h"
#include "support/cli.h"
#include "support/sql_script.h"

namespace infofiscal {
namespace {

using namespace testing;
using ::testing::HasSubstr;
namespace fs = std::filesystem;

constexpr const char* kUnshare = "/usr/bin/unshare";

// `env`, and LeakSanitizer's suppressions (scripts/test-sanitizers names a file of the source
// tree) copied into `pasta`, where the hidden trees do not take them away.
Environment com_supressoes(const std::string& pasta, Environment env) {
  const char* lsan = std::getenv("LSAN_OPTIONS");
  const std::string chave = "suppressions=";
  std::string opcoes = lsan == nullptr ? "" : lsan;
  const auto p = opcoes.find(chave);
  if (p == std::string::npos) return env;
  const auto inicio = p + chave.size();
  const std::string arquivo = opcoes.substr(inicio, opcoes.find(':', inicio) - inicio);
  const std::string copia = pasta + "/lsan.supp";
  fs::copy_file(arquivo, copia, fs::copy_options::overwrite_existing);
  opcoes.replace(inicio, arquivo.size(), copia);
  env.push_back({"LSAN_OPTIONS", opcoes});
  return env;
}

// Runs `programa` with the source and build trees hidden, when this system lets an ordinary
// user have a mount namespace; else as it is (the catalog's error below still shows that the
// installed program looks only beside itself).
CliResult sem_as_arvores(const std::string& programa, const std::vector<std::string>& args, const std::string& pasta,
                         const Environment& env = {}) {
  static const bool esconde = run_program(kUnshare, {"-rm", "true"}).status == 0;
  if (!esconde) return run_program(programa, args, pasta, env);
  std::vector<std::string> tudo = {"-rm", "sh", "-c",
                                   "for p; do [ \"$p\" = -- ] && break; [ -d \"$p\" ] && mount -t tmpfs tmpfs \"$p\"; "
                                   "shift; done; shift; exec \"$@\"",
                                   "sh", INFOFISCAL_BUILD_DIR, INFOFISCAL_SOURCE_DIR, "--", programa};
  tudo.insert(tudo.end(), args.begin(), args.end());
  return run_program(kUnshare, tudo, pasta, com_supressoes(pasta, env));
}

TEST(Instalacao, TheDemoMonthRunsFromTheInstalledFilesOnly) {
#ifdef _WIN32
  GTEST_SKIP() << "a instalação do Linux (cmake --install, unshare); a do Windows é a do instalador";
#endif
  const std::string pasta = fresh_dir("instalacao");
  const std::string prefixo = pasta + "/usr";
  const auto instalar = run_program(INFOFISCAL_CMAKE, {"--install", INFOFISCAL_BUILD_DIR, "--prefix", prefixo});
  ASSERT_EQ(instalar.status, 0) << instalar.err;
  const std::string dados = prefixo + "/share/infofiscal";
  for (const char* f : {"/bin/infofiscal", "/share/infofiscal/providers.sql", "/share/infofiscal/schema.sql",
                               "/share/infofiscal/demo.sql", "/share/doc/infofiscal/README.md",
                               "/share/doc/infofiscal/docs/sintegra.md", "/share/doc/infofiscal/docs/efd.md"})
    EXPECT_TRUE(fs::is_regular_file(prefixo + f)) << f;
  const bool dialogo = fs::exists(prefixo + "/bin/infofiscal-dialogo");
  if (dialogo) {
    EXPECT_TRUE(fs::is_regular_file(prefixo + "/share/icons/hicolor/scalable/apps/infofiscal.svg"));
    const std::string entrada = read_file(prefixo + "/share/applications/infofiscal-dialogo.desktop");
    EXPECT_THAT(entrada, HasSubstr("\nExec=infofiscal-dialogo\n"));
    EXPECT_THAT(entrada, HasSubstr("\nIcon=infofiscal\n"));
  }

  const std::string banco = pasta + "/erp.sqlite";
  run_sql_script("sqlite:" + banco, read_file(dados + "/schema.sql") + read_file(dados + "/demo.sql"));
  const std::string programa = prefixo + "/bin/infofiscal";
  const auto versao_ = sem_as_arvores(programa, {"--version"}, pasta);
  EXPECT_EQ(versao_.out, std::string("infofiscal ") + versao() + "\n") << versao_.err;

  // The SINTEGRA and the EFD register: the installed program writes the bytes of the built one.
  for (const std::string registro : {"1", "2"}) {
    const std::string instalado = fresh_dir("instalacao-instalado-" + registro, true);
    const std::string construido = fresh_dir("instalacao-construido-" + registro, true);
    const auto args = [&](const std::string& base) {
      return std::vector<std::string>{"exportar", "--fonte", "sqlite:" + banco, "--registro", registro, "--tipo",
                                      registro, "--base", base, "--arquivo-fiscal", base + "/fiscal.txt"};
    };
    const auto r = sem_as_arvores(programa, args(instalado), pasta, {{"INFOFISCAL_CATALOGO", std::nullopt}});
    ASSERT_EQ(r.status, 0) << r.err;
    ASSERT_EQ(run_cli(args(construido)).status, 0);
    EXPECT_FALSE(read_file(instalado + "/fiscal.txt").empty());
    for (const std::string f : {"/Arquivos/InfoFiscal/SpedInformacao.txt", "/fiscal.txt"})
      EXPECT_TRUE(read_file(instalado + f) == read_file(construido + f)) << registro << f;
    if (dialogo) {
      const std::string base = fresh_dir("instalacao-dialogo-" + registro, true);
      const auto d = sem_as_arvores(prefixo + "/bin/infofiscal-dialogo",
                                    {"--fonte", "sqlite:" + banco, "--registro", registro, "--tipo", registro, "--base",
                                     base, "--executar", base + "/fiscal.txt", "--sair-em", "0.1"},
                                    pasta, {{"QT_QPA_PLATFORM", "offscreen"}, {"INFOFISCAL_CATALOGO", std::nullopt}});
      EXPECT_EQ(d.status, 0) << d.err;
      EXPECT_TRUE(read_file(base + "/fiscal.txt") == read_file(construido + "/fiscal.txt")) << registro;
    }
  }

  // Without its catalog, the installed program names the one place it looked.
  fs::rename(dados + "/providers.sql", pasta + "/providers.sql");
  const auto sem = sem_as_arvores(programa,
                                  {"exportar", "--fonte", "sqlite:" + banco, "--registro", "1", "--tipo", "1", "--base",
                                   fresh_dir("instalacao-sem-catalogo", true)},
                                  pasta, {{"INFOFISCAL_CATALOGO", std::nullopt}});
  EXPECT_EQ(sem.status, 1);
  EXPECT_EQ(sem.err, "Catálogo de provedores não encontrado: procurado em '" + dados +
                         "/providers.sql' (ao lado do programa) (--catalogo não dado, INFOFISCAL_CATALOGO não "
                         "definida). Indique-o com --catalogo ARQUIVO ou INFOFISCAL_CATALOGO\n");
}

}  // namespace
}  // namespace infofiscal
