// The text of pick-and-place files: which of three layouts a file has, and how its lines are cut into values.
// Nothing here knows a board.
//
//   headed   a title, some lines, "Units used: mm" or "mil" (lines in other units are no valid data), a line
//            that is dropped, a line that names the columns, and a line for each component; values with
//            blanks are in quotes
//   blanks   fixed columns between blanks or tabs, from the second line on
//   CSV      the same columns in quotes, with commas between them, in a file with the extension ".csv"
//
// The fixed columns: designator, pattern, mid x, mid y, ref x, ref y, pad x, pad y, side, rotation, comment.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "Interfaces/Types.h"

namespace Ketril::Tools {

enum class TPickPlaceLayout { Unknown, Headed, Blanks, CSV };
// `first_line` without its end.
TPickPlaceLayout PickPlaceLayoutOf(std::u16string_view first_line, std::u16string_view file_name);

// What a line tells of a component, each as it is written.
struct TPickPlaceLine {
  std::u16string Designator, X, Y, Side, Rotation, Comment;
};

// The fields of a line in the headed layout, one after the other.
class TPickPlaceFields {
 public:
  explicit TPickPlaceFields(std::u16string_view line) : rest_(line) {}
  // False at the end of the line. A field begins behind tabs and blanks. One that begins with a quote of
  // either kind goes up to the next quote of that kind, and the character behind that goes with it; any other
  // up to the next tab or blank, commas and all. A field in quotes may be empty.
  bool Next(std::u16string_view& field);

 private:
  std::u16string_view rest_;
};

// The tokens of a line in fixed columns.
class TPickPlaceTokens {
 public:
  TPickPlaceTokens(std::u16string_view line, bool is_csv) : rest_(line), is_csv_(is_csv) {}
  // Empty at the end of the line. Tabs and blanks part tokens, any number of them, in CSV commas too; there a
  // token that begins with a quote goes up to the next one, and may be empty.
  std::u16string_view Next();
  std::u16string_view Rest() const { return rest_; }

 private:
  std::u16string_view rest_;
  bool is_csv_;
};
// The comment is the rest of the line in the layout with blanks, a token in CSV. What the line lacks is
// empty.
TPickPlaceLine ReadFixedLine(std::u16string_view line, bool is_csv);

// The columns of a headed file.
class TPickPlaceColumns {
 public:
  // Finds them by their names, without regard to case: "Designator", "Center-X" and "Center-Y", which may go
  // on, "Layer", "Rotation", "Comment". The first field that fits counts. `units` joins coordinates without.
  TPickPlaceColumns(std::u16string_view names, std::u16string units);
  // "\rLayer column data not found." for each one that is missing.
  std::u16string Missing() const;
  // False when the line has another number of fields than the names; what was found is in `values` all the
  // same. In coordinates a comma is a decimal point, and the units are added where they do not stand already.
  bool Read(std::u16string_view line, TPickPlaceLine& values) const;

 private:
  static constexpr std::size_t kColumns = 6;
  std::u16string Prepared(std::u16string_view coordinate) const;

  std::array<int, kColumns> at_{};  // the number of the field, from 0; -1 for one that is missing
  int count_ = 0;
  std::u16string units_;
};

// A line of the head: the units behind "Units used: "; empty for any other line.
std::u16string_view UnitsOfHeaderLine(std::u16string_view line);

// A coordinate in units: millimetres when it ends in "mm", mils when it ends in "mil", in either case, else
// as `unit` says. Whatever holds "mm" or "mil" counts as ending in it. Empty for what is no number, and for
// one beyond the range.
std::optional<TCoord> ReadPickPlaceCoord(std::u16string_view text, TUnit unit);

}  // namespace Ketril::Tools
