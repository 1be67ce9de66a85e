// libFuzzer entry point; the body is shared with the regression test (alvos.h).
#include "alvos.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  infofiscal::fuzz::validar_sintegra(data, size);
  return 0;
}
