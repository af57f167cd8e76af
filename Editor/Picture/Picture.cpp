#include "Editor/Picture/Picture.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <numbers>

#include "Editor/Picture/LayerColours.h"
#include "Editor/Picture/PadShapes.h"
#include "Editor/Picture/Svg.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

constexpr const char* kBackground = "#001023";
constexpr const char* kHighlight = "#ffffff";
constexpr const char* kCaption = "#c8d3e0";
constexpr TCoord kMargin = 787402;  // 2 mm

void DrawTrack(Svg& svg, const TrackData& track) {
  svg << "<path class=\"pen\" stroke-width=\"" << Mm(track.width) << "\" d=\"M";
  svg << At{track.p1} << "L" << At{track.p2} << "\"/>\n";
}

void DrawArc(Svg& svg, const ArcData& arc) {
  double sweep = std::fmod(arc.angle2 - arc.angle1, 360.0);
  if (sweep <= 0) sweep += 360;
  if (sweep >= 360 - 1e-9) {
    svg << "<circle class=\"pen\" stroke-width=\"" << Mm(arc.width) << "\" cx=\"" << Mm(arc.center.x);
    svg << "\" cy=\"" << Mm(-static_cast<double>(arc.center.y)) << "\" r=\"" << Mm(arc.radius) << "\"/>\n";
    return;
  }
  const auto end = [&](double degrees) {
    const double radians = degrees * std::numbers::pi / 180;
    svg << Mm(arc.center.x + arc.radius * std::cos(radians)) << ",";
    svg << Mm(-(arc.center.y + arc.radius * std::sin(radians)));
  };
  svg << "<path class=\"pen\" stroke-width=\"" << Mm(arc.width) << "\" d=\"M";
  end(arc.angle1);
  svg << "A" << Mm(arc.radius) << " " << Mm(arc.radius) << " 0 " << (sweep > 180 ? "1" : "0") << " 0 ";
  end(arc.angle2);
  svg << "\"/>\n";
}

void DrawRings(Svg& svg, const std::vector<Ring>& rings, bool filled, bool closed, TCoord pen) {
  svg << "<path class=\"" << (filled ? "area" : "pen") << "\"";
  if (pen > 0 || filled) svg << " stroke-width=\"" << Mm(pen) << "\"";
  svg << " d=\"";
  for (const Ring& ring : rings) {
    const char* sign = "M";
    for (const TCoordPoint& point : ring.points) {
      svg << sign << At{point};
      sign = "L";
    }
    if (closed) svg << "Z";
  }
  svg << "\"/>\n";
}

void DrawFill(Svg& svg, const FillData& fill) {
  const double cx = (double(fill.box.x1) + fill.box.x2) / 2, cy = (double(fill.box.y1) + fill.box.y2) / 2;
  svg << "<rect x=\"" << Mm(fill.box.x1) << "\" y=\"" << Mm(-double(fill.box.y2)) << "\" width=\"";
  svg << Mm(double(fill.box.x2) - fill.box.x1) << "\" height=\"" << Mm(double(fill.box.y2) - fill.box.y1);
  svg << "\" transform=\"rotate(" << Num(-fill.rotation) << " " << Mm(cx) << " " << Mm(-cy) << ")\"/>\n";
}

void DrawText(Svg& svg, const Text& text) {
  const TextData& data = text.data;
  static constexpr const char* kAnchors[] = {"start", "middle", "end"};
  // A letter's height is that of a capital: 0.72 of the size of the fonts that a viewer is likely to have.
  const double font = data.size / 0.72;
  const double rise = data.vertical == TextAlign::Low ? 0 : data.vertical == TextAlign::Center ? 0.5 : 1.0;
  svg << "<text font-size=\"" << Mm(font) << "\" text-anchor=\"";
  svg << kAnchors[static_cast<int>(data.horizontal) + 1] << "\" transform=\"translate(" << At{data.anchor}
      << ")";
  if (const double turn = ShownRotation(data); turn != 0) svg << " rotate(" << Num(-turn) << ")";
  if (data.mirrored) svg << " scale(-1 1)";
  svg << "\">";
  std::u16string shown = text.Shown();
  const double first = data.vertical == TextAlign::Low ? 0 : rise * data.size;
  std::size_t from = 0;
  for (int line = 0; from <= shown.size(); ++line) {
    const std::size_t end = std::min(shown.find(u'\n', from), shown.size());
    svg << "<tspan x=\"0\" y=\"" << Mm(first + line * 1.6 * data.size) << "\">";
    svg << Xml{Platform::ToUtf8(std::u16string_view(shown).substr(from, end - from))} << "</tspan>";
    from = end + 1;
  }
  svg << "</text>\n";
}

