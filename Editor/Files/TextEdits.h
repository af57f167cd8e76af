// Replacements in a text, noted on a walk through it and done all at once.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Ketril::Editor {

using TextSink = std::function<void(std::string_view)>;

class TextEdits {
 public:
  // The text is the caller's and outlives the edits. Edits don't overlap; those at one place keep their
  // order.
  explicit TextEdits(const std::string& text) : text_(text) {}

  void Replace(std::uint32_t begin, std::uint32_t end, std::string replacement);
  void Insert(std::uint32_t at, std::string text) { Replace(at, at, std::move(text)); }
  // Takes the blanks before it away as well.
  void Drop(std::uint32_t begin, std::uint32_t end);
  // The blanks before a place, from the last line break on when there is one.
  std::string_view BlanksBefore(std::uint32_t at) const;

  // True when there is an edit at or behind the place.
  bool ChangedSince(std::uint32_t at) const;
  std::size_t Count() const { return edits_.size(); }
  void ForgetFrom(std::size_t count) { edits_.resize(count); }
  // The edited text, piece by piece.
  void Apply(const TextSink& sink);

 private:
  struct Edit {
    std::uint32_t begin;
    std::uint32_t end;
    std::string text;
  };
  std::uint32_t BlanksBegin(std::uint32_t at) const;

  const std::string& text_;
  std::vector<Edit> edits_;
};

}  // namespace Ketril::Editor
