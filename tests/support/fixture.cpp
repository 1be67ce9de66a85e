#include "support/fixture.h"

#include "export/dtm_a_padrao.h"

namespace infofiscal::testing {

json registro_fiscal(const json& overrides) {
  // The declared fields of TabRegistroFiscal, taken from the module itself.
  Snapshot empty;
  SnapshotSource source(empty.document(), "vazio");
  TDTM_ConexaoDS conexao{source, TOBJ_InfoSistema_v11c()};
  TDTM_A_Padrao modulo(conexao);
  json row = json::object();
  for (const FieldDef& f : modulo.TabRegistroFiscal.Fields()) {
    const std::string name(f.name);
    if (f.cls == FieldClass::String) row[name] = name.rfind("REG", 0) == 0 ? "N" : "";
    else if (f.cls == FieldClass::Blob || f.cls == FieldClass::TimeStamp) row[name] = nullptr;
    else row[name] = 0;
  }
  row.update(overrides);
  return row;
}

Snapshot& Snapshot::params(const std::string& provider, const json& params, const json& rows) {
  doc_["responses"].push_back({{"provider", provider}, {"params", params}, {"rows", rows}});
  return *this;
}

Snapshot& Snapshot::request(const std::string& provider, const json& request, const json& rows) {
  doc_["responses"].push_back({{"provider", provider}, {"request", request}, {"rows", rows}});
  return *this;
}

Snapshot& Snapshot::error(const std::string& provider, const json& params, const std::string& message) {
  doc_["responses"].push_back({{"provider", provider}, {"params", params}, {"error", message}});
  return *this;
}

Snapshot& Snapshot::request_error(const std::string& provider, const json& request, const std::string& message) {
  doc_["responses"].push_back({{"provider", provider}, {"request", request}, {"error", message}});
  return *this;
}

Snapshot& Snapshot::registro(int key, const json& overrides) {
  json o = overrides;
  o["CDREGISTROFISCAL"] = key;
  return params("DspRegistroInfoFiscal", {key}, json::array({registro_fiscal(o)}));
}

const std::vector<std::string> kStepTexts = {
    "2.01-Registro: Informação do Registro Fiscal",
    "2.02-Registro: Informação da Empresa",
    "2.03-Registro: Informação do Contador",
    "2.04-Registro: Informação de Compra de Equipamentos",
    "2.05-Registro: Informação de Compra de Produtos",
    "2.06-Registro: Informação de Compra de Produtos de Consumo",
    "2.07-Registro: Informação de Compra de Insumos",
    "2.22-Registro: Nota Fiscal Inutilizada",
    "2.08-Registro: Informação Nota Fiscal de Venda de Equipamentos",
    "2.09-Registro: Informação Nota Fiscal de Venda de Produtos",
    "2.10-Registro: Informação Nota Fiscal de Transferência de Produtos",
    "2.11-Registro: Informação Nota Fiscal de Devolução de Compra de Produtos",
    "2.12-Registro: Informação Nota Fiscal de Devolução de Venda de Produtos",
    "2.14-Registro: Lista de Equipamentos",
    "2.15-Registro: Lista de Produtos",
    "2.16-Registro: Lista de Insumos",
    "2.17-Registro: Lista de Produtos de Consumo",
    "2.18-Registro: Lista de Unidades",
    "2.19-Registro: Lista de Clientes",
    "2.20-Registro: Lista de Fornecedores",
    "2.21-Registro: Natureza da Operação",
    "2.13-Registro: Informação de Inventário - Final do Mes",
    "2.13-Registro: Informação de Inventário - Final do Ano",
};

std::vector<std::string> banner() {
  return {"=============================", "RECUPERANDO INFORMAÇÕES      ", "=============================",
          "1-Gerar Arquivo de Informações: Início"};
}

std::vector<std::string> lines_of(const TStringList& list) {
  std::vector<std::string> out;
  for (std::size_t i = 0; i < list.Count(); ++i) out.emplace_back(list[i]);
  return out;
}

}  // namespace infofiscal::testing
