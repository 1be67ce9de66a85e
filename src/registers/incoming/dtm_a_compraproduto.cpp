#include "registers/incoming/dtm_a_compraproduto.h"

namespace infofiscal {

namespace {

// The single-purchase filter is the note number; item-query failures pass unchanged.
constexpr TTipoCompra kTipo{
    .chave = "REGCOMPRAPRODUTO",
    .modelos = kModelosCompra,
    .ultima_sem_faixa = 0,
    .campo_filtro = "NUMNF",
    .tabela = "TabCompraProduto",
    .provedor = "DsCompraProduto",
    .codigo = "CDPRODUTO",
    .descricao = "DESCPRODUTO",
    .tamanho_descricao = 100,
    .tamanho_codbarra = 4,
    .tipo_item = "2",
    .erro_itens = "",
};

}  // namespace

TDTM_A_CompraProduto::TDTM_A_CompraProduto(TDTM_ConexaoDS& conexao)
    : TDTM_A_Compra(conexao), TabCompraProduto(DataSetItens(kTipo)), oColunas(TabCompraProduto, kTipo) {
  Bind(TabCompraProduto);
  FTipoProcesso = 2;
}

void TDTM_A_CompraProduto::L04_L05_L06_RegistroCompraProduto(TStringList& AArquivo, int ACodNFeCompra) {
  RegistraCompras(AArquivo, ACodNFeCompra, kTipo);
}

void TDTM_A_CompraProduto::ConsRegistro_CompraProduto(int ACodCompra) {
  ConsItensCompra(TabCompraProduto, kTipo, ACodCompra);
}

void TDTM_A_CompraProduto::Reg_06_CompraProduto(int ANumRegistro, int ACodCompra, TStringList& AArquivo) {
  ConsRegistro_CompraProduto(ACodCompra);
  L06_Itens(TabCompraProduto, oColunas, ANumRegistro, AArquivo);
}

}  // namespace infofiscal
