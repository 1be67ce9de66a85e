// infofiscal: export, convert and validate fiscal files from a shell or a scheduler.
//
// stdout carries only the info lines of a run; stderr the progress and, on failure, the error
// message. Exit status: 0 success, 1 the run failed, 2 a usage error.
#include <unistd.h>

#include <charconv>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "cli/progresso.h"
#include "export/arquivo_texto.h"
#include "export/controle_exportacao.h"
#include "fiscal/efd.h"
#include "fiscal/sintegra.h"
#include "host/arquivo_fiscal.h"
#include "host/error.h"
#include "host/sources/recording_source.h"

namespace infofiscal {
namespace {

struct OpcoesExportar {
  std::string fonte, base, arquivo_fiscal, gravar_snapshot, progresso = "auto";
  int registro = 0, tipo = 0, compra = 0, venda = 0;
  std::optional<int> mes, ano, empresa;
  bool somente_informacao = false;
};

// A mistake in how the command was called: exit status 2.
class ErroDeUso : public Error {
 public:
  using Error::Error;
};

// CLI11's own checks speak English; these say what is wrong in Portuguese, naming the value.
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

constexpr std::int64_t kMaxInt = std::numeric_limits<std::int32_t>::max();

// The options a command requires that were not given, or the command itself.
std::string ausentes(const CLI::App& app) {
  std::vector<std::string> nomes;
  for (const CLI::App* comando : app.get_subcommands())
    for (const CLI::Option* opcao : comando->get_options())
      if (opcao->get_required() && opcao->count() == 0) nomes.push_back(opcao->get_name());
  return fmt::format("{}", fmt::join(nomes, ", "));
}

// What to say when no command ran: a word that is not a command, or no command at all.
std::string sem_comando(const CLI::App& app) {
  const auto dados = app.remaining();
  if (!dados.empty()) return "comando desconhecido: " + dados.front() + " (use exportar, converter ou validar)";
  return "opção obrigatória ausente: o comando (exportar, converter ou validar)";
}

// The text of CLI11's message after "<prefix>: ", or the whole message.
std::string depois_de_dois_pontos(const std::string& mensagem) {
  const auto p = mensagem.find(": ");
  return p == std::string::npos ? mensagem : mensagem.substr(p + 2);
}

std::string traduzir_erro_de_uso(const CLI::ParseError& e, const CLI::App& app) {
  const std::string detalhe = e.what();
  if (dynamic_cast<const CLI::RequiredError*>(&e))
    return app.get_subcommands().empty() ? sem_comando(app) : "opção obrigatória ausente: " + ausentes(app);
  if (dynamic_cast<const CLI::ExtrasError*>(&e)) {
    const auto extras = app.remaining(true);
    return "argumento desconhecido: " + (extras.empty() ? depois_de_dois_pontos(detalhe) : fmt::format("{}", fmt::join(extras, " ")));
  }
  if (dynamic_cast<const CLI::ValidationError*>(&e)) return "valor inválido em " + detalhe;
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&e))
    return "falta o valor de " + detalhe.substr(0, detalhe.find(':'));
  return "uso incorreto (" + detalhe + ")";
}

