// What an object tells about itself: texts for people, and values that the board's setup decides.
#include <array>
#include <charconv>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

namespace {

// The mode of an opening and its value, the object's own or its component's.
struct Opening {
  TMaskExpansionMode mode;
  TCoord value;
};
Opening OpeningOf(const Primitive& object, TMaskExpansionMode MaskData::*mode, TCoord MaskData::*value) {
  const MaskData& own = object.Mask();
  const Component* component = object.OwnerAs<Component>();
  if (own.*mode == eMaskExpansion_FromRule && component)
    return {component->Mask().*mode, component->Mask().*value};
  return {own.*mode, own.*value};
}

TV7_Layer SolderOf(bool bottom) {
  return bottom ? eV6_BottomSolder : eV6_TopSolder;
}
TV7_Layer PasteOf(bool bottom) {
  return bottom ? eV6_BottomPaste : eV6_TopPaste;
}

const Net* LogicalNetOf(const Primitive& object) {
  const Net* self = As<Net>(&object);
  return self ? self : object.GetNet();
}

// The zone that pours copper around the object's net; null when there is none.
const Polygon* ZoneOf(const Primitive& object) {
  if (!object.on_board || !object.GetNet()) return nullptr;
  const Polygon* found = nullptr;
  object.board->objects.ForEach({ePolyObject}, [&](const Primitive& zone) {
    if (!found && zone.GetNet() == object.GetNet()) found = As<Polygon>(&zone);
  });
  return found;
}

}  // namespace

std::u16string LengthText(std::int64_t length, TUnit unit) {
  const auto units = static_cast<double>(length);
  std::array<char, 40> buffer;
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                    unit == eMetric ? units * 2.54e-6 : units * 1e-4, std::chars_format::fixed, 4);
  std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
  text = text.substr(0, text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.remove_suffix(1);
  if (text == "-0") text = "0";
  return std::u16string(text.begin(), text.end()) + (unit == eMetric ? u"mm" : u"mil");
}

std::u16string PointText(TCoordPoint point, const Board* board) {
  const TCoordPoint origin = board ? board->setup.origin : TCoordPoint{};
  const TUnit unit = board ? board->setup.display_unit : eMetric;
  return u"(" + LengthText(std::int64_t{point.x} - origin.x, unit) + u"," +
         LengthText(std::int64_t{point.y} - origin.y, unit) + u")";
}

std::u16string Primitive::Identifier() const {
  return {};
}

std::u16string Primitive::PlaceText() const {
  return PointText(Reference(), board);
}

std::u16string Primitive::LayerText() const {
  return LayerName(state.layer, board);
}

std::u16string Primitive::Describe() const {
  const std::string_view kind_name = KindName(kind);
  std::u16string text(kind_name.begin(), kind_name.end());
  if (const std::u16string name = Identifier(); !name.empty()) text += u" " + name;
  if (HasPlace(kind)) text += u" " + PlaceText() + u" on " + LayerText();
  return text;
}

std::u16string Primitive::DescribeInDetail() const {
  return Describe() + (net_ ? u", net " + net_->data.name : u"");
}

bool Primitive::IsSaveableIn(TKetrilFileFormatVersion version) const {
  switch (kind) {
    case eArcObject:
      return !IsCopper(state.layer) || version >= TKetrilFileFormatVersion::V20211014;
    case eRegionObject:
      return !Has(kFlag_TearDrop) || version >= TKetrilFileFormatVersion::V20221018;
    case ePadObject:
    case eViaObject:
    case eTrackObject:
    case eTextObject:
    case eFillObject:
    case eNetObject:
    case eComponentObject:
    case ePolyObject:
    case eComponentBodyObject:
    case eDimensionObject:
    case eClassObject:
    case eBoardObject:
      return true;
    default:
      return false;
  }
}

bool Primitive::OpensMask(TV7_Layer layer) const {
  const bool bottom = IsBottomSide(state.layer);
  return (layer == SolderOf(bottom) && Mask().solder_mode == eMaskExpansion_Manual) ||
         (layer == PasteOf(bottom) && Mask().paste_mode == eMaskExpansion_Manual);
}

TCoord Primitive::MaskExpansionOn(TV7_Layer layer) const {
  if (!OpensMask(layer)) return 0;
  return layer == PasteOf(false) || layer == PasteOf(true) ? PasteMaskExpansion() : SolderMaskExpansion();
}

TCoord Primitive::SolderMaskExpansion() const {
  const Opening opening = OpeningOf(*this, &MaskData::solder_mode, &MaskData::solder);
  if (opening.mode == eMaskExpansion_FromRule) return board ? board->setup.solder_mask_margin : 0;
  return opening.mode == eMaskExpansion_Manual ? opening.value : 0;
}

TCoord Primitive::PasteMaskExpansion() const {
  const Opening opening = OpeningOf(*this, &MaskData::paste_mode, &MaskData::paste);
  if (opening.mode == eMaskExpansion_FromRule) return board ? board->setup.paste_margin : 0;
  return opening.mode == eMaskExpansion_Manual ? opening.value : 0;
}

TCoord Primitive::PlaneClearance() const {
  if (!board) return 0;
  const ObjectClass* net_class = board->ClassOf(LogicalNetOf(*this));
  return net_class && net_class->data.sizes.clearance > 0 ? net_class->data.sizes.clearance
                                                          : board->setup.clearance;
}

TCoord Primitive::ReliefConductorWidth() const {
  const Polygon* zone = ZoneOf(*this);
  return zone && !zone->data.solid_connect ? zone->data.relief_conductor : 0;
}

TCoord Primitive::ReliefGap() const {
  const Polygon* zone = ZoneOf(*this);
  return zone && !zone->data.solid_connect ? zone->data.relief_gap : 0;
}

// A relief has a conductor in each of the four directions.
std::int32_t Primitive::ReliefEntries() const {
  return ReliefConductorWidth() > 0 ? 4 : 0;
}

TCoord Primitive::RoutingWidth() const {
  if (!board) return 0;
  const ObjectClass* net_class = board->ClassOf(LogicalNetOf(*this));
  return net_class && net_class->data.sizes.track_width > 0 ? net_class->data.sizes.track_width
                                                            : board->setup.track_width;
}

TCoord Primitive::RoutingViaSize() const {
  const ObjectClass* net_class = board ? board->ClassOf(LogicalNetOf(*this)) : nullptr;
  return net_class && net_class->data.sizes.via_size > 0 ? net_class->data.sizes.via_size : ViaData{}.size;
}

}  // namespace Ketril::Editor
