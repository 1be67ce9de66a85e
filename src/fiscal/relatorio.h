// The report of a month, a page a person reads before filing it: the records of the fiscal file
// per type, its totals per CFOP and per CST, the ICMS debits, credits and balance (E110), a chart
// of the month's documents by day, the notes the converter left out or adjusted and why, and the
// verdict of the validator, or why the file was refused.
//
// The figures come from the fiscal file itself, read as the converter writes it; the notes from
// the lines the converter says ("Nota ...", "Números inutilizados ..."); the verdict from how the
// conversion ended. TOBJ_ArquivoFiscal gathers all three when asked for a report, so that the
// command line and the dialog write the same page.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "fiscal/numeros_do_mes.h"

namespace infofiscal {

class RelatorioDoMes {
 public:
  // `tipo` 1 SINTEGRA or 2 EFD; `arquivo_fiscal` the fiscal file's path, as the page names it.
  RelatorioDoMes(int tipo, std::string arquivo_fiscal);

  // Reads the fiscal file's pieces as they are written; lives as long as the report.
  LeitorDePedacos& leitor() { return leitor_; }
  // A line the converter said while it wrote the file.
  void linha_info(const std::string& linha) { linhas_.push_back(linha); }
  // How the conversion ended: the file written, with `registros` records; or refused, with the
  // run's message (the verdict first, then one finding a line), and not written.
  void gravado(std::size_t registros) { registros_ = registros; }
  void recusado(std::string mensagem) { recusa_ = std::move(mensagem); }

  // The page: one HTML document in UTF-8 that is also well-formed XML (XHTML) and needs nothing
  // from elsewhere (no script, style sheet, image or font; the chart is inline SVG). Every text
  // that comes from the data is escaped. REQUIRES: after gravado or recusado; called once.
  std::string html();

 private:
  // The page's parts, in their order.
  void cabecalho(std::string& o, const std::string& titulo, const NumerosDoMes& n) const;
  void estado(std::string& o, bool numeros) const;
  void achados(std::string& o) const;
  void totais_do_tipo(std::string& o, const NumerosDoMes& n) const;
  void notas(std::string& o) const;
  void conversao(std::string& o) const;

  LeitorDeNumeros leitor_;
  int tipo_;
  std::string arquivo_;
  std::vector<std::string> linhas_;
  std::optional<std::string> recusa_;
  std::size_t registros_ = 0;
};

}  // namespace infofiscal
