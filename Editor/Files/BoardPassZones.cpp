// Zones.
#include <algorithm>

#include "Editor/Files/BoardPass.h"
#include "Editor/Files/ZoneFill.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

// Rings after the first are holes of it when they are within one that is none.
void AddRing(std::vector<Ring>& rings, std::vector<TCoordPoint> points) {
  const bool hole = !points.empty() && std::ranges::any_of(rings, [&](const Ring& ring) {
    return !ring.hole && IsInside(ring.points, points.front().x, points.front().y);
  });
  rings.push_back({std::move(points), hole});
}

// True when `wanted` is `was`, moved; `from` and `to` tell how.
bool IsMoved(const std::vector<Ring>& was, const std::vector<Ring>& wanted, TCoordPoint& from,
             TCoordPoint& to) {
  if (was.size() != wanted.size()) return false;
  bool first = true;
  for (std::size_t i = 0; i < was.size(); ++i) {
    if (was[i].points.size() != wanted[i].points.size()) return false;
    for (std::size_t k = 0; k < was[i].points.size(); ++k) {
      if (std::exchange(first, false)) {
        from = was[i].points[k];
        to = wanted[i].points[k];
      }
      if (Shifted(was[i].points[k], from, to) != wanted[i].points[k]) return false;
    }
  }
  return true;
}

}  // namespace

// A zone is a polygon with the copper that was poured into it, or one of the regions that the format has no
// other word for.
void BoardPass::ZoneItem(const Item& item, Group* owner) {
  const SExpressionCursor begin = in_;
  bool is_region = false;
  zone_is_teardrop_ = false;
  const FileVersion version(board_.file.version);
  for (Item part; !is_region && in_.Next(part);) {
    const unsigned depth = in_.Depth() - (part.is_list ? 1 : 0);
    if (part.word.text == "polygon" || part.word.text == "filled_polygon") break;
    if (part.is_list && part.word.text == "name" && in_.HasWord()) {
      const std::string_view name = in_.Word("a name").text;
      zone_is_teardrop_ = name.starts_with(kTeardropPrefix);
      is_region = zone_is_teardrop_ || name == kRegionName;
    } else if (part.is_list && part.word.text == "attr") {
      Item attribute;
      is_region = zone_is_teardrop_ = in_.Next(attribute) && attribute.word.text == "teardrop";
    } else if (part.is_list && part.word.text == "priority" && !version.HasZoneNames() && in_.HasWord()) {
      double priority = 0;
      ParseNumber(in_.Word("a priority").text, priority);
      is_region = priority >= kRegionPriority;
      zone_is_teardrop_ = priority >= kTeardropPriority;
    }
    in_.Leave(depth);
  }
  in_ = begin;
  item_ = item;
  // A zone's places are the board's, in a footprint too.
  const Placement outer = std::exchange(placement_, Placement());
  if (is_region) {
    Object(item, owner, &BoardPass::RegionZone);
  } else {
    Object(item, owner, &BoardPass::Zone);
  }
  placement_ = outer;
}

void BoardPass::Zone(Polygon& polygon) {
  ZoneWords words;
  if (!edits_) polygon.data.filled = false;
  WithMembers(polygon, [&] {
    Each([&](const Item& item, std::uint64_t key) {
      if (key == "polygon"_word) {
        ZoneOutline(polygon.data.rings, words.outlines);
      } else if (key == "filled_polygon"_word) {
        zone_layer_ = polygon.state.layer;
        Object(item, &polygon, &BoardPass::ZoneFill);
      } else if (IsFirst(key)) {
        ZoneWord(item, key, polygon, words);
      }
    });
  });
  if (edits_) {
    if (words.outlines != polygon.data.rings.size()) CannotRewrite();
    if (!words.net_name.text.empty() || words.net_name.quoted) PutNetName(words, polygon.GetNet());
    return EndCommon(polygon);
  }
  for (const Ref<Primitive>& member : polygon.Members()) {
    Region* const region = As<Region>(member.Get());
    if (!region) continue;
    region->data.line_width = words.is_stroked ? polygon.data.min_thickness : 0;
    region->SetNet(polygon.GetNet());
  }
}

