// Lines, arcs and circles; which expression is which drawn object.
#include <algorithm>
#include <cmath>

#include "Editor/Files/BoardPass.h"

namespace Ketril::Editor {

using namespace Literals;

bool BoardPass::Graphic(const Item& item, std::uint64_t key, Group* owner) {
  switch (key) {
    case "segment"_word:
    case "gr_line"_word:
    case "fp_line"_word:
      Object(item, owner, &BoardPass::Line);
      return true;
    case "arc"_word:
    case "gr_arc"_word:
    case "fp_arc"_word:
      ArcOrLine(item, owner);
      return true;
    case "gr_circle"_word:
    case "fp_circle"_word:
      Object(item, owner, &BoardPass::Circle);
      return true;
    case "gr_rect"_word:
    case "fp_rect"_word:
      Object(item, owner, &BoardPass::Rectangle);
      return true;
    case "gr_poly"_word:
    case "fp_poly"_word:
      Object(item, owner, &BoardPass::PolygonShape);
      return true;
    case "gr_curve"_word:
    case "fp_curve"_word:
      Object(item, owner, &BoardPass::Curve);
      return true;
    case "gr_text"_word:
      Object(item, owner, &BoardPass::TextFields);
      return true;
    case "fp_text"_word:
      Object(item, owner, &BoardPass::FootprintText);
      return true;
    case "gr_text_box"_word:
    case "fp_text_box"_word:
      Object(item, owner, &BoardPass::TextBox);
      return true;
    case "dimension"_word:
      Object(item, owner, &BoardPass::DimensionFields);
      return true;
    case "zone"_word:
      ZoneItem(item, owner);
      return true;
    default:
      return false;
  }
}

BoardPass::Measure BoardPass::Stroke() {
  const Enter level(*this);
  Measure width;
  EachOnce([&](const Item&, std::uint64_t key) {
    if (key == "width"_word) width = TakeMeasure();
  });
  return width;
}

void BoardPass::Line(Track& track) {
  if (!edits_) track.data.width = 0;
  EachOnce([&](const Item& item, std::uint64_t key) {
    switch (key) {
      case "start"_word:
        Point(track.data.p1);
        break;
      case "end"_word:
        Point(track.data.p2);
        break;
      case "width"_word:
        Length(track.data.width);
        break;
      case "stroke"_word:
        if (const Measure width = Stroke(); width.IsThere()) Measured(width, track.data.width);
        break;
      default:
        Common(item, key, track);
    }
  });
  Require("start"_word, "start");
  Require("end"_word, "end");
  EndCommon(track);
}

// An arc whose points are on a line, or nearly so, has no centre within the range: it is a line here.
void BoardPass::ArcOrLine(const Item& item, Group* owner) {
  const SExpressionCursor begin = in_;
  Place start, mid, end;
  {
    const Enter level(*this);
    EachOnce([&](const Item&, std::uint64_t key) {
      if (key == "start"_word) start = TakePlace();
      if (key == "mid"_word) mid = TakePlace();
      if (key == "end"_word) end = TakePlace();
    });
  }
  in_ = begin;
  item_ = item;
  ArcData arc;
  bool clockwise = false;
  if (mid.IsThere() && start.IsThere() && end.IsThere() &&
      !ArcThrough(start.at, mid.at, end.at, arc, clockwise)) {
    Object(item, owner, &BoardPass::StraightArc);
  } else {
    Object(item, owner, &BoardPass::CurvedLine);
  }
}

void BoardPass::StraightArc(Track& track) {
  Place mid;
  const TCoordPoint p1 = track.data.p1, p2 = track.data.p2;
  if (!edits_) track.data.width = 0;
  bool moved = false;
  EachOnce([&](const Item& item, std::uint64_t key) {
    const auto end = [&](TCoordPoint& field) {
      const Place place = TakePlace();
      moved = moved || !placement_.IsAt(place.at, field);
      Placed(place, field);
    };
    switch (key) {
      case "start"_word:
        end(track.data.p1);
        break;
      case "mid"_word:
        mid = TakePlace();
        break;
      case "end"_word:
        end(track.data.p2);
        break;
      case "width"_word:
        Length(track.data.width);
        break;
      case "stroke"_word:
        if (const Measure width = Stroke(); width.IsThere()) Measured(width, track.data.width);
        break;
      default:
        Common(item, key, track);
    }
  });
  if (moved) PutPlace(mid, Midpoint(p1, p2));
  EndCommon(track);
}

// `arc` by three points, or, before version 20211014, drawn arcs by centre, start and angle.
void BoardPass::CurvedLine(Arc& arc) {
  Place start, mid, end;
  double angle = 0;
  SExpressionWord angle_word;
  if (!edits_) arc.data.width = 0;
  EachOnce([&](const Item& item, std::uint64_t key) {
    switch (key) {
      case "start"_word:
        start = TakePlace();
        break;
      case "mid"_word:
        mid = TakePlace();
        break;
      case "end"_word:
        end = TakePlace();
        break;
      case "angle"_word:
        angle_word = in_.Word("an angle");
        angle = TakeNumber(angle_word);
        break;
      case "width"_word:
        Length(arc.data.width);
        break;
      case "stroke"_word:
        if (const Measure width = Stroke(); width.IsThere()) Measured(width, arc.data.width);
        break;
      default:
        Common(item, key, arc);
    }
  });
  Require("start"_word, "start");
  Require("end"_word, "end");
  ArcData read = arc.data;
  bool clockwise = false;
  if (mid.IsThere()) {
    ArcThrough(start.at, mid.at, end.at, read, clockwise);
  } else if (!ArcAround(start.at, end.at, -angle, read)) {
    in_.Fail(level_.item.begin, "this arc's radius is out of range, which is 2147 mm");
  }
  if (!edits_) {
    arc.data = read;
  } else if (mid.IsThere()) {
    PutArc({start, mid, end}, read, arc.data, clockwise);
  } else {
    PutArcByAngle({start, end}, angle_word, read, arc.data);
  }
  EndCommon(arc);
}

void BoardPass::PutArc(const Place (&places)[3], const ArcData& was, const ArcData& wanted, bool clockwise) {
  if (was == wanted) return;
  if (IsFullCircle(wanted) && !IsFullCircle(was)) return CannotRewrite();
  const bool is_same_shape = IsSameShape(was, wanted);
  for (int i = 0; i < 3; ++i) {
    if (is_same_shape) {
      PutPlace(places[i], Shifted(places[i].at, was.center, wanted.center));
    } else {
      PutPlace(places[i], PointOnArc(wanted, (clockwise ? 2 - i : i) / 2.0));
    }
  }
}

// Centre, start of the arc, and its sweep, clockwise when positive.
void BoardPass::PutArcByAngle(const Place (&places)[2], const SExpressionWord& angle, const ArcData& was,
                              const ArcData& wanted) {
  if (was == wanted) return;
  PutPlace(places[0], wanted.center);
  const bool clockwise = angle.text.empty() || angle.text.front() != '-';
  if (IsSameShape(was, wanted)) {
    return PutPlace(places[1], Shifted(places[1].at, was.center, wanted.center));
  }
  PutPlace(places[1], PointOnArc(wanted, clockwise ? 1 : 0));
  if (angle.text.empty()) return CannotRewrite();
  const double sweep = SweepOf(wanted);
  if (std::abs(sweep - SweepOf(was)) > kSameAngle) Put(angle, FormatNumber(clockwise ? sweep : -sweep));
}

// A circle is an arc all around; a filled one has a pen so wide that it covers the disc.
void BoardPass::Circle(Arc& arc) {
  Place center, end;
  Measure width;
  bool filled = false;
  EachOnce([&](const Item& item, std::uint64_t key) {
    switch (key) {
      case "center"_word:
        center = TakePlace();
        break;
      case "end"_word:
        end = TakePlace();
        break;
      case "width"_word:
        width = TakeMeasure();
        break;
      case "stroke"_word:
        width = Stroke();
        break;
      case "fill"_word:
        filled = TakeFill();
        break;
      default:
        Common(item, key, arc);
    }
  });
  Require("center"_word, "center");
  Require("end"_word, "end");
  ArcData read;
  if (!ArcAround(center.at, end.at, 360, read)) {
    in_.Fail(level_.item.begin, "this circle's radius is out of range, which is 2147 mm");
  }
  read.width = width.value;
  if (filled) {
    read.width = std::min(read.radius, kMaxUnits / 2) + std::max(width.value, 0) / 2;
    read.radius = read.width / 2;
  }
  // Of a turned footprint, the radius may be off with the end.
  const auto is_same = [&](TCoord a, TCoord b) { return std::abs(a - b) <= (placement_.Turned() ? 2 : 0); };
  if (!edits_) {
    arc.data = read;
  } else if (!is_same(arc.data.radius, read.radius) || !is_same(arc.data.width, read.width) ||
             !IsFullCircle(arc.data)) {
    CannotRewrite();
  } else if (!placement_.IsAt(center.at, arc.data.center)) {
    PutPlace(center, arc.data.center);
    PutPlace(end, Shifted(end.at, center.at, arc.data.center));
  }
  EndCommon(arc);
}

}  // namespace Ketril::Editor
