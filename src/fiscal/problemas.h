// The problems of a month's data that a converter finds (base/error.h's DataProblem), kept so
// that one run lists all of them instead of stopping at the first: the run's message shows
// each kind with its count and first examples, the report file beside the target the whole
// list.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "informacao/informacao.h"

namespace infofiscal {

class ProblemasDoMes {
 public:
  // How many examples of each kind the summary shows.
  static constexpr std::size_t kExemplos = 5;

  void anota(const DataProblem& problema);
  bool vazio() const { return grupos_.empty(); }
  std::size_t quantos() const;

  // "3 problemas no mês; o arquivo SINTEGRA não foi gravado:", then per kind, in the order the
  // kinds were first found, "chave de acesso inválida (2):" and its first kExemplos problems.
  std::string resumo(std::string_view arquivo) const;
  // The summary's first line, then every problem, per kind.
  std::string lista(std::string_view arquivo) const;

 private:
  struct Grupo {
    std::string tipo;
    std::vector<std::string> casos;
  };
  std::string cabecalho(std::string_view arquivo) const;
  std::string texto(std::string_view arquivo, std::size_t exemplos) const;

  std::vector<Grupo> grupos_;
};

// Throws DataProblem("valor negativo num item", "item 2 com valor total negativo: '-5,00'") for
// the first negative amount of an item line 06: summed into its note, it would lower the note's
// totals and ICMS unseen. The caller prefixes the note (DataProblem::within).
void confere_valores_do_item(const LinhaInformacao& item);

// The digits of a numeric code as stored (CFOP, CST, NCM, a note's number), its mask ('.', '-',
// '/') dropped. A letter or any other character throws DataProblem("código com caractere não
// numérico", "`onde` 'VALOR': reason"), `onde` naming the owner and the field: a CST "1A0" never
// becomes 010.
std::string codigo_numerico(std::string_view valor, std::string_view onde);

// What a converter throws at the end of a month with problems, once it has read all of it;
// what() is the summary.
class MesComProblemas : public Error {
 public:
  // `arquivo` names the file not written ("SINTEGRA", "SPED EFD ICMS/IPI").
  MesComProblemas(ProblemasDoMes problemas, std::string arquivo)
      : Error(problemas.resumo(arquivo)), problemas_(std::move(problemas)), arquivo_(std::move(arquivo)) {}
  // The whole list, for the report file.
  std::string lista() const { return problemas_.lista(arquivo_); }

 private:
  ProblemasDoMes problemas_;
  std::string arquivo_;
};

}  // namespace infofiscal