void BoardPass::ZoneWord(const Item& item, std::uint64_t key, Polygon& polygon, ZoneWords& words) {
  PolygonData& data = polygon.data;
  switch (key) {
    case "net"_word:
      words.net_changed = NetOf(item, polygon);
      break;
    case "net_name"_word:
      words.net_name = in_.Word("a net's name");
      break;
    case "layer"_word:
      Layer(polygon.state.layer);
      if (!edits_) data.layers = {polygon.state.layer};
      break;
    case "layers"_word:
      ZoneLayers(item, polygon);
      break;
    case "name"_word:
      String(data.name);
      break;
    case "priority"_word:
      Integer(data.priority);
      break;
    case "min_thickness"_word:
      Length(data.min_thickness);
      break;
    case "filled_areas_thickness"_word:
      words.is_stroked = in_.HasWord() && in_.Word("yes or no").text != "no";
      break;
    case "connect_pads"_word:
      Connections(polygon);
      break;
    case "keepout"_word:
      KeepOut(polygon);
      break;
    case "placement"_word:
      if (!edits_) PlacementFields(data.placement);
      break;
    case "fill"_word:
      FillSettings(polygon);
      break;
    default:
      Common(item, key, polygon);
  }
}

void BoardPass::ZoneLayers(const Item& item, Polygon& polygon) {
  std::vector<TV7_Layer> list;
  while (in_.HasWord()) layers_.Expand(in_.Word("a layer").text, list);
  if (!edits_) {
    polygon.data.layers = std::move(list);
    if (!polygon.data.layers.empty()) polygon.state.layer = polygon.data.layers.front();
  } else if (polygon.data.layers != list) {
    in_.Leave(in_.Depth() - 1);
    edits_->Replace(item.begin, in_.Position(), words_->LayerList(polygon.data.layers));
  }
}

void BoardPass::PutNetName(const ZoneWords& words, const Ketril::Editor::Net* net) {
  if (words.net_changed) {
    Put(words.net_name, words_->ZoneNetName(net));
  } else {
    PutRenamed(words.net_name, net);
  }
}

void BoardPass::ZoneOutline(std::vector<Ring>& rings, std::size_t& count) {
  const Enter level(*this);
  EachOnce([&](const Item&, std::uint64_t key) {
    if (key != "pts"_word) return;
    Outline outline = TakeOutline();
    if (!edits_) {
      AddRing(rings, std::move(outline.points));
    } else if (count < rings.size()) {
      PutOutline(outline, rings[count].points);
    }
    ++count;
  });
}

// `(filled_polygon (layer "F.Cu") (pts ...))`
void BoardPass::ZoneFill(Region& region) {
  if (!edits_) region.state.layer = zone_layer_;
  EachOnce([&](const Item&, std::uint64_t key) {
    if (key == "layer"_word) Layer(region.state.layer);
    if (key == "pts"_word) {
      if (!edits_) region.data.rings.resize(1);
      if (region.data.rings.size() == 1) {
        Outlined(region.data.rings.front().points);
      } else {
        CannotRewrite();
      }
    }
  });
}

// `(connect_pads yes (clearance 0.2))`
void BoardPass::Connections(Polygon& polygon) {
  const Enter level(*this);
  bool solid = false;
  SExpressionWord word;
  const std::uint32_t begin = in_.Position();
  EachOnce([&](const Item& item, std::uint64_t key) {
    if (!item.is_list && word.text.empty()) {
      word = item.word;
      solid = word.text == "yes";
    } else if (key == "clearance"_word) {
      Length(polygon.data.clearance);
    }
  });
  if (!edits_) {
    polygon.data.solid_connect = solid;
  } else if (polygon.data.solid_connect && !solid) {
    word.text.empty() ? InsertWord(begin, "yes") : Put(word, "yes");
  } else if (solid && !polygon.data.solid_connect) {
    edits_->Drop(word.begin, word.end);
  }
}