void info_line(const std::string& line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

// One field of the fiscal-register record, read only when a default needs it.
std::int64_t campo_registro(RecordSource& fonte, int registro, std::string_view campo) {
  const FieldDef field{campo, FieldClass::Integer};
  ClientDataSet tab("TabRegistroFiscal", "DspRegistroInfoFiscal", {field}, 1);
  tab.SetRemoteServer(&fonte);
  tab.SetParam(0, std::int64_t{registro});
  tab.Open();
  return tab.FieldByName(campo).AsInteger();
}

int exportar(const OpcoesExportar& o) {
  if (o.fonte.rfind("snapshot:", 0) == 0 && access(o.fonte.c_str() + 9, R_OK) != 0)
    throw ErroDeUso("o snapshot '" + o.fonte.substr(9) + "' não existe ou não pode ser lido");
  if (!o.gravar_snapshot.empty()) exigir_pasta_de(o.gravar_snapshot);
  const auto live = open_record_source(o.fonte);
  std::unique_ptr<RecordingSource> gravador;
  RecordSource* fonte = live.get();
  if (!o.gravar_snapshot.empty()) fonte = (gravador = std::make_unique<RecordingSource>(*live)).get();

  TDTM_ConexaoDS conexao{*fonte, TOBJ_InfoSistema_v11c([&] {
                           return o.empresa ? *o.empresa : static_cast<int>(campo_registro(*fonte, o.registro, "CDEMPRESA"));
                         })};
  ControleExportacao controle(conexao);
  Progresso barra(o.progresso);
  controle.LinhaInfo = [&](const std::string& line) {
    barra.Limpar();
    info_line(line);
  };
  controle.Progresso = [&](int posicao, int maximo) { barra.Mostrar(posicao, maximo); };
  controle.oExportaInfoFiscal.CodTipoRegistroFiscal(static_cast<TRegistroFiscal>(o.tipo));
  controle.oExportaInfoFiscal.CodRegistroFiscal(o.registro);

  const auto salvar_snapshot = [&] {
    if (gravador) gravador->Save(o.gravar_snapshot);
  };
  std::string texto;
  try {
    texto = controle.GerarInformacao(o.base, o.compra, o.venda);
  } catch (...) {
    salvar_snapshot();
    throw;
  }
  if (!o.somente_informacao && (o.tipo == 1 || o.tipo == 2)) {
    std::string nome = o.arquivo_fiscal;
    if (nome.empty()) {
      const int mes = o.mes ? *o.mes : static_cast<int>(campo_registro(*fonte, o.registro, "CDMES"));
      const int ano = o.ano ? *o.ano : static_cast<int>(campo_registro(*fonte, o.registro, "ANO"));
      nome = ControleExportacao::NomeSugerido(static_cast<TRegistroFiscal>(o.tipo), mes, ano);
    }
    controle.SalvarArquivoFiscal_A(nome, texto);
  }
  salvar_snapshot();
  barra.Limpar();
  return 0;
}

std::string ler_arquivo(const std::string& path) {
  const auto falha = [&](int erro) { return Error("Não foi possível ler o arquivo '" + path + "': " + motivo_do_sistema(erro)); };
  std::ifstream in(path, std::ios::binary);
  if (!in) throw falha(errno);
  // A folder opens like a file and reads as nothing.
  if (std::filesystem::is_directory(path)) throw falha(EISDIR);
  std::ostringstream text;
  text << in.rdbuf();
  if (in.bad()) throw falha(EIO);
  return text.str();
}

int converter(int tipo, const std::string& informacao, const std::string& saida, const std::string& progresso) {
  const std::string texto = windows1252_to_utf8(ler_arquivo(informacao));
  Progresso barra(progresso);
  TOBJ_ArquivoFiscal conversor;
  conversor.LinhaInfo = [&](const std::string& line) {
    barra.Limpar();
    info_line(line);
  };
  conversor.Progresso = [&](int posicao, int maximo) { barra.Mostrar(posicao, maximo); };
  if (tipo == 1)
    conversor.Exec_Sintegra(saida, texto);
  else
    conversor.Exec_SPED_Fiscal_EFD(saida, texto, TRegFiscalVersao::v1);
  barra.Limpar();
  return 0;
}

int validar(int tipo, const std::string& arquivo) {
  const std::string bytes = ler_arquivo(arquivo);
  const auto achados = tipo == 1 ? validar_sintegra(bytes) : validar_efd(bytes);
  for (const auto& achado : achados) info_line(achado);
  return achados.empty() ? 0 : 1;
}

int principal(int argc, char** argv) {
  CLI::App app{"infofiscal: gera o arquivo de informações fiscais e o arquivo SINTEGRA ou SPED EFD"};
  app.require_subcommand(1);
  app.set_help_all_flag("--ajuda-completa", "Mostra a ajuda de todos os comandos");

  OpcoesExportar o;
  auto* exp = app.add_subcommand("exportar", "Gera SpedInformacao.txt e o arquivo fiscal de um registro fiscal");
  exp->add_option("--fonte", o.fonte, "Fonte de dados: sqlite:ARQUIVO, postgresql:CONEXAO, firebird:BANCO, snapshot:ARQUIVO.json")
      ->required();
  exp->add_option("--registro", o.registro, "Código do registro fiscal")->required()->check(inteiro_entre(0, kMaxInt));
  exp->add_option("--tipo", o.tipo, "Tipo de arquivo: 0 indefinido, 1 SINTEGRA, 2 SPED EFD, 3 SPED Contribuições")
      ->required()
      ->check(um_de({"0", "1", "2", "3"}));
  exp->add_option("--base", o.base, "Pasta base da aplicação (contém Arquivos/InfoFiscal)")->required();
  exp->add_option("--mes", o.mes, "Mês do nome sugerido (padrão: o do registro fiscal)")->check(inteiro_entre(1, 12));
  exp->add_option("--ano", o.ano, "Ano do nome sugerido (padrão: o do registro fiscal)")->check(inteiro_entre(1, 9999));
  exp->add_option("--empresa", o.empresa, "Empresa (padrão: a do registro fiscal)")->check(inteiro_entre(0, kMaxInt));
  exp->add_option("--compra", o.compra, "Exporta só esta compra (0: todas)")->check(inteiro_entre(0, kMaxInt));
  exp->add_option("--venda", o.venda, "Exporta só esta nota de saída (0: todas)")->check(inteiro_entre(0, kMaxInt));
  exp->add_option("--arquivo-fiscal", o.arquivo_fiscal, "Arquivo fiscal a gravar (padrão: o nome sugerido, na pasta atual)");
  exp->add_flag("--somente-informacao", o.somente_informacao, "Gera só SpedInformacao.txt, sem o arquivo fiscal");
  exp->add_option("--progresso", o.progresso, "Progresso em stderr: auto, barra, linhas ou nada")
      ->check(um_de({"auto", "barra", "linhas", "nada"}));
  exp->add_option("--gravar-snapshot", o.gravar_snapshot, "Grava as respostas da fonte neste snapshot JSON");

  int tipo = 1;
  std::string informacao, saida, progresso = "auto";
  auto* conv = app.add_subcommand("converter", "Converte um SpedInformacao.txt no arquivo SINTEGRA ou SPED EFD");
  conv->add_option("--tipo", tipo, "1 SINTEGRA, 2 SPED EFD")->required()->check(um_de({"1", "2"}));
  conv->add_option("--informacao", informacao, "Arquivo de informações (SpedInformacao.txt)")->required();
  conv->add_option("--arquivo-fiscal", saida, "Arquivo fiscal a gravar")->required();
  conv->add_option("--progresso", progresso, "Progresso em stderr: auto, barra, linhas ou nada")
      ->check(um_de({"auto", "barra", "linhas", "nada"}));

  int tipo_validar = 1;
  std::string arquivo;
  auto* val = app.add_subcommand("validar", "Confere a estrutura de um arquivo SINTEGRA ou SPED EFD");
  val->add_option("--tipo", tipo_validar, "1 SINTEGRA, 2 SPED EFD")->required()->check(um_de({"1", "2"}));
  val->add_option("--arquivo-fiscal", arquivo, "Arquivo fiscal a conferir")->required();

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::cerr << "infofiscal: " << traduzir_erro_de_uso(e, app) << "\nUse --help para ver as opções.\n";
    return 2;
  }
  try {
    if (*exp) return exportar(o);
    if (*conv) return converter(tipo, informacao, saida, progresso);
    return validar(tipo_validar, arquivo);
  } catch (const ErroDeUso& e) {
    std::cerr << "infofiscal: " << e.what() << '\n';
    return 2;
  } catch (const std::exception& e) {
    std::cerr << e.what() << '\n';
    return 1;
  }
}

}  // namespace
}  // namespace infofiscal

int main(int argc, char** argv) { return infofiscal::principal(argc, argv); }
