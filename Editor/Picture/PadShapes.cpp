#include "Editor/Picture/PadShapes.h"

#include "Editor/Copper/Outline.h"

namespace Ketril::Editor {

namespace {

// How far a chord may run inside a round corner, in units.
constexpr double kChordError = 500;

Svg& operator<<(Svg& svg, Spot spot) {
  return svg << Mm(spot.x) << "," << Mm(-spot.y);
}

void DrawRing(Svg& svg, const Spots& ring) {
  svg << "<polygon points=\"";
  for (const Spot& spot : ring) svg << spot << " ";
  svg << "\"/>\n";
}

// Two equal discs are a line with round ends.
void DrawHull(Svg& svg, const Hull& hull) {
  const std::vector<Disc>& discs = hull.discs;
  if (discs.size() == 1) {
    svg << "<circle cx=\"" << Mm(discs[0].x) << "\" cy=\"" << Mm(-discs[0].y);
    svg << "\" r=\"" << Mm(discs[0].radius) << "\"/>\n";
  } else if (discs.size() == 2) {
    svg << "<path class=\"pen\" stroke-width=\"" << Mm(2 * discs[0].radius) << "\" d=\"M";
    svg << Spot{discs[0].x, discs[0].y} << "L" << Spot{discs[1].x, discs[1].y} << "\"/>\n";
  } else {
    DrawRing(svg, HullRing(hull, 0, kChordError));
  }
}

}  // namespace

void DrawPad(Svg& svg, const Pad& pad, TV7_Layer layer) {
  for (const Form& form : FormsOf(pad, layer)) {
    if (const Hull* hull = std::get_if<Hull>(&form)) DrawHull(svg, *hull);
    if (const Area* area = std::get_if<Area>(&form)) DrawRing(svg, area->outer.front());
  }
}

void DrawPadHole(Svg& svg, const Pad& pad) {
  if (const Hull hole = HoleOf(pad); !hole.discs.empty()) DrawHull(svg, hole);
}

}  // namespace Ketril::Editor
