// The EFD ICMS/IPI validator, read a piece at a time: every rule of the layout that the file
// alone can show. What it keeps past a line is what later rules need (the codes of block 0,
// the open records, the keys of the documents), never the file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fiscal/saida.h"

namespace infofiscal::efd {

class ValidadorEfd final : public Conferencia {
 public:
  ValidadorEfd();
  ~ValidadorEfd() override;

  void le(std::string_view pedaco) override;
  // "Linha N: ..." per finding, in the order of the lines (N the 1-based line the finding is
  // about); empty when the file is valid.
  std::vector<std::string> conclui() override;

 private:
  class Estado;
  std::unique_ptr<Estado> estado_;
};

}  // namespace infofiscal::efd
