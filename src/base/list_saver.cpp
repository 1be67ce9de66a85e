#include "base/list_saver.h"

#include <algorithm>
#include <utility>

#include "base/string_list.h"

namespace infofiscal {

namespace {

// The end of the piece of `block` that starts at `at`: just after the last line feed within
// `size` bytes (after the next one for a longer line). A line feed is ASCII, so the cut cannot
// change how the text around it encodes.
std::size_t piece_end(std::string_view block, std::size_t at, std::size_t size) {
  if (block.size() - at <= size) return block.size();
  std::size_t lf = block.substr(at, size).rfind('\n');
  if (lf != std::string_view::npos) return at + lf + 1;
  lf = block.find('\n', at + size);
  return lf == std::string_view::npos ? block.size() : lf + 1;
}

}  // namespace

std::string save_text_file(const std::string& path, std::string_view text) {
  const std::string bytes = utf8_to_windows1252(normalize_line_breaks(text));
  write_file_atomically(path, bytes);
  return windows1252_to_utf8(bytes);
}

ListSaver::ListSaver(std::string path, TStringList& list, bool keep_text,
                     std::function<void(std::string_view)> on_bytes)
    : path_(std::move(path)), list_(list), keep_text_(keep_text), on_bytes_(std::move(on_bytes)) {
  // Without a thread to spare, finish writes the whole list.
  if (writer_.started())
    list_.OnBlockFull([this](std::string_view block) { writer_.add([this, block] { write(block); }); });
}

ListSaver::~ListSaver() { list_.OnBlockFull(nullptr); }

void ListSaver::write(std::string_view block) {
  // A piece at a time, so that the encoded bytes are written from a buffer still in the cache.
  constexpr std::size_t kPiece = std::size_t{1} << 20;
  if (!file_) file_ = std::make_unique<AtomicFile>(path_);
  for (std::size_t at = 0; at < block.size();) {
    const std::size_t end = piece_end(block, at, kPiece);
    encoder_.feed(block.substr(at, end - at), bytes_);
    write_bytes();
    at = end;
  }
  file_->start_writeback();
  ++written_;
}

void ListSaver::write_bytes() {
  file_->write(bytes_);
  lines_ += static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), '\n'));
  if (keep_text_) saved_ += windows1252_to_utf8(bytes_);
  if (on_bytes_ && !bytes_.empty()) on_bytes_(bytes_);
  bytes_.clear();
}

std::string ListSaver::finish() {
  list_.OnBlockFull(nullptr);
  if (writer_.started()) writer_.finish();  // the blocks handed over; the rest is written here
  const std::vector<std::string>& blocks = list_.Blocks();
  for (std::size_t b = written_; b < blocks.size(); ++b) write(blocks[b]);
  if (!file_) file_ = std::make_unique<AtomicFile>(path_);  // an empty list: an empty file
  encoder_.finish(bytes_);
  write_bytes();
  file_->finish();
  list_.Clear();
  return keep_text_ ? std::move(saved_) : std::string();
}

}  // namespace infofiscal
