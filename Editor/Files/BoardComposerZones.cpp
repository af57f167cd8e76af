// Regions, zones and drawn shapes.
#include <algorithm>

#include "Editor/Files/ArcGeometry.h"
#include "Editor/Files/BoardComposer.h"
#include "Editor/Files/ZoneFill.h"

namespace Ketril::Editor {

namespace {

using Points = std::vector<TCoordPoint>;

// Cuts the hole open to the left, along the line from its leftmost corner to the ring, so that both are one.
void JoinHole(Points& ring, const Points& hole) {
  const auto left = std::ranges::min_element(hole, {}, &TCoordPoint::x);
  const TCoordPoint corner = *left;
  std::size_t best = ring.size();
  double best_x = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const TCoordPoint a = ring[i], b = ring[(i + 1) % ring.size()];
    if ((a.y > corner.y) == (b.y > corner.y)) continue;
    const double x = a.x + (static_cast<double>(corner.y) - a.y) * (static_cast<double>(b.x) - a.x) /
                               (static_cast<double>(b.y) - a.y);
    if (x <= corner.x && (best == ring.size() || x > best_x)) {
      best = i;
      best_x = x;
    }
  }
  if (best == ring.size()) return;  // the hole is outside
  Points cut = {{ToCoord(best_x), corner.y}};
  cut.insert(cut.end(), left, hole.end());
  cut.insert(cut.end(), hole.begin(), left);
  cut.push_back(corner);
  cut.push_back(cut.front());
  ring.insert(ring.begin() + static_cast<std::ptrdiff_t>(best) + 1, cut.begin(), cut.end());
}

// The area as rings without holes.
std::vector<Points> Simple(const std::vector<Ring>& rings) {
  std::vector<Points> result;
  std::vector<Points> holes;
  for (const Ring& ring : rings) {
    if (!ring.points.empty()) (ring.hole ? holes : result).push_back(ring.points);
  }
  std::ranges::sort(holes, {},
                    [](const Points& hole) { return std::ranges::min(hole, {}, &TCoordPoint::x).x; });
  for (const Points& hole : holes) {
    for (Points& ring : result) {
      const std::size_t before = ring.size();
      JoinHole(ring, hole);
      if (ring.size() != before) break;
    }
  }
  return result;
}

}  // namespace

std::vector<std::string> BoardComposer::Shapes(Primitive& object, const std::vector<Ring>& rings, bool filled,
                                               TCoord pen) {
  std::vector<std::string> parts;
  const bool in_footprint = InFootprint(object);
  for (const Points& points : Simple(rings)) {
    std::string text = (in_footprint ? "(fp_poly" : "(gr_poly") + LockedWord(object) + " " +
                       PointList(points) + LayerAndPen(object, pen);
    if (words_.version.QuotesAll()) text += " (fill " + words_.Fill(filled) + ")";
    if (words_.version.HasNetGraphics() && object.GetNet()) text += NetOf(object);
    text +=
        LockedList(object) + (parts.empty() ? words_.Identifier(object) : words_.RandomIdentifier()) + ")";
    parts.push_back(std::move(text));
  }
  return parts;
}

std::vector<std::string> BoardComposer::RegionText(Region& region) {
  const RegionData& data = region.data;
  if (region.Owner() && region.Owner()->kind == ePolyObject && region.Owner()->HasMember(region)) {
    return Fills(region, region.data.rings);
  }
  // A drawn polygon is one piece, and has a net in new versions only.
  const bool has_pieces = std::ranges::count(data.rings, false, &Ring::hole) > 1;
  const bool needs_zone = IsSignalLayer(region.state.layer) &&
                          (has_pieces || (region.GetNet() && !words_.version.HasNetGraphics()));
  if (data.filled && !InFootprint(region) && (region.Has(kFlag_TearDrop) || needs_zone))
    return {RegionZone(region)};
  if (data.closed) return Shapes(region, data.rings, data.filled, data.line_width);
  std::vector<std::string> lines;
  for (const Ring& ring : data.rings) {
    for (std::size_t i = 1; i < ring.points.size(); ++i) {
      lines.push_back(Line(region, ring.points[i - 1], ring.points[i], data.line_width));
    }
  }
  return lines;
}

std::vector<std::string> BoardComposer::Fills(const Region& region, const std::vector<Ring>& rings) {
  std::vector<std::string> parts;
  for (const Points& points : Simple(rings)) {
    parts.push_back("(filled_polygon" + (words_.version.QuotesAll() ? Layer(region) : "") + " " +
                    PointList(points) + ")");
  }
  return parts;
}

