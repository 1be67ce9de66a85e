// Turns the information file's register lines into the records of the SINTEGRA file: 10 and
// 11 from lines 01-03, 50 and 54 from the notes (04, 05, 06), 74 from the inventories (16-19),
// 75 from the catalogue (12) for every product code used, 90 the totals.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "informacao/informacao.h"
#include "fiscal/sintegra_registro.h"
#include "host/framework.h"

namespace infofiscal::sintegra {

class ConversorSintegra {
 public:
  // The callbacks must stay valid while the converter lives; either may be empty.
  ConversorSintegra(const TProcLinhaInfo& info, const TProcProgresso& progresso) : info_(info), progresso_(progresso) {}
  ConversorSintegra(const ConversorSintegra&) = delete;
  ConversorSintegra& operator=(const ConversorSintegra&) = delete;

  // The file's bytes, records in the layout's order, each followed by CR LF. Throws Error
  // naming the information line or note at fault when the text cannot be converted.
  // REQUIRES: called once.
  std::string gerar(std::string_view informacao);

 private:
  // A note: its line 04, its party line 05 (none for a voided number) and its item lines 06.
  struct Nota {
    const LinhaInformacao* cabecalho = nullptr;
    const LinhaInformacao* parte = nullptr;
    std::vector<const LinhaInformacao*> itens;
  };
  // An inventory: its line 16 or 18 and the product lines 17 or 19 that follow it.
  struct Inventario {
    const LinhaInformacao* cabecalho = nullptr;
    std::vector<const LinhaInformacao*> produtos;
  };
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
  void separar(const std::vector<LinhaInformacao>& linhas);
  void escrever_informante();
  void escrever_nota(const Nota& nota);
  Documento documento_da_nota(const Nota& nota, bool propria) const;
  std::vector<Parcela> parcelas_da_nota(const Nota& nota, const Documento& doc) const;
  void escrever_itens(const Nota& nota, const Documento& doc, const std::vector<Parcela>& parcelas);
  void escrever_inventarios();
  void escrever_produtos();
  void escrever_totais();
  // The code of an item in types 54, 74 and 75 (see kPrefixosDeItem); remembers it for 75.
  const std::string& usar_produto(std::string_view tipo_item, std::string_view codigo, const LinhaInformacao* linha);

  const TProcLinhaInfo& info_;
  const TProcProgresso& progresso_;

  const LinhaInformacao *l01_ = nullptr, *l02_ = nullptr, *l03_ = nullptr;
  std::vector<Nota> notas_;
  std::vector<Inventario> inventarios_;
  std::unordered_map<std::string, const LinhaInformacao*> catalogo_;  // code -> its line 12
  std::unordered_map<std::string, const LinhaInformacao*> usados_;    // code -> its first line 06 or 17/19
  TimeStamp inicio_, fim_;
  std::string cnpj_, ie_, uf_;

  Bloco b10_{k10}, b11_{k11}, b50_{k50}, b54_{k54}, b74_{k74}, b75_{k75}, b90_{k90};
};

}  // namespace infofiscal::sintegra
