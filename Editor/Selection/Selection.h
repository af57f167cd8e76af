// The expression by which people say which objects they mean.
//
//   via and net:GND                     all vias of the net GND
//   pad & component:U1                  the pads of U1
//   (track | arc) and layer:F.Cu and not class:Power
//   component:R* and in:100,80,120,95   resistors within a rectangle
//
// Words that stand alone: a kind (track, arc, via, pad, text, fill, region, zone, component, net, dimension,
// rule, room, body, connection), all, free (member of no group), locked, selected, teardrop, smd, through.
// Words with a value, where * and ? in a name match any characters and any one:
//   net:NAME          the object is on that net
//   class:NAME        its net is of that net class
//   layer:NAME        it stands on that layer: the file's name (F.Cu), the user's, or top, bottom, multi
//   component:NAME    it is that component or a member of it, by designator
//   sheet:NAME        it is a component of that sheet of the schematic, "/Power/", or a member of one
//   component-class:NAME  the same, of that class of components
//   group:NAME        the same, in that group, or in one within it
//   name:NAME         its own name: a pad's, a net's, a component's, a text's string
//   in:X1,Y1,X2,Y2    its box lies within the rectangle; places as in the board file (y down), in mm or with
//                     a unit: 10mm, 400mil, 0.4in
// Combined by and (&), or (|), not (!), and parentheses; `and` binds closer than `or`. Words do not care
// about case, names do, layers do not. A name with blanks or signs of the expression stands in "quotes",
// where
// \" and \\ stand for those characters.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Editor/Model/Board.h"
#include "Editor/Selection/Length.h"

namespace Ketril::Editor {

// What is wrong with an expression, and where: `column` counts characters from 1.
class SelectionError : public std::runtime_error {
 public:
  SelectionError(std::size_t column, const std::string& message);
  std::size_t Column() const { return column_; }

 private:
  std::size_t column_;
};

class Selection {
 public:
  // Raises SelectionError. `text` is UTF-8.
  explicit Selection(std::string_view text, LengthUnit default_unit = LengthUnit::Millimetre);
  ~Selection();
  Selection(Selection&&) noexcept;
  Selection& operator=(Selection&&) noexcept;

  bool Matches(const Primitive& object, const Board& board) const;

  // Sets `Selected` of every object of the board to whether it matches; gives the count of those that do.
  std::size_t Apply(Board& board) const;

  struct Node;

 private:
  std::unique_ptr<Node> root_;
};

// True when `name` fits `pattern`, in which * stands for any characters and ? for any one.
bool MatchesPattern(std::u16string_view name, std::u16string_view pattern);

}  // namespace Ketril::Editor