// As a zone that is filled already: teardrops, and copper with a net.
std::string BoardComposer::RegionZone(Region& region) {
  const bool is_teardrop = region.Has(kFlag_TearDrop);
  const FileVersion version = words_.version;
  std::string text = "(zone" + NetOf(region) + " (net_name " + words_.ZoneNetName(region.GetNet()) + ")" +
                     LockedList(region) + Layer(region) + words_.Identifier(region);
  if (version.HasZoneNames())
    text += " (name \"" + std::string(is_teardrop ? kTeardropName : kRegionName) + "\")";
  std::size_t points = 0;
  for (const Ring& ring : region.data.rings) points += ring.points.size();
  text.reserve(512 + 64 * points);
  text += " (hatch edge 0.5)";
  // Each above the others, so that none is cut by another, and by no zone.
  constexpr std::uint64_t kPriorities = 10000;
  text += " (priority " +
          std::to_string((is_teardrop ? kTeardropPriority : kRegionPriority) +
                         static_cast<std::int32_t>(region.order % kPriorities)) +
          ")";
  if (is_teardrop && version.HasTeardrops()) text += " (attr (teardrop (type padvia)))";
  text += " (connect_pads yes (clearance 0)) (min_thickness " + FileWords::Length(kRegionPen) + ")";
  if (version.HasZoneNames()) text += " (filled_areas_thickness no)";
  text += version.QuotesAll() ? " (fill yes" : " (fill yes (arc_segments 32)";
  text += " (thermal_gap 0.5) (thermal_bridge_width 0.5))";
  for (const Ring& ring : region.data.rings) text += " (polygon " + PointList(ring.points) + ")";
  std::vector<Ring> fill = version.HasTeardrops() ? Covered(region.data.rings) : TiedFill(region);
  if (!version.HasZoneNames() && !is_teardrop) fill = WithinPen(region, std::move(fill));
  for (const std::string& part : Fills(region, fill)) text += " " + part;
  return text + ")";
}

std::string BoardComposer::PlacementText(const PlacementArea& area) const {
  return std::string(" (placement (enabled ") + (area.enabled ? "yes" : "no") + ") (" +
         kPlacementWords[static_cast<int>(area.by)] + " " + words_.Text(area.name) + "))";
}

std::string BoardComposer::PolygonZone(Polygon& polygon) {
  const PolygonData& data = polygon.data;
  const FileVersion version = words_.version;
  std::string text = "(zone" + NetOf(polygon) + " (net_name " + words_.ZoneNetName(polygon.GetNet()) + ")" +
                     LockedList(polygon) +
                     (data.layers.size() > 1 ? " " + words_.LayerList(data.layers) : Layer(polygon)) +
                     words_.Identifier(polygon);
  if (version.HasZoneNames() && !data.name.empty()) text += " (name " + words_.Text(data.name) + ")";
  text += " (hatch edge 0.5)";
  if (data.priority != 0) text += " (priority " + std::to_string(data.priority) + ")";
  text += std::string(" (connect_pads") + (data.solid_connect ? " yes" : "") + " (clearance " +
          FileWords::Length(data.clearance) + ")) (min_thickness " + FileWords::Length(data.min_thickness) +
          ")";
  std::string fills;
  bool is_stroked = false;
  for (const Ref<Primitive>& member : polygon.Members()) {
    const Region* const region = As<Region>(member.Get());
    if (!region || !region->on_board) continue;
    is_stroked = is_stroked || region->data.line_width > 0;
    for (const std::string& fill : Fills(*region, region->data.rings)) fills += " " + fill;
  }
  if (version.HasZoneNames() && !is_stroked) text += " (filled_areas_thickness no)";
  if (polygon.Has(kFlag_KeepOut)) {
    const auto rule = [](const char* word, bool forbidden) {
      return std::string(" (") + word + (forbidden ? " not_allowed)" : " allowed)");
    };
    text += " (keepout" + rule("tracks", data.keepout_tracks) + rule("vias", data.keepout_vias);
    if (version.QuotesAll()) text += rule("pads", data.keepout_pads);
    text += rule("copperpour", data.keepout_copper);
    if (version.QuotesAll()) text += rule("footprints", false);
    text += ")";
  }
  if (data.placement.is_told) text += PlacementText(data.placement);
  text += std::string(" (fill") + (data.filled ? " yes" : "") +
          (version.QuotesAll() ? "" : " (arc_segments 32)") + " (thermal_gap " +
          FileWords::Length(data.relief_gap) + ") (thermal_bridge_width " +
          FileWords::Length(data.relief_conductor) + "))";
  for (const Ring& ring : data.rings) text += " (polygon " + PointList(ring.points) + ")";
  return text + fills + ")";
}

}  // namespace Ketril::Editor
