// Small boards of all kinds of objects, from bytes.
#pragma once

#include <string>

#include "Editor/Model/Board.h"
#include "Fuzz/Support/Bytes.h"

namespace Ketril::Fuzz {

// An object takes so many bytes, so that a byte that changes changes one object.
inline constexpr std::size_t kBytesPerObject = 8;

// Text for Tests::BoardFromText: an object for each piece of the bytes.
std::string RandomBoardText(Bytes bytes);
// Rooms, design channels and rules of clearance that the text has no words for. Onto the board as it is.
void AddRandomRules(Editor::Board& board, Bytes bytes);

// Whole steps of 25 mil for the most part, sometimes beside them, sometimes far out.
TCoordPoint RandomPlace(Bytes& bytes);
// From nothing to more than a board; `odd` ones may be negative or the greatest there is.
TCoord RandomLength(Bytes& bytes, bool odd = false);
Editor::Net* RandomNet(Editor::Board& board, Bytes& bytes);  // null at times
// Of the kinds; null when there is none, and at times.
Editor::Primitive* RandomObject(Editor::Board& board, TObjectSet kinds, Bytes& bytes);

}  // namespace Ketril::Fuzz
