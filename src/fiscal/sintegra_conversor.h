// Turns the information file's groups into the records of the SINTEGRA file: 10 and 11 from
// the header (lines 01-03), 50 and 54 from the notes (04, 05, 06), 74 from the inventories
// (16-19), 75 from the catalogue (12) for every product code used, 90 the totals.
//
// The text is read twice: a first quick pass for the catalogue (lines 12 come after the notes
// and are needed for the products), then the notes and inventories one at a time. The records
// wait in their types' blocks, which the file wants sorted (see Bloco): what the converter keeps
// besides them is the catalogue and the products used.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "fiscal/problemas.h"
#include "fiscal/saida.h"
#include "fiscal/sintegra_registro.h"
#include "host/framework.h"
#include "informacao/leitor.h"

namespace infofiscal::sintegra {

// What type 75 says of a product, kept by value: from its line 12, or else from the first line
// 06 that used it. `numero` is that line's; an inventory line alone leaves them empty.
struct Produto {
  int numero = 0;
  int tipo_linha = 0;
  std::string descricao, unidade, ncm;
};

// The first pass: the catalogue of products (lines 12), by their code in types 54, 74 and 75.
class CatalogoSintegra final : public LeitorDeInformacao {
 public:
  void cabecalho(const CabecalhoInformacao&) override {}
  // Throws Error naming the line for an item kind without a code prefix.
  void cadastro(const LinhaInformacao& l) override;
  const Produto* produto(const std::string& codigo) const;

 private:
  std::unordered_map<std::string, Produto> produtos_;
};

class ConversorSintegra final : public LeitorDeInformacao {
 public:
  // The callbacks (either may be empty) must outlive the converter; `contagem` is the first
  // reading's count of notes and inventory items, for the progress. Temporary files go to `pasta`.
  ConversorSintegra(const ContagemDeLinhas& contagem, const std::string& pasta, const TProcLinhaInfo& info,
                    const TProcProgresso& progresso);
  ConversorSintegra(const ConversorSintegra&) = delete;
  ConversorSintegra& operator=(const ConversorSintegra&) = delete;

  // The groups, from the second, complete reading. Each throws Error naming the information
  // line or note at fault when it cannot be converted.
  void cabecalho(const CabecalhoInformacao& cabecalho) override;
  void nota(const NotaInformacao& nota) override;
  void inventario(const InventarioInformacao& inventario) override;
  // After the reading: the records 75, from `catalogo` (the first reading's), and 90. Throws
  // MesComProblemas listing every note, inventory item and product that could not be written.
  // The catalogue and the products used are let go here, before the file is written and
  // checked: on a large month they are the converter's largest holdings.
  void conclui(CatalogoSintegra catalogo);
  // Writes the file to `saida`, records in the layout's order, each followed by CR LF.
  // REQUIRES: called once, after conclui.
  void emitir(SaidaFiscal& saida);

 private:
  // The part of a note under one CFOP and ICMS rate: one type-50 record. Hundredths.
  struct Parcela {
    std::int64_t cfop = 0, aliquota = 0;
    std::int64_t valor = 0, base = 0, icms = 0, isenta = 0, outras = 0;
  };
  // What a type-50 record and the note's type-54 records share.
  struct Documento {
    std::string cnpj, ie, uf, serie, modelo;
    std::int64_t numero = 0;
    TimeStamp data;
    char emitente = 'T', situacao = 'N';
  };

  void informar(const std::string& texto) const;
  void progredir(int posicao, int maximo) const;
  void escrever_informante(const CabecalhoInformacao& c);
  void escrever_nota(const NotaInformacao& nota);
  Documento documento_da_nota(const NotaInformacao& nota, bool propria);
  // The CNPJ field of the company or a party (`quem`: "da empresa", "da parte 1-15"): 14 digits,
  // or empty (zeros) for a CPF, no document or one that fails. A CNPJ with letters has no place
  // in the numeric field and never becomes zeros in silence: with `relatar`, it is a problem of
  // the month, as is a CNPJ or CPF failing its check digits (`onde` starts the message).
  std::string cnpj(std::string_view texto, const std::string& quem, const std::string& onde, bool relatar);
  // The IE field: ISENTO for none (empty, or ISENTO in any case), else the stored IE without its
  // mask; with `relatar`, one failing the rule of the state `uf` is a problem of the month.
  std::string inscricao(std::string_view texto, std::string_view uf, const std::string& quem, const std::string& onde,
                        bool relatar);
  std::vector<Parcela> parcelas_da_nota(const NotaInformacao& nota, const Documento& doc) const;
  void escrever_itens(const NotaInformacao& nota, const Documento& doc, const std::vector<Parcela>& parcelas);
  void escrever_transporte(const Documento& doc, const std::vector<Parcela>& parcelas);
  void inventarios_comecam();
  void escrever_produtos(const CatalogoSintegra& catalogo);
  void escrever_totais();
  // The code of an item in types 54, 74 and 75 (see kPrefixosDeItem); remembers it for 75.
  const std::string& usar_produto(std::string_view tipo_item, std::string_view codigo, const LinhaInformacao& linha);

  const ContagemDeLinhas contagem_;
  const TProcLinhaInfo& info_;
  const TProcProgresso& progresso_;

  int nota_ = 0;
  int item_de_inventario_ = 0;
  bool em_inventarios_ = false;
  std::unordered_map<std::string, Produto> usados_;  // code -> its first line 06, 17 or 19
  std::unordered_set<std::string> partes_conferidas_;  // parties whose CNPJ and IE were checked
  ProblemasDoMes problemas_;  // of the notes, inventories and products not written
  TimeStamp inicio_, fim_;
  std::string cnpj_, ie_, uf_;

  Bloco b10_, b11_, b50_, b54_, b70_, b74_, b75_, b90_;
};

}  // namespace infofiscal::sintegra
