// Slips of the command line that the run survives: an option that contradicts the fiscal
// register or the source is warned of on stderr, and the run is the same as without the
// warning's reads (its info lines, its file and its error are those of the orchestrator run on
// its own over the same snapshot).
#include <gtest/gtest.h>

#include "registers/header/dtm_a_tabempresa.h"
#include "registers/incoming/compras.h"
#include "support/cli.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using namespace testing;

// A row of DspEmpresa with every field the company line declares.
json empresa(int codigo) {
  SnapshotSource vazia(Snapshot().document(), "vazio");
  TDTM_ConexaoDS conexao{vazia, TOBJ_InfoSistema_v11c()};
  TDTM_A_TabEmpresa modulo(conexao);
  json row = json::object();
  for (const FieldDef& f : modulo.TabEmpresa.Fields()) row[std::string(f.name)] = nullptr;
  row["CDEMPRESA"] = codigo;
  row["RAZAOSOCIAL"] = "Empresa " + std::to_string(codigo);
  return row;
}

// Fiscal register 7 of company `cd_empresa` and kind `tipo` (and `mais` fields), with the
// companies `empresas`.
Snapshot registro(int cd_empresa, int tipo, const std::vector<int>& empresas, const json& mais = json::object()) {
  json campos = {{"CDMES", 3}, {"ANO", 2024}, {"CDEMPRESA", cd_empresa}, {"CDTIPOREGISTROFISCAL", tipo}};
  campos.update(mais);
  Snapshot s;
  s.registro(7, campos);
  for (const int e : empresas) s.params("DspEmpresa", {e}, json::array({empresa(e)}));
  return s;
}

// One purchase of products, note number 123, and the register of company 1 and kind 3.
Snapshot uma_compra() {
  return notas(Kind::Produto, {{101, "55", "123"}}, {{"CDMES", 3}, {"ANO", 2024}, {"CDEMPRESA", 1}, {"CDTIPOREGISTROFISCAL", 3}})
      .params("DspEmpresa", {1}, json::array({empresa(1)}));
}

// Equipment sales switched on, with no note in the list.
Snapshot vendas_sem_notas() { return registro(1, 3, {1}, {{"REGVENDAEQUIPAMENTO", "S"}}); }

struct Caso {
  const char* nome;
  Snapshot snapshot;
  std::vector<std::string> opcoes;  // after exportar's own: --registro 7 --tipo 3 --base DIR
  int empresa;                       // the company the run works in
  std::string avisos;                // the whole of stderr but the run's error
};

std::vector<Caso> casos() {
  const std::string aviso = "infofiscal: aviso: ";
  return {
      {"nada a avisar", registro(1, 3, {1}), {"--empresa", "1"}, 1, ""},
      {"--empresa de outra empresa", registro(1, 3, {1, 2}), {"--empresa", "2"}, 2,
       aviso + "--empresa 2 não é a empresa do registro fiscal 7 (CDEMPRESA 1)\n"},
      {"--empresa que a fonte não tem", registro(5, 3, {}), {"--empresa", "5"}, 5,
       aviso + "--empresa 5: a fonte de dados não tem essa empresa\n"},
      {"--empresa de outra empresa que a fonte não tem", registro(1, 3, {1}), {"--empresa", "9"}, 9,
       aviso + "--empresa 9 não é a empresa do registro fiscal 7 (CDEMPRESA 1)\n" + aviso +
           "--empresa 9: a fonte de dados não tem essa empresa\n"},
      {"registro sem empresa nem tipo", registro(0, 0, {4}), {"--empresa", "4"}, 4, ""},
      {"--tipo de outro tipo", registro(1, 2, {1}), {}, 1,
       aviso + "--tipo 3 não é o tipo do registro fiscal 7 (CDTIPOREGISTROFISCAL 2)\n"},
      {"--compra de uma nota", uma_compra(), {"--compra", "123"}, 1, ""},
      {"--compra de nenhuma nota", uma_compra(), {"--compra", "999"}, 1,
       aviso + "--compra 999 não corresponde a nenhuma nota exportada de compra de equipamentos, produtos ou produtos de "
               "consumo\n"},
      {"--venda de nenhuma nota", vendas_sem_notas(), {"--venda", "5"}, 1,
       aviso + "--venda 5 não corresponde a nenhuma nota exportada de venda de equipamentos\n"},
      // The company does not read: no warning, and the run meets the failure itself at line 02.
      {"leitura que falha não avisa", Snapshot(registro(1, 3, {})).error("DspEmpresa", {2}, "conexão perdida"),
       {"--empresa", "2"}, 2, aviso + "--empresa 2 não é a empresa do registro fiscal 7 (CDEMPRESA 1)\n"},
  };
}

// The orchestrator on its own over `snapshot`: the info lines, then the text or the error.
struct Execucao {
  std::string saida, texto, erro;
};
Execucao sozinho(const Snapshot& snapshot, int empresa, int compra, int venda) {
  Run run(snapshot, empresa);
  TOBJ_ExportaInfoFiscal orquestrador(run.conexao);
  orquestrador.PROC_LinhaInfo_B([&](const std::string& l) { run.info.push_back(l); });
  orquestrador.CodTipoRegistroFiscal(3);
  orquestrador.CodRegistroFiscal(7);
  Execucao e;
  try {
    e.texto = orquestrador.RecInformacao(compra, venda);
  } catch (const Error& erro) {
    e.erro = std::string(erro.what()) + "\n";
  }
  for (const std::string& l : run.info) e.saida += l + "\n";
  return e;
}

int opcao(const std::vector<std::string>& opcoes, const std::string& nome) {
  for (std::size_t i = 0; i + 1 < opcoes.size(); ++i)
    if (opcoes[i] == nome) return std::stoi(opcoes[i + 1]);
  return 0;
}

TEST(Avisos, AContradictingOptionIsWarnedOfAndTheRunStaysTheSame) {
  for (const Caso& c : casos()) {
    SCOPED_TRACE(c.nome);
    const std::string dir = fresh_dir("avisos", true);
    write_file(dir + "/Arquivos/InfoFiscal/SpedInformacao.txt", "anterior\r\n");
    write_file(dir + "/s.json", c.snapshot.first_answers().dump());
    std::vector<std::string> args{"exportar", "--fonte", "snapshot:" + dir + "/s.json", "--registro", "7", "--tipo", "3",
                                  "--base", dir, "--progresso", "nada"};
    args.insert(args.end(), c.opcoes.begin(), c.opcoes.end());
    const auto r = run_cli(args);

    const Execucao e = sozinho(c.snapshot, c.empresa, opcao(c.opcoes, "--compra"), opcao(c.opcoes, "--venda"));
    // A run that ends well says its summary after the warnings (tested with the summary's own cases).
    const std::string resumo = e.erro.empty() ? r.err.substr(std::min(c.avisos.size(), r.err.size())) : "";
    EXPECT_TRUE(resumo.empty() || resumo.starts_with("Resumo: ")) << resumo;
    EXPECT_EQ(r.err, c.avisos + e.erro + resumo);
    EXPECT_EQ(r.status, e.erro.empty() ? 0 : 1);
    EXPECT_EQ(r.out, e.saida);
    EXPECT_EQ(read_file(dir + "/Arquivos/InfoFiscal/SpedInformacao.txt"), e.erro.empty() ? e.texto : "anterior\r\n");
  }
}

}  // namespace
}  // namespace infofiscal
