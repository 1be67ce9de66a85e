#include "cli/opcoes.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "host/client_dataset.h"
#include "base/error.h"

namespace infofiscal {

namespace {

constexpr std::int64_t kMaxInt = std::numeric_limits<std::int32_t>::max();

// The required options not given: of the command that ran, or of `app` itself when it has no
// commands (the launcher).
std::string ausentes(const CLI::App& app) {
  const auto comandos = app.get_subcommands();
  std::vector<const CLI::App*> onde(comandos.begin(), comandos.end());
  if (onde.empty()) onde.push_back(&app);
  std::vector<std::string> nomes;
  for (const CLI::App* comando : onde)
    for (const CLI::Option* opcao : comando->get_options())
      if (opcao->get_required() && opcao->count() == 0) nomes.push_back(opcao->get_name());
  return fmt::format("{}", fmt::join(nomes, ", "));
}

bool tem_comandos(const CLI::App& app) {
  return !app.get_subcommands([](const CLI::App*) { return true; }).empty();
}

// What to say when no command ran: a word that is not a command, or no command at all.
std::string sem_comando(const CLI::App& app) {
  const auto dados = app.remaining();
  if (!dados.empty()) return "comando desconhecido: " + dados.front() + " (use exportar, converter ou validar)";
  return "opção obrigatória ausente: o comando (exportar, converter ou validar)";
}

// The first option of `app`, or of the command that ran, given more than once.
const CLI::Option* opcao_repetida(const CLI::App& app) {
  std::vector<const CLI::App*> onde{&app};
  for (const CLI::App* comando : app.get_subcommands()) onde.push_back(comando);
  for (const CLI::App* comando : onde)
    for (const CLI::Option* opcao : comando->get_options())
      if (opcao->count() > 1) return opcao;
  return nullptr;
}

// An empty folder would silently be the current one.
CLI::Validator pasta_nao_vazia() {
  return CLI::Validator(
      [](std::string& texto) -> std::string { return texto.empty() ? "a pasta não pode ser vazia" : ""; }, "PASTA");
}

// The text of CLI11's message after "<prefix>: ", or the whole message.
std::string depois_de_dois_pontos(const std::string& mensagem) {
  const auto p = mensagem.find(": ");
  return p == std::string::npos ? mensagem : mensagem.substr(p + 2);
}

}  // namespace

CLI::Validator inteiro_entre(std::int64_t minimo, std::int64_t maximo) {
  return CLI::Validator(
      [=](std::string& texto) -> std::string {
        std::int64_t v = 0;
        const auto [fim, ec] = std::from_chars(texto.data(), texto.data() + texto.size(), v);
        if (texto.empty() || ec != std::errc() || fim != texto.data() + texto.size())
          return "'" + texto + "' não é um número inteiro";
        if (v < minimo || v > maximo) return fmt::format("'{}' fora da faixa de {} a {}", texto, minimo, maximo);
        return {};
      },
      fmt::format("{} a {}", minimo, maximo));
}

CLI::Validator um_de(const std::vector<std::string>& aceitos) {
  const std::string lista = fmt::format("{}", fmt::join(aceitos, ", "));
  return CLI::Validator(
      [=](std::string& texto) -> std::string {
        if (std::find(aceitos.begin(), aceitos.end(), texto) != aceitos.end()) return {};
        return "'" + texto + "' não é um dos valores aceitos (" + lista + ")";
      },
      "{" + lista + "}");
}

void adicionar_opcoes_registro(CLI::App& app, OpcoesRegistro& o) {
  app.add_option("--fonte", o.fonte, "Fonte de dados: sqlite:ARQUIVO, postgresql:CONEXAO, firebird:BANCO, snapshot:ARQUIVO.json")
      ->required();
  app.add_option("--registro", o.registro, "Código do registro fiscal")->required()->check(inteiro_entre(0, kMaxInt));
  app.add_option("--tipo", o.tipo, "Tipo de arquivo: 0 indefinido, 1 SINTEGRA, 2 SPED EFD, 3 SPED Contribuições")
      ->required()
      ->check(um_de({"0", "1", "2", "3"}));
  app.add_option("--base", o.base, "Pasta base da aplicação (contém Arquivos/InfoFiscal)")
      ->required()
      ->check(pasta_nao_vazia());
  app.add_option("--mes", o.mes, "Mês do nome sugerido (padrão: o do registro fiscal)")->check(inteiro_entre(1, 12));
  app.add_option("--ano", o.ano, "Ano do nome sugerido (padrão: o do registro fiscal)")->check(inteiro_entre(1, 9999));
  app.add_option("--empresa", o.empresa, "Empresa (padrão: a do registro fiscal)")->check(inteiro_entre(0, kMaxInt));
  app.add_option("--compra", o.compra, "Exporta só esta compra (0: todas)")->check(inteiro_entre(0, kMaxInt));
  app.add_option("--venda", o.venda, "Exporta só esta nota de saída (0: todas)")->check(inteiro_entre(0, kMaxInt));
}

std::string traduzir_erro_de_uso(const CLI::ParseError& e, const CLI::App& app) {
  const std::string detalhe = e.what();
  if (dynamic_cast<const CLI::RequiredError*>(&e))
    return tem_comandos(app) && app.get_subcommands().empty() ? sem_comando(app)
                                                              : "opção obrigatória ausente: " + ausentes(app);
  if (dynamic_cast<const CLI::ExtrasError*>(&e)) {
    const auto extras = app.remaining(true);
    return "argumento desconhecido: " +
           (extras.empty() ? depois_de_dois_pontos(detalhe) : fmt::format("{}", fmt::join(extras, " ")));
  }
  if (dynamic_cast<const CLI::ValidationError*>(&e)) return "valor inválido em " + detalhe;
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&e)) {
    if (const CLI::Option* repetida = opcao_repetida(app))
      return "opção repetida: " + repetida->get_name() + " (dê cada opção uma vez só)";
    return "falta o valor de " + detalhe.substr(0, detalhe.find(':'));
  }
  return "uso incorreto (" + detalhe + ")";
}

