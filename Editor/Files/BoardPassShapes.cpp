// Drawn shapes: polygons, rectangles, curves.
#include <algorithm>
#include <cstdlib>

#include "Editor/Files/BoardPass.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

std::vector<TCoordPoint> CurvePoints(std::vector<TCoordPoint> points) {
  if (points.size() == 4) {
    const TCoordPoint controls[4] = {points[0], points[1], points[2], points[3]};
    points.resize(1);
    AddCurvePoints(controls, points);
  }
  return points;
}

}  // namespace

TCoordPoint BoardPass::Corner(const Place& x, const Place& y) const {
  TCoordPoint corner;
  if (!placement_.ToBoard(TakeNanometres(x.x), TakeNanometres(y.y), corner)) {
    in_.Fail(x.x.begin, "a corner of this shape is out of range, which is 2147 mm");
  }
  return corner;
}

// `(gr_poly (pts ...) ...)`
void BoardPass::PolygonShape(Region& region) {
  EachOnce([&](const Item& item, std::uint64_t key) {
    if (key == "pts"_word) {
      if (!edits_) region.data.rings.resize(1);
      if (region.data.rings.size() == 1) {
        Outlined(region.data.rings.front().points);
      } else {
        CannotRewrite();
      }
    } else {
      ShapeWord(item, key, region);
    }
  });
  Require("pts"_word, "pts");
  EndShape(region, true);
}

void BoardPass::Rectangle(Region& region) {
  Place start, end;
  EachOnce([&](const Item& item, std::uint64_t key) {
    switch (key) {
      case "start"_word:
        start = TakePlace();
        break;
      case "end"_word:
        end = TakePlace();
        break;
      default:
        ShapeWord(item, key, region);
    }
  });
  Require("start"_word, "start");
  Require("end"_word, "end");
  const std::vector<TCoordPoint> corners = {start.at, Corner(end, start), end.at, Corner(start, end)};
  if (!edits_) {
    region.data.rings = {{corners, false}};
  } else {
    PutRectangle(start, end, corners, region.data.rings);
  }
  EndShape(region, false);
}

void BoardPass::PutRectangle(const Place& start, const Place& end, const std::vector<TCoordPoint>& corners,
                             const std::vector<Ring>& rings) {
  if (rings.size() != 1 || rings.front().points.size() != 4) return CannotRewrite();
  const std::vector<TCoordPoint>& wanted = rings.front().points;
  if (std::ranges::equal(corners, wanted,
                         [&](TCoordPoint a, TCoordPoint b) { return placement_.IsAt(a, b); })) {
    return;
  }
  Nanometres x[4], y[4];
  for (int i = 0; i < 4; ++i) placement_.ToFile(wanted[static_cast<std::size_t>(i)], x[i], y[i]);
  const auto is_near = [](Nanometres a, Nanometres b) { return std::abs(a - b) <= 4; };
  if (!is_near(x[0], x[3]) || !is_near(x[1], x[2]) || !is_near(y[0], y[1]) || !is_near(y[2], y[3])) {
    return CannotRewrite();
  }
  PutPlace(start, wanted[0]);
  PutPlace(end, wanted[2]);
}

// A Bezier curve of four points, as chords.
void BoardPass::Curve(Region& region) {
  if (!edits_) region.data.closed = region.data.filled = false;
  Outline outline;
  EachOnce([&](const Item& item, std::uint64_t key) {
    if (key == "pts"_word) {
      outline = TakeOutline();
    } else {
      ShapeWord(item, key, region);
    }
  });
  Require("pts"_word, "pts");
  if (edits_) {
    PutCurve(outline, region.data.rings);
  } else {
    region.data.rings = {{CurvePoints(outline.points), false}};
  }
  EndShape(region, false);
}

void BoardPass::PutCurve(const Outline& outline, const std::vector<Ring>& rings) {
  if (rings.size() != 1) return CannotRewrite();
  const std::vector<TCoordPoint>& wanted = rings.front().points;
  const auto is_wanted = [&](const std::vector<TCoordPoint>& controls) {
    return std::ranges::equal(CurvePoints(controls), wanted,
                              [&](TCoordPoint a, TCoordPoint b) { return placement_.IsAt(a, b); });
  };
  if (is_wanted(outline.points)) return;
  // Moved as a whole, or turned over with its footprint, which mirrors its places top to bottom.
  std::vector<TCoordPoint> moved, mirrored;
  for (const Place& place : outline.places) {
    if (!wanted.empty()) moved.push_back(Shifted(place.at, outline.points.front(), wanted.front()));
    TCoordPoint point = place.at;
    if (!placement_.ToBoard(TakeNanometres(place.x), -TakeNanometres(place.y), point)) return CannotRewrite();
    mirrored.push_back(point);
  }
  if (outline.is_plain && is_wanted(moved)) {
    for (std::size_t i = 0; i < moved.size(); ++i) PutPlace(outline.places[i], moved[i]);
  } else if (outline.is_plain && is_wanted(mirrored)) {
    for (std::size_t i = 0; i < mirrored.size(); ++i) PutPlace(outline.places[i], mirrored[i]);
  } else {
    CannotRewrite();
  }
}

void BoardPass::ShapeWord(const Item& item, std::uint64_t key, Region& region) {
  switch (key) {
    case "width"_word:
      Length(region.data.line_width);
      break;
    case "stroke"_word:
      if (const Measure width = Stroke(); width.IsThere()) Measured(width, region.data.line_width);
      break;
    case "fill"_word: {
      const bool has_word = in_.HasWord();
      const SExpressionWord word = has_word ? SExpressionCursor(in_).Word("a fill") : SExpressionWord{};
      const bool filled = TakeFill();
      if (!edits_) {
        region.data.filled = filled;
      } else if (filled != region.data.filled) {
        has_word ? Put(word, words_->Fill(region.data.filled)) : CannotRewrite();
      }
      break;
    }
    default:
      Common(item, key, region);
  }
}

void BoardPass::EndShape(Region& region, bool filled) {
  if (!Seen("fill"_word)) {
    if (!edits_) {
      region.data.filled = filled;
    } else if (region.data.filled != filled) {
      CannotRewrite();
    }
  }
  if (region.Has(kFlag_TearDrop)) CannotRewrite();
  EndCommon(region);
}

}  // namespace Ketril::Editor
