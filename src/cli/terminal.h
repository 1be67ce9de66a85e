// Text as a terminal shows it: its width in columns, cut or wrapped to fit, and the terminal's
// own width. The texts are Portuguese UTF-8: one column per character, no wide characters.
#pragma once

#include <string>
#include <string_view>

namespace infofiscal {

// The columns `texto` takes: one per UTF-8 character.
int colunas_de(std::string_view texto);

// The first `colunas` columns of `texto`, the last one an ellipsis when it was cut.
// REQUIRES: colunas > 0.
std::string cortar(std::string_view texto, int colunas);

// `texto` wrapped at spaces into lines of at most `colunas` columns (a longer word stands alone
// on its line), the lines after the first preceded by `recuo`, joined by line feeds.
std::string quebrar(std::string_view texto, int colunas, std::string_view recuo);

// The columns of the terminal on stderr; where that is no terminal, COLUMNS, else 80.
int largura_do_terminal();

}  // namespace infofiscal
