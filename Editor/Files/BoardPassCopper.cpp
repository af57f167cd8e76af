// A pad's copper on a layer: its shape and sizes, its corners, and the parts of a custom shape.
#include <algorithm>

#include "Editor/Files/BoardComposer.h"
#include "Editor/Files/BoardPass.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

struct ShapeName {
  std::string_view name;
  TShape shape;
};
constexpr ShapeName kShapes[] = {{"circle", eRounded},
                                 {"oval", eRounded},
                                 {"rect", eRectangular},
                                 {"trapezoid", eRectangular},
                                 {"roundrect", eRoundedRectangular},
                                 {"chamfered_rect", eRoundedRectangular}};
constexpr const char* kCorners[] = {"top_left", "top_right", "bottom_left", "bottom_right"};

TShape ShapeNamed(std::string_view name) {
  const auto found = std::ranges::find(kShapes, name, &ShapeName::name);
  return found == std::end(kShapes) ? eRounded : found->shape;
}

}  // namespace

bool BoardPass::CopperWord(const Item& item, std::uint64_t key, PadLayer& copper, CopperWords& words) {
  switch (key) {
    case "shape"_word:
      words.shape = in_.Word("a shape");
      return true;
    case "size"_word:
      words.x_size = TakeMeasure();
      words.y_size = TakeMeasure();
      return true;
    case "rect_delta"_word:
      words.x_delta = TakeMeasure();
      words.y_delta = TakeMeasure();
      return true;
    case "offset"_word:
      Offset(copper.offset);
      return true;
    case "roundrect_rratio"_word:
      Number(copper.corner_ratio);
      return true;
    case "chamfer_ratio"_word:
      Number(copper.chamfer_ratio);
      return true;
    case "chamfer"_word:
      Chamfers(item, copper);
      return true;
    case "options"_word: {
      const Enter level(*this);
      EachOnce([&](const Item&, std::uint64_t option) {
        if (option == "anchor"_word) words.anchor = in_.Word("a shape");
      });
      return true;
    }
    case "primitives"_word:
      Primitives(item, copper);
      return true;
    default:
      return false;
  }
}

void BoardPass::EndCopper(PadLayer& copper, const CopperWords& words) {
  const bool is_custom = words.shape.text == "custom";
  const bool is_circle = words.shape.text == "circle";
  const bool is_trapezoid = words.shape.text == "trapezoid";
  const TShape shape = ShapeNamed(is_custom ? words.anchor.text : words.shape.text);
  // The file's x makes the left side the longer one.
  const TCoordPoint trapezoid =
      is_trapezoid ? TCoordPoint{-words.x_delta.value, words.y_delta.value} : TCoordPoint{};
  const TCoord y_size = is_circle ? words.x_size.value : words.y_size.value;  // a circle's y does not count
  if (!edits_) {
    copper.shape = shape;
    copper.x_size = words.x_size.value;
    copper.y_size = y_size;
    if (is_trapezoid) copper.trapezoid = trapezoid;
    return;
  }
  PutMeasure(words.x_size, copper.x_size);
  if (copper.y_size != y_size) PutMeasure(words.y_size, copper.y_size);
  if (is_trapezoid && words.x_delta.IsThere()) {
    PutMeasure(words.x_delta, -copper.trapezoid.x);
    PutMeasure(words.y_delta, copper.trapezoid.y);
  }
  if (!words.x_delta.IsThere() && copper.trapezoid != TCoordPoint{}) {
    InsertList(BoardComposer::PadTrapezoid(copper));
  }
  if (copper.shape != shape && is_custom) {
    if (!words.anchor.text.empty()) Put(words.anchor, copper.shape == eRectangular ? "rect" : "circle");
  } else if (copper.shape != shape || (is_circle && copper.x_size != copper.y_size) ||
             (copper.trapezoid == TCoordPoint{}) != (trapezoid == TCoordPoint{})) {
    Put(words.shape, BoardComposer::PadShape(*words_, copper));
    if (!Seen("roundrect_rratio"_word) && !Seen("chamfer"_word)) {
      for (const std::string& list : BoardComposer::PadCorners(*words_, copper)) InsertList(list);
    }
  }
}

