// What is on a board, as text: for comparing boards.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Tests {

// Kind, layer, net, flags and data. Angles to three decimals; the scratch flags are left out.
std::string Describe(const Editor::Primitive& object);
// A line for each object, members after their group, in the order of the board or sorted.
std::vector<std::string> DescribeBoard(const Editor::Board& board, bool sorted = false);

// The first lines that differ; empty when none does. Words that are numbers may differ by `tolerance`, or by
// whole turns.
std::string Differences(const std::vector<std::string>& expected, const std::vector<std::string>& actual,
                        double tolerance = 0);

}  // namespace Ketril::Tests
