// The contract every list generator of lines 12 to 15 shares: one progress report per row of
// its list, before the row's line; a failure mid-list keeps the lines written and carries the
// prefix of the generator's line; an empty list writes and reports nothing; a failure of the
// fiscal register or of the list's own open passes unchanged, outside the error rule.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "registers/master/dtm_a_tabcliente.h"
#include "registers/master/dtm_a_tabequipamento.h"
#include "registers/master/dtm_a_tabfornecedor.h"
#include "registers/master/dtm_a_tabinsumo.h"
#include "registers/master/dtm_a_tabnaturezaoperacao.h"
#include "registers/master/dtm_a_tabprodconsumo.h"
#include "registers/master/dtm_a_tabproduto.h"
#include "registers/master/dtm_a_tabunidade.h"
#include "support/fixture.h"
#include "support/generate.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::generate;
using testing::json;
using testing::Snapshot;

using Gerador = testing::Generated (*)(const Snapshot&, TProcProgresso);

struct Lista {
  const char* nome;
  const char* provider;
  json linha;       // one row of the list; its first field is the row's code
  Gerador gerar;
  const char* prefixo;
  bool escreve = true;  // inputs are counted and reported, never written
};

void PrintTo(const Lista& l, std::ostream* os) { *os << l.nome; }

// Every switch of lines 12 on: each catalogue is read.
Snapshot com_linhas(const Lista& l, int quantas) {
  json linhas = json::array();
  for (int n = 1; n <= quantas; ++n) {
    json linha = l.linha;
    linha.begin().value() = n;
    linhas.push_back(linha);
  }
  return Snapshot()
      .registro(7, {{"REGCOMPRAEQUIPAMENTO", "S"}, {"REGCOMPRAPRODUTO", "S"}})
      .params(l.provider, json::array(), linhas);
}

class ContratoDasListas : public ::testing::TestWithParam<Lista> {};

TEST_P(ContratoDasListas, ProgressPerRowPrefixedFailureAndEmptyList) {
  const Lista& l = GetParam();
  const auto ok = l.gerar(com_linhas(l, 2), nullptr);
  EXPECT_THAT(ok.progress, ElementsAre(std::pair{1, 2}, std::pair{2, 2}));
  EXPECT_EQ(ok.lines.size(), l.escreve ? 2u : 0u);

  const auto falha = l.gerar(com_linhas(l, 2), [](int p, int) {
    if (p == 2) throw Error("cancelado");
  });
  std::vector<std::string> esperadas;
  if (l.escreve) esperadas.push_back(ok.lines[0]);
  esperadas.push_back(std::string("erro: ") + l.prefixo + "cancelado");
  EXPECT_EQ(falha.lines, esperadas);

  const auto vazia = l.gerar(com_linhas(l, 0), nullptr);
  EXPECT_THAT(vazia.lines, IsEmpty());
  EXPECT_THAT(vazia.progress, IsEmpty());

  EXPECT_THAT(l.gerar(Snapshot().registro(7, {{"REGCOMPRAEQUIPAMENTO", "S"}, {"REGCOMPRAPRODUTO", "S"}})
                          .error(l.provider, json::array(), "sem conexão"),
                      nullptr)
                  .lines,
              ElementsAre("erro: sem conexão"));
  EXPECT_THAT(l.gerar(Snapshot().error("DspRegistroInfoFiscal", {7}, "sem registro"), nullptr).lines,
              ElementsAre("erro: sem registro"));
}

json parte(const char* chave) {
  return {{chave, 1},           {"RAZAOSOCIAL", "Distribuidora Sul Ltda"}, {"CNPJ_CPF", "11.222.333/0001-81"},
          {"IE_RG", "9012345678"}, {"TIPOPESSOA", "J"}, {"ENDERECO", "Rua XV"}, {"ENDERECONUMERO", "55"},
          {"BAIRRO", "Centro"}, {"IBGE_CIDADE", 4106902}, {"IBGE_PAIS", 1058}};
}

INSTANTIATE_TEST_SUITE_P(
    Listas, ContratoDasListas,
    ::testing::Values(
        Lista{"Equipamentos", "DspListaEquipamento",
              {{"CDEQUIPAMENTO", 1}, {"DESCEQUIPAMENTO", "Freezer"}, {"SIGLAUNIDADE", "PC"}, {"NUMNCM", "84185010"}},
              [](const Snapshot& s, TProcProgresso p) {
                return generate(s, &TDTM_A_TabEquipamento::L12_RegistroEquipamento, p);
              },
              "Erro ano Gerar Registro Linha 12 : "},
        Lista{"Produtos", "DspListaProduto",
              {{"CDPRODUTO", 1}, {"DESCPRODUTO", "Cerveja"}, {"SIGLAUNIDADE", "UN"}, {"NUMNCM", "22030000"},
               {"CODCEST", ""}},
              [](const Snapshot& s, TProcProgresso p) { return generate(s, &TDTM_A_TabProduto::L12_RegistroProduto, p); },
              "Erro ano Gerar Registro Linha 12 : "},
        Lista{"Insumos", "DspListaInsumo",
              {{"CDINSUMO", 1}, {"DESCINSUMO", "Malte"}, {"SIGLAUNIDADE", "KG"}, {"NUMNCM", "11071010"}},
              [](const Snapshot& s, TProcProgresso p) { return generate(s, &TDTM_A_TabInsumo::L12_RegistroInsumo_, p); },
              "Erro ano Gerar Registro Linha 12 : ", false},
        Lista{"ProdutosDeConsumo", "DspListaProdConsumo",
              {{"CDPRODCONSUMO", 1}, {"DESCPRODUTO", "Papel A4"}, {"SIGLAUNIDADE", "CX"}, {"NUMNCM", nullptr}},
              [](const Snapshot& s, TProcProgresso p) {
                return generate(s, &TDTM_A_TabProdConsumo::L12_RegistroProdConsumo, p);
              },
              "Erro ano Gerar Registro Linha 12 : "},
        Lista{"Unidades", "DspListaUnidade", {{"CDUNIDADE", 1}, {"SIGLAUNIDADE", "UN"}, {"DESCUNIDADE", "UNIDADE"}},
              [](const Snapshot& s, TProcProgresso p) { return generate(s, &TDTM_A_TabUnidade::L13_RegistroUnidade, p); },
              "Erro ano Gerar Registro Linha 13 : "},
        Lista{"Clientes", "DspListaCliente", parte("CDCLIENTE"),
              [](const Snapshot& s, TProcProgresso p) { return generate(s, &TDTM_A_TabCliente::L14_RegistroCliente, p); },
              "Erro ano Gerar Registro Linha 14 : "},
        Lista{"Fornecedores", "DspListaFornecedor", parte("CDFORNECEDOR"),
              [](const Snapshot& s, TProcProgresso p) {
                return generate(s, &TDTM_A_TabFornecedor::L14_RegistroFornecedor, p);
              },
              "Erro ano Gerar Registro Linha 14 : "},
        Lista{"Naturezas", "DspNaturezaOperacao", {{"CDTABCFOP", 5102}, {"DESCCFOP", "Venda de mercadoria"}},
              [](const Snapshot& s, TProcProgresso p) {
                return generate(s, &TDTM_A_TabNaturezaOperacao::L15_RegistroNaturezaOperacao, p);
              },
              "Erro ano Gerar Registro Linha 15 : "}),
    [](const auto& info) { return std::string(info.param.nome); });

}  // namespace
}  // namespace infofiscal
