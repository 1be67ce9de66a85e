// The SINTEGRA tests' example month (March 2024) of a company in SP, kept as files: the
// information file tests/data/informacao/sintegra_marco_2024.txt (a purchase of two parts
// with freight, a transport document of model 57, an energy bill received in February, a sale
// to RJ, a cancelled sale, a voided number, an equipment sale, the catalogue and a year-end
// inventory) and its SINTEGRA file tests/data/expected/sintegra_marco_2024.txt.
#pragma once

#include <string>
#include <vector>

namespace infofiscal::testing {

// The information file of the example month.
std::string informacao_exemplo();

// The records of the SINTEGRA file it converts to, without CR LF.
std::vector<std::string> registros_exemplo();

// Records joined as a file: CR LF after each.
std::string arquivo_de(const std::vector<std::string>& registros);

}  // namespace infofiscal::testing
