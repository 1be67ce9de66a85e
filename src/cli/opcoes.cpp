#include "cli/opcoes.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "cli/terminal.h"
#include "host/client_dataset.h"
#include "base/error.h"
#include "base/system.h"
#include "fiscal/efd_escrita.h"

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

// The first word of CLI11's message that names an option ("--registro"), without the colon
// that may follow it.
std::string opcao_da_mensagem(const std::string& mensagem) {
  const auto inicio = mensagem.find("-");
  if (inicio == std::string::npos) return {};
  const auto fim = mensagem.find_first_of(" :,=", inicio);
  return mensagem.substr(inicio, fim == std::string::npos ? std::string::npos : fim - inicio);
}

// The option named `nome` of the command that ran (or of `app`), or null.
const CLI::Option* opcao_chamada(const CLI::App& app, const std::string& nome) {
  for (const CLI::App* comando : app.get_subcommands())
    if (const CLI::Option* opcao = comando->get_option_no_throw(nome)) return opcao;
  return app.get_option_no_throw(nome);
}

// A value CLI11 could not convert: "Could not convert: --opcao = valor".
std::string valor_nao_convertido(const std::string& detalhe, const CLI::App& app) {
  const std::string nome = opcao_da_mensagem(detalhe);
  const auto igual = detalhe.find(" = ");
  const std::string valor = igual == std::string::npos ? "" : detalhe.substr(igual + 3);
  const CLI::Option* opcao = opcao_chamada(app, nome);
  if (opcao != nullptr && opcao->get_expected_max() == 0) return "a opção " + nome + " não leva valor ('" + valor + "')";
  return "valor inválido em " + nome + ": '" + valor + "'";
}

// The help's column and width: 78, so that --ajuda-completa, which indents each command's
// options by two, stays within 80 columns.
constexpr int kColunaDaAjuda = 28, kLarguraDaAjuda = 78;

// An option or a command in the help: its name, then its text from the help column on, wrapped.
// CLI11's own counts bytes, which misaligns a name with an accent, and never wraps.
std::string linha_de_ajuda(const std::string& nome, const std::string& texto) {
  std::string saida = "  " + nome;
  const int largura = colunas_de(saida);
  if (largura >= kColunaDaAjuda)
    saida += "\n" + std::string(kColunaDaAjuda, ' ');
  else
    saida += std::string(static_cast<std::size_t>(kColunaDaAjuda - largura), ' ');
  return saida + quebrar(texto, kLarguraDaAjuda - kColunaDaAjuda, std::string(kColunaDaAjuda, ' ')) + "\n";
}

// The help's frame in Portuguese. CLI11 prints the labels below where its own formatter has
// English words; the groups are named by the options and commands themselves, apart from the
// default group of options, renamed here.
class FormatadorPortugues : public CLI::Formatter {
 public:
  FormatadorPortugues() {
    label("Usage", "Uso");
    label("OPTIONS", "OPÇÕES");
    label("SUBCOMMAND", "COMANDO");
    label("SUBCOMMANDS", "COMANDOS");
    label("REQUIRED", "(obrigatória)");
    label("Positionals", "Argumentos");
    label("Env", "variável");
    label("Needs", "exige");
    label("Excludes", "exclui");
    // CLI11's names of the value types, for an option that does not name its value itself.
    label("TEXT", "TEXTO");
    label("INT", "N");
    label("UINT", "N");
    label("FLOAT", "NÚMERO");
    label("BOOLEAN", "SIM/NÃO");
    column_width(kColunaDaAjuda);
  }

  std::string make_option(const CLI::Option* opt, bool is_positional) const override {
    return linha_de_ajuda(make_option_name(opt, is_positional) + make_option_opts(opt), make_option_desc(opt));
  }

  std::string make_subcommand(const CLI::App* sub) const override {
    return linha_de_ajuda(sub->get_display_name(true), sub->get_description());
  }