void DrawVia(Svg& svg, const ViaData& via) {
  svg << "<circle cx=\"" << Mm(via.center.x) << "\" cy=\"" << Mm(-double(via.center.y));
  svg << "\" r=\"" << Mm(via.size / 2.0) << "\"/>\n";
}

double Width(const TCoordRect& box) {
  return double(box.x2) - box.x1;
}

double Height(const TCoordRect& box) {
  return double(box.y2) - box.y1;
}

TCoordRect Both(const TCoordRect& a, const TCoordRect& b) {
  return {std::min(a.x1, b.x1), std::min(a.y1, b.y1), std::max(a.x2, b.x2), std::max(a.y2, b.y2)};
}

constexpr const char* kStyle =
    "<style>.pen{fill:none;stroke:currentColor;stroke-linecap:round;stroke-linejoin:round}"
    ".area{fill:currentColor;fill-rule:evenodd;stroke:currentColor;stroke-linejoin:round}"
    "rect,circle,polygon,text{fill:currentColor}circle.pen{fill:none}"
    "text{font-family:'DejaVu Sans Mono',monospace}</style>\n";

// Draws into one group for each layer; the groups are put together at the end.
class Painter {
 public:
  Painter(Board& board, const PictureOptions& options) : board_(board), options_(options) {}

