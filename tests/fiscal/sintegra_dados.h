// Information files built by hand for the SINTEGRA tests: one month (March 2024) of a company
// in SP with a purchase, sales, a cancelled note, a voided number, an energy bill received
// late, a transport document, the catalogue and a year-end inventory.
#pragma once

#include <string>
#include <vector>

namespace infofiscal::testing {

// "[C00]tt[/C00][C01]a[/C01]...[C99]nn[/C99]" with the columns C01, C02, ... in order.
std::string linha_informacao(int tipo, const std::vector<std::string>& colunas, int trailer);

// The lines of the example month, CR LF after each.
std::string informacao_exemplo();

// The records of the SINTEGRA file that the example month converts to, without CR LF.
std::vector<std::string> registros_exemplo();

// Records joined as a file: CR LF after each.
std::string arquivo_de(const std::vector<std::string>& registros);

}  // namespace infofiscal::testing
