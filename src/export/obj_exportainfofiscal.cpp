#include "export/obj_exportainfofiscal.h"

#include <memory>

#include "registers/dtm_a_padrao.h"
#include "registers/header/dtm_a_registrofiscal.h"
#include "registers/header/dtm_a_tabcontador.h"
#include "registers/header/dtm_a_tabempresa.h"
#include "registers/incoming/dtm_a_compraequipamento.h"
#include "registers/incoming/dtm_a_comprainsumo.h"
#include "registers/incoming/dtm_a_compraprodconsumo.h"
#include "registers/incoming/dtm_a_compraproduto.h"
#include "registers/master/dtm_a_tabcliente.h"
#include "registers/master/dtm_a_tabequipamento.h"
#include "registers/master/dtm_a_tabfornecedor.h"
#include "registers/master/dtm_a_tabinsumo.h"
#include "registers/master/dtm_a_tabinventario_finalano.h"
#include "registers/master/dtm_a_tabinventario_finalmes.h"
#include "registers/master/dtm_a_tabnaturezaoperacao.h"
#include "registers/master/dtm_a_tabprodconsumo.h"
#include "registers/master/dtm_a_tabproduto.h"
#include "registers/master/dtm_a_tabunidade.h"
#include "registers/outgoing/dtm_a_nf_devcompraproduto.h"
#include "registers/outgoing/dtm_a_nf_devvendaproduto.h"
#include "registers/outgoing/dtm_a_nf_numinutilizado.h"
#include "registers/outgoing/dtm_a_nf_transferenciaproduto.h"
#include "registers/outgoing/dtm_a_nf_vendaequipamento.h"
#include "registers/outgoing/dtm_a_nf_vendaproduto.h"

