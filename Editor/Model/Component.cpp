#include "Editor/Model/Component.h"

#include <cmath>

#include "Editor/Model/LayerFacts.h"

namespace Ketril::Editor {

Component::Component() = default;

Text* Component::TextOf(TextRole role) const {
  for (const Ref<Primitive>& member : Members()) {
    Text* text = As<Text>(member.Get());
    if (text && text->data.role == role) return text;
  }
  return nullptr;
}

Text* Component::NameText() const {
  return TextOf(TextRole::Designator);
}

Text* Component::CommentText() const {
  return TextOf(TextRole::Comment);
}

std::u16string Component::Designator() const {
  const Text* text = NameText();
  return text ? text->data.string : std::u16string();
}

std::u16string Component::PatternName() const {
  const std::size_t colon = data.pattern.find(u':');
  return colon == std::u16string::npos ? data.pattern : data.pattern.substr(colon + 1);
}

void Component::TransformSelf(const PlaneMap& map) {
  data.reference = map(data.reference);
  data.rotation = map.Angle(data.rotation);
}

void Component::SetFlipped(bool flipped) {
  if (flipped == data.flipped) return;
  Transform(PlaneMap::Mirror(data.reference.x));
  data.flipped = flipped;
}

void Component::Flip() {
  SetFlipped(!data.flipped);
  MirrorLayers();
}

void Component::FlipInPlace() {
  Extent pads;
  for (const Ref<Primitive>& member : Members()) {
    if (member->kind == ePadObject) pads.Add(member->Reference());
  }
  const TCoordRect box = pads.Rect(data.reference);
  const std::int64_t way = std::int64_t{box.x1} + box.x2 - std::int64_t{2} * data.reference.x;
  Flip();
  Transform(PlaneMap::Translation(way, 0));
}

void Component::Rotate(TCoordPoint center, double degrees) {
  Transform(PlaneMap::Rotation(center, degrees));
}

void Component::SetSide(TV7_Layer layer, bool with_members) {
  if (with_members && IsBottomSide(layer) != IsBottomSide(state.layer)) {
    for (const Ref<Primitive>& member : Members()) member->MirrorLayers();
  }
  state.layer = layer;
}

Status Component::KeepText(Text* text, TTextAutoposition& kept, TTextAutoposition position) {
  if (position > eAutoPos_BottomRight) return Status::InvalidArgument;
  if (position == kept) return Status::Ok;
  Write([&] { kept = position; });
  PutText(text, position);
  return Status::Ok;
}

bool Component::PutText(Text* text, TTextAutoposition position) {
  if (!text || position < eAutoPos_TopLeft || position > eAutoPos_BottomRight) return false;
  const TCoordRect box = Bounds();
  text->Write([&] {
    // 0 and 90 degrees are upright, 180 and 270 are not.
    const double turn = std::isfinite(text->data.rotation) ? std::fmod(text->data.rotation, 180) : 0;
    text->data.rotation = std::lround(turn / 90) % 2 == 0 ? 0 : 90;
    const TCoordRect from = text->Bounds();
    const std::int64_t width = std::int64_t{from.x2} - from.x1, height = std::int64_t{from.y2} - from.y1;
    const std::int64_t gap = text->data.width;
    const int column = (position - eAutoPos_TopLeft) / 3, row = (position - eAutoPos_TopLeft) % 3;
    const bool above = row == 0, below = row == 2;
    std::int64_t x = (std::int64_t{box.x1} + box.x2 - width) / 2;
    std::int64_t y = (std::int64_t{box.y1} + box.y2 - height) / 2;
    if (above) y = box.y2 + gap;
    if (below) y = box.y1 - gap - height;
    if (column == 0) x = above || below ? box.x1 : box.x1 - gap - width;
    if (column == 2) x = above || below ? box.x2 - width : box.x2 + gap;
    text->Transform(PlaneMap::Translation(x - from.x1, y - from.y1));
  });
  return true;
}

void Component::CleanSide() {
  const bool bottom = IsBottomSide(state.layer);
  for (Text* text : {NameText(), CommentText()}) {
    if (!text) continue;
    const TV7_Layer other = MirroredLayer(text->state.layer, text->board);
    const bool on_wrong_side =
        IsBottomSide(text->state.layer) != IsBottomSide(other) && IsBottomSide(text->state.layer) != bottom;
    if (on_wrong_side) text->Write([&] { text->MirrorLayers(); });
  }
}

}  // namespace Ketril::Editor
