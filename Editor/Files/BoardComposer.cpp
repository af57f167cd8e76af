#include "Editor/Files/BoardComposer.h"

#include <utility>

#include "Editor/Files/ArcGeometry.h"
#include "Editor/Model/SpatialIndex.h"

namespace Ketril::Editor {

namespace {

std::vector<TCoordPoint> CornersOf(const FillData& fill) {
  const TCoordRect& box = fill.box;
  std::vector<TCoordPoint> corners = {{box.x1, box.y1}, {box.x2, box.y1}, {box.x2, box.y2}, {box.x1, box.y2}};
  PlaneMap::Rotation(Midpoint(box.Location1(), box.Location2()), fill.rotation).Apply(corners);
  return corners;
}

}  // namespace

std::vector<std::string> BoardComposer::Expressions(Primitive& object) {
  if (Track* track = As<Track>(&object))
    return {Line(*track, track->data.p1, track->data.p2, track->data.width)};
  if (Arc* arc = As<Arc>(&object)) return ArcLines(*arc);
  if (Via* via = As<Via>(&object)) return {ViaText(*via)};
  if (Pad* pad = As<Pad>(&object)) return {InFootprint(*pad) ? PadText(*pad, false) : FreePad(*pad)};
  if (Text* text = As<Text>(&object)) return {TextText(*text)};
  if (Region* region = As<Region>(&object)) return RegionText(*region);
  if (Polygon* polygon = As<Polygon>(&object)) return {PolygonZone(*polygon)};
  if (Component* component = As<Component>(&object)) return {Footprint(*component)};
  if (Fill* fill = As<Fill>(&object)) return Shapes(*fill, {{CornersOf(fill->data), false}}, true, 0);
  if (const Net* net = As<Net>(&object)) {
    // A net that the file's table lacks is known by the place where it is used.
    if (!net->source_id.IsEmpty()) return {};
    return {"(net " + std::to_string(words_.NetNumber(net)) + " " + words_.Text(net->data.name) + ")"};
  }
  if (const ObjectClass* net_class = As<ObjectClass>(&object)) {
    // Later versions have them in the project file.
    if (words_.version.QuotesAll() || net_class->data.member_kind != eClassMemberKind_Net) return {};
    return {NetClass(*net_class)};
  }
  std::vector<std::string> parts;
  if (object.kind == eDimensionObject || object.kind == eCoordinateObject) {
    for (Primitive* member : static_cast<Group&>(object).ListMembers()) {
      for (std::string& part : Expressions(*member)) parts.push_back(std::move(part));
    }
  }
  return parts;
}

bool BoardComposer::CanShareWords(const Primitive* object) {
  return HasPlace(object->kind) && !object->MemberList();  // nets are numbered as they are written
}

bool BoardComposer::InFootprint(const Primitive& object) const {
  const Group* const owner = object.Owner();
  return owner && owner->kind == eComponentObject && owner->HasMember(object);
}

std::string BoardComposer::PlaceAndAngle(TCoordPoint place, double angle) const {
  const std::string degrees = FormatNumber(NormalAngle(angle));
  return "(at " + Place(place) + (degrees == "0" ? "" : " " + degrees) + ")";
}

std::string BoardComposer::Pen(TCoord width) const {
  const std::string text = " (width " + FileWords::Length(width) + ")";
  return words_.version.HasStrokes() ? " (stroke" + text + " (type solid))" : text;
}

std::string BoardComposer::LayerAndPen(const Primitive& object, TCoord width) const {
  return words_.version.HasStrokes() ? Pen(width) + Layer(object) : Layer(object) + Pen(width);
}

std::string BoardComposer::LockedWord(const Primitive& object) const {
  const bool has_word = words_.version.QuotesAll() && !words_.version.IsTabbed();
  return object.Has(kFlag_Locked) && has_word ? " locked" : "";
}

std::string BoardComposer::LockedList(const Primitive& object) const {
  if (!object.Has(kFlag_Locked)) return {};
  if (words_.version.IsTabbed()) return " (locked yes)";
  const bool has_status = object.kind == eTrackObject || object.kind == eViaObject;
  return !words_.version.QuotesAll() && has_status ? " (status 40000)" : "";
}

std::string BoardComposer::PointList(const std::vector<TCoordPoint>& points) {
  std::string text = "(pts";
  text.reserve(32 * points.size() + 8);
  std::vector<std::size_t> begins;
  begins.reserve(points.size() + 1);
  std::size_t known = 0;  // points of the first list that were met
  for (const TCoordPoint point : points) {
    begins.push_back(text.size());
    if (known < first_list_.points.size() && point == first_list_.points[known]) {
      const std::size_t begin = first_list_.begins[known], end = first_list_.begins[++known];
      text.append(first_list_.text, begin, end - begin);
    } else {
      text += " (xy ";
      words_.AppendPlace(text, point, placement_);
      text += ')';
    }
  }
  begins.push_back(text.size());
  text += ')';
  if (first_list_.points.empty()) first_list_ = {points, text, std::move(begins)};
  return text;
}

std::string BoardComposer::Line(Primitive& object, TCoordPoint p1, TCoordPoint p2, TCoord width) {
  const std::string ends = " (start " + Place(p1) + ") (end " + Place(p2) + ")";
  if (!InFootprint(object) && IsSignalLayer(object.state.layer)) {
    return "(segment" + LockedWord(object) + ends + " (width " + FileWords::Length(width) + ")" +
           Layer(object) + NetOf(object) + LockedList(object) + words_.Identifier(object) + ")";
  }
  return (InFootprint(object) ? "(fp_line" : "(gr_line") + LockedWord(object) + ends +
         LayerAndPen(object, width) + LockedList(object) + words_.Identifier(object) + ")";
}

std::vector<std::string> BoardComposer::ArcLines(Arc& arc) {
  // What has no net need not be a track.
  const bool cannot_be_track = !words_.version.HasTrackArcs() || IsFullCircle(arc.data);
  if (InFootprint(arc) || !IsSignalLayer(arc.state.layer) || (cannot_be_track && !arc.GetNet()))
    return {DrawnArc(arc)};
  std::vector<std::string> parts;
  if (!words_.version.HasTrackArcs()) {
    const std::vector<TCoordPoint> points = PointsOnArc(arc.data);
    for (std::size_t i = 1; i < points.size(); ++i) {
      parts.push_back(Line(arc, points[i - 1], points[i], arc.data.width));
    }
  } else if (IsFullCircle(arc.data)) {
    parts = {TrackArc(arc, 0, 0.5), TrackArc(arc, 0.5, 1)};
  } else {
    parts = {TrackArc(arc, 0, 1)};
  }
  return parts;
}

std::string BoardComposer::TrackArc(Arc& arc, double from, double to) {
  // The second half of a circle is an arc of its own.
  const std::string id = from == 0 ? words_.Identifier(arc) : words_.RandomIdentifier();
  return "(arc" + LockedWord(arc) + " (start " + Place(PointOnArc(arc.data, from)) + ") (mid " +
         Place(PointOnArc(arc.data, (from + to) / 2)) + ") (end " + Place(PointOnArc(arc.data, to)) +
         ") (width " + FileWords::Length(arc.data.width) + ")" + Layer(arc) + NetOf(arc) + LockedList(arc) +
         id + ")";
}

std::string BoardComposer::DrawnArc(Arc& arc) {
  const std::string kind = InFootprint(arc) ? "(fp_" : "(gr_";
  const ArcData& data = arc.data;
  std::string shape, fill;
  if (IsFullCircle(data)) {
    // A pen that just covers the disc is a filled circle, where circles can be filled.
    const std::int64_t beyond = data.width - 2 * std::int64_t{data.radius};
    const bool filled = words_.version.QuotesAll() && (beyond == 0 || beyond == 1);
    const TCoord radius = filled ? ToCoord(std::int64_t{data.radius} + (data.width + 1) / 2) : data.radius;
    const TCoordPoint end = {ToCoord(std::int64_t{data.center.x} + radius), data.center.y};
    shape =
        kind + "circle" + LockedWord(arc) + " (center " + Place(data.center) + ") (end " + Place(end) + ")";
    if (words_.version.QuotesAll()) fill = " (fill " + words_.Fill(filled) + ")";
    return shape + (filled ? LayerAndPen(arc, 0) : LayerAndPen(arc, data.width)) + fill + LockedList(arc) +
           words_.Identifier(arc) + ")";
  }
  shape = kind + "arc" + LockedWord(arc);
  if (words_.version.HasMidArcs()) {
    shape += " (start " + Place(PointOnArc(data, 0)) + ") (mid " + Place(PointOnArc(data, 0.5)) + ") (end " +
             Place(PointOnArc(data, 1)) + ")";
  } else {
    shape += " (start " + Place(data.center) + ") (end " + Place(PointOnArc(data, 0)) + ") (angle " +
             FormatNumber(-SweepOf(data)) + ")";
  }
  return shape + LayerAndPen(arc, data.width) + LockedList(arc) + words_.Identifier(arc) + ")";
}

std::string BoardComposer::ViaText(Via& via) {
  const ViaData& data = via.data;
  const bool spans_all = data.low == TV7_Layer(eV6_TopLayer) && data.high == TV7_Layer(eV6_BottomLayer);
  std::string text = "(via";
  if (!spans_all) text += " blind";
  text += LockedWord(via) + " (at " + Place(data.center) + ") (size " + FileWords::Length(data.size) +
          ") (drill " + FileWords::Length(data.hole) + ") (layers " + words_.Layer(data.low) + " " +
          words_.Layer(data.high) + ")";
  const char* const end = words_.version.IsTabbed() ? " yes)" : ")";
  if (words_.version.QuotesAll() && data.remove_unused) text += std::string(" (remove_unused_layers") + end;
  if (words_.version.QuotesAll() && data.keep_end_layers) text += std::string(" (keep_end_layers") + end;
  text += LockedList(via);
  if (data.mode != ePadMode_Simple && words_.version.HasPadstacks()) text += " " + ViaStack(words_, data);
  return text + NetOf(via) + words_.Identifier(via) + ")";
}

std::string BoardComposer::ViaStack(const FileWords& words, const ViaData& via) {
  const bool by_sides = via.mode == ePadMode_LocalStack;
  std::string text = std::string("(padstack (mode ") + (by_sides ? "front_inner_back" : "custom") + ")";
  bool has_inner = false;
  for (const TV7_Layer layer : words.layers.Copper()) {
    if (layer == via.low) continue;  // the via's own size
    const bool says_inner = by_sides && layer != TV7_Layer(eV6_BottomLayer);
    if (says_inner && std::exchange(has_inner, true)) continue;
    TCoord size = via.size;
    for (const LayerSize& own : via.sizes) {
      if (own.layer == layer) size = own.size;
    }
    text += " (layer " + (says_inner ? "\"Inner\"" : words.Layer(layer)) + " (size " +
            FileWords::Length(size) + "))";
  }
  return text + ")";
}

std::string BoardComposer::NetClass(const ObjectClass& net_class) const {
  const ObjectClassData& data = net_class.data;
  std::string text = "(net_class " + words_.Text(data.name) + " \"\"";
  const auto size = [&](const char* word, TCoord value) {
    if (value != 0) text += std::string(" (") + word + " " + FileWords::Length(value) + ")";
  };
  size("clearance", data.sizes.clearance);
  size("trace_width", data.sizes.track_width);
  size("via_dia", data.sizes.via_size);
  size("via_drill", data.sizes.via_hole);
  for (const std::u16string& member : data.members) text += " (add_net " + words_.Text(member) + ")";
  return text + ")";
}

}  // namespace Ketril::Editor
