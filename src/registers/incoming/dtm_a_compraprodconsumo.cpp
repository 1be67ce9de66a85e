#include "registers/incoming/dtm_a_compraprodconsumo.h"

namespace infofiscal {

namespace {

// A wider set of models than the goods kinds, and rows 1 to 999999 when no range is set.
constexpr int kModelos[] = {1, 6, 7, 8, 9, 10, 11, 21, 22, 26, 27, 28, 29, 55, 57};
constexpr TTipoCompra kTipo{
    .chave = "REGCOMPRAPRODCONSUMO",
    .modelos = kModelos,
    .ultima_sem_faixa = 999999,
    .campo_filtro = "NUMNF",
    .tabela = "TabCompraProdConsumo",
    .provedor = "DspCompraProdConsumo",
    .codigo = "CDPRODCONSUMO",
    .descricao = "DESCPRODUTO",
    .tamanho_descricao = 80,
    .tamanho_codbarra = 20,
    .tipo_item = "3",
    .erro_itens = "",
};

}  // namespace

TDTM_A_CompraProdConsumo::TDTM_A_CompraProdConsumo(TDTM_ConexaoDS& conexao)
    : TDTM_A_Compra(conexao), TabCompraProdConsumo(DataSetItens(kTipo)), oColunas(TabCompraProdConsumo, kTipo) {
  Bind(TabCompraProdConsumo);
  FTipoProcesso = 4;
}

void TDTM_A_CompraProdConsumo::L04_L05_L06_RegistroCompraProdConsumo(TStringList& AArquivo, int ACodCompra) {
  RegistraCompras(AArquivo, ACodCompra, kTipo);
}

void TDTM_A_CompraProdConsumo::ConsRegistro_CompraProdConsumo(int ACodCompra) {
  ConsItensCompra(TabCompraProdConsumo, kTipo, ACodCompra);
}

void TDTM_A_CompraProdConsumo::L06_CompraProdConsumo(int ANumRegistro, int ACodCompra, TStringList& AArquivo) {
  ConsRegistro_CompraProdConsumo(ACodCompra);
  L06_Itens(TabCompraProdConsumo, oColunas, ANumRegistro, AArquivo);
}

}  // namespace infofiscal