  std::string make_group(std::string group, bool is_positional, std::vector<const CLI::Option*> opts) const override {
    return CLI::Formatter::make_group(group == "Options" ? "Opções" : group, is_positional, std::move(opts));
  }
};

}  // namespace

const char* versao() { return INFOFISCAL_VERSAO; }

void em_portugues(CLI::App& app, const std::string& programa) {
  app.name(programa);
  app.formatter(std::make_shared<FormatadorPortugues>());
  app.group("Comandos");
  app.set_help_flag("-h,--help", "Mostra esta ajuda e sai");
  app.set_version_flag("--version", programa + " " + versao(), "Mostra a versão e sai");
}

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
      "");
}

CLI::Validator numero_positivo() {
  return CLI::Validator(
      [](std::string& texto) -> std::string {
        double v = 0;
        const auto [fim, ec] = std::from_chars(texto.data(), texto.data() + texto.size(), v);
        if (texto.empty() || ec != std::errc() || fim != texto.data() + texto.size()) return "'" + texto + "' não é um número";
        if (!(v > 0)) return "'" + texto + "' não é maior que zero";
        return {};
      },
      "");
}

CLI::Validator um_de(const std::vector<std::string>& aceitos) {
  const std::string lista = fmt::format("{}", fmt::join(aceitos, ", "));
  return CLI::Validator(
      [=](std::string& texto) -> std::string {
        if (std::find(aceitos.begin(), aceitos.end(), texto) != aceitos.end()) return {};
        return "'" + texto + "' não é um dos valores aceitos (" + lista + ")";
      },
      "");
}

void adicionar_opcoes_efd(CLI::App& app, OpcoesEfdTexto& o) {
  app.add_option("--saldo-credor-anterior", o.saldo_credor_anterior,
                 "SPED EFD: saldo credor do ICMS do mês anterior (E110 VL_SLD_CREDOR_ANT), como 1.234,56")
      ->type_name("VALOR");
  app.add_option("--efd-anterior", o.efd_anterior,
                 "SPED EFD: arquivo EFD do mês anterior, da mesma empresa, de onde vem o saldo credor a transportar")
      ->type_name("ARQUIVO");
  app.add_option("--codigo-receita", o.codigo_receita, "SPED EFD: código de receita do ICMS no estado (E116 COD_REC)")
      ->type_name("CÓDIGO");
  app.add_option("--vencimento", o.vencimento, "SPED EFD: vencimento do ICMS a recolher (E116 DT_VCTO)")
      ->type_name("DD/MM/AAAA");
}

namespace {

// "1.234,56" -> 123456 hundredths; nullopt when it is not a non-negative amount of at most two
// decimals. Dots may group the integer part by thousands (the first group of one to three
// digits, every other of three); the rest is a numeric field as the EFD reads it.
std::optional<std::int64_t> valor_brasileiro(std::string_view s) {
  const std::string_view inteira = s.substr(0, s.find(','));
  if (const std::size_t ponto = inteira.find('.'); ponto != std::string_view::npos) {
    if (ponto == 0 || ponto > 3) return std::nullopt;
    for (std::size_t p = ponto, proximo; p != std::string_view::npos; p = proximo) {
      proximo = inteira.find('.', p + 1);
      if (std::min(proximo, inteira.size()) - p - 1 != 3) return std::nullopt;
    }
  }
  std::string sem_pontos(inteira);
  std::erase(sem_pontos, '.');
  sem_pontos += s.substr(inteira.size());
  std::int64_t v = 0;
  return efd::ler_numero(sem_pontos, 2, v) ? std::optional(v) : std::nullopt;
}

// "31/03/2024" -> 20240331; nullopt when it is not a real day.
std::optional<std::int32_t> data_brasileira(std::string_view s) {
  if (s.size() != 10 || s[2] != '/' || s[5] != '/') return std::nullopt;
  const efd::Dia d = efd::ler_data(std::string(s.substr(0, 2)) + std::string(s.substr(3, 2)) + std::string(s.substr(6)));
  return d ? std::optional<std::int32_t>(d) : std::nullopt;
}

}  // namespace

