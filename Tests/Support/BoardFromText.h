// Boards for tests, written as short text, one object a line or between semicolons; lengths in mil.
//
//   layers 4                                      copper layers, 2 when not said; comes first
//   net A                                         nets are made when they are first named, too
//   class Power A V*                              a net class: names and patterns
//   track 100,100 300,100 w10 top net A
//   arc 100,100 r50 0..90 w10 top net A           centre, radius, angles in degrees
//   via 100,100 30/15 mid1..bottom net A          size/hole; the span is top to bottom when not said
//   pad 100,100 60x40 rect hole 30 name 1 net A   round, rect, octagon or rounded; multi when no layer is
//   said text 100,100 "Hello" h60 rot 90 topoverlay fill 0,0 100,50 rot 30 bottom region 0,0 100,0 100,100
//   top teardrop net A zone 0,0 900,0 900,900 0,900 top net A { region 10,10 890,10 890,890 top net A }
//   dimension 0,0 100,0 mech1 { track 0,50 100,50 mech1 } ; coordinate 100,100 mech1 { text 100,100 "x" mech1
//   } edge 0,0 1000,0 1000,800 0,800 the board's outline component U1 at 500,500 bottom rot 90 { pad -50,0
//   60x60 name 1 net A ; text 0,80 "10k" comment }
//
// What is in braces behind a component is placed as on a top component that is not turned, from its reference
// point. A component has its designator above its reference point. Every object may say `selected`, `locked`,
// `keepout`, `teardrop`, `union 3`, `rot 30`, `net A` and a layer: top, mid1 and on, bottom, multi,
// topoverlay, bottomoverlay, toppaste, bottompaste, topsolder, bottomsolder, mech1 to mech16. # begins a
// comment.
#pragma once

#include <string_view>

#include "Editor/Model/Board.h"

namespace Ketril::Tests {

// Raises std::runtime_error with the line of a mistake.
Ref<Editor::Board> BoardFromText(std::string_view text);

constexpr TCoord Mil(double mil) {
  return static_cast<TCoord>(mil * 10000 + (mil < 0 ? -0.5 : 0.5));
}

// The object of the class that came as the n-th onto the board; null when there are fewer.
template <class T>
T* Find(const Editor::Board& board, std::size_t n = 0) {
  Editor::Warehouse::Walk walk(board.objects, {T::kKind});
  Editor::Primitive* found = walk.Next();
  while (found && n-- > 0) found = walk.Next();
  return Editor::As<T>(found);
}

}  // namespace Ketril::Tests
