#include "DLLs/Tools/Frame/PCB_LayerHash.h"

#include <algorithm>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

constexpr std::uint32_t kBits = 128;

bool Holds(IPCB_LayerSet* layers, TV7_Layer layer) {
  return !layers || On(Ref(layers)).Read(&IPCB_LayerSet::ContainsLayer, layer);
}

}  // namespace

TCustomLayerHash::TCustomLayerHash(bool family_aware, int expected_count, Value default_value)
    : default_value_(default_value), family_aware_(family_aware) {
  if (expected_count > 0) entries_.reserve(static_cast<std::size_t>(expected_count));
}

std::size_t TCustomLayerHash::Place(TV7_Layer key) const {
  const auto place = std::lower_bound(entries_.begin(), entries_.end(), key,
                                      [](const Entry& entry, TV7_Layer layer) { return entry.Key < layer; });
  return static_cast<std::size_t>(place - entries_.begin());
}

bool TCustomLayerHash::Exists(TV7_Layer layer) const {
  if (layer.ID < kBits) return (old_numbers_[layer.ID / 64] >> layer.ID % 64 & 1) != 0;
  const std::size_t place = Place(layer);
  return place < entries_.size() && entries_[place].Key == layer;
}

bool TCustomLayerHash::ContainsAll(const TCustomLayerHash& other) const {
  return std::all_of(other.entries_.begin(), other.entries_.end(),
                     [this](const Entry& entry) { return Exists(entry.Key); });
}

bool TCustomLayerHash::EqualTo(const TCustomLayerHash& other) const {
  return entries_ == other.entries_;
}

TCustomLayerHash::Value TCustomLayerHash::GetLayerValue(TV7_Layer layer) const {
  for (TV7_Layer key = layer;; key = LayerParent(key)) {
    if (Exists(key)) return entries_[Place(key)].Data;
    if (!family_aware_ || LayerParent(key) == eV6_NoLayer) break;
  }
  if (family_aware_ && default_value_ == 0)
    throw EListError("Could not find value for Layer=" + Platform::ToUtf8(LayerToString(layer)));
  return default_value_;
}

void TCustomLayerHash::SetLayerValue(TV7_Layer layer, Value value) {
  const std::size_t place = Place(layer);
  if (place < entries_.size() && entries_[place].Key == layer) {
    entries_[place].Data = value;
    return;
  }
  entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(place), {layer, value});
  if (layer.ID < kBits) old_numbers_[layer.ID / 64] |= std::uint64_t{1} << layer.ID % 64;
}

void TCustomLayerHash::Remove(TV7_Layer key) {
  if (!Exists(key)) return;
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(Place(key)));
  if (key.ID < kBits) old_numbers_[key.ID / 64] &= ~(std::uint64_t{1} << key.ID % 64);
}

void TCustomLayerHash::Clear() {
  entries_.clear();
  old_numbers_ = {};
}

void TCustomLayerHash::CopyTo(TCustomLayerHash& right, IPCB_LayerSet* layers) const {
  if (&right == this) return;
  for (const Entry& entry : entries_)
    if (Holds(layers, entry.Key)) right.SetLayerValue(entry.Key, entry.Data);
}

void TCustomLayerHash::ReplicateTo(TCustomLayerHash& right, IPCB_LayerSet* layers) const {
  for (const TV7_Layer key : right.Keys())
    if (!Exists(key) && Holds(layers, key)) right.Remove(key);
  CopyTo(right, layers);
}

std::vector<TV7_Layer> TCustomLayerHash::Keys() const {
  std::vector<TV7_Layer> keys;
  keys.reserve(entries_.size());
  for (const Entry& entry : entries_) keys.push_back(entry.Key);
  return keys;
}

Ref<IPCB_LayerIterator> TCustomLayerHash::LayerIterator() const {
  return MakeCounted<TLayerListIterator>(Keys());
}

void TCustomLayerHash::FreeAllValues(FunctionRef<void(Value)> free_value) {
  const std::vector<Entry> freed = std::move(entries_);
  Clear();
  for (const Entry& entry : freed)
    if (entry.Data != 0) free_value(entry.Data);
}

void TLayerToBoolean::AddKeys(const Ref<IPCB_LayerIterator>& keys) {
  ForEachLayer(keys, [this](TV7_Layer layer) { SetData(layer, true); });
}

}  // namespace Ketril::Tools
