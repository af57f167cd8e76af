#include "Ketril/Display.h"

#include <algorithm>
#include <iostream>
#include <vector>

#include "Editor/Files/FileText.h"
#include "Editor/Files/SExpression.h"
#include "Ketril/Answers.h"
#include "Ketril/Exit.h"
#include "Ketril/Session.h"
#include "Ketril/ToolsLibrary.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Row = std::vector<std::string>;

// How many characters a terminal shows.
std::size_t WidthOf(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

char SeparatorOf(std::string_view values) {
  bool quoted = false;
  for (const char c : values) {
    if (c == '"') quoted = !quoted;
    if (!quoted && (c == ',' || c == ';' || c == '\t')) return c;
  }
  return ',';
}

// Takes the next row off the front of the values; an empty line is one without values. A line break within a
// value is shown as a blank.
Row TakeRow(std::string_view& values, char separator) {
  Row row(values.starts_with('\n') || values.starts_with("\r\n") ? 0 : 1);
  bool quoted = false;
  std::size_t i = 0;
  for (; i < values.size(); ++i) {
    const char c = values[i];
    if (c == '"' && quoted && values.substr(i + 1, 1) == "\"") {
      row.back() += values[++i];
    } else if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && c == separator) {
      row.emplace_back();
    } else if (!quoted && c == '\n') {
      break;
    } else if (c != '\r' && !row.empty()) {
      row.back() += c == '\n' || c == '\t' ? ' ' : c;
    }
  }
  values.remove_prefix(std::min(i + 1, values.size()));
  return row;
}

bool IsNumber(std::string_view text) {
  return !text.empty() && text.find_first_of("0123456789") < 3 &&
         text.find_first_not_of("+-.0123456789%mil") == text.npos;
}

struct Column {
  std::size_t width = 0;
  bool of_numbers = true;  // but for its heading
};

std::string BlockInColumns(const std::vector<Row>& rows) {
  std::vector<Column> columns;
  for (const Row& row : rows) {
    columns.resize(std::max(columns.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
      columns[i].width = std::max(columns[i].width, WidthOf(row[i]));
      columns[i].of_numbers &= &row == rows.data() || row[i].empty() || IsNumber(row[i]);
    }
  }
  std::string text;
  for (const Row& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string blanks(columns[i].width - WidthOf(row[i]), ' ');
      line += (i > 0 ? "  " : "") + (columns[i].of_numbers ? blanks + row[i] : row[i] + blanks);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace

std::string InColumns(std::string_view values) {
  const char separator = SeparatorOf(values);
  std::string text;
  std::vector<Row> block;
  const auto end_block = [&] {
    text += BlockInColumns(block);
    block.clear();
  };
  while (!values.empty()) {
    block.push_back(TakeRow(values, separator));
    if (block.back().empty()) end_block();
  }
  end_block();
  return text;
}

void DisplayFile(const Options& options) {
  std::string text;
  try {
    text = Editor::ReadFileText(options.file);
  } catch (const Editor::FileError& error) {
    throw Failure(kExit_Unreadable, error.what());
  }
  Answers answers(true, nullptr, std::cerr);
  const ToolsLibrary library;
  const Session session(answers, nullptr, true, {}, [&](const std::filesystem::path&) {
    std::cout << (options.as_spread ? InColumns(text) : text) << std::flush;
  });
  using Tool = void(const std::u16string&, bool);
  library.Find<Tool>("Tools_DisplayReportFile")(Platform::ToUtf16(options.file), options.as_spread);
}

}  // namespace Ketril::Command
