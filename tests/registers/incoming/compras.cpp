#include "registers/incoming/compras.h"

#include "registers/incoming/dtm_a_compraequipamento.h"
#include "registers/incoming/dtm_a_comprainsumo.h"
#include "registers/incoming/dtm_a_compraprodconsumo.h"
#include "registers/incoming/dtm_a_compraproduto.h"
#include "support/golden.h"

namespace infofiscal::testing {

namespace {

struct KindData {
  int code;
  const char* chave;
  const char* provider;
};

// In the order of Kind: equipment, products, consumption products, inputs.
const KindData& dados(Kind kind) {
  static const KindData tabela[] = {{1, "REGCOMPRAEQUIPAMENTO", "DspCompraEquipamento"},
                                    {2, "REGCOMPRAPRODUTO", "DsCompraProduto"},
                                    {4, "REGCOMPRAPRODCONSUMO", "DspCompraProdConsumo"},
                                    {0, "REGCOMPRAINSUMO", ""}};
  return tabela[static_cast<int>(kind)];
}

}  // namespace

int kind_code(Kind kind) { return dados(kind).code; }
const char* kind_switch(Kind kind) { return dados(kind).chave; }
const char* item_provider(Kind kind) { return dados(kind).provider; }

json compra(int cod, const json& overrides) {
  json row = data_row("compra");
  row["CDCOMPRA"] = cod;
  row.update(overrides);
  return row;
}

json compra_minima(int cod, const std::string& numnf) {
  json row = compra(cod);
  for (auto& [name, value] : row.items()) value = nullptr;
  row["CDCOMPRA"] = cod;
  row["PDE"] = 3;
  row["NUMNF"] = numnf;
  return row;
}

json fornecedor(int cod) {
  json row = data_row("fornecedor");
  row["CDCOMPRA"] = cod;
  return row;
}

json item(int cod, const json& overrides) {
  json row = data_row("item_compra");
  row["CDCOMPRA"] = cod;
  row.update(overrides);
  return row;
}

Snapshot notas(Kind kind, const std::vector<Nota>& notas, const json& registro, Snapshot antes) {
  json overrides = {{kind_switch(kind), "S"}};
  overrides.update(registro);
  Snapshot& s = antes;
  s.registro(7, overrides);
  json rows = json::array();
  for (const Nota& n : notas) rows.push_back({{"CDCOMPRA", n.cod}, {"MODELO", n.modelo}, {"NUMNF", n.numnf}});
  s.request("DspListaCompra", {7, kind_code(kind)}, rows);
  for (const Nota& n : notas) s.params("DspCompra", {n.cod}, json::array({compra_minima(n.cod, n.numnf)}));
  return s;
}

std::string l04_minima(Kind kind, int row, const std::string& numnf) {
  return "[C00]04[/C00][C01]" + std::to_string(kind_code(kind)) + "[/C01][C02]" + std::to_string(row) +
         "[/C02][C03]" + numnf +
         "[/C03][C04][/C04][C05][/C05][C06][/C06][C07][/C07][C08][/C08][C09][/C09][C10]0,00[/C10]"
         "[C11]0,00[/C11][C12]0,00[/C12][C13]0,00[/C13][C14]0,00[/C14][C15]0,00[/C15][C16]0,00[/C16]"
         "[C17]0,00[/C17][C18]0,00[/C18][C19]0,00[/C19][C20]0,00[/C20][C21]0,00[/C21][C22]0,00[/C22]"
         "[C23]1[/C23][C24]0[/C24][C25][/C25][C26][/C26][C99]26[/C99]";
}

std::string l05_vazia(Kind kind, int row) {
  return "[C00]05[/C00][C01]" + std::to_string(kind_code(kind)) + "[/C01][C02]" + std::to_string(row) +
         "[/C02][C03]2[/C03][C04][/C04][C05][/C05][C06][/C06][C07][/C07][C99]07[/C99]";
}

json item_minimo(int cod, int itemcompra) {
  json row = item(cod);
  for (auto& [name, value] : row.items()) value = nullptr;
  row.update({{"CDCOMPRA", cod}, {"CDEQUIPAMENTO", 801}, {"CDPRODUTO", 501}, {"CDPRODCONSUMO", 601}, {"ITEMCOMPRA", itemcompra}});
  return row;
}

std::string l06_minima(Kind kind, int row, int counter) {
  const char* codigo = kind == Kind::Equipamento ? "801" : kind == Kind::Produto ? "501" : "601";
  const char* tipo = kind == Kind::Equipamento ? "1" : kind == Kind::Produto ? "2" : "3";
  return "[C00]06[/C00][C01]" + std::to_string(kind_code(kind)) + "[/C01][C02]" + std::to_string(row) + "[/C02][C03]" +
         codigo + "[/C03][C04]" + std::to_string(counter) +
         "[/C04][C05][/C05][C06][/C06][C07]0,00[/C07][C08]0,00[/C08][C09]0,00[/C09][C10]0,00[/C10][C11]0,00[/C11]"
         "[C12]0,00[/C12][C13][/C13][C14][/C14][C15]" +
         tipo +
         "[/C15][C16][/C16][C17][/C17][C18]0,00[/C18][C19]0,00[/C19][C20]0,00[/C20][C21]0,00[/C21][C22]0,00[/C22]"
         "[C23][/C23][C24][/C24][C25]0,00[/C25][C26]0,00[/C26][C27][/C27][C28]0,00[/C28][C29]0,00[/C29][C30]0,00[/C30]"
         "[C31]0,00[/C31][C32]0,00[/C32][C33][/C33][C34]0,00[/C34][C35]0,00[/C35][C36]0,00[/C36][C37]0,00[/C37]"
         "[C38]0,00[/C38][C99]38[/C99]";
}

Outcome drive(Kind kind, const Snapshot& snapshot, int filtro) {
  Run run(snapshot);
  TStringList list;
  Outcome out;
  // Creates the kind's module, configures it as a step does and calls its driver.
  const auto call = [&]<class Module>(void (Module::*driver)(TStringList&, int)) {
    Module m(run.conexao);
    run.configure(m);
    try {
      (m.*driver)(list, filtro);
    } catch (const Error& e) {
      out.error = e.what();
    }
  };
  struct Insumo : TDTM_A_CompraInsumo {  // the inputs driver, given the filter it does not take
    using TDTM_A_CompraInsumo::TDTM_A_CompraInsumo;
    void Driver(TStringList& a, int) { L04_L05_L06_RegistroCompraInsumo(a); }
  };
  switch (kind) {
    case Kind::Equipamento: call(&TDTM_A_CompraEquipamento::L04_L05_L06_RegistroCompraEquipamento); break;
    case Kind::Produto: call(&TDTM_A_CompraProduto::L04_L05_L06_RegistroCompraProduto); break;
    case Kind::ProdConsumo: call(&TDTM_A_CompraProdConsumo::L04_L05_L06_RegistroCompraProdConsumo); break;
    case Kind::Insumo: call(&Insumo::Driver); break;
  }
  out.lines = lines_of(list);
  out.progress = run.progress;
  return out;
}

}  // namespace infofiscal::testing
