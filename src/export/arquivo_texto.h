// Saving text files as the fiscal files need them: Windows-1252, CR LF, written whole or not
// at all.
#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace infofiscal {

class TStringList;

class Iconv;

// UTF-8 to Windows-1252, appended piece by piece; opens the code page's converter only when a
// piece is not all ASCII.
class Windows1252 {
 public:
  Windows1252();
  ~Windows1252();
  // Appends `utf8` in Windows-1252 to `out`; as utf8_to_windows1252 below.
  void Append(std::string_view utf8, std::string& out);

 private:
  std::unique_ptr<Iconv> iconv_;
};

// UTF-8 to Windows-1252; each code point the code page lacks (U+0081, U+008D, U+008F,
// U+0090 and U+009D included) and each invalid byte becomes one '?'.
std::string utf8_to_windows1252(std::string_view utf8);
// Windows-1252 to UTF-8; the five undefined bytes become U+FFFD.
std::string windows1252_to_utf8(std::string_view bytes);

// Splits the text at CR LF, lone CR or lone LF (LF then CR is two breaks) and joins the lines
// again, each followed by CR LF: a final break opens no empty line, an empty text stays empty.
std::string normalize_line_breaks(std::string_view text);

// Turns text into the saved bytes piece by piece, with the same result as
// utf8_to_windows1252(normalize_line_breaks(whole text)). REQUIRES: pieces split the text
// between whole UTF-8 characters.
class CodificadorTexto {
 public:
  // Appends the bytes of `piece` to `out`.
  void Feed(std::string_view piece, std::string& out);
  // Appends what the end of the text adds (the last line's CR LF when it had no break).
  void Finish(std::string& out);

 private:
  Windows1252 encoder_;
  bool after_cr_ = false;    // the last character fed was a CR
  bool line_open_ = false;   // characters fed since the last break
};

// Throws the error of a file that cannot be written because its folder does not exist; lets a
// front refuse such a path before a long run rather than after it.
void exigir_pasta_de(const std::string& path);

// A file written whole or not at all: bytes go to a temporary file in the target's folder,
// renamed over the target by Commit. Destroyed without Commit, it removes the temporary and
// leaves any earlier file as it was. Every failure throws Error naming the target.
class ArquivoAtomico {
 public:
  // The folder must exist; it is not created.
  explicit ArquivoAtomico(std::string path);
  ~ArquivoAtomico();
  ArquivoAtomico(const ArquivoAtomico&) = delete;
  ArquivoAtomico& operator=(const ArquivoAtomico&) = delete;

  void Write(std::string_view bytes);
  // Asks the system to start writing what was written so far to disk, so that Commit has less
  // left to wait for.
  void StartWriteback();
  // Flushes to disk and renames the temporary over the target.
  void Commit();

 private:
  [[noreturn]] void Fail(const std::string& why);

  std::string path_, temp_;
  int fd_ = -1;
};

// Writes `bytes` to `path` through a temporary file in the same folder, renamed over `path`
// only when complete: a failure leaves any earlier file as it was and no temporary behind.
// The folder must exist; it is not created. Throws Error naming the file.
void write_file_atomically(const std::string& path, std::string_view bytes);

// Saves the text as a string list saves it: lines normalized as above, Windows-1252, CR LF,
// atomically. Returns the saved text read back as UTF-8 (a character the code page lacks is a
// '?' there too): that is what the converter is given.
std::string save_text_file(const std::string& path, std::string_view text);

// Saves the run's string list as save_text_file saves a text, while the run is still filling
// it: each block the list is done with is encoded and written on another thread, so that a
// large month ends with only its last block to write. Attach it before the list is filled (the
// run clears the list first); nothing is opened before the first block is written. Destroyed
// without Commit (a run that failed), it leaves any earlier file as it was and no temporary.
class GravacaoDaLista {
 public:
  // With `keep_text`, Commit returns the saved text (the converter needs it).
  GravacaoDaLista(std::string path, TStringList& list, bool keep_text);
  ~GravacaoDaLista();
  GravacaoDaLista(const GravacaoDaLista&) = delete;
  GravacaoDaLista& operator=(const GravacaoDaLista&) = delete;

  // Writes the rest of the list, flushes, renames over the target and empties the list.
  // Returns the saved text read back as UTF-8 when kept, else an empty string. Throws the
  // first failure of the writing, as an Error naming the file.
  std::string Commit();

 private:
  void Write(std::string_view block);  // encodes and writes one block
  void WriteBytes();                   // writes (and keeps) the bytes encoded so far
  void Work();                         // the writer thread: the blocks queued, in order
  void Stop();                         // the writer thread ends after its current block

  std::string path_;
  TStringList& list_;
  bool keep_text_;
  std::unique_ptr<ArquivoAtomico> file_;
  CodificadorTexto codificador_;
  std::string bytes_, saved_;
  std::size_t written_ = 0;  // blocks of the list written

  std::mutex mutex_;
  std::condition_variable queued_;
  std::deque<std::string_view> queue_;
  bool stopping_ = false;
  std::exception_ptr failure_;
  std::thread writer_;
};

}  // namespace infofiscal