  // What shows in the box, drawn with the classes of kStyle.
  std::string Paint(const TCoordRect& view) {
    board_.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
      if (object.Has(kFlag_Hidden) || !object.Has(kFlag_EnableDraw)) return;
      if (options_.around && !Overlap(object.Bounds(), view)) return;
      Draw(object);
    });
    return PutTogether(view);
  }

  // The part of the board that the options ask for.
  TCoordRect View() const {
    if (options_.around) return *options_.around;
    TCoordRect box{2147483647, 2147483647, -2147483647, -2147483647};
    const auto add = [&](const TCoordRect& b) { box = Both(box, b); };
    if (const auto outline = board_.Outline()) {
      add(outline->Bounds());
    } else {
      board_.objects.ForEach({eTrackObject, eArcObject, ePadObject, eViaObject, eRegionObject, eFillObject},
                             [&](Primitive& object) { add(object.Bounds()); });
    }
    for (const Ghost& ghost : options_.ghosts) {
      add(ghost.from);
      add(ghost.to);
    }
    if (box.x1 > box.x2) return {0, 0, 3937008, 3937008};
    const auto limit = [](std::int64_t v) {
      return static_cast<TCoord>(std::clamp<std::int64_t>(v, -2147483647, 2147483647));
    };
    return {limit(std::int64_t{box.x1} - kMargin), limit(std::int64_t{box.y1} - kMargin),
            limit(std::int64_t{box.x2} + kMargin), limit(std::int64_t{box.y2} + kMargin)};
  }

 private:
  struct Group {
    Svg plain, bright;
  };

  static bool Overlap(const TCoordRect& a, const TCoordRect& b) {
    return a.x1 <= b.x2 && b.x1 <= a.x2 && a.y1 <= b.y2 && b.y1 <= a.y2;
  }

  bool Shows(TV7_Layer layer) const {
    if (options_.layers.empty()) return IsShownByDefault(board_, layer);
    return std::find(options_.layers.begin(), options_.layers.end(), layer) != options_.layers.end();
  }

  bool ShowsCopper() const {
    const auto copper = board_.CopperLayers();
    return std::any_of(copper.begin(), copper.end(), [&](TV7_Layer layer) { return Shows(layer); });
  }

  Svg& On(const Primitive& object, TV7_Layer layer) {
    Group& group = groups_[layer];
    return options_.highlight && options_.highlight(object, board_) ? group.bright : group.plain;
  }

  void Draw(const Primitive& object) {
    const TV7_Layer layer = object.state.layer;
    if (const Via* via = As<Via>(&object)) {
      if (!ShowsCopper()) return;
      DrawVia(On(object, eV6_MultiLayer), via->data);
      Svg& hole = holes_;
      hole << "<circle cx=\"" << Mm(via->data.center.x) << "\" cy=\"" << Mm(-double(via->data.center.y));
      hole << "\" r=\"" << Mm(via->data.hole / 2.0) << "\"/>\n";
      return;
    }
    if (const Pad* pad = As<Pad>(&object)) {
      if (layer == eV6_MultiLayer ? !ShowsCopper() : !Shows(layer)) return;
      DrawPad(On(object, layer), *pad, layer == eV6_MultiLayer ? TV7_Layer(eV6_TopLayer) : layer);
      DrawPadHole(holes_, *pad);
      return;
    }
    if (!Shows(layer)) return;
    if (const Track* track = As<Track>(&object)) DrawTrack(On(object, layer), track->data);
    if (const Arc* arc = As<Arc>(&object)) DrawArc(On(object, layer), arc->data);
    if (const Fill* fill = As<Fill>(&object)) DrawFill(On(object, layer), fill->data);
    if (const Text* text = As<Text>(&object)) DrawText(On(object, layer), *text);
    if (const Dimension* dimension = As<Dimension>(&object)) {
      for (const TrackData& line : dimension->DrawnLines()) DrawTrack(On(object, layer), line);
    }
    if (const Region* region = As<Region>(&object)) {
      const RegionData& data = region->data;
      DrawRings(On(object, layer), data.rings, data.filled, data.closed, data.line_width);
    }
  }

  void PutGroup(Svg& svg, TV7_Layer layer) {
    const auto found = groups_.find(layer);
    if (found == groups_.end()) return;
    const BoardLayer* entry = board_.FindLayer(layer);
    const std::string plain = found->second.plain.Take(), bright = found->second.bright.Take();
    if (!plain.empty()) {
      svg << "<g data-layer=\"" << Xml{entry ? entry->file_name : "all copper"} << "\" color=\"";
      svg << LayerColour(board_, layer) << "\" opacity=\"" << (options_.highlight ? "0.35" : "0.85")
          << "\">\n";
      svg << plain << "</g>\n";
    }
    if (!bright.empty()) svg << "<g color=\"" << kHighlight << "\" opacity=\"0.9\">\n" << bright << "</g>\n";
  }

  std::string PutTogether(const TCoordRect& view) {
    Svg svg;
    svg << "<rect x=\"" << Mm(view.x1) << "\" y=\"" << Mm(-double(view.y2)) << "\" width=\"";
    svg << Mm(Width(view)) << "\" height=\"" << Mm(Height(view)) << "\" style=\"fill:" << kBackground
        << "\"/>\n";
    bool through_drawn = false;
    for (const TV7_Layer layer : DrawingOrder(board_)) {
      PutGroup(svg, layer);
      if (layer == eV6_TopLayer) {
        PutThrough(svg);
        through_drawn = true;
      }
    }
    if (!through_drawn) PutThrough(svg);
    PutGhosts(svg);
    return svg.Take();
  }

  void PutGhosts(Svg& svg) const {
    if (options_.ghosts.empty()) return;
    svg << "<defs><marker id=\"tip\" orient=\"auto\" refX=\"4\" refY=\"2\" markerWidth=\"5\" "
           "markerHeight=\"4\">"
           "<path fill=\""
        << kHighlight << "\" d=\"M0,0L4,2L0,4Z\"/></marker></defs>\n<g fill=\"none\" stroke=\"" << kHighlight
        << "\" stroke-width=\"0.1\">\n";
    for (const Ghost& ghost : options_.ghosts) {
      const TCoordRect& box = ghost.from;
      const auto middle = [&](const TCoordRect& r) {
        svg << Mm((double(r.x1) + r.x2) / 2) << "," << Mm(-(double(r.y1) + r.y2) / 2);
      };
      svg << "<path stroke-dasharray=\"0.4 0.3\" d=\"M" << At{{box.x1, box.y1}} << "L" << At{{box.x2, box.y1}}
          << "L" << At{{box.x2, box.y2}} << "L" << At{{box.x1, box.y2}}
          << "Z\"/>\n<path marker-end=\"url(#tip)\" d=\"M";
      middle(ghost.from);
      svg << "L";
      middle(ghost.to);
      svg << "\"/>\n";
    }
    svg << "</g>\n";
  }

  void PutThrough(Svg& svg) {
    PutGroup(svg, eV6_MultiLayer);
    svg << "<g data-layer=\"holes\" color=\"#0b1a2b\">\n" << holes_.Take() << "</g>\n";
  }

  Board& board_;
  const PictureOptions& options_;
  std::map<TV7_Layer, Group> groups_;
  Svg holes_;
};

}  // namespace