void exigir_opcoes_unicas(const CLI::App& app) {
  if (const CLI::Option* repetida = opcao_repetida(app))
    throw CLI::ArgumentMismatch(repetida->get_name(), 1, repetida->count());
}

std::vector<NamedFile> entradas_da_fonte(const std::string& fonte) {
  const char* nome = fonte.rfind("snapshot:", 0) == 0 ? "o snapshot da fonte" : "o banco de dados da fonte";
  std::vector<NamedFile> entradas;
  for (std::string& arquivo : files_of_address(fonte)) entradas.push_back({std::move(arquivo), nome});
  return entradas;
}

void conferir_destinos(std::span<const NamedFile> destinos, std::span<const NamedFile> entradas) {
  if (const auto conflito = overwrite_conflict(destinos, entradas)) throw ErroDeUso(*conflito);
  for (const NamedFile& destino : destinos) require_writable_target(destino.path);
}

namespace {

// The fiscal register `registro`, read through `fonte` into `tab`.
void abre_registro(ClientDataSet& tab, RecordSource& fonte, int registro) {
  tab.SetRemoteServer(&fonte);
  tab.Reopen({registro});
}

}  // namespace

std::int64_t campo_registro(RecordSource& fonte, int registro, std::string_view campo) {
  ClientDataSet tab("TabRegistroFiscal", "DspRegistroInfoFiscal", {{campo, FieldClass::Integer}}, 1);
  abre_registro(tab, fonte, registro);
  return tab.FieldByName(campo).AsInteger();
}

void exigir_registro(RecordSource& fonte, int registro) {
  // Declared as text: a month of the wrong type is line 01's to report.
  ClientDataSet tab("TabRegistroInfoFiscal", "DspRegistroInfoFiscal", {{"CDMES", FieldClass::String}}, 1);
  abre_registro(tab, fonte, registro);
  if (tab.RecordCount() == 0) throw Error(fmt::format("O registro fiscal {} não existe na fonte de dados", registro));
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

namespace {

// A field of the register for a warning; nothing when it does not read (see avisos_do_registro).
std::optional<std::int64_t> campo_para_aviso(RecordSource& fonte, int registro, std::string_view campo) {
  try {
    return campo_registro(fonte, registro, campo);
  } catch (const Error&) {
    return std::nullopt;
  }
}

// Whether the source has the company `empresa`; nothing when that does not read.
std::optional<bool> fonte_tem_empresa(RecordSource& fonte, int empresa) {
  ClientDataSet tab("TabEmpresa", "DspEmpresa", {{"CDEMPRESA", FieldClass::Smallint}}, 1);
  try {
    tab.SetRemoteServer(&fonte);
    tab.Reopen({empresa});
    return tab.RecordCount() > 0;
  } catch (const Error&) {
    return std::nullopt;
  }
}

}  // namespace

std::vector<std::string> avisos_do_registro(RecordSource& fonte, const OpcoesRegistro& o) {
  std::vector<std::string> avisos;
  if (o.empresa) {
    const auto do_registro = campo_para_aviso(fonte, o.registro, "CDEMPRESA");
    if (do_registro && *do_registro != 0 && *do_registro != *o.empresa)
      avisos.push_back(fmt::format("--empresa {} não é a empresa do registro fiscal {} (CDEMPRESA {})", *o.empresa,
                                   o.registro, *do_registro));
    if (fonte_tem_empresa(fonte, *o.empresa) == false)
      avisos.push_back(fmt::format("--empresa {}: a fonte de dados não tem essa empresa", *o.empresa));
  }
  const auto tipo = campo_para_aviso(fonte, o.registro, "CDTIPOREGISTROFISCAL");
  if (tipo && *tipo != 0 && *tipo != o.tipo)
    avisos.push_back(fmt::format("--tipo {} não é o tipo do registro fiscal {} (CDTIPOREGISTROFISCAL {})", o.tipo,
                                 o.registro, *tipo));
  return avisos;
}

std::vector<std::string> avisos_dos_filtros(const TOBJ_ExportaInfoFiscal& execucao, const OpcoesRegistro& o) {
  std::vector<std::string> avisos;
  if (o.compra != 0 && execucao.LinhasDasCompras() == 0)
    avisos.push_back(fmt::format("--compra {} não corresponde a nenhuma nota exportada de compra de equipamentos, "
                                 "produtos ou produtos de consumo",
                                 o.compra));
  if (o.venda != 0 && execucao.LinhasDasVendas() == 0)
    avisos.push_back(
        fmt::format("--venda {} não corresponde a nenhuma nota exportada de venda de equipamentos", o.venda));
  return avisos;
}

}  // namespace infofiscal
