// The whole way: an export run of kind 1 over a snapshot, its information text handed to the
// SINTEGRA converter. The converter reads the lines as the generators write them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/obj_exportainfofiscal.h"
#include "fiscal/sintegra.h"
#include "fiscal/sintegra_dados.h"
#include "registers/incoming/compras.h"
#include "support/fixture.h"

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
                            {"CNPJ", "11.222.333/0001-81"}, {"IE", "123.456.789.110"}, {"IM", nullptr},
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
  // part from its one item (base 90 at 18%); its note number 001.234 5 keeps 6 digits.
  const std::string b(14, ' ');
  const std::vector<std::string> registros = {
      "10" "11222333000181" "123456789110  " "BOA VISTA LTDA                     " "CAMPINAS                      " "SP"
      "0000000000" "20240301" "20240331" "3" "3" "1",
      "11" "RUA A                             " "00000" + std::string(22 + 15, ' ') + "00000000"
      "BOA VISTA LTDA              " "000000000000",
      "50" "44555666000181" "ISENTO        " "20240306" "SP" "55" "1  " "012345" "1102" "T" "0000000123450"
      "0000000009000" "0000000001620" "0000000000000" "0000000114450" "1800" "N",
      "54" "44555666000181" "55" "1  " "012345" "1102" "000" "001" "501           " "00000010000" "000000009990"
      "000000000100" "000000009000" "000000000500" "000000000800" "1800",
      "54" "44555666000181" "55" "1  " "012345" "1102" "   " "991" + b + "00000000000" "000000000000" "000000003000"
      "000000000000" "000000000000" "000000000000" "0000",
      "54" "44555666000181" "55" "1  " "012345" "1102" "   " "992" + b + "00000000000" "000000000000" "000000000450"
      "000000000000" "000000000000" "000000000000" "0000",
      "54" "44555666000181" "55" "1  " "012345" "1102" "   " "999" + b + "00000000000" "000000000000" "000000000225"
      "000000000000" "000000000000" "000000000000" "0000",
      "75" "20240301" "20240331" "501           " "73181500" "PARAFUSO 3/8" + std::string(41, ' ') + "UN    " "00000"
      "0000" "00000" "0000000000000",
      "90" "11222333000181" "123456789110  " "50" "00000001" "54" "00000004" "75" "00000001" "99" "00000009" +
          std::string(50 + 5, ' ') + "1",
  };
  EXPECT_EQ(arquivo, testing::arquivo_de(registros)) << informacao;
}

}  // namespace
}  // namespace infofiscal