namespace infofiscal {

void TOBJ_ExportaInfoFiscal::LinhaInfo_B(const std::string& AInfo) const {
  if (FProcLinhaInfo) FProcLinhaInfo(AInfo);
}

void TOBJ_ExportaInfoFiscal::Progresso_B(int APosicao, int AMaximo) const {
  if (FProcProgresso) FProcProgresso(APosicao, AMaximo);
}

void TOBJ_ExportaInfoFiscal::Configurar(TDTM_A_Padrao& module) const {
  module.LinhaInfo_B([this](const std::string& info) { LinhaInfo_B(info); });
  module.Progresso_B([this](int posicao, int maximo) { Progresso_B(posicao, maximo); });
  module.CodTipoRegistroFiscal(FCodTipoRegistroFiscal);
  module.CodRegistroFiscal(FCodRegistroFiscal);
}

void TOBJ_ExportaInfoFiscal::Configurar(TDTM_A_RegistroFiscal& module) const {
  module.CodTipoRegistro(FCodTipoRegistroFiscal);
  module.CodRegistroFiscal(FCodRegistroFiscal);
}

template <class Module, class Generator>
void TOBJ_ExportaInfoFiscal::Passo(std::string_view info, Generator&& generator) {
  LinhaInfo_B(std::string(info));
  Progresso_B(0, 0);
  const auto module = std::make_unique<Module>(conexao_);
  Configurar(*module);
  generator(*module);
}

std::string TOBJ_ExportaInfoFiscal::RecInformacao(int ACodNFeCompra, int ACodNFeVenda) {
  Executar(ACodNFeCompra, ACodNFeVenda);
  return oArquivo.Text();
}

void TOBJ_ExportaInfoFiscal::Executar(int ACodNFeCompra, int ACodNFeVenda) {
  oArquivo.Clear();
  LinhaInfo_B("=============================");
  LinhaInfo_B("RECUPERANDO INFORMAÇÕES      ");
  LinhaInfo_B("=============================");
  LinhaInfo_B("1-Gerar Arquivo de Informações: Início");
  auto& a = oArquivo;
  // The steps in their fixed order: the voided numbers (2.22) run eighth, and both
  // inventories carry the number 2.13.
  Passo<TDTM_A_RegistroFiscal>("2.01-Registro: Informação do Registro Fiscal",
                               [&](auto& m) { m.L01_RegistroFiscal(a); });
  Passo<TDTM_A_TabEmpresa>("2.02-Registro: Informação da Empresa", [&](auto& m) { m.L02_InformacaoEmpresa(a); });
  Passo<TDTM_A_TabContador>("2.03-Registro: Informação do Contador", [&](auto& m) { m.InformacaoContador(a); });
  FLinhasDasCompras = FLinhasDasVendas = 0;
  const std::size_t antes_das_compras = a.Count();
  Passo<TDTM_A_CompraEquipamento>("2.04-Registro: Informação de Compra de Equipamentos",
                                  [&](auto& m) { m.L04_L05_L06_RegistroCompraEquipamento(a, ACodNFeCompra); });
  Passo<TDTM_A_CompraProduto>("2.05-Registro: Informação de Compra de Produtos",
                              [&](auto& m) { m.L04_L05_L06_RegistroCompraProduto(a, ACodNFeCompra); });
  Passo<TDTM_A_CompraProdConsumo>("2.06-Registro: Informação de Compra de Produtos de Consumo",
                                  [&](auto& m) { m.L04_L05_L06_RegistroCompraProdConsumo(a, ACodNFeCompra); });
  FLinhasDasCompras = a.Count() - antes_das_compras;
  Passo<TDTM_A_CompraInsumo>("2.07-Registro: Informação de Compra de Insumos",
                             [&](auto& m) { m.L04_L05_L06_RegistroCompraInsumo(a); });
  Passo<TDTM_A_NF_NumInutilizado>("2.22-Registro: Nota Fiscal Inutilizada",
                                  [&](auto& m) { m.L04_RegistroNF_NumInutilizado(a); });
  const std::size_t antes_das_vendas = a.Count();
  Passo<TDTM_A_NF_VendaEquipamento>("2.08-Registro: Informação Nota Fiscal de Venda de Equipamentos",
                                    [&](auto& m) { m.L04_L05_L06_RegistroNF_VendaEquipamento(a, ACodNFeVenda); });
  FLinhasDasVendas = a.Count() - antes_das_vendas;
  Passo<TDTM_A_NF_VendaProduto>("2.09-Registro: Informação Nota Fiscal de Venda de Produtos",
                                [&](auto& m) { m.L04_L05_L06_RegistroNF_VendaProduto(a); });
  Passo<TDTM_A_NF_TransferenciaProduto>("2.10-Registro: Informação Nota Fiscal de Transferência de Produtos",
                                        [&](auto& m) { m.L04_L05_L06_RegistroNF_TransfProduto(a); });
  Passo<TDTM_A_NF_DevCompraProduto>(
      "2.11-Registro: Informação Nota Fiscal de Devolução de Compra de Produtos",
      [&](auto& m) { m.L04_L05_L06_RegistroNF_DevCompraProduto(a); });
  Passo<TDTM_A_NF_DevVendaProduto>("2.12-Registro: Informação Nota Fiscal de Devolução de Venda de Produtos",
                                   [&](auto& m) { m.L04_L05_L06_RegistroNF_DevVendaProduto(a); });
  Passo<TDTM_A_TabEquipamento>("2.14-Registro: Lista de Equipamentos", [&](auto& m) { m.L12_RegistroEquipamento(a); });
  Passo<TDTM_A_TabProduto>("2.15-Registro: Lista de Produtos", [&](auto& m) { m.L12_RegistroProduto(a); });
  Passo<TDTM_A_TabInsumo>("2.16-Registro: Lista de Insumos", [&](auto& m) { m.L12_RegistroInsumo_(a); });
  Passo<TDTM_A_TabProdConsumo>("2.17-Registro: Lista de Produtos de Consumo",
                               [&](auto& m) { m.L12_RegistroProdConsumo(a); });
  Passo<TDTM_A_TabUnidade>("2.18-Registro: Lista de Unidades", [&](auto& m) { m.L13_RegistroUnidade(a); });
  Passo<TDTM_A_TabCliente>("2.19-Registro: Lista de Clientes", [&](auto& m) { m.L14_RegistroCliente(a); });
  Passo<TDTM_A_TabFornecedor>("2.20-Registro: Lista de Fornecedores", [&](auto& m) { m.L14_RegistroFornecedor(a); });
  Passo<TDTM_A_TabNaturezaOperacao>("2.21-Registro: Natureza da Operação",
                                    [&](auto& m) { m.L15_RegistroNaturezaOperacao(a); });
  Passo<TDTM_A_TabInventario_FinalMes>("2.13-Registro: Informação de Inventário - Final do Mes",
                                       [&](auto& m) { m.L16_L17_RegistroInventario(a); });
  Passo<TDTM_A_TabInventario_FinalAno>("2.13-Registro: Informação de Inventário - Final do Ano",
                                       [&](auto& m) { m.L18_L19_RegistroInventario(a); });
  LinhaInfo_B("3-Gerar Arquivo de Informações: Final");
}

}  // namespace infofiscal
