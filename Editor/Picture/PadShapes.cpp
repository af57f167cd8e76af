#include "Editor/Picture/PadShapes.h"

#include <algorithm>
#include <cmath>

namespace Ketril::Editor {

namespace {

// Places a shape that is drawn about the origin, y up, at the pad.
void OpenPlace(Svg& svg, const Pad& pad, double extra_rotation) {
  svg << "<g transform=\"translate(";
  svg << At{pad.data.center} << ")";
  const double rotation = pad.data.rotation + extra_rotation;
  if (rotation != 0) svg << " rotate(" << Num(-rotation) << ")";
  svg << "\">";
}

void Polygon(Svg& svg, const std::vector<TCoordPoint>& points) {
  svg << "<polygon points=\"";
  for (const TCoordPoint& point : points) svg << At{point} << " ";
  svg << "\"/>";
}

// A round shape of unequal sides is a line with round ends.
void Stadium(Svg& svg, double x, double y) {
  const double pen = std::min(x, y), dx = (x - pen) / 2, dy = (y - pen) / 2;
  if (dx == 0 && dy == 0) {
    svg << "<circle r=\"" << Mm(pen / 2) << "\"/>";
    return;
  }
  svg << "<path class=\"pen\" stroke-width=\"" << Mm(pen) << "\" d=\"M";
  svg << Mm(-dx) << "," << Mm(-dy) << "L" << Mm(dx) << "," << Mm(dy) << "\"/>";
}

// A box with corners cut at 45 degrees where `corners` says so.
std::vector<TCoordPoint> ChamferedBox(const PadLayer& layer, std::uint8_t corners, double ratio) {
  const TCoord hx = layer.x_size / 2, hy = layer.y_size / 2;
  const TCoord c = static_cast<TCoord>(std::min(layer.x_size, layer.y_size) * ratio);
  std::vector<TCoordPoint> points;
  const auto corner = [&](int bit, TCoordPoint sharp, TCoordPoint first, TCoordPoint second) {
    if (corners & bit) {
      points.push_back(first);
      points.push_back(second);
    } else {
      points.push_back(sharp);
    }
  };
  corner(1, {-hx, hy}, {-hx, hy - c}, {-hx + c, hy});
  corner(2, {hx, hy}, {hx - c, hy}, {hx, hy - c});
  corner(8, {hx, -hy}, {hx, -hy + c}, {hx - c, -hy});
  corner(4, {-hx, -hy}, {-hx + c, -hy}, {-hx, -hy + c});
  return points;
}

void Box(Svg& svg, double x, double y, double radius) {
  svg << "<rect x=\"" << Mm(-x / 2) << "\" y=\"" << Mm(-y / 2) << "\" width=\"" << Mm(x);
  svg << "\" height=\"" << Mm(y) << "\"";
  if (radius > 0) svg << " rx=\"" << Mm(radius) << "\"";
  svg << "/>";
}

// Trapezoid: the sides at the left and right differ by trapezoid.y, those at top and bottom by trapezoid.x.
std::vector<TCoordPoint> Trapezoid(const PadLayer& l) {
  const TCoord hx = l.x_size / 2, hy = l.y_size / 2, dx = l.trapezoid.x / 2, dy = l.trapezoid.y / 2;
  return {{-hx - dy, -hy + dx}, {-hx + dy, hy - dx}, {hx - dy, hy + dx}, {hx + dy, -hy - dx}};
}

}  // namespace

void DrawPad(Svg& svg, const Pad& pad, TV7_Layer on_layer) {
  const PadLayer& layer = pad.On(on_layer);
  OpenPlace(svg, pad, 0);
  const bool shifted = layer.offset.x != 0 || layer.offset.y != 0;
  if (shifted) svg << "<g transform=\"translate(" << At{layer.offset} << ")\">";
  const double shorter = std::min(layer.x_size, layer.y_size);
  if (layer.trapezoid.x != 0 || layer.trapezoid.y != 0) {
    Polygon(svg, Trapezoid(layer));
  } else if (layer.chamfer_corners != 0) {
    Polygon(svg, ChamferedBox(layer, layer.chamfer_corners, layer.chamfer_ratio));
  } else if (layer.shape == eOctagonal) {
    Polygon(svg, ChamferedBox(layer, 15, 1 - std::sqrt(0.5)));
  } else if (layer.shape == eRectangular) {
    Box(svg, layer.x_size, layer.y_size, 0);
  } else if (layer.shape == eRoundedRectangular || layer.shape == eRoundRectShape) {
    Box(svg, layer.x_size, layer.y_size, shorter * layer.corner_ratio);
  } else if (layer.shape != eNoShape) {
    Stadium(svg, layer.x_size, layer.y_size);
  }
  for (const auto& polygon : layer.custom) Polygon(svg, polygon);
  if (shifted) svg << "</g>";
  svg << "</g>\n";
}

void DrawPadHole(Svg& svg, const Pad& pad) {
  if (pad.data.hole <= 0) return;
  OpenPlace(svg, pad, pad.data.hole_rotation);
  const bool slot = pad.data.hole_type == eSlotHole && pad.data.hole_width > pad.data.hole;
  Stadium(svg, slot ? pad.data.hole_width : pad.data.hole, pad.data.hole);
  svg << "</g>\n";
}

}  // namespace Ketril::Editor
