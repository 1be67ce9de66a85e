#include "base/string_list.h"

#include <cstdint>
#include <system_error>
#include <utility>

#include "base/system.h"

namespace infofiscal {

namespace {

// Faults in the pages of a block (on the thread that calls it).
void populate(const char* data, std::size_t size) { advise_memory(data, size, MemoryAdvice::Populate); }

// A block in huge pages: a large month's text is hundreds of megabytes, and touching it 4 KiB at
// a time costs about as much as writing it.
std::string new_block(std::size_t size) {
  std::string block;
  block.reserve(size);
  advise_memory(block.data(), block.capacity(), MemoryAdvice::HugePages);
  return block;
}

}  // namespace

void TStringList::Add(std::string_view line) {
  const std::size_t needed = line.size() + 2;
  if (blocks_.empty() || blocks_.back().size() + needed > blocks_.back().capacity()) NewBlock(needed);
  std::string& block = blocks_.back();
  lines_.push_back({static_cast<std::uint32_t>(blocks_.size() - 1), static_cast<std::uint32_t>(block.size())});
  block.append(line);
  block.append("\r\n");
}

void TStringList::NewBlock(std::size_t needed) {
  if (on_full_ && !blocks_.empty()) on_full_(blocks_.back());
  const bool spare = spare_ready_.valid();
  if (spare) spare_ready_.get();
  if (spare && spare_.capacity() >= needed) {
    blocks_.push_back(std::exchange(spare_, std::string()));
  } else {
    blocks_.push_back(new_block(std::max(block_size_, needed)));
  }
  if (blocks_.size() < 2) return;  // a small list needs no spare
  spare_ = new_block(block_size_);
  try {
    spare_ready_ = std::async(std::launch::async, populate, spare_.data(), spare_.capacity());
  } catch (const std::system_error&) {
    spare_ready_ = {};  // no thread to spare: the block's pages are faulted in as it fills
    std::string().swap(spare_);
  }
}

void TStringList::Clear() {
  if (spare_ready_.valid()) spare_ready_.get();
  std::string().swap(spare_);
  blocks_.clear();
  blocks_.shrink_to_fit();
  lines_.clear();
  lines_.shrink_to_fit();
}

std::string_view TStringList::operator[](std::size_t i) const {
  const Where w = lines_[i];
  const std::string& block = blocks_[w.block];
  const bool last_in_block = i + 1 == lines_.size() || lines_[i + 1].block != w.block;
  const std::size_t end = last_in_block ? block.size() : lines_[i + 1].start;
  return std::string_view(block).substr(w.start, end - w.start - 2);
}

std::string TStringList::Text() const {
  std::size_t size = 0;
  for (const auto& b : blocks_) size += b.size();
  std::string text;
  text.reserve(size);
  for (const auto& b : blocks_) text += b;
  return text;
}

}  // namespace infofiscal
