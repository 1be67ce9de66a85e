// The whole way: an export run of kind 1 over a snapshot, its information text handed to the
// SINTEGRA converter. The converter reads the lines as the generators write them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/obj_exportainfofiscal.h"
#include "fiscal/sintegra.h"
#include "registers/incoming/compras.h"
#include "support/fixture.h"
#include "support/golden.h"

namespace infofiscal {
namespace {

using testing::json;
using testing::Run;
using testing::Snapshot;

TEST(SintegraExportacao, APurchaseMonthConvertsAndPassesTheCheck) {
  json fornecedor = testing::fornecedor(101);
  fornecedor["CNPJ_CPF"] = "44.555.666/0001-81";
  Snapshot s = testing::notas(testing::Kind::Produto, {{101, "55", "001.234 5"}}, {{"CDMES", 3}, {"ANO", 2024}},
                              Snapshot().params("DspCompra", {101}, json::array({testing::compra(101)})));
  s.params("DspCompraFornecedor", {101}, json::array({fornecedor}))
      .params("DsCompraProduto", {101}, json::array({testing::item(101)}))
      .params("DspEmpresa", {1},
              json::array({{{"CDEMPRESA", 1}, {"RAZAOSOCIAL", "Boa Vista Ltda"}, {"NOMEFANTASIA", nullptr},
                            {"CNPJ", "11.222.333/0001-81"}, {"IE", "123.456.785.119"}, {"IM", nullptr},
                            {"SUFRAMA", nullptr}, {"NOMECIDADE", "Campinas"}, {"CDESTADO", "SP"}, {"ENDERECO", "Rua A"},
                            {"ENDERECONUMERO", nullptr}, {"ENDERECOCOMPLEMENTO", nullptr}, {"BAIRRO", nullptr},
                            {"IBGE_CIDADE", nullptr}, {"IBGE_PAIS", nullptr}, {"CEP", nullptr}, {"FONE", nullptr},
                            {"FAX", nullptr}, {"EMAIL", nullptr}}}))
      .params("DspListaProduto", json::array(),
              json::array({{{"CDPRODUTO", 501}, {"DESCPRODUTO", "Parafuso 3/8"}, {"SIGLAUNIDADE", "UN"},
                            {"NUMNCM", "7318.15.00"}, {"CODCEST", nullptr}}}));
  testing::Run run(s);
  TOBJ_ExportaInfoFiscal orquestrador(run.conexao);
  orquestrador.CodTipoRegistroFiscal(1);
  orquestrador.CodRegistroFiscal(7);
  const std::string informacao = orquestrador.RecInformacao(0, 0);

  std::string arquivo;
  ASSERT_NO_THROW(arquivo = gerar_sintegra(informacao, nullptr, nullptr)) << informacao;
  // The purchase (compra(101): total 1234,50, freight 30, insurance 4,50, other 2,25) is one
  // part from its one item (base 90 at 18%), with records 54 991, 992 and 999 for freight,
  // insurance and other expenses; its note number 001.234 5 keeps 6 digits.
  EXPECT_TRUE(testing::matches_golden("sintegra_exportacao.txt", arquivo)) << informacao;
}

}  // namespace
}  // namespace infofiscal
