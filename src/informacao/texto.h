// Where the reader takes the information file's lines from: the text in memory (the export
// run's, UTF-8), or the saved file read a piece at a time (Windows-1252), so that a month of
// any size is read in a bounded memory. Either can be read again from the start.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/code_page.h"
#include "base/system.h"

namespace infofiscal {

class TextoDeInformacao {
 public:
  virtual ~TextoDeInformacao() = default;
  // Goes back to the first line.
  virtual void reinicia() = 0;
  // The next line in UTF-8, without its LF or CR LF; false after the last. The view lives
  // until the next call. A text that ends with a line break has no empty line after it.
  virtual bool proxima(std::string_view& linha) = 0;
};

// Lines of a UTF-8 text in memory. The text must outlive the object.
class TextoEmMemoria final : public TextoDeInformacao {
 public:
  explicit TextoEmMemoria(std::string_view texto) : texto_(texto) {}
  void reinicia() override { pos_ = 0; }
  bool proxima(std::string_view& linha) override;

 private:
  std::string_view texto_;
  std::size_t pos_ = 0;
};

// Lines of a Windows-1252 file, read a piece at a time. Throws Error "Não foi possível ler o
// arquivo 'CAMINHO': motivo" when the file cannot be opened (a folder included) or read.
// A file saved again in UTF-8 by an editor is read as UTF-8, not turned into mojibake: the
// first piece with a byte past ASCII decides, UTF-8 when all its bytes are (Portuguese text in
// Windows-1252 never is: an accented letter there is one byte that UTF-8 cannot hold alone).
// A byte that is not UTF-8 later in such a file is an Error that names it.
class ArquivoDeInformacao final : public TextoDeInformacao {
 public:
  explicit ArquivoDeInformacao(std::string caminho);
  // The run's own file, saved under the temporary name `temporario` and waiting to be put in
  // place at `caminho`: read as Windows-1252, the code page it was written in (nothing to
  // guess), and named by `caminho` in messages.
  ArquivoDeInformacao(std::string caminho, const std::string& temporario);
  ~ArquivoDeInformacao() override;
  ArquivoDeInformacao(const ArquivoDeInformacao&) = delete;
  ArquivoDeInformacao& operator=(const ArquivoDeInformacao&) = delete;

  void reinicia() override;
  bool proxima(std::string_view& linha) override;

 private:
  enum class Codificacao { indefinida, windows1252, utf8 };

  [[noreturn]] void falha(int erro) const;
  // Reads the next piece of the file onto the end of texto_; false at the end of the file.
  bool le_mais();
  // Sets codificacao_ from the first piece that is not all ASCII.
  void decide(std::string_view pedaco);
  // Appends the whole UTF-8 characters of incompleto_ + `pedaco` to texto_, keeping a character
  // cut off by the piece's end for the next; throws at a byte UTF-8 cannot hold.
  void anexa_utf8(std::string_view pedaco);

  std::string caminho_;
  SystemFile arquivo_;
  std::uint64_t lido_ = 0;  // bytes of the file read so far
  Utf8FromWindows1252 utf8_;
  std::string bruto_;  // the piece read, in the file's code page
  std::string texto_;  // UTF-8 from pos_ on: the lines not yet handed out
  std::string incompleto_;  // of a UTF-8 file: the bytes of a character the last piece cut off
  Codificacao codificacao_ = Codificacao::indefinida;
  std::size_t pos_ = 0;
  bool fim_ = false;
};

}  // namespace infofiscal
