#include "cli/opcoes.h"

#include "host/client_dataset.h"

namespace infofiscal {

void adicionar_opcoes_registro(CLI::App& app, OpcoesRegistro& o) {
  app.add_option("--fonte", o.fonte, "Fonte de dados: sqlite:ARQUIVO, postgresql:CONEXAO, firebird:BANCO, snapshot:ARQUIVO.json")
      ->required();
  app.add_option("--registro", o.registro, "Código do registro fiscal")->required()->check(CLI::NonNegativeNumber);
  app.add_option("--tipo", o.tipo, "Tipo de arquivo: 0 indefinido, 1 SINTEGRA, 2 SPED EFD, 3 SPED Contribuições")
      ->required()
      ->check(CLI::IsMember({0, 1, 2, 3}));
  app.add_option("--base", o.base, "Pasta base da aplicação (contém Arquivos/InfoFiscal)")->required();
  app.add_option("--mes", o.mes, "Mês do nome sugerido (padrão: o do registro fiscal)")->check(CLI::Range(1, 12));
  app.add_option("--ano", o.ano, "Ano do nome sugerido (padrão: o do registro fiscal)")->check(CLI::Range(1, 9999));
  app.add_option("--empresa", o.empresa, "Empresa (padrão: a do registro fiscal)")->check(CLI::NonNegativeNumber);
  app.add_option("--compra", o.compra, "Exporta só esta compra (0: todas)")->check(CLI::NonNegativeNumber);
  app.add_option("--venda", o.venda, "Exporta só esta nota de saída (0: todas)")->check(CLI::NonNegativeNumber);
}

std::string traduzir_erro_de_uso(const CLI::ParseError& e) {
  const std::string detalhe = e.what();
  if (dynamic_cast<const CLI::RequiredError*>(&e)) return "opção obrigatória ausente (" + detalhe + ")";
  if (dynamic_cast<const CLI::ExtrasError*>(&e)) return "argumento desconhecido (" + detalhe + ")";
  if (dynamic_cast<const CLI::ValidationError*>(&e) || dynamic_cast<const CLI::ConversionError*>(&e))
    return "valor inválido (" + detalhe + ")";
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&e)) return "número de valores errado (" + detalhe + ")";
  return "uso incorreto (" + detalhe + ")";
}

std::int64_t campo_registro(RecordSource& fonte, int registro, std::string_view campo) {
  const FieldDef field{campo, FieldClass::Integer};
  ClientDataSet tab("TabRegistroFiscal", "DspRegistroInfoFiscal", {field}, 1);
  tab.SetRemoteServer(&fonte);
  tab.SetParam(0, std::int64_t{registro});
  tab.Open();
  return tab.FieldByName(campo).AsInteger();
}

TOBJ_InfoSistema_v11c info_sistema(RecordSource& fonte, const OpcoesRegistro& o) {
  return TOBJ_InfoSistema_v11c([&fonte, empresa = o.empresa, registro = o.registro] {
    return empresa ? *empresa : static_cast<int>(campo_registro(fonte, registro, "CDEMPRESA"));
  });
}

int mes_registro(RecordSource& fonte, const OpcoesRegistro& o) {
  return o.mes ? *o.mes : static_cast<int>(campo_registro(fonte, o.registro, "CDMES"));
}

int ano_registro(RecordSource& fonte, const OpcoesRegistro& o) {
  return o.ano ? *o.ano : static_cast<int>(campo_registro(fonte, o.registro, "ANO"));
}

}  // namespace infofiscal