void BoardPass::Chamfers(const Item& item, PadLayer& copper) {
  std::uint8_t corners = 0;
  while (in_.HasWord()) {
    const std::string_view word = in_.Word("a corner").text;
    for (int i = 0; i < 4; ++i) {
      if (word == kCorners[i]) corners = static_cast<std::uint8_t>(corners | 1u << i);
    }
  }
  if (!edits_) {
    copper.chamfer_corners = corners;
  } else if (corners != copper.chamfer_corners) {
    in_.Leave(in_.Depth() - 1);
    edits_->Replace(item.begin, in_.Position(), BoardComposer::PadChamfer(copper));
  }
}

// The parts of a custom shape, about the pad's centre; lines among them become polygons.
void BoardPass::Primitives(const Item& item, PadLayer& copper) {
  std::vector<std::vector<TCoordPoint>> polygons;
  {
    TextEdits* const edits = std::exchange(edits_, nullptr);
    const Placement outer = std::exchange(placement_, Placement());
    const Enter level(*this);
    Each([&](const Item& part, std::uint64_t key) {
      if (part.is_list) PadPrimitive(key, polygons);
    });
    placement_ = outer;
    edits_ = edits;
  }
  if (!edits_) {
    copper.custom = std::move(polygons);
  } else if (copper.custom != polygons) {
    edits_->Replace(item.begin, in_.Position(), BoardComposer::PadPrimitives(copper));
  }
}

BoardPass::PartWords BoardPass::TakePartWords(std::uint64_t kind) {
  const Enter level(*this);
  PartWords words;
  words.filled = kind == "gr_poly"_word;
  EachOnce([&](const Item&, std::uint64_t key) {
    switch (key) {
      case "start"_word:
      case "center"_word:
        words.start = TakePlace();
        break;
      case "mid"_word:
        words.mid = TakePlace();
        break;
      case "end"_word:
        words.end = TakePlace();
        break;
      case "angle"_word:
        Number(words.angle);
        break;
      case "width"_word:
        Length(words.width);
        break;
      case "stroke"_word:
        words.width = Stroke().value;
        break;
      case "fill"_word:
        words.filled = TakeFill();
        break;
      case "pts"_word:
        words.points = TakeOutline().points;
        break;
      default:
        break;
    }
  });
  return words;
}

// Where the pen goes; nowhere for a part of no kind that is known.
std::vector<TCoordPoint> BoardPass::PathOfPart(std::uint64_t kind, const PartWords& words) {
  const TCoordPoint start = words.start.at, end = words.end.at;
  std::vector<TCoordPoint> path = words.points;
  ArcData arc;
  bool clockwise = false;
  switch (kind) {
    case "gr_poly"_word:
      return path;
    case "gr_rect"_word:
      return {start, {end.x, start.y}, end, {start.x, end.y}};
    case "gr_circle"_word:
      return ArcAround(start, end, 360, arc) ? PointsOnArc(arc) : path;
    case "gr_arc"_word: {
      const bool is_arc = words.mid.IsThere() ? ArcThrough(start, words.mid.at, end, arc, clockwise)
                                              : ArcAround(start, end, -words.angle, arc);
      return is_arc ? PointsOnArc(arc) : path;
    }
    case "gr_line"_word:
      return {start, end};
    case "gr_curve"_word:
      if (path.size() == 4) {
        const TCoordPoint controls[4] = {path[0], path[1], path[2], path[3]};
        path.resize(1);
        AddCurvePoints(controls, path);
      }
      return path;
    default:
      return {};
  }
}

void BoardPass::PadPrimitive(std::uint64_t kind, std::vector<std::vector<TCoordPoint>>& polygons) {
  const PartWords words = TakePartWords(kind);
  std::vector<TCoordPoint> path = PathOfPart(kind, words);
  const bool closed = kind == "gr_poly"_word || kind == "gr_rect"_word || kind == "gr_circle"_word;
  // A pen of no width draws nothing of what is not filled.
  for (std::size_t i = 0; words.width > 0 && i + 1 < path.size() + (closed ? 1 : 0); ++i) {
    polygons.push_back(LineAsPolygon(path[i], path[(i + 1) % path.size()], words.width));
  }
  if (words.filled && closed && path.size() > 2) polygons.push_back(std::move(path));
}

}  // namespace Ketril::Editor