namespace {

void PutSize(Svg& svg, double width, double height, const char* unit) {
  svg << "width=\"" << Mm(width) << unit << "\" height=\"" << Mm(height) << unit << "\"";
}

void PutViewBox(Svg& svg, const TCoordRect& view) {
  svg << " viewBox=\"" << Mm(view.x1) << " " << Mm(-double(view.y2)) << " " << Mm(Width(view)) << " ";
  svg << Mm(Height(view)) << "\">\n";
}

std::string TitleOf(const Board& board) {
  return board.file.title.empty() ? board.file.path : Platform::ToUtf8(board.file.title);
}

}  // namespace

std::string DrawSvg(Board& board, const PictureOptions& options) {
  Painter painter(board, options);
  const TCoordRect view = painter.View();
  Svg svg;
  svg << "<svg xmlns=\"http://www.w3.org/2000/svg\" ";
  if (options.fills_window) {
    svg << "width=\"100%\" height=\"100%\"";
  } else {
    PutSize(svg, Width(view), Height(view), "mm");
  }
  PutViewBox(svg, view);
  svg << "<title>" << Xml{TitleOf(board)} << "</title>\n" << kStyle << painter.Paint(view) << "</svg>\n";
  return svg.Take();
}

std::string DrawBesideSvg(Board& left, Board& right, const PictureOptions& options) {
  Painter painters[] = {{left, options}, {right, options}};
  const TCoordRect view = Both(painters[0].View(), painters[1].View());
  const double gap = Width(view) / 50, letters = Width(view) / 45;
  const double width = 2 * Width(view) + gap, height = Height(view) + 2 * letters;
  Svg svg;
  svg << "<svg xmlns=\"http://www.w3.org/2000/svg\" ";
  PutSize(svg, width, height, "mm");
  svg << " viewBox=\"0 0 " << Mm(width) << " " << Mm(height) << "\">\n<title>" << Xml{TitleOf(left)}
      << "</title>\n";
  svg << kStyle << "<rect ";
  PutSize(svg, width, height, "");
  svg << " style=\"fill:" << kBackground << "\"/>\n";
  const Board* boards[] = {&left, &right};
  for (int i = 0; i < 2; ++i) {
    const double x = i * (Width(view) + gap);
    svg << "<svg x=\"" << Mm(x) << "\" y=\"0\" ";
    PutSize(svg, Width(view), Height(view), "");
    PutViewBox(svg, view);
    svg << painters[i].Paint(view) << "</svg>\n<text x=\"" << Mm(x) << "\" y=\""
        << Mm(Height(view) + 1.4 * letters) << "\" font-size=\"" << Mm(letters) << "\" color=\"" << kCaption
        << "\">" << Xml{std::filesystem::path(boards[i]->file.path).filename().string()} << "</text>\n";
  }
  svg << "</svg>\n";
  return svg.Take();
}

}  // namespace Ketril::Editor
