// Saving the information file: the text as a string list saves it (lines normalized,
// Windows-1252, CR LF), written atomically, while the run still fills the list.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/atomic_file.h"
#include "base/code_page.h"
#include "base/worker_thread.h"

namespace infofiscal {

class TStringList;

// Saves the text as a string list saves it: lines normalized as above, Windows-1252, CR LF,
// atomically. Returns the saved text read back as UTF-8 (a character the code page lacks is a
// '?' there too): that is what the converter is given.
std::string save_text_file(const std::string& path, std::string_view text);

// Saves the run's string list as save_text_file saves a text, while the run is still filling
// it: each block the list is done with is encoded and written on another thread, so that a
// large month ends with only its last block to write. Attach it before the list is filled (the
// run clears the list first); nothing is opened before the first block is written. Destroyed
// without commit (a run that failed or was cancelled, even after finish), it leaves any earlier
// file as it was and no temporary.
class ListSaver {
 public:
  // With `keep_text`, finish returns the saved text (the converter needs it). `on_bytes`, when
  // set, is handed each piece of the saved bytes as it is written, in order, on the thread that
  // writes it (a reader of the file while it is written); its views live until it returns.
  ListSaver(std::string path, TStringList& list, bool keep_text,
            std::function<void(std::string_view)> on_bytes = nullptr);
  ~ListSaver();
  ListSaver(const ListSaver&) = delete;
  ListSaver& operator=(const ListSaver&) = delete;

  // Writes the rest of the list, flushes it to disk under the temporary's name and empties the
  // list; the target is not touched yet. Returns the saved text read back as UTF-8 when kept,
  // else an empty string. Throws the first failure of the writing, as an Error naming the file.
  std::string finish();
  // Renames the finished file over the target. REQUIRES: finish() has returned.
  void commit() { file_->commit(); }
  // Where the finished file waits for commit, to be read back meanwhile (the converter reads
  // it). REQUIRES: finish() has returned; good until commit or destruction.
  const std::string& saved_path() const { return file_->temporary(); }
  // The lines of the saved file. REQUIRES: finish() has returned.
  std::size_t lines() const { return lines_; }

 private:
  void write(std::string_view block);  // encodes and writes one block
  void write_bytes();                   // writes (and keeps) the bytes encoded so far

  std::string path_;
  TStringList& list_;
  bool keep_text_;
  std::function<void(std::string_view)> on_bytes_;
  std::unique_ptr<AtomicFile> file_;
  TextEncoder encoder_;
  std::string bytes_, saved_;
  std::size_t written_ = 0;  // blocks of the list written
  std::size_t lines_ = 0;    // line feeds written
  WorkerThread writer_;      // last: gone first, with the blocks it had still to write
};

}  // namespace infofiscal
