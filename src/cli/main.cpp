// infofiscal: export, convert and validate fiscal files from a shell or a scheduler.
//
// stdout carries only the info lines of a run; stderr the progress, the summary of the files
// written and, on failure, the error message. Exit status: 0 success, 1 the run failed, 2 a
// usage error.
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <functional>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "cli/opcoes.h"
#include "cli/progresso.h"
#include "base/atomic_file.h"
#include "base/interruption.h"
#include "base/system.h"
#include "export/controle_exportacao.h"
#include "fiscal/arquivo_fiscal.h"
#include "fiscal/efd_validador.h"
#include "fiscal/sintegra_validador.h"
#include "base/error.h"
#include "host/sources/recording_source.h"

namespace infofiscal {
namespace {

struct OpcoesExportar : OpcoesRegistro {
  OpcoesEfdTexto efd;
  std::string arquivo_fiscal, gravar_snapshot, relatorio, progresso = "auto";
  bool somente_informacao = false, sem_leitura_antecipada = false;
};

void info_line(const std::string& line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

// The run's summary goes to stderr: stdout stays the run's own lines, as a scheduler reads them.
void escrever_resumo(const std::vector<std::string>& resumo) {
  for (const std::string& linha : resumo) std::cerr << linha << '\n';
}

// Warnings and notices on stderr; they change nothing in the run.
void aviso(const std::string& texto) { std::fprintf(stderr, "infofiscal: aviso: %s\n", texto.c_str()); }

bool converte(const OpcoesExportar& o) { return !o.somente_informacao && (o.tipo == 1 || o.tipo == 2); }

// The files the run writes: the information file, the snapshot, and the fiscal file when it is
// converted and its name (`fiscal`) is known.
std::vector<NamedFile> destinos(const OpcoesExportar& o, const std::string& fiscal) {
  std::vector<NamedFile> d{{ControleExportacao::CaminhoInformacao(o.base), "o arquivo de informações"}};
  if (converte(o) && !fiscal.empty())
    d.push_back({fiscal, o.arquivo_fiscal.empty() ? "o arquivo fiscal" : "--arquivo-fiscal"});
  if (!o.relatorio.empty()) d.push_back({o.relatorio, "--relatorio"});
  if (!o.gravar_snapshot.empty()) d.push_back({o.gravar_snapshot, "--gravar-snapshot"});
  return d;
}

// The report describes the fiscal file: a run that writes none has nothing to report.
void exigir_arquivo_do_relatorio(const OpcoesExportar& o) {
  if (o.relatorio.empty() || converte(o)) return;
  if (o.somente_informacao)
    throw ErroDeUso("--relatorio descreve o arquivo fiscal, e --somente-informacao não o grava");
  throw ErroDeUso(fmt::format("--relatorio descreve o arquivo fiscal, e o tipo {} não tem arquivo fiscal", o.tipo));
}

// The name the dialog suggests for the fiscal file, from --mes / --ano or the fiscal register.
std::string nome_sugerido(RecordSource& fonte, const OpcoesExportar& o) {
  return ControleExportacao::NomeSugerido(static_cast<TRegistroFiscal>(o.tipo), mes_registro(fonte, o),
                                          ano_registro(fonte, o));
}

// The suggested name, read before the run and checked like the other targets; empty when the
// register's month or year does not read, which the run's line 01 then reports (the name is
// read again after the run, as before).
std::string nome_sugerido_conferido(RecordSource& fonte, const OpcoesExportar& o) {
  std::string nome;
  try {
    nome = nome_sugerido(fonte, o);
  } catch (const Error&) {
    return {};
  }
  conferir_destinos(destinos(o, nome), entradas_da_fonte(o.fonte));
  return nome;
}

// Whether `caminho` can be read, or is a folder (which the snapshot source refuses in a message
// of its own).
bool legivel_ou_pasta(const std::string& caminho) {
  std::error_code ec;
  return std::filesystem::is_directory(path_of(caminho), ec) || std::ifstream(path_of(caminho)).good();
}

int exportar(const OpcoesExportar& o) {
  if (o.fonte.rfind("snapshot:", 0) == 0 && !legivel_ou_pasta(o.fonte.substr(9)))
    throw ErroDeUso("o snapshot '" + o.fonte.substr(9) + "' não existe ou não pode ser lido");
  exigir_arquivo_do_relatorio(o);
  conferir_destinos(destinos(o, o.arquivo_fiscal), entradas_da_fonte(o.fonte));
  const auto live = abrir_fonte(
      o, {.fetch_ahead = o.sem_leitura_antecipada ? FetchAhead::Off : FetchAhead::Default,
          .notice = [](const std::string& texto) { std::fprintf(stderr, "infofiscal: %s\n", texto.c_str()); }});
  std::unique_ptr<RecordingSource> gravador;
  RecordSource* fonte = live.get();
  if (!o.gravar_snapshot.empty()) fonte = (gravador = std::make_unique<RecordingSource>(*live)).get();

  TDTM_ConexaoDS conexao{*fonte, info_sistema(*fonte, o)};
  ControleExportacao controle(conexao);
  Progresso barra(o.progresso);
  controle.LinhaInfo = [&](const std::string& line) {
    barra.Linha(line);
    info_line(line);
  };
  controle.Progresso = [&](int posicao, int maximo) { barra.Mostrar(posicao, maximo); };
  controle.oExportaInfoFiscal.CodTipoRegistroFiscal(static_cast<TRegistroFiscal>(o.tipo));
  controle.oExportaInfoFiscal.CodRegistroFiscal(o.registro);
  controle.SomenteInformacao = o.somente_informacao;
  controle.ConverteDoArquivo = true;
  controle.Relatorio = o.relatorio;
  controle.OpcoesEFD = opcoes_efd(o.efd);

  const auto salvar_snapshot = [&] {
    if (gravador) gravador->Save(o.gravar_snapshot);
  };
  // The snapshot holds every answer of the run, also of a run that failed anywhere (the
  // converter included), so that the failure replays.
  try {
    exigir_registro(*fonte, o.registro);
    for (const std::string& a : avisos_do_registro(*fonte, o)) aviso(a);
    std::string nome = o.arquivo_fiscal;
    if (converte(o) && nome.empty()) nome = nome_sugerido_conferido(*fonte, o);
    if (converte(o)) controle.NomeAntecipado = nome;
    controle.GerarInformacao(o.base, o.compra, o.venda);
    barra.Limpar();
    for (const std::string& a : avisos_dos_filtros(controle.oExportaInfoFiscal, o)) aviso(a);
    if (converte(o)) {
      if (nome.empty()) nome = nome_sugerido(*fonte, o);
      controle.SalvarArquivoFiscal_A(nome);
    }
  } catch (...) {
    salvar_snapshot();
    throw;
  }
  salvar_snapshot();
  barra.Limpar();
  escrever_resumo(controle.Resumo());
  return 0;
}

// Hands the file `path` to `pedaco` a piece at a time.
void ler_em_pedacos(const std::string& path, const std::function<void(std::string_view)>& pedaco) {
  const auto falha = [&](int erro) { return Error("Não foi possível ler o arquivo '" + path + "': " + system_reason(erro)); };
  // A folder opens like a file and reads as nothing on Linux, and does not open on Windows.
  std::error_code ec;
  if (std::filesystem::is_directory(path_of(path), ec)) throw falha(EISDIR);
  std::ifstream in(path_of(path), std::ios::binary);
  if (!in) throw falha(errno);
  std::string buffer(1 << 20, '\0');
  while (in.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) || in.gcount() > 0)
    pedaco(std::string_view(buffer).substr(0, static_cast<std::size_t>(in.gcount())));
  if (in.bad()) throw falha(EIO);
}

struct OpcoesConverter {
  int tipo = 1;
  std::string informacao, saida, relatorio, progresso = "auto";
  OpcoesEfdTexto efd;
};

int converter(const OpcoesConverter& o) {
  std::vector<NamedFile> destinos{{o.saida, "--arquivo-fiscal"}};
  if (!o.relatorio.empty()) destinos.push_back({o.relatorio, "--relatorio"});
  conferir_destinos(destinos, std::vector<NamedFile>{{o.informacao, "--informacao"}});
  ArquivoDeInformacao texto(o.informacao);
  Progresso barra(o.progresso);
  TOBJ_ArquivoFiscal conversor;
  conversor.Relatorio = o.relatorio;
  conversor.LinhaInfo = [&](const std::string& line) {
    barra.Linha(line);
    info_line(line);
  };
  conversor.Progresso = [&](int posicao, int maximo) { barra.Mostrar(posicao, maximo); };
  if (o.tipo == 1)
    conversor.Exec_Sintegra(o.saida, texto);
  else
    conversor.Exec_SPED_Fiscal_EFD(o.saida, texto, TRegFiscalVersao::v1, opcoes_efd(o.efd));
  barra.Limpar();
  std::vector<ArquivoGravado> gravados{ArquivoGravado::Fiscal(static_cast<TRegistroFiscal>(o.tipo), o.saida,
                                                              conversor.Registros())};
  if (!o.relatorio.empty()) gravados.push_back(ArquivoGravado::Relatorio(o.relatorio));
  escrever_resumo(resumo_dos_gravados(gravados));
  return 0;
}

int validar(int tipo, const std::string& arquivo) {
  std::unique_ptr<Conferencia> validador;
  if (tipo == 1) validador = std::make_unique<sintegra::ValidadorSintegra>();
  else validador = std::make_unique<efd::ValidadorEfd>();
  ler_em_pedacos(arquivo, [&](std::string_view pedaco) { validador->le(pedaco); });
  const auto achados = validador->conclui();
  for (const auto& achado : achados) info_line(achado);
  return achados.empty() ? 0 : 1;
}

const std::vector<std::string> kModosProgresso = {"auto", "barra", "linhas", "nada"};
const char* const kAjudaRelatorio =
    "Grava também um relatório HTML do mês, para ler antes de entregar: registros por tipo, totais por CFOP e por "
    "CST, a apuração do ICMS, os valores por dia, as notas deixadas de fora e os achados do validador; gravado "
    "também quando o arquivo fiscal é recusado";
const char* const kAjudaProgresso =
    "Progresso em stderr: auto (uma barra, quando stderr é um terminal), barra, linhas (uma linha "
    "'progresso POS/MAX' por aviso) ou nada";

int principal(int argc, char** argv) {
  handle_interruptions("infofiscal");
  CLI::App app{"infofiscal: gera o arquivo de informações fiscais e o SINTEGRA ou o SPED EFD"};
  em_portugues(app, "infofiscal");
  app.require_subcommand(1);
  app.set_help_all_flag("--ajuda-completa", "Mostra a ajuda de todos os comandos");

  OpcoesExportar o;
  auto* exp = app.add_subcommand("exportar", "Gera SpedInformacao.txt e o arquivo fiscal de um registro fiscal");
  adicionar_opcoes_registro(*exp, o);
  exp->add_option("--arquivo-fiscal", o.arquivo_fiscal,
                  "Arquivo fiscal a gravar (padrão: o nome sugerido, como SINTEGRA_03_2024.v1.txt, na pasta atual)")
      ->type_name("ARQUIVO");
  exp->add_flag("--somente-informacao", o.somente_informacao, "Grava só SpedInformacao.txt, sem o arquivo fiscal");
  exp->add_option("--progresso", o.progresso, kAjudaProgresso)->type_name("MODO")->check(um_de(kModosProgresso));
  exp->add_option("--gravar-snapshot", o.gravar_snapshot,
                  "Grava num snapshot JSON todas as respostas da fonte, para repetir a mesma execução sem o banco")
      ->type_name("ARQUIVO");
  exp->add_option("--relatorio", o.relatorio, kAjudaRelatorio)->type_name("ARQUIVO");
  exp->add_flag("--sem-leitura-antecipada", o.sem_leitura_antecipada,
                "Consulta cada nota à parte, sem ler adiante a lista inteira (para medir o que a leitura antecipada ganha)");
  adicionar_opcoes_efd(*exp, o.efd);

  OpcoesConverter c;
  auto* conv = app.add_subcommand("converter", "Converte um SpedInformacao.txt no arquivo SINTEGRA ou SPED EFD");
  conv->add_option("--tipo", c.tipo, "Arquivo a gerar: 1 SINTEGRA, 2 SPED EFD ICMS/IPI")
      ->type_name("{1,2}")
      ->required()
      ->check(um_de({"1", "2"}));
  conv->add_option("--informacao", c.informacao, "Arquivo de informações (SpedInformacao.txt)")->type_name("ARQUIVO")->required();
  conv->add_option("--arquivo-fiscal", c.saida, "Arquivo fiscal a gravar")->type_name("ARQUIVO")->required();
  conv->add_option("--relatorio", c.relatorio, kAjudaRelatorio)->type_name("ARQUIVO");
  conv->add_option("--progresso", c.progresso, kAjudaProgresso)->type_name("MODO")->check(um_de(kModosProgresso));
  adicionar_opcoes_efd(*conv, c.efd);

  int tipo_validar = 1;
  std::string arquivo;
  auto* val = app.add_subcommand("validar", "Confere a estrutura de um arquivo SINTEGRA ou SPED EFD");
  val->add_option("--tipo", tipo_validar, "Arquivo a conferir: 1 SINTEGRA, 2 SPED EFD ICMS/IPI")
      ->type_name("{1,2}")
      ->required()
      ->check(um_de({"1", "2"}));
  val->add_option("--arquivo-fiscal", arquivo, "Arquivo fiscal a conferir")->type_name("ARQUIVO")->required();

  try {
    app.parse(argc, argv);
    exigir_opcoes_unicas(app);
  } catch (const CLI::Success& e) {  // --help, --ajuda-completa, --version
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::cerr << "infofiscal: " << traduzir_erro_de_uso(e, app) << "\nUse --help para ver as opções.\n";
    return 2;
  }
  try {
    if (*exp) return exportar(o);
    if (*conv) return converter(c);
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

int main(int argc, char** argv) {
  infofiscal::prepare_standard_streams();
  infofiscal::Utf8Arguments argumentos(argc, argv);
  return infofiscal::principal(argumentos.argc(), argumentos.argv());
}
