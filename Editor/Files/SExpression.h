// Steps through the text of nested lists, "(word word (word ...) ...)", without building a tree: the caller
// takes what it knows and the rest is skipped. Words may be in double quotes, with backslash escapes, or in
// bars, |...|, over many lines; a quote or a bar within a bare word is a letter like any other.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Ketril::Editor {

// A file that cannot be read. Line and column count from 1, columns in characters; line 0 means that the
// whole file is meant. what() is "file:line:column: message. mend".
class FileError : public std::runtime_error {
 public:
  FileError(std::string file, std::size_t line, std::size_t column, std::string message, std::string mend);
  const std::string file;
  const std::size_t line;
  const std::size_t column;
  const std::string message;
  const std::string mend;  // what may help, or empty
};

// Raises a FileError when the text is no text: a byte of zero, or no UTF-8.
void CheckText(const std::string& text, const std::string& file);

// A word as it stands, with its place.
struct SExpressionWord {
  std::string_view text;  // without the quotes, escapes not resolved
  std::uint32_t begin = 0;
  std::uint32_t end = 0;  // behind the closing quote
  bool quoted = false;
};

// What stands in a list: a word, or a list with its first word, empty when it starts with none.
struct SExpressionItem {
  SExpressionWord word;
  std::uint32_t begin = 0;  // of the list's parenthesis, or of the word
  bool is_list = false;
};

class SExpressionCursor {
 public:
  static constexpr unsigned kMaxDepth = 1000;

  // The text, below 4 GB and free of zero bytes, and the file's name are the caller's and outlive the cursor.
  SExpressionCursor(const std::string& text, const std::string& file, std::uint32_t position = 0);

  // The next item of the list that the cursor is in; of a list the cursor is behind its first word then.
  // False at the end of the list: the cursor is behind it.
  bool Next(SExpressionItem& item);
  // The rest of the list, item by item; whatever `visit` leaves of a list that it was given is skipped.
  template <class Visit>
  void ForEach(Visit&& visit) {
    const unsigned depth = depth_;
    for (SExpressionItem item; Next(item);) {
      visit(item);
      Leave(depth);
    }
  }
  // The next word of the list; an error that asks for `what` when there is none.
  SExpressionWord Word(const char* what);
  // True when a word follows in the list.
  bool HasWord();
  // Out of inner lists until this depth is reached.
  void Leave(unsigned depth);
  // Behind the end of the list that the cursor is in, where the caller knows that it is.
  void LeaveAt(std::uint32_t end);
  // Blanks; true at the end of the text.
  bool AtEnd();

  std::uint32_t Position() const { return position_; }
  unsigned Depth() const { return depth_; }

  [[noreturn]] void Fail(std::uint32_t position, std::string message, std::string mend = {}) const;

 private:
  void SkipBlanks();
  SExpressionWord TakeWord();
  void SkipDelimited(char delimiter);  // from the opening one to behind the closing one
  void Open();
  [[noreturn]] void FailAtEnd() const;

  const std::string* text_;
  const std::string* file_;
  const char* data_;
  std::uint32_t position_;
  unsigned depth_ = 0;
};

// The text of a word with its escapes resolved, UTF-8.
std::string ResolveEscapes(std::string_view text);
// A text as a word: in quotes, or, unless `always` is set, bare where the oldest versions leave quotes out.
std::string QuoteWord(std::string_view utf8, bool always);

// A 64-bit FNV-1a hash of a keyword, for use in a switch.
constexpr std::uint64_t KeywordHash(std::string_view word) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (const char c : word) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
  return hash;
}
namespace Literals {
constexpr std::uint64_t operator""_word(const char* text, std::size_t size) {  // the first word of a list
  return KeywordHash({text, size});
}
constexpr std::uint64_t operator""_bare(const char* text, std::size_t size) {  // a word by itself
  return ~KeywordHash({text, size});
}
}  // namespace Literals

}  // namespace Ketril::Editor
