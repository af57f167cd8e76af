#include "Editor/Files/SExpression.h"

#include <array>
#include <cstring>
#include <limits>

namespace Ketril::Editor {

namespace {

enum CharKind : std::uint8_t { kLetter, kBlank, kOpen, kClose };

constexpr std::array<CharKind, 256> kCharKinds = [] {
  std::array<CharKind, 256> kinds{};
  for (const char c : {' ', '\t', '\n', '\r', '\0'}) kinds[static_cast<unsigned char>(c)] = kBlank;
  kinds['('] = kOpen;
  kinds[')'] = kClose;
  return kinds;
}();

CharKind KindOf(char c) {
  return kCharKinds[static_cast<unsigned char>(c)];
}

std::string Describe(const std::string& file, std::size_t line, std::size_t column,
                     const std::string& message, const std::string& mend) {
  std::string text = file;
  if (line > 0) text += ":" + std::to_string(line) + ":" + std::to_string(column);
  text += ": " + message;
  return mend.empty() ? text : text + ". " + mend;
}

// Length of the UTF-8 sequence at `at`, 0 when there is no valid one (Unicode, table 3-7).
std::size_t SequenceLength(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) -> unsigned {
    return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0u;
  };
  const auto follows = [&](std::size_t from, std::size_t count) {
    for (std::size_t i = from; i < count; ++i) {
      if ((byte(i) & 0xc0u) != 0x80u) return std::size_t{0};
    }
    return count;
  };
  const unsigned first = byte(0);
  const unsigned second = byte(1);
  if (first < 0x80) return 1;
  if (first >= 0xc2 && first <= 0xdf) return follows(1, 2);
  if (first >= 0xe0 && first <= 0xef) {
    if ((first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f)) return 0;
    return follows(1, 3);
  }
  if (first >= 0xf0 && first <= 0xf4) {
    if ((first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f)) return 0;
    return follows(1, 4);
  }
  return 0;
}

[[noreturn]] void FailAt(const std::string& text, const std::string& file, std::size_t position,
                         std::string message, std::string mend) {
  std::size_t line = 1;
  std::size_t column = 1;
  for (std::size_t i = 0; i < position && i < text.size(); ++i) {
    if (text[i] == '\n') {
      ++line;
      column = 1;
    } else if ((static_cast<unsigned char>(text[i]) & 0xc0u) != 0x80u) {
      ++column;
    }
  }
  throw FileError(file, line, column, std::move(message), std::move(mend));
}

constexpr char kDamaged[] = "The file may be damaged: take it from a backup, or save the board again";

}  // namespace

FileError::FileError(std::string file_, std::size_t line_, std::size_t column_, std::string message_,
                     std::string mend_)
    : std::runtime_error(Describe(file_, line_, column_, message_, mend_)),
      file(std::move(file_)),
      line(line_),
      column(column_),
      message(std::move(message_)),
      mend(std::move(mend_)) {}

void CheckText(const std::string& text, const std::string& file) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
  for (std::size_t i = 0; i < text.size();) {
    if (i + 8 <= text.size()) {
      std::uint64_t eight = 0;
      std::memcpy(&eight, text.data() + i, 8);
      // No byte with its high bit set and, by the borrow of the subtraction, none of zero.
      if (((eight | (eight - kOnes)) & kHighBits) == 0) {
        i += 8;
        continue;
      }
    }
    if (text[i] == '\0') FailAt(text, file, i, "a byte of zero stands in the text", kDamaged);
    const std::size_t length = SequenceLength(text, i);
    if (length == 0) FailAt(text, file, i, "the text is not UTF-8 here", kDamaged);
    i += length;
  }
}

SExpressionCursor::SExpressionCursor(const std::string& text, const std::string& file, std::uint32_t position)
    : text_(&text), file_(&file), data_(text.c_str()), position_(position) {
  if (text.size() >= std::numeric_limits<std::uint32_t>::max()) {
    throw FileError(file, 0, 0, "the file is larger than 4 GB", "");
  }
}

void SExpressionCursor::Fail(std::uint32_t position, std::string message, std::string mend) const {
  FailAt(*text_, *file_, position, std::move(message), std::move(mend));
}

void SExpressionCursor::FailAtEnd() const {
  Fail(static_cast<std::uint32_t>(text_->size()),
       "the file ends within a list: " + std::to_string(depth_) +
           (depth_ == 1 ? " closing parenthesis is missing" : " closing parentheses are missing"),
       kDamaged);
}

void SExpressionCursor::SkipBlanks() {
  // The zero behind the text counts as a blank, so that it ends a word; it ends the blanks, too.
  while (KindOf(data_[position_]) == kBlank && position_ < text_->size()) ++position_;
}

bool SExpressionCursor::AtEnd() {
  SkipBlanks();
  return position_ == text_->size();
}

