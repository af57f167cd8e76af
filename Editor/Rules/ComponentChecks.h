// What rules ask of components: distances between them, and rooms that hold them in or keep them out.
//
// A component is measured by its box, which leaves its designator and comment out.
#pragma once

#include <optional>
#include <vector>

#include "Editor/Model/Component.h"
#include "Editor/Rules/Clearance.h"

namespace Ketril::Editor {

// Component clearance: the boxes of two components on one side that the rule governs are nearer than its
// horizontal gap.
std::optional<Violation> CheckComponents(const Rule& rule, Component& a, Component& b);
// A room: a component of its first scope on its side sticks out of the region, or reaches into one that it
// is to stay out of.
std::optional<Violation> CheckConfinement(Rule& room, Component& component);

// Of the board, in the order of the components; the kinds component clearance and confinement only.
std::vector<Violation> CheckComponentRules(Board& board, TRuleKindSet kinds);

// True when the box lies within the region, touching included; false for a region without vertices.
bool IsBoxWithin(const TCoordRect& box, const Ring& region);
// True when they share a place.
bool DoesBoxMeet(const TCoordRect& box, const Ring& region);

}  // namespace Ketril::Editor
