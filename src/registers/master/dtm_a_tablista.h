// The shape of every master-data list (lines 12 to 15): one line per row of one dataset
// that the server returns whole, with the row's progress reported before its line.
//
// Each member (equipment, products, inputs, consumption products, units, clients, suppliers,
// operation natures) is a TabelaLista: its dataset, the switches that turn it on, its column
// table and failure prefix. The member classes only name their table and their methods.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "registers/dtm_a_padrao.h"
#include "registers/register_line.h"
#include "base/string_list.h"

namespace infofiscal {

struct TabelaLista {
  std::string_view dataset;                       // e.g. "TabProduto"
  std::string_view provider;                      // e.g. "DspListaProduto"
  std::span<const FieldDef> campos = {};          // declared fields, in declared order
  std::span<const std::string_view> chaves = {};  // any one "S" turns the list on; none: always on
  int tipo;                                       // line type
  std::span<const Column> colunas = {};           // columns from C01, in order
  int trailer;                                    // trailer count
  std::string_view prefixo;                       // the generator error rule's prefix
  // Columns after the table's that no rendering says (the product's CEST); may be null.
  void (*extra)(const ClientDataSet& tab, TLinhaRegistro& linha) = nullptr;
  // False: each line is assembled but never added to the list (inputs are not listed).
  bool adiciona = true;
};

// A TabelaLista that owns its fields and columns: the table of a member built from a few
// differences (familias.h). Not copyable: the list table points into it.
class TabelaListaPropria {
 public:
  // `lista`'s fields and columns are replaced by views of `campos` and `colunas`.
  TabelaListaPropria(std::vector<FieldDef> campos, std::vector<Column> colunas, const TabelaLista& lista);
  TabelaListaPropria(const TabelaListaPropria&) = delete;
  TabelaListaPropria& operator=(const TabelaListaPropria&) = delete;

  const TabelaLista& Lista() const { return lista_; }

 private:
  std::vector<FieldDef> campos_;
  std::vector<Column> colunas_;
  TabelaLista lista_;
};

class TDTM_A_TabLista : public TDTM_A_Padrao {
 protected:
  // REQUIRES: `tabela` outlives the module (the members keep theirs static).
  TDTM_A_TabLista(TDTM_ConexaoDS& conexao, const TabelaLista& tabela);

  // Closes and reopens the list. A failure passes unchanged.
  void ConsLista();
  // The generator: reads the fiscal register, checks the switches, reopens the list (outside
  // the error rule) and writes one line per row under the error rule.
  void GerarLista(TStringList& AArquivo);

  ClientDataSet Lista;

 private:
  bool Ligada() const;

  const TabelaLista& tabela_;
  TLinhaRegistro oLinha;
};

}  // namespace infofiscal