void SExpressionCursor::SkipDelimited(char delimiter) {
  const std::uint32_t begin = position_;
  const std::uint32_t size = static_cast<std::uint32_t>(text_->size());
  for (++position_; position_ < size && data_[position_] != delimiter; ++position_) {
    if (delimiter == '"' && data_[position_] == '\\') ++position_;
  }
  if (position_ >= size) {
    position_ = size;
    Fail(begin,
         delimiter == '"' ? "a text in quotes begins here and does not end"
                          : "a text in bars begins here and does not end",
         kDamaged);
  }
  ++position_;
}

SExpressionWord SExpressionCursor::TakeWord() {
  SExpressionWord word;
  word.begin = position_;
  const char first = data_[position_];
  if (first == '"' || first == '|') {
    word.quoted = first == '"';
    SkipDelimited(first);
  } else {
    while (KindOf(data_[position_]) == kLetter) ++position_;
  }
  word.end = position_;
  const std::uint32_t inside = word.quoted ? 1 : 0;
  word.text = {data_ + word.begin + inside, word.end - word.begin - 2 * inside};
  return word;
}

void SExpressionCursor::Open() {
  if (depth_ == kMaxDepth) {
    Fail(position_, "lists are nested deeper than " + std::to_string(kMaxDepth) + " levels", kDamaged);
  }
  ++depth_;
  ++position_;
}

bool SExpressionCursor::Next(SExpressionItem& item) {
  SkipBlanks();
  item.begin = position_;
  if (position_ == text_->size()) {
    if (depth_ > 0) FailAtEnd();
    return false;
  }
  switch (KindOf(data_[position_])) {
    case kClose:
      if (depth_ == 0) Fail(position_, "a closing parenthesis has no opening one", kDamaged);
      --depth_;
      ++position_;
      return false;
    case kOpen:
      Open();
      SkipBlanks();
      item.is_list = true;
      if (KindOf(data_[position_]) == kLetter) {
        item.word = TakeWord();
      } else {
        item.word = {{}, position_, position_, false};
      }
      return true;
    default:
      item.is_list = false;
      item.word = TakeWord();
      return true;
  }
}

bool SExpressionCursor::HasWord() {
  SkipBlanks();
  return KindOf(data_[position_]) == kLetter;
}

SExpressionWord SExpressionCursor::Word(const char* what) {
  if (!HasWord()) {
    if (position_ == text_->size()) FailAtEnd();
    Fail(position_, std::string(what) + " is missing here");
  }
  return TakeWord();
}

void SExpressionCursor::Leave(unsigned depth) {
  while (depth_ > depth) {
    SkipBlanks();
    switch (KindOf(data_[position_])) {
      case kOpen:
        Open();
        break;
      case kClose:
        --depth_;
        ++position_;
        break;
      case kLetter:
        TakeWord();
        break;
      case kBlank:
        FailAtEnd();
    }
  }
}

void SExpressionCursor::LeaveAt(std::uint32_t end) {
  position_ = end;
  --depth_;
}

std::string ResolveEscapes(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  const auto number = [&](std::size_t& i, int base, std::size_t most) {
    unsigned value = 0;
    for (std::size_t count = 0; count < most && i < text.size(); ++count, ++i) {
      const char c = text[i];
      const int digit = c >= '0' && c <= '9'   ? c - '0'
                        : c >= 'a' && c <= 'f' ? c - 'a' + 10
                        : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                               : 99;
      if (digit >= base) break;
      value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
    }
    return static_cast<char>(value);
  };
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i++];
      continue;
    }
    const char c = text[++i];
    constexpr std::string_view kNames = "abfnrtv";
    constexpr std::string_view kValues = "\a\b\f\n\r\t\v";
    if (const std::size_t known = kNames.find(c); known != std::string_view::npos) {
      plain += kValues[known];
      ++i;
    } else if (c == 'x') {
      plain += number(++i, 16, 2);
    } else if (c >= '0' && c <= '7') {
      plain += number(i, 8, 3);
    } else {
      plain += c;
      ++i;
    }
  }
  return plain;
}

std::string QuoteWord(std::string_view utf8, bool always) {
  const bool bare = !always && !utf8.empty() && utf8.front() != '#' && utf8.front() != '|' &&
                    utf8.find('-', 1) == std::string_view::npos &&
                    utf8.find_first_of(" \t\r\n()%{}\"\\") == std::string_view::npos;
  if (bare) return std::string(utf8);
  std::string quoted = "\"";
  for (const char c : utf8) {
    switch (c) {
      case '"':
        quoted += "\\\"";
        break;
      case '\\':
        quoted += "\\\\";
        break;
      case '\n':
        quoted += "\\n";
        break;
      case '\r':
        quoted += "\\r";
        break;
      case '\t':
        quoted += "\\t";
        break;
      case '\0':
        break;
      default:
        quoted += c;
    }
  }
  return quoted + '"';
}

}  // namespace Ketril::Editor
