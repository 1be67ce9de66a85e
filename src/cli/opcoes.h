// What the two fronts (the command `infofiscal exportar` and the launcher `infofiscal-dialogo`)
// share of their command lines: the options that name one fiscal register's run, the help and
// usage messages in Portuguese, the version, where the provider catalog is, and the fields of
// the fiscal register read for the defaults.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "base/atomic_file.h"
#include "base/error.h"
#include "export/obj_exportainfofiscal.h"
#include "fiscal/efd.h"
#include "host/framework.h"

namespace infofiscal {

// A mistake in how the command was called: exit status 2.
class ErroDeUso : public Error {
 public:
  using Error::Error;
};

// The options of one run, as the host sets the dialog's properties.
struct OpcoesRegistro {
  std::string fonte, base, catalogo;
  int registro = 0, tipo = 0, compra = 0, venda = 0;
  std::optional<int> mes, ano, empresa;
};

// What the EFD's block E takes from the run, as typed (read by opcoes_efd).
struct OpcoesEfdTexto {
  std::string saldo_credor_anterior, efd_anterior, codigo_receita, vencimento;
};

// Declares --saldo-credor-anterior VALOR, --efd-anterior ARQUIVO, --codigo-receita CÓDIGO and
// --vencimento DD/MM/AAAA on `app`, stored into `o`.
void adicionar_opcoes_efd(CLI::App& app, OpcoesEfdTexto& o);

// The options read: the balance a Brazilian decimal ("1.234,56", "1234,5", "0"), the due date
// dd/mm/aaaa. Throws ErroDeUso naming the option and the value when one does not read, or when
// both the balance and the previous file are given.
OpcoesEfd opcoes_efd(const OpcoesEfdTexto& o);

// The version of the product, as CMake's project() gives it ("1.0.0").
const char* versao();

// Makes `app` speak Portuguese: the help's frame (usage, groups, labels), the help flag
// -h/--help, and --version, which prints "`programa` VERSION". Call it first, before any option
// or command is added: commands take the help flag and the group of commands from it.
void em_portugues(CLI::App& app, const std::string& programa);

// Declares --fonte, --registro, --tipo, --base (required) and --mes, --ano, --empresa,
// --compra, --venda, --catalogo on `app`, stored into `o`.
void adicionar_opcoes_registro(CLI::App& app, OpcoesRegistro& o);

// Checks that speak Portuguese and name the value (CLI11's own speak English): an integer in
// [minimo, maximo]; a number above zero; one of the texts `aceitos`. None adds to the option's
// name in the help: the option's own text says what it takes.
CLI::Validator inteiro_entre(std::int64_t minimo, std::int64_t maximo);
CLI::Validator numero_positivo();
CLI::Validator um_de(const std::vector<std::string>& aceitos);

// A parse error of `app` as a Portuguese message that says what is wrong.
std::string traduzir_erro_de_uso(const CLI::ParseError& e, const CLI::App& app);

// Where a front looks for the provider catalog of the SQL sources, in this order:
struct LugaresDoCatalogo {
  std::string opcao;                    // --catalogo, empty when not given
  std::optional<std::string> variavel;  // INFOFISCAL_CATALOGO, when set and not empty
  std::string programa;                 // the running program: the catalog installed beside it
  std::string arvore;                   // the source tree's catalog, for a program run from its
                                        // build tree; else empty
};

// The catalog's path: the file the option names; else the one the variable names; else
// PREFIX/share/infofiscal/providers.sql for the program PREFIX/bin/PROGRAM (where
// `cmake --install` and the package put it); else the source tree's. A file named by the option
// or the variable must be there, no other place stands in for it. Throws Error naming every
// place looked at.
std::string localizar_catalogo(const LugaresDoCatalogo& lugares);

// The places of this program: the option `opcao`, the environment, the running executable, and
// db/providers.sql of the source tree when the executable lies in the build tree it was built in.
LugaresDoCatalogo lugares_do_catalogo(const std::string& opcao);

// Opens the record source that --fonte names; an SQL source with the catalog found as above. A
// snapshot needs none: it opens wherever the catalog is, unless one is named and missing.
// `opcoes` other than the catalog are the caller's.
std::unique_ptr<RecordSource> abrir_fonte(const OpcoesRegistro& o, SourceOptions opcoes = {});

// Throws the parse error of an option given more than once (a flag included), which
// traduzir_erro_de_uso says is repeated. Call after a parse that succeeded.
void exigir_opcoes_unicas(const CLI::App& app);

// The files that the source `fonte` reads, named for messages ("o banco de dados da fonte").
std::vector<NamedFile> entradas_da_fonte(const std::string& fonte);

// Before anything is read: throws ErroDeUso when one of `destinos` is one of `entradas` (or two
// destinations are one file), and the Error of a destination that cannot be written.
void conferir_destinos(std::span<const NamedFile> destinos, std::span<const NamedFile> entradas);

// Fails, naming it, when the fiscal register `registro` has no record: a run over it would
// write nothing true.
void exigir_registro(RecordSource& fonte, int registro);

// One integer field of the fiscal register `registro`, read only when a default needs it.
std::int64_t campo_registro(RecordSource& fonte, int registro, std::string_view campo);

// The system information of a run: --empresa, or else CDEMPRESA of the fiscal register, read
// when a line first asks for it.
TOBJ_InfoSistema_v11c info_sistema(RecordSource& fonte, const OpcoesRegistro& o);

// --mes / --ano, or else CDMES / ANO of the fiscal register.
int mes_registro(RecordSource& fonte, const OpcoesRegistro& o);
int ano_registro(RecordSource& fonte, const OpcoesRegistro& o);

// Warnings, one line each, about options that contradict the fiscal register or the source:
// --empresa other than the register's company, or one that the source does not have; --tipo
// other than the register's kind (a register of kind 0 or a company 0 names none). The reads
// change nothing in the run; a read that fails warns of nothing, since the run meets that
// failure where it belongs. REQUIRES: the register exists.
std::vector<std::string> avisos_do_registro(RecordSource& fonte, const OpcoesRegistro& o);

// Warnings after the run `execucao`: --compra or --venda that matched no note it wrote.
std::vector<std::string> avisos_dos_filtros(const TOBJ_ExportaInfoFiscal& execucao, const OpcoesRegistro& o);

}  // namespace infofiscal