OpcoesEfd opcoes_efd(const OpcoesEfdTexto& o) {
  OpcoesEfd efd;
  if (!o.saldo_credor_anterior.empty() && !o.efd_anterior.empty())
    throw ErroDeUso("--saldo-credor-anterior e --efd-anterior não se usam juntas: o saldo vem de um ou do outro");
  if (!o.saldo_credor_anterior.empty()) {
    const auto v = valor_brasileiro(o.saldo_credor_anterior);
    if (!v)
      throw ErroDeUso(fmt::format("--saldo-credor-anterior '{}' não é um valor como 1.234,56", o.saldo_credor_anterior));
    efd.saldo_credor_anterior = *v;
  }
  if (!o.vencimento.empty()) {
    const auto d = data_brasileira(o.vencimento);
    if (!d) throw ErroDeUso(fmt::format("--vencimento '{}' não é uma data DD/MM/AAAA", o.vencimento));
    efd.vencimento = *d;
  }
  efd.efd_anterior = o.efd_anterior;
  efd.codigo_receita = o.codigo_receita;
  return efd;
}

void adicionar_opcoes_registro(CLI::App& app, OpcoesRegistro& o) {
  app.add_option("--fonte", o.fonte,
                 "De onde vêm os dados do ERP: sqlite:ARQUIVO, postgresql:CONEXÃO, firebird:BANCO ou snapshot:ARQUIVO.json")
      ->type_name("ENDEREÇO")
      ->required();
  app.add_option("--registro", o.registro, "Código do registro fiscal a exportar")
      ->type_name("N")
      ->required()
      ->check(inteiro_entre(0, kMaxInt));
  app.add_option("--tipo", o.tipo,
                 "Arquivo fiscal a gerar: 1 SINTEGRA, 2 SPED EFD ICMS/IPI; com 0 (indefinido) e 3 (SPED Contribuições) "
                 "só o arquivo de informações é gravado")
      ->type_name("{0,1,2,3}")
      ->required()
      ->check(um_de({"0", "1", "2", "3"}));
  app.add_option("--base", o.base,
                 "Pasta base da aplicação: SpedInformacao.txt é gravado em PASTA/Arquivos/InfoFiscal, que já deve existir")
      ->type_name("PASTA")
      ->required()
      ->check(pasta_nao_vazia());
  app.add_option("--mes", o.mes,
                 "Mês (1 a 12) no nome sugerido do arquivo fiscal; só dá o nome, não escolhe os dados "
                 "(padrão: o do registro fiscal)")
      ->type_name("MÊS")
      ->check(inteiro_entre(1, 12));
  app.add_option("--ano", o.ano,
                 "Ano no nome sugerido do arquivo fiscal; só dá o nome, não escolhe os dados (padrão: o do registro fiscal)")
      ->type_name("ANO")
      ->check(inteiro_entre(1, 9999));
  app.add_option("--empresa", o.empresa, "Empresa em que o usuário trabalha (padrão: a do registro fiscal)")
      ->type_name("N")
      ->check(inteiro_entre(0, kMaxInt));
  app.add_option("--compra", o.compra,
                 "Exporta uma só compra: das de equipamentos, a de código N; das de produtos e de produtos de consumo, "
                 "as de nota número N. As compras de insumos e as saídas não são filtradas (0: todas)")
      ->type_name("N")
      ->check(inteiro_entre(0, kMaxInt));
  app.add_option("--venda", o.venda,
                 "Exporta, das vendas de equipamentos, só a nota de código N; as outras saídas (vendas de produtos, "
                 "transferências, devoluções) e as compras não são filtradas (0: todas)")
      ->type_name("N")
      ->check(inteiro_entre(0, kMaxInt));
  app.add_option("--catalogo", o.catalogo,
                 "Catálogo de provedores das fontes SQL (padrão: o que INFOFISCAL_CATALOGO indica, ou o instalado "
                 "com o programa)")
      ->type_name("ARQUIVO");
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
  if (dynamic_cast<const CLI::ConversionError*>(&e)) return valor_nao_convertido(detalhe, app);
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&e)) {
    if (const CLI::Option* repetida = opcao_repetida(app))
      return "opção repetida: " + repetida->get_name() + " (dê cada opção uma vez só)";
    return "falta o valor de " + opcao_da_mensagem(detalhe);
  }
  // CLI11's other errors come from settings these commands do not use.
  return "uso incorreto da linha de comando";
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

