#include "registers/master/dtm_a_tabinventario.h"

#include <string>
#include <vector>

namespace infofiscal {

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

void TDTM_A_TabInventario::Consulta(ClientDataSet& tab, std::int32_t registro) {
  tab.Reopen({registro});
}

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
  static const Column kColunas[] = {
      {2, Render::Text, "CDINVENTARIOEMP"},
      {3, Render::Text, "DATAINVENTARIO"},
      {4, Render::Amount, "TOTALINVENTARIO"},
  };
  ConsRegistroInventario();
  UnderErrorRule(tabela_.prefixo_inventario, [&] {
    WriteLine(oLinha, tabela_.linha_inventario, ColumnTable(TabInventario, kColunas), 4, AArquivo);
  });
}

void TDTM_A_TabInventario::LinhasProduto(TStringList& AArquivo) {
  static const Column kColunas[] = {
      {1, Render::Text, "CDTIPOINVENTARIO"}, {2, Render::Text, "CDINVENTARIO"},   {3, Render::Text, "CDPRODUTO"},
      {4, Render::Amount, "QUANTIDADE"},     {5, Render::Amount, "PRECOFABRICA"}, {6, Render::Amount, "PRECOTOTAL"},
      {7, Render::Text, "SIGLAUNIDADE"},     {8, Render::Constant, "2"},
  };
  ConsRegistroProdInventario();
  UnderErrorRule(tabela_.prefixo_produto, [&] {
    auto& tab = TabInventarioProduto;
    const ColumnTable colunas(tab, kColunas);
    const Field total = tab.FieldByName("PRECOTOTAL");
    while (!tab.Eof()) {
      FProcProgresso(tab.RecNo(), tab.RecordCount());
      if (total.AsFloat() > 0) WriteLine(oLinha, tabela_.linha_produto, colunas, 8, AArquivo);
      tab.Next();
    }
  });
}

}  // namespace infofiscal
