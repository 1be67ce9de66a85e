// The run's shared string list: register lines, only ever appended.
//
// Lines live in one buffer, each followed by CR LF, so the text of the file is the buffer
// itself: no copy at the end of a run, no allocation per line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace infofiscal {

class TStringList {
 public:
  TStringList() = default;
  TStringList(const TStringList&) = delete;
  TStringList& operator=(const TStringList&) = delete;

  void Add(std::string_view line) {
    starts_.push_back(text_.size());
    text_.append(line);
    text_.append("\r\n");
  }
  void Clear() {
    text_.clear();
    starts_.clear();
  }
  std::size_t Count() const { return starts_.size(); }
  // Line `i` without its CR LF. REQUIRES: i < Count().
  std::string_view operator[](std::size_t i) const {
    const std::size_t end = i + 1 < starts_.size() ? starts_[i + 1] : text_.size();
    return std::string_view(text_).substr(starts_[i], end - starts_[i] - 2);
  }
  // Every line followed by CR LF; empty for an empty list.
  const std::string& Text() const { return text_; }
  // Hands the text over and empties the list.
  std::string TakeText() {
    starts_.clear();
    return std::move(text_);
  }

 private:
  std::string text_;
  std::vector<std::size_t> starts_;
};

}  // namespace infofiscal