namespace fs = std::filesystem;

bool legivel(const std::string& caminho) {
  std::error_code ec;
  return fs::is_regular_file(path_of(caminho), ec) && std::ifstream(path_of(caminho)).good();
}

// The catalog a user named: it must be there.
std::string catalogo_nomeado(const std::string& caminho, const char* por) {
  if (legivel(caminho)) return caminho;
  throw Error(fmt::format("O catálogo de provedores '{}' ({}) não existe ou não pode ser lido", caminho, por));
}

// PREFIX/share/infofiscal/providers.sql for the program PREFIX/bin/PROGRAM: the installed
// catalog, at the path from the programs' folder to the data's that CMake's install uses.
std::string instalado_ao_lado(const std::string& programa) {
  const fs::path bin = path_of(programa).parent_path();
  return utf8_of((bin / INFOFISCAL_DADOS_AO_LADO / "providers.sql").lexically_normal());
}

// Whether `programa` lies inside the folder `pasta`.
bool dentro_de(const std::string& programa, const std::string& pasta) {
  std::error_code ec;
  const fs::path dentro =
      fs::weakly_canonical(path_of(programa), ec).lexically_relative(fs::weakly_canonical(path_of(pasta), ec));
  return !ec && !dentro.empty() && *dentro.begin() != "..";
}

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

std::string localizar_catalogo(const LugaresDoCatalogo& lugares) {
  if (!lugares.opcao.empty()) return catalogo_nomeado(lugares.opcao, "--catalogo");
  if (lugares.variavel) return catalogo_nomeado(*lugares.variavel, "INFOFISCAL_CATALOGO");
  std::vector<std::string> procurados;
  if (!lugares.programa.empty()) {
    const std::string instalado = instalado_ao_lado(lugares.programa);
    if (legivel(instalado)) return instalado;
    procurados.push_back("'" + instalado + "' (ao lado do programa)");
  }
  if (!lugares.arvore.empty()) {
    if (legivel(lugares.arvore)) return lugares.arvore;
    procurados.push_back("'" + lugares.arvore + "' (árvore de fontes)");
  }
  if (procurados.empty()) procurados.push_back("lugar nenhum (o caminho do programa não pôde ser lido)");
  throw Error(fmt::format("Catálogo de provedores não encontrado: procurado em {} (--catalogo não dado, "
                          "INFOFISCAL_CATALOGO não definida). Indique-o com --catalogo ARQUIVO ou INFOFISCAL_CATALOGO",
                          fmt::join(procurados, " e em ")));
}

LugaresDoCatalogo lugares_do_catalogo(const std::string& opcao) {
  LugaresDoCatalogo lugares{opcao, std::nullopt, executable_path(), {}};
  if (auto variavel = environment_variable("INFOFISCAL_CATALOGO"); variavel && !variavel->empty())
    lugares.variavel = std::move(variavel);
  if (dentro_de(lugares.programa, INFOFISCAL_ARVORE_BUILD)) lugares.arvore = INFOFISCAL_ARVORE_FONTES "/db/providers.sql";
  return lugares;
}

std::unique_ptr<RecordSource> abrir_fonte(const OpcoesRegistro& o, SourceOptions opcoes) {
  const LugaresDoCatalogo lugares = lugares_do_catalogo(o.catalogo);
  // A catalog named is checked even for a source that reads none: a wrong name is not ignored.
  const bool nomeado = !lugares.opcao.empty() || lugares.variavel;
  if (reads_provider_catalog(o.fonte) || nomeado) opcoes.catalog_path = localizar_catalogo(lugares);
  return open_record_source(o.fonte, opcoes);
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
