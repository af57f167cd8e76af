// Footprints, pads and texts.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "Editor/Files/BoardComposer.h"

namespace Ketril::Editor {

namespace {

std::string Lengths(const char* word, TCoord x, TCoord y) {
  return std::string("(") + word + " " + FileWords::Length(x) + " " + FileWords::Length(y) + ")";
}

std::string Spaced(const std::string& text) {
  return text.empty() ? text : " " + text;
}

bool IsOctagon(const FileWords& words, const PadLayer& copper) {
  return copper.shape == eOctagonal && words.version.QuotesAll();
}

// The side of a regular octagon's corner, of its width.
const double kOctagonCorner = 1 - std::numbers::sqrt2 / 2;

// A pad's copper beyond its size: the parts between shape and net.
std::string CopperParts(const FileWords& words, const PadLayer& copper) {
  std::string text;
  for (const std::string& part : BoardComposer::PadCorners(words, copper)) text += " " + part;
  if (!copper.custom.empty()) {
    const char* const anchor = copper.shape == eRectangular ? "rect" : "circle";
    text += std::string(" (options (clearance outline) (anchor ") + anchor + ")) " +
            BoardComposer::PadPrimitives(copper);
  }
  return text;
}

}  // namespace

std::string BoardComposer::Justify(const TextData& text) {
  std::string words;
  if (text.horizontal == TextAlign::Low) words += " left";
  if (text.horizontal == TextAlign::High) words += " right";
  if (text.vertical == TextAlign::High) words += " top";
  if (text.vertical == TextAlign::Low) words += " bottom";
  if (text.mirrored) words += " mirror";
  return words.empty() ? words : "(justify" + words + ")";
}

std::string BoardComposer::TextText(Text& text) {
  const TextData& data = text.data;
  const bool is_tabbed = words_.version.IsTabbed();
  const bool in_footprint = InFootprint(text);
  const bool is_property = in_footprint && is_tabbed && data.role != TextRole::Free;
  const bool is_designator = data.role == TextRole::Designator;
  std::string head = "(gr_text" + LockedWord(text);
  if (is_property) {
    head = std::string("(property \"") + (is_designator ? "Reference" : "Value") + "\"";
  } else if (in_footprint) {
    const char* const role = data.role == TextRole::Free ? "user" : is_designator ? "reference" : "value";
    head = std::string("(fp_text ") + role + LockedWord(text);
  }
  const bool hidden = text.Has(kFlag_Hidden);
  const std::string hide = !hidden ? "" : is_tabbed ? " (hide yes)" : " hide";
  std::string effects = "(effects " + std::string("(font ") + Lengths("size", data.size, data.letter_width) +
                        " (thickness " + FileWords::Length(data.width) + "))";
  if (const std::string justify = Justify(data); !justify.empty()) effects += " " + justify;
  if (!in_footprint) effects += hide;
  effects += ")";
  std::string result = head + " " + words_.Text(data.string) + LockedList(text) + " " +
                       PlaceAndAngle(data.anchor, data.rotation) + Layer(text);
  if (in_footprint) result += hide;
  // In the oldest version a footprint's texts have no stamp.
  const std::string id = in_footprint && !words_.version.HasUuids() ? "" : words_.Identifier(text);
  return result + (is_tabbed ? id + " " + effects : " " + effects + id) + ")";
}

std::string BoardComposer::Footprint(Component& component) {
  const ComponentData& data = component.data;
  const bool says_footprint = words_.version.SaysFootprint();
  std::string text = (says_footprint ? "(footprint " : "(module ") + words_.Text(data.pattern);
  if (!words_.version.IsTabbed() && component.Has(kFlag_Locked)) text += " locked";
  text += LockedList(component) + Layer(component);
  if (!words_.version.IsTabbed()) text += " (tedit 0)";
  text += words_.Identifier(component) + " " + PlaceAndAngle(data.reference, data.rotation);
  if (!data.description.empty()) text += " (descr " + words_.Text(data.description) + ")";
  const bool no_bom = data.kind == eComponentKind_Standard_NoBOM || data.kind == eComponentKind_NetTie_NoBOM;
  if (no_bom) text += says_footprint ? " (attr exclude_from_bom)" : " (attr virtual)";
  BoardComposer inner(words_, Placement(data.reference, data.rotation));
  for (const Ref<Primitive>& member : component.Members()) {
    if (!member->on_board) continue;
    for (const std::string& part : inner.Expressions(*member)) text += " " + part;
  }
  return text + ")";
}

std::string BoardComposer::FreePad(Pad& pad) {
  const TV7_Layer side = pad.state.layer == TV7_Layer(eV6_BottomLayer) ? eV6_BottomLayer : eV6_TopLayer;
  std::string text =
      (words_.version.SaysFootprint() ? "(footprint " : "(module ") + words_.Name(kFreePadName);
  if (!words_.version.IsTabbed() && pad.Has(kFlag_Locked)) text += " locked";
  text += LockedList(pad) + " (layer " + words_.Layer(side) + ")";
  if (!words_.version.IsTabbed()) text += " (tedit 0)";
  text += words_.Identifier(pad) + " " + PlaceAndAngle(pad.data.center, 0);
  // Other programs want these two of every footprint.
  const std::string silk =
      words_.Layer(side == TV7_Layer(eV6_BottomLayer) ? eV6_BottomOverlay : eV6_TopOverlay);
  const std::string effects = " (effects (font (size 1 1) (thickness 0.15)))";
  for (const bool is_reference : {true, false}) {
    const std::string string = words_.Name(is_reference ? "REF**" : "Pad");
    if (words_.version.IsTabbed()) {
      text += std::string(" (property \"") + (is_reference ? "Reference" : "Value") + "\" " + string +
              " (at 0 0) (layer " + silk + ") (hide yes)" + words_.RandomIdentifier() + effects + ")";
    } else {
      text += std::string(" (fp_text ") + (is_reference ? "reference " : "value ") + string +
              " (at 0 0) (layer " + silk + ") hide" + effects + words_.RandomIdentifier() + ")";
    }
  }
  if (words_.version.SaysFootprint()) text += " (attr board_only exclude_from_pos_files exclude_from_bom)";
  return text + " " + BoardComposer(words_, Placement(pad.data.center, 0)).PadText(pad, true) + ")";
}

std::string BoardComposer::PadText(Pad& pad, bool is_free) {
  const PadData& data = pad.data;
  const PadLayer& copper = pad.On(eV6_TopLayer);
  std::string text = "(pad " + words_.Text(data.name) + " " + PadType(data) + " " + PadShape(words_, copper);
  if (!is_free) text += LockedWord(pad);
  text +=
      " " + PlaceAndAngle(data.center, data.rotation) + " " + Lengths("size", copper.x_size, copper.y_size);
  text += Spaced(PadTrapezoid(copper));
  const std::string drill = Spaced(PadHole(data)) + Spaced(PadOffset(copper));
  if (!drill.empty()) text += " (drill" + drill + ")";
  text += " " + PadLayers(words_, pad);
  const char* const end = words_.version.IsTabbed() ? " yes)" : ")";
  if (words_.version.QuotesAll() && data.remove_unused) text += std::string(" (remove_unused_layers") + end;
  if (words_.version.QuotesAll() && data.keep_end_layers) text += std::string(" (keep_end_layers") + end;
  text += CopperParts(words_, copper);
  if (pad.GetNet()) text += " " + words_.NetWithName(pad.GetNet());
  if (data.mask.solder_mode == eMaskExpansion_Manual) {
    text += " (solder_mask_margin " + FileWords::Length(data.mask.solder) + ")";
  }
  if (data.mask.paste_mode == eMaskExpansion_Manual) {
    text += " (solder_paste_margin " + FileWords::Length(data.mask.paste) + ")";
  }
  if (data.paste_ratio != 0) text += " (solder_paste_margin_ratio " + FormatNumber(data.paste_ratio) + ")";
  if (data.clearance != 0) text += " (clearance " + FileWords::Length(data.clearance) + ")";
  if (words_.version.HasUuids()) text += is_free ? words_.RandomIdentifier() : words_.Identifier(pad);
  if (data.mode != ePadMode_Simple && words_.version.HasPadstacks()) text += " " + PadStack(words_, pad);
  return text + ")";
}

std::string BoardComposer::PadHole(const PadData& pad) {
  if (pad.hole <= 0) return {};
  if (pad.hole_type != eSlotHole) return FileWords::Length(pad.hole);
  const TCoord longer = std::max(pad.hole, pad.hole_width);
  // The format turns a slot with its pad only, by quarters.
  const double angle = NormalAngle(pad.hole_rotation + 45);
  const bool upright = (angle >= 90 && angle < 180) || angle >= 270;
  return "oval " + FileWords::Length(upright ? pad.hole : longer) + " " +
         FileWords::Length(upright ? longer : pad.hole);
}

std::string BoardComposer::PadOffset(const PadLayer& copper) {
  return copper.offset == TCoordPoint{} ? "" : Lengths("offset", copper.offset.x, -copper.offset.y);
}

// The file's x makes the left side the longer one.
std::string BoardComposer::PadTrapezoid(const PadLayer& copper) {
  return copper.trapezoid == TCoordPoint{} ? ""
                                           : Lengths("rect_delta", -copper.trapezoid.x, copper.trapezoid.y);
}

std::string BoardComposer::PadType(const PadData& pad) {
  if (pad.hole <= 0) return "smd";
  return pad.plated ? "thru_hole" : "np_thru_hole";
}

std::string BoardComposer::PadShape(const FileWords& words, const PadLayer& copper) {
  if (!copper.custom.empty()) return "custom";
  if (copper.trapezoid != TCoordPoint{}) return "trapezoid";
  if (copper.chamfer_corners != 0 || IsOctagon(words, copper)) return "roundrect";
  switch (copper.shape) {
    case eRectangular:
    case eRotatedRectShape:
      return "rect";
    case eRoundedRectangular:
    case eRoundRectShape:
      return "roundrect";
    default:
      return copper.x_size == copper.y_size ? "circle" : "oval";
  }
}

std::vector<std::string> BoardComposer::PadCorners(const FileWords& words, const PadLayer& copper) {
  if (PadShape(words, copper) != "roundrect") return {};
  const bool is_octagon = IsOctagon(words, copper);
  std::vector<std::string> parts = {"(roundrect_rratio " +
                                    FormatNumber(is_octagon ? 0 : copper.corner_ratio) + ")"};
  if (is_octagon) {
    parts.push_back("(chamfer_ratio " + FormatNumber(kOctagonCorner) + ")");
    parts.push_back("(chamfer top_left top_right bottom_left bottom_right)");
  } else if (copper.chamfer_corners != 0) {
    parts.push_back("(chamfer_ratio " + FormatNumber(copper.chamfer_ratio) + ")");
    parts.push_back(PadChamfer(copper));
  }
  return parts;
}

std::string BoardComposer::PadChamfer(const PadLayer& copper) {
  constexpr const char* kCorners[] = {" top_left", " top_right", " bottom_left", " bottom_right"};
  std::string text = "(chamfer";
  for (int i = 0; i < 4; ++i) {
    if (copper.chamfer_corners >> i & 1) text += kCorners[i];
  }
  return text + ")";
}

std::string BoardComposer::PadPrimitives(const PadLayer& copper) {
  std::string text = "(primitives";
  for (const std::vector<TCoordPoint>& polygon : copper.custom) {
    text += " (gr_poly (pts";
    for (const TCoordPoint point : polygon) {
      text += " (xy " + FileWords::Length(point.x) + " " + FileWords::Length(-point.y) + ")";
    }
    text += ") (width 0) (fill yes))";
  }
  return text + ")";
}

std::string BoardComposer::PadStack(const FileWords& words, const Pad& pad) {
  const bool by_sides = pad.data.mode == ePadMode_LocalStack;
  std::string text = std::string("(padstack (mode ") + (by_sides ? "front_inner_back" : "custom") + ")";
  bool has_inner = false;
  for (const TV7_Layer layer : words.layers.Copper()) {
    if (layer == TV7_Layer(eV6_TopLayer)) continue;  // the pad's own words
    const PadLayer& copper = pad.On(layer);
    const bool says_inner = by_sides && layer != TV7_Layer(eV6_BottomLayer);
    if (says_inner && std::exchange(has_inner, true)) continue;
    text += " (layer " + (says_inner ? "\"Inner\"" : words.Layer(layer)) + " (shape " +
            PadShape(words, copper) + ") " + Lengths("size", copper.x_size, copper.y_size);
    text += Spaced(PadTrapezoid(copper));
    text += Spaced(PadOffset(copper));
    text += CopperParts(words, copper) + ")";
  }
  return text + ")";
}

std::vector<TV7_Layer> BoardComposer::ImpliedPadLayers(TV7_Layer layer,
                                                       const std::vector<TV7_Layer>& copper) {
  std::vector<TV7_Layer> layers;
  if (layer == TV7_Layer(eV6_MultiLayer)) {
    layers = copper;
    layers.push_back(eV6_TopSolder);
    layers.push_back(eV6_BottomSolder);
  } else if (layer == TV7_Layer(eV6_TopLayer)) {
    layers = {eV6_TopLayer, eV6_TopPaste, eV6_TopSolder};
  } else if (layer == TV7_Layer(eV6_BottomLayer)) {
    layers = {eV6_BottomLayer, eV6_BottomPaste, eV6_BottomSolder};
  } else if (layer != TV7_Layer(eV6_NoLayer)) {
    layers = {layer};
  }
  return layers;
}

std::string BoardComposer::PadLayers(const FileWords& words, const Pad& pad) {
  return words.LayerList(pad.data.layers.empty() ? ImpliedPadLayers(pad.state.layer, words.layers.Copper())
                                                 : pad.data.layers);
}

}  // namespace Ketril::Editor
