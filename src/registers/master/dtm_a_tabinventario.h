// The shape of both inventories: when its switch is "S", one header line (16 or 18) from the
// first inventory row, then one product line (17 or 19) per product row with a positive total.
//
// The month-end and year-end modules differ only in what a TabelaInventario says.
#pragma once

#include <span>
#include <string_view>

#include "registers/dtm_a_padrao.h"
#include "registers/register_line.h"
#include "base/string_list.h"

namespace infofiscal {

struct TabelaInventario {
  std::string_view chave;                       // switch of TabRegistroFiscal
  std::string_view provider_inventario;         // header rows
  std::span<const FieldDef> campos_inventario;  // declared order of TabInventario
  std::string_view provider_produto;            // product rows
  std::span<const FieldDef> campos_produto;     // declared order of TabInventarioProduto
  int chave_produto;                            // its first fields that name a product row
  int linha_inventario;                         // 16 or 18
  std::string_view prefixo_inventario;          // its error prefix
  int linha_produto;                            // 17 or 19
  std::string_view prefixo_produto;             // its error prefix
};

class TDTM_A_TabInventario : public TDTM_A_Padrao {
 public:
  // Providers of the table, parameter ATR_CODREGISTROFISCAL; the server selects both by the
  // fiscal register alone, header and product rows are not linked here.
  ClientDataSet TabInventario;
  ClientDataSet TabInventarioProduto;

  // Reopen their dataset for CodRegistroFiscal. A failure passes unchanged.
  void ConsRegistroInventario();
  void ConsRegistroProdInventario();

 protected:
  // REQUIRES: `tabela` outlives the module (the members keep theirs static).
  TDTM_A_TabInventario(TDTM_ConexaoDS& conexao, const TabelaInventario& tabela);

  // The driver: nothing unless the switch is "S"; a failing header line stops it before the
  // product lines.
  void GerarInventario(TStringList& AArquivo);
  // Exactly one header line, from the first row (empty columns and a zero total when none).
  void LinhaInventario(TStringList& AArquivo);
  // One product line per row whose PRECOTOTAL is above 0; every row, written or not, is
  // reported as (record number, record count).
  void LinhasProduto(TStringList& AArquivo);

 private:
  static void Consulta(ClientDataSet& tab, std::int32_t registro);

  const TabelaInventario& tabela_;
  TLinhaRegistro oLinha;
};

}  // namespace infofiscal
