#include "registers/outgoing/notas.h"

#include "registers/outgoing/dtm_a_nf_devcompraproduto.h"
#include "registers/outgoing/dtm_a_nf_devvendaproduto.h"
#include "registers/outgoing/dtm_a_nf_transferenciaproduto.h"
#include "registers/outgoing/dtm_a_nf_vendaequipamento.h"
#include "registers/outgoing/dtm_a_nf_vendaproduto.h"
#include "support/golden.h"

namespace infofiscal::testing {

json cabecalho(int nota, const json& pde, const json& overrides) {
  json row = data_row("nf_cabecalho");
  row.update({{"CDNOTAFISCAL", nota}, {"PDE", pde}});
  row.update(overrides);
  return row;
}

json parte(int nota) {
  json row = data_row("nf_parte");
  row["CDNOTAFISCAL"] = nota;
  return row;
}

json item(int nota, int n, const json& overrides) {
  json row = data_row("nf_item");
  row.update({{"CDNOTAFISCAL", nota}, {"CDPRODUTO", 500 + n}, {"ITEMNOTAFISCAL", n},
              {"DESCPRODUTO", "Produto " + std::to_string(n)}});
  row.update(overrides);
  return row;
}

Snapshot& nota(Snapshot& s, int cod, int itens, const json& pde) {
  json rows = json::array();
  for (int n = 1; n <= itens; ++n) rows.push_back(item(cod, n));
  return s.params("DspNF_Venda", {1, cod}, json::array({cabecalho(cod, pde)}))
      .params("DspNF_Cliente", {1, cod}, json::array({parte(cod)}))
      .params("DspNF_Produto", {1, cod}, rows);
}

Snapshot& lista(Snapshot& s, int tipo, int notas) {
  json rows = json::array();
  for (int i = 1; i <= notas; ++i) rows.push_back({{"CDTIPONOTAFISCAL", 1}, {"CDNOTAFISCAL", 1000 + i}});
  return s.request("DspListaNotaFiscal", {2, 7, tipo}, rows);
}

std::string l04(int tipo, int registro, int nota, const std::string& c24) {
  return "[C00]04[/C00][C01]" + std::to_string(tipo) + "[/C01][C02]" + std::to_string(registro) + "[/C02][C03]" +
         std::to_string(nota) +
         "[/C03][C04]5102[/C04][C05]35240312345678000190550010000010011000010010[/C05][C06]55[/C06][C07]1[/C07]"
         "[C08]05/03/2024[/C08][C09]06/03/2024 14:30:00[/C09][C10]1234,50[/C10][C11]10,00[/C11][C12]1244,50[/C12]"
         "[C13]1,10[/C13][C14]2,20[/C14][C15]3,30[/C15][C16]1000,00[/C16][C17]180,00[/C17][C18]4,40[/C18]"
         "[C19]5,50[/C19][C20]6,60[/C20][C21]7,70[/C21][C22]8,80[/C22][C23]0[/C23]" +
         c24 + "[C99]26[/C99]";
}

std::string l05(int tipo, int registro, int papel) {
  return "[C00]05[/C00][C01]" + std::to_string(tipo) + "[/C01][C02]" + std::to_string(registro) + "[/C02][C03]" +
         std::to_string(papel) +
         "[/C03][C04]42[/C04][C05]12.345.678/0001-90[/C05][C06]123456789[/C06][C07]SP[/C07][C99]07[/C99]";
}

std::string l06(int tipo, int registro, int n, const std::string& quantidade) {
  return "[C00]06[/C00][C01]" + std::to_string(tipo) + "[/C01][C02]" + std::to_string(registro) + "[/C02][C03]" +
         std::to_string(500 + n) + "[/C03][C04]" + std::to_string(n) + "[/C04][C05]Produto " + std::to_string(n) +
         "[/C05][C06]UN[/C06][C07]" + quantidade +
         "[/C07][C08]100,00[/C08][C09]1,00[/C09][C10]2,50[/C10][C11]3,00[/C11][C12]4,00[/C12][C13]84713012[/C13]"
         "[C14]7891234567895[/C14][C15]2[/C15][C16]000[/C16][C17]5102[/C17][C18]90,00[/C18][C19]18,00[/C19]"
         "[C20]16,20[/C20][C21]5,00[/C21][C22]6,00[/C22][C23]50[/C23][C24]999[/C24][C25]7,00[/C25][C26]8,00[/C26]"
         "[C27]01[/C27][C28]91,00[/C28][C29]1,65[/C29][C30]9,00[/C30][C31]10,00[/C31][C32]1,50[/C32][C33]02[/C33]"
         "[C34]92,00[/C34][C35]7,60[/C35][C36]11,00[/C36][C37]12,00[/C37][C38]6,99[/C38][C99]38[/C99]";
}

namespace {

template <class Module, class Call>
auto driver(Call call) {
  return [call](Run& run, TStringList& list, int cod) {
    Module m(run.conexao);
    run.configure(m);
    call(m, list, cod);
  };
}

}  // namespace

const std::vector<Kind>& kinds() {
  static const std::vector<Kind> all = {
      {"venda de equipamentos", 17, "REGVENDAEQUIPAMENTO", 1,
       driver<TDTM_A_NF_VendaEquipamento>(
           [](auto& m, TStringList& l, int cod) { m.L04_L05_L06_RegistroNF_VendaEquipamento(l, cod); })},
      {"venda de produtos", 10, "REGVENDAPRODUTO", 1,
       driver<TDTM_A_NF_VendaProduto>([](auto& m, TStringList& l, int) { m.L04_L05_L06_RegistroNF_VendaProduto(l); })},
      {"transferência de produtos", 11, "REGTRANSFPRODUTOCLIENTE", 1,
       driver<TDTM_A_NF_TransferenciaProduto>(
           [](auto& m, TStringList& l, int) { m.L04_L05_L06_RegistroNF_TransfProduto(l); })},
      {"devolução de compra de produtos", 9, "REGDEVCOMPRAPRODUTO", 2,
       driver<TDTM_A_NF_DevCompraProduto>(
           [](auto& m, TStringList& l, int) { m.L04_L05_L06_RegistroNF_DevCompraProduto(l); })},
      {"devolução de venda de produtos", 12, "REGDEVVENDAPRODUTO", 1,
       driver<TDTM_A_NF_DevVendaProduto>(
           [](auto& m, TStringList& l, int) { m.L04_L05_L06_RegistroNF_DevVendaProduto(l); })},
  };
  return all;
}

const Kind& kind(int tipo) {
  for (const Kind& k : kinds())
    if (k.tipo == tipo) return k;
  throw Error("tipo de nota desconhecido");
}

Saida roda(const Kind& k, const Snapshot& s, int ACodNotaFiscal) {
  Run run(s);
  TStringList list;
  Saida out;
  try {
    k.driver(run, list, ACodNotaFiscal);
  } catch (const Error& e) {
    out.error = e.what();
  }
  out.lines = lines_of(list);
  out.progress = run.progress;
  return out;
}

}  // namespace infofiscal::testing
