// The state registration (inscrição estadual, IE) of the 27 units of the federation, each checked
// by the rule its state publishes for SINTEGRA's "conferência de inscrições estaduais": size,
// fixed start, category digits or ranges, and check digits. docs/identidades.md names each rule's
// source and the rules that rest on no official text at hand.
#pragma once

#include <string>
#include <string_view>

#include "fiscal/identidade.h"

namespace infofiscal::identidade {

// Checks the IE `ie` of the unit `uf`.
//
// `uf` is the sigla in upper case ("SP"); any other text is Defeito::Uf.
// `ie` is the value as stored:
//   - the literal ISENTO (upper case, nothing around it) is valid for every unit;
//   - otherwise the mask characters '.', '-' and '/' are ignored wherever they are, and every
//     other character must be a digit, but for the leading P of SP's rural producer
//     (P0MMMSSSSD000). Spaces, any other letter and a lower-case "isento" or "p" are refused
//     (Defeito::Caractere, position counted in the stored text): the caller neither trims nor
//     upper-cases on the user's behalf.
//   - an IE of zeros only is refused (Defeito::Repetido), though some units' digit rules would
//     let it pass.
// Mato Grosso's IE is 11 digits; one stored with 9 or 10 is checked as if completed with zeros
// on the left, as its state's rule does.
Verificacao verificar_inscricao_estadual(std::string_view uf, std::string_view ie);
// The IE as the files carry it is sem_mascara(ie) (identidade.h).

}  // namespace infofiscal::identidade