// `(keepout (tracks not_allowed) ...)`
void BoardPass::KeepOut(Polygon& polygon) {
  if (!edits_) polygon.Set(kFlag_KeepOut, true);
  const Enter level(*this);
  EachOnce([&](const Item&, std::uint64_t key) {
    const auto rule = [&](bool& field) {
      const SExpressionWord word = in_.Word("allowed or not_allowed");
      const bool forbidden = word.text == "not_allowed";
      if (!edits_) {
        field = forbidden;
      } else if (field != forbidden) {
        Put(word, field ? "not_allowed" : "allowed");
      }
    };
    switch (key) {
      case "tracks"_word:
        rule(polygon.data.keepout_tracks);
        break;
      case "vias"_word:
        rule(polygon.data.keepout_vias);
        break;
      case "pads"_word:
        rule(polygon.data.keepout_pads);
        break;
      case "copperpour"_word:
        rule(polygon.data.keepout_copper);
        break;
      default:
        break;
    }
  });
}

// `(fill yes (thermal_gap 0.5) (thermal_bridge_width 0.5))`
void BoardPass::FillSettings(Polygon& polygon) {
  const Enter level(*this);
  SExpressionWord word;
  const std::uint32_t begin = in_.Position();
  EachOnce([&](const Item& item, std::uint64_t key) {
    if (!item.is_list && word.text.empty()) word = item.word;
    if (key == "thermal_gap"_word) Length(polygon.data.relief_gap);
    if (key == "thermal_bridge_width"_word) Length(polygon.data.relief_conductor);
  });
  const bool filled = word.text == "yes";
  if (!edits_) {
    polygon.data.filled = filled;
  } else if (filled && !polygon.data.filled) {
    edits_->Drop(word.begin, word.end);
  } else if (!filled && polygon.data.filled) {
    word.text.empty() ? InsertWord(begin, "yes") : Put(word, "yes");
  }
}

// A zone that is one region. Fills are its copper, unless they are to be stroked or were made from the
// outline alone: then the outline is.
void BoardPass::RegionZone(Region& region) {
  std::vector<Outline> outlines, fills;
  ZoneWords words;
  const bool is_teardrop = zone_is_teardrop_;
  if (!edits_) region.Set(kFlag_TearDrop, is_teardrop);
  Each([&](const Item& item, std::uint64_t key) {
    if (key == "polygon"_word || key == "filled_polygon"_word) {
      const Enter level(*this);
      EachOnce([&](const Item&, std::uint64_t part) {
        if (part == "pts"_word) (key == "polygon"_word ? outlines : fills).push_back(TakeOutline());
      });
    } else if (!IsFirst(key)) {
      return;
    } else if (key == "net"_word) {
      words.net_changed = NetOf(item, region);
    } else if (key == "net_name"_word) {
      words.net_name = in_.Word("a net's name");
    } else if (key == "filled_areas_thickness"_word) {
      words.is_stroked = in_.HasWord() && in_.Word("yes or no").text != "no";
    } else {
      Common(item, key, region);
    }
  });
  std::vector<Ring> rings, drawn;
  for (const Outline& outline : fills) AddRing(rings, outline.points);
  for (const Outline& outline : outlines) AddRing(drawn, outline.points);
  const bool may_be_tied = !FileVersion(board_.file.version).HasTeardrops();
  if (words.is_stroked || rings.empty() || IsMadeFrom(rings, drawn, may_be_tied)) rings = std::move(drawn);
  if (!edits_) {
    region.data.rings = std::move(rings);
    return;
  }
  if (words.net_name.quoted || !words.net_name.text.empty()) PutNetName(words, region.GetNet());
  TCoordPoint from, to;
  if (!IsMoved(rings, region.data.rings, from, to) || region.Has(kFlag_TearDrop) != is_teardrop)
    CannotRewrite();
  for (const std::vector<Outline>* list : {&outlines, &fills}) {
    for (const Outline& outline : *list) {
      for (const Place& place : outline.places) PutPlace(place, Shifted(place.at, from, to));
    }
  }
  EndCommon(region);
}

}  // namespace Ketril::Editor
