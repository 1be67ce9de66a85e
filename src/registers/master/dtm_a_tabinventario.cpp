#include "registers/master/dtm_a_tabinventario.h"

#include <string>
#include <vector>

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

TDTM_A_TabInventario::TDTM_A_TabInventario(TDTM_ConexaoDS& conexao, const TabelaInventario& tabela)
    : TDTM_A_Padrao(conexao),
      TabInventario("TabInventario", std::string(tabela.provider_inventario),
                    std::vector<FieldDef>(tabela.campos_inventario.begin(), tabela.campos_inventario.end()), 1,
                    2),  // an inventory is named by its number and its kind
      TabInventarioProduto("TabInventarioProduto", std::string(tabela.provider_produto),
                           std::vector<FieldDef>(tabela.campos_produto.begin(), tabela.campos_produto.end()), 1,
                           tabela.chave_produto),
      tabela_(tabela) {
  Bind(TabInventario);
  Bind(TabInventarioProduto);
}

void TDTM_A_TabInventario::Consulta(ClientDataSet& tab, std::int32_t registro) { tab.Reopen({registro}); }

void TDTM_A_TabInventario::ConsRegistroInventario() { Consulta(TabInventario, FCodRegistroFiscal); }

void TDTM_A_TabInventario::ConsRegistroProdInventario() { Consulta(TabInventarioProduto, FCodRegistroFiscal); }

void TDTM_A_TabInventario::GerarInventario(TStringList& AArquivo) {
  ConsRegistroFiscal();
  if (!SwitchOn(tabela_.chave)) return;
  LinhaInventario(AArquivo);
  LinhasProduto(AArquivo);
}

void TDTM_A_TabInventario::LinhaInventario(TStringList& AArquivo) {
  // No C01; the trailer still counts 04. C03 is the timestamp's text (date alone at midnight).
  // Lines 18 and 19 are laid out as 16 and 17 (the static_asserts of the schema say so).
  static const Column kColunas[] = {
      {L16::Codigo, Render::Text, "CDINVENTARIOEMP"},
      {L16::Data, Render::Text, "DATAINVENTARIO"},
      {L16::Total, Render::Amount, "TOTALINVENTARIO"},
  };
  ConsRegistroInventario();
  UnderErrorRule(tabela_.prefixo_inventario, [&] {
    WriteLine(oLinha, tabela_.linha_inventario, ColumnTable(TabInventario, kColunas), L16::kTrailer, AArquivo);
  });
}

void TDTM_A_TabInventario::LinhasProduto(TStringList& AArquivo) {
  static const Column kColunas[] = {
      {L17::TipoInventario, Render::Text, "CDTIPOINVENTARIO"},
      {L17::Inventario, Render::Text, "CDINVENTARIO"},
      {L17::Produto, Render::Text, "CDPRODUTO"},
      {L17::Quantidade, Render::Amount, "QUANTIDADE"},
      {L17::PrecoUnitario, Render::Amount, "PRECOFABRICA"},
      {L17::PrecoTotal, Render::Amount, "PRECOTOTAL"},
      {L17::Unidade, Render::Text, "SIGLAUNIDADE"},
      {L17::TipoItem, Render::Constant, "2"},
  };
  ConsRegistroProdInventario();
  UnderErrorRule(tabela_.prefixo_produto, [&] {
    auto& tab = TabInventarioProduto;
    const ColumnTable colunas(tab, kColunas);
    const Field total = tab.FieldByName("PRECOTOTAL");
    while (!tab.Eof()) {
      FProcProgresso(tab.RecNo(), tab.RecordCount());
      if (total.AsFloat() > 0) WriteLine(oLinha, tabela_.linha_produto, colunas, L17::kTrailer, AArquivo);
      tab.Next();
    }
  });
}

}  // namespace infofiscal
