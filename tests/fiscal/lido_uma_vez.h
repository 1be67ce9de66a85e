// The information text as the export hands it to a converter that runs beside it: its saved
// bytes (Windows-1252) in a TextoEmFila, complete, to be read once.
#pragma once

#include <memory>
#include <string_view>

#include "base/code_page.h"
#include "informacao/texto.h"

namespace infofiscal::testing {

inline std::unique_ptr<TextoEmFila> lido_uma_vez(std::string_view texto) {
  auto fila = std::make_unique<TextoEmFila>();
  fila->entrega(utf8_to_windows1252(texto));
  fila->termina();
  return fila;
}

}  // namespace infofiscal::testing
