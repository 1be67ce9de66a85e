#include "registers/incoming/dtm_a_compraequipamento.h"

namespace infofiscal {

namespace {

// The single-purchase filter is the purchase code; item-query failures carry their own prefix.
constexpr TTipoCompra kTipo{
    .chave = "REGCOMPRAEQUIPAMENTO",
    .modelos = kModelosCompra,
    .ultima_sem_faixa = 0,
    .campo_filtro = "CDCOMPRA",
    .tabela = "TabCompraEquipamento",
    .provedor = "DspCompraEquipamento",
    .codigo = "CDEQUIPAMENTO",
    .descricao = "DESCEQUIPAMENTO",
    .tamanho_descricao = 80,
    .tamanho_codbarra = 1,
    .tipo_item = "1",
    .erro_itens = "Erro ao Abrir Tabela de Compra Equipamento : ",
};

}  // namespace

TDTM_A_CompraEquipamento::TDTM_A_CompraEquipamento(TDTM_ConexaoDS& conexao)
    : TDTM_A_Compra(conexao), TabCompraEquipamento(DataSetItens(kTipo)), oColunas(TabCompraEquipamento, kTipo) {
  Bind(TabCompraEquipamento);
  FTipoProcesso = 1;
}

void TDTM_A_CompraEquipamento::L04_L05_L06_RegistroCompraEquipamento(TStringList& AArquivo, int ACodNFeCompra) {
  RegistraCompras(AArquivo, ACodNFeCompra, kTipo);
}

void TDTM_A_CompraEquipamento::ConsRegistro_CompraEquipamento(int ACodCompra) {
  ConsItensCompra(TabCompraEquipamento, kTipo, ACodCompra);
}

void TDTM_A_CompraEquipamento::L06_CompraEquipamento(int ANumRegistro, int ACodCompra, TStringList& AArquivo) {
  ConsRegistro_CompraEquipamento(ACodCompra);
  L06_Itens(TabCompraEquipamento, oColunas, ANumRegistro, AArquivo);
}

}  // namespace infofiscal
