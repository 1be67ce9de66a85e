// Purchase notes: the base of the four purchase-kind modules. It owns the purchase list, the
// header and the supplier of one purchase, writes lines 04 and 05, and holds the one driver and
// the one line-06 generator that the equipment, products and consumption-products modules share.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "registers/dtm_a_padrao.h"
#include "registers/register_line.h"
#include "base/string_list.h"

namespace infofiscal {

// Models accepted by the equipment and products drivers.
inline constexpr int kModelosCompra[] = {1, 6, 8, 21, 22, 55};

// What one purchase kind with item lines differs in: its switch, its filters and its item dataset.
struct TTipoCompra {
  std::string_view chave;            // switch of TabRegistroFiscal
  std::span<const int> modelos;      // MODELO values of the list that are written
  int ultima_sem_faixa;              // last row when no range is set; 0 means the list's count
  std::string_view campo_filtro;     // list field the single-purchase filter compares with
  std::string_view tabela;           // item dataset
  std::string_view provedor;         // its provider
  std::string_view codigo;           // item code field (C03 of line 06)
  std::string_view descricao;        // description field (C05)
  int tamanho_descricao;
  int tamanho_codbarra;
  std::string_view tipo_item;        // C15 of line 06 (not the kind code of C01)
  std::string_view erro_itens;       // prefix of item-query failures; empty: they pass unchanged
};

class TDTM_A_Compra : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_Compra(TDTM_ConexaoDS& conexao);

  // Provider "DspListaCompra", filled by a data request [register, kind].
  ClientDataSet TabListaCompra;
  // Provider "DspCompra", parameter ATR_CODCOMPRA: the header of one purchase.
  ClientDataSet TabCompra;
  // Provider "DspCompraFornecedor", parameter ATR_COMPRA: the supplier of one purchase.
  ClientDataSet TabCompraFornecedor;

  // The purchase list of FCodRegistroFiscal and FTipoProcesso, open on its first row. A failure
  // passes on unchanged.
  void ConsListaCompra();
  // Reopen TabCompra / TabCompraFornecedor on one purchase; failures are prefixed
  // "Erro ao Abrir Tabela de Compra : " / "Erro ao Abrir Tabela de InstituicaoFornecedor : ".
  void ConsRegistro_Compra(int ACodCompra);
  void ConsRegistro_InstituicaoFornecedor(int ACodCompra);

  // Line 04 of one purchase. A purchase whose PDE is not 3 adds no line and fails with
  // "Erro ano Gerar Registro Linha 04 : Erro na NFe de Entrada: <cleaned note number>".
  void L04_InfoCompra(int ANumRegistro, int ACodCompra, TStringList& AArquivo);
  // Line 05: the supplier of one purchase.
  void L05_Fornecedor(int ANumRegistro, int ACodCompra, TStringList& AArquivo);

 protected:
  // Line-06 columns of one item dataset, bound once: the item code (C03) and C05 to C38.
  struct ColunasItens {
    ColunasItens(const ClientDataSet& itens, const TTipoCompra& tipo);
    int codigo;
    ColumnTable resto;
  };

  // The item dataset of a kind (parameter: the purchase code), not yet bound.
  static ClientDataSet DataSetItens(const TTipoCompra& tipo);

  // The driver of a kind with items: switch, list, row range, model and single-purchase
  // filters; lines 04, 05 and the kind's item lines (ItensCompra) for each purchase kept.
  void RegistraCompras(TStringList& AArquivo, int ACodFiltro, const TTipoCompra& tipo);
  // The kind's item-line generator, called by RegistraCompras (a kind without items has none).
  virtual void ItensCompra(int /*ANumRegistro*/, int /*ACodCompra*/, TStringList& /*AArquivo*/) {}

  // Reopens an item dataset on one purchase, under the kind's own error rule if it has one.
  static void ConsItensCompra(ClientDataSet& itens, const TTipoCompra& tipo, int ACodCompra);
  // One line 06 per row of an open item dataset, the item counter starting at 1.
  void L06_Itens(ClientDataSet& itens, const ColunasItens& colunas, int ANumRegistro, TStringList& AArquivo);

  TLinhaRegistro oLinha;

 private:
  int FNumNF, FChaveNFe, FPDE;  // fields of TabCompra read one by one
  ColumnTable FColunasC04, FColunasC06_C23, FColunasC25_C26, FColunasL05;
};

}  // namespace infofiscal
