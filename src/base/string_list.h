// The run's shared string list: register lines, only ever appended.
//
// Lines are kept in large blocks, each line followed by CR LF, so a month of a million lines
// costs one allocation per 32 MiB and never a copy of everything when the list grows;
// the file is written block by block (OnBlockFull, Blocks) without ever assembling the whole
// text.
#pragma once

#include <cstdint>
#include <functional>
#include <future>
#include <string>
#include <string_view>
#include <vector>

namespace infofiscal {

class TStringList {
 public:
  // Blocks of `block_size` bytes (or one line's, when longer).
  explicit TStringList(std::size_t block_size = kBlockSize) : block_size_(block_size) {}
  TStringList(const TStringList&) = delete;
  TStringList& operator=(const TStringList&) = delete;

  // Appends one line.
  void Add(std::string_view line);
  // Removes every line and frees the blocks.
  void Clear();
  std::size_t Count() const { return lines_.size(); }
  // Line `i` without its CR LF. REQUIRES: i < Count(). Valid until the next Clear.
  std::string_view operator[](std::size_t i) const;
  // Every line followed by CR LF, as one string (a copy); empty for an empty list.
  std::string Text() const;
  // The text in order, as consecutive blocks that each end at the end of a line.
  const std::vector<std::string>& Blocks() const { return blocks_; }
  // Calls `full` with each block the list is done with (it has started the next), in order,
  // on the thread that adds the lines. Such a block stays as it is until the next Clear.
  void OnBlockFull(std::function<void(std::string_view)> full) { on_full_ = std::move(full); }

 private:
  static constexpr std::size_t kBlockSize = std::size_t{32} << 20;
  void NewBlock(std::size_t needed);
  struct Where {
    std::uint32_t block;
    std::uint32_t start;
  };
  std::size_t block_size_;
  std::vector<std::string> blocks_;
  std::vector<Where> lines_;
  std::function<void(std::string_view)> on_full_;
  // A large list's next block, its pages faulted in on another thread while this one fills
  // the current block: the kernel's zeroing of new memory is a tenth of a large month's run.
  std::string spare_;
  std::future<void> spare_ready_;
};

}  // namespace infofiscal
