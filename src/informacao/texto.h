// Where the reader takes the information file's lines from: the text in memory (the export
// run's, UTF-8), the saved file read a piece at a time (Windows-1252), so that a month of any
// size is read in a bounded memory, or the file's bytes as the run writes them. The first two
// can be read again from the start.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <mutex>
#include <string>
#include <string_view>

#include "base/code_page.h"
#include "base/system.h"

namespace infofiscal {

// What ends the reading of a text whose writer gave up (TextoEmFila::abandona): the run that
// wrote it failed or was cancelled, and says why itself. It is not an Error, so that the
// converters, which report an Error, let it pass as it is.
class TextoInterrompido : public std::exception {
 public:
  const char* what() const noexcept override;
};

class TextoDeInformacao {
 public:
  virtual ~TextoDeInformacao() = default;
  // Goes back to the first line. REQUIRES: !uma_vez().
  virtual void reinicia() = 0;
  // The next line in UTF-8, without its LF or CR LF; false after the last. The view lives
  // until the next call. A text that ends with a line break has no empty line after it.
  virtual bool proxima(std::string_view& linha) = 0;
  // Whether the text can be read only once: a converter then takes the catalogues as they come.
  virtual bool uma_vez() const { return false; }
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

// Lines of a text that comes a piece at a time, in UTF-8, each piece cut anywhere.
class TextoEmPedacos : public TextoDeInformacao {
 public:
  bool proxima(std::string_view& linha) final;

 protected:
  // Appends the next piece to `texto`; false when none is left.
  virtual bool mais(std::string& texto) = 0;
  // Drops what was read, for a reading from the start.
  void esquece();

 private:
  std::string texto_;  // from pos_ on: the lines not yet handed out
  std::size_t pos_ = 0;
};

// Lines of a Windows-1252 file, read a piece at a time. Throws Error "Não foi possível ler o
// arquivo 'CAMINHO': motivo" when the file cannot be opened (a folder included) or read.
// A file saved again in UTF-8 by an editor is read as UTF-8, not turned into mojibake: the
// first piece with a byte past ASCII decides, UTF-8 when all its bytes are (Portuguese text in
// Windows-1252 never is: an accented letter there is one byte that UTF-8 cannot hold alone).
// A byte that is not UTF-8 later in such a file is an Error that names it.
class ArquivoDeInformacao final : public TextoEmPedacos {
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

 private:
  enum class Codificacao { indefinida, windows1252, utf8 };

  bool mais(std::string& texto) override;
  [[noreturn]] void falha(int erro) const;
  // Sets codificacao_ from the first piece that is not all ASCII.
  void decide(std::string_view pedaco);
  // Appends the whole UTF-8 characters of incompleto_ + `pedaco` to `texto`, keeping a
  // character cut off by the piece's end for the next; throws at a byte UTF-8 cannot hold.
  void anexa_utf8(std::string_view pedaco, std::string& texto);

  std::string caminho_;
  SystemFile arquivo_;
  std::uint64_t lido_ = 0;  // bytes of the file read so far
  Utf8FromWindows1252 utf8_;
  std::string bruto_;  // the piece read, in the file's code page
  std::string incompleto_;  // of a UTF-8 file: the bytes of a character the last piece cut off
  Codificacao codificacao_ = Codificacao::indefinida;
  bool fim_ = false;
};

// The run's information file read while the run still writes it, so that the converter works
// beside the export: the writer hands over each piece of the saved bytes (Windows-1252, as the
// file holds them) from its thread, and the reader takes the lines on its own. It is read once.
// At most kEsperando pieces wait, the writer waiting meanwhile, which bounds the memory whatever
// the pace of either side; a reader that gives up (desiste) stops the waiting for good.
class TextoEmFila final : public TextoEmPedacos {
 public:
  static constexpr std::size_t kEsperando = 16;

  // The writer's side, from one thread at a time.
  void entrega(std::string_view pedaco);
  // The text is complete: proxima returns false after its last line.
  void termina();
  // The text will not be complete: proxima throws TextoInterrompido.
  void abandona();

  // The reader's side: it reads no more, and the pieces handed over from now on are dropped.
  void desiste();
  void reinicia() override;  // throws Error: the text cannot be read again
  bool uma_vez() const override { return true; }
  // The bytes the reader has taken so far, for its progress; from any thread.
  std::uint64_t lidos();

 private:
  enum class Estado { aberto, completo, abandonado, sem_leitor };
  bool mais(std::string& texto) override;

  std::mutex mutex_;
  std::condition_variable mudou_;
  std::deque<std::string> pedacos_;
  std::uint64_t lidos_ = 0;
  Estado estado_ = Estado::aberto;
  Utf8FromWindows1252 utf8_;
};

}  // namespace infofiscal
