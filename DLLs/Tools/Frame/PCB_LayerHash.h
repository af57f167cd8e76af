// Maps from layers to small values.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "DLLs/Tools/Frame/PCB_LayerIterator.h"

namespace Ketril::Tools {

// Maps layers to pointer-sized values, which it does not own. Keys are kept in the order of their `ID`: the
// old numbers first, then by kind and number. Whether a layer is there costs the test of a bit for the old
// numbers, a binary search for others.
//
// A map is a value: copying it copies the entries, and with them the default value and the kind of look-up.
class TCustomLayerHash {
 public:
  using Value = std::uintptr_t;

  // A default value of 0 is what a plain look-up gives for a missing key, and counts as none in a family
  // aware map. `expected_count` only reserves memory.
  explicit TCustomLayerHash(bool family_aware = false, int expected_count = 0, Value default_value = 0);

  bool FamilyAware() const { return family_aware_; }
  int Count() const { return static_cast<int>(entries_.size()); }
  // Is the layer itself a key.
  bool Exists(TV7_Layer layer) const;
  // Is every key of `other` one of these, whatever the values.
  bool ContainsAll(const TCustomLayerHash& other) const;
  // The same keys with the same values.
  bool EqualTo(const TCustomLayerHash& other) const;
  // The value of a layer, or the default value when it is no key. A family aware map asks the layer, then its
  // parents (`LayerParent`) up to the top, then the default value; without one it raises EListError, "Could
  // not find value for Layer=Top Layer".
  Value GetLayerValue(TV7_Layer layer) const;
  Value LayerValue(TV7_Layer layer) const { return GetLayerValue(layer); }
  void SetLayerValue(TV7_Layer layer, Value value);
  void Remove(TV7_Layer key);  // nothing when it is no key
  void Clear();

  // Writes the entries of layers in `layers` into `right`, over those that are there; `layers` empty: all.
  // Raises EHostError when `layers` fails.
  void CopyTo(TCustomLayerHash& right, IPCB_LayerSet* layers = nullptr) const;
  // Makes `right` agree with this map on `layers`, so that it also loses keys there that are not keys here.
  void ReplicateTo(TCustomLayerHash& right, IPCB_LayerSet* layers = nullptr) const;
  TCustomLayerHash Replicate() const { return *this; }

  std::vector<TV7_Layer> Keys() const;
  Ref<IPCB_LayerIterator> LayerIterator() const;  // over the keys as they are now
  // Hands each value that is not 0 to `free_value`, for a map whose values own something, and empties the
  // map.
  void FreeAllValues(FunctionRef<void(Value)> free_value);

 protected:
  Value default_value_;

 private:
  struct Entry {
    TV7_Layer Key;
    Value Data;
    friend bool operator==(const Entry&, const Entry&) = default;
  };
  // The entry of the key, or where it belongs.
  std::size_t Place(TV7_Layer key) const;

  bool family_aware_;
  std::array<std::uint64_t, 2> old_numbers_{};  // bit n: the old number n is a key
  std::vector<Entry> entries_;
};

// A map to pointers; also, with the keys alone, a set of layers.
class TLayerHash : public TCustomLayerHash {
 public:
  using TCustomLayerHash::TCustomLayerHash;
  TLayerHash Replicate() const { return *this; }
  void Add(TV7_Layer key) { SetLayerValue(key, 0); }
};

// A map to integers.
class TLayerToAtom : public TCustomLayerHash {
 public:
  using Atom = std::intptr_t;
  explicit TLayerToAtom(bool family_aware = false, int expected_count = 0, Atom default_value = 0)
      : TCustomLayerHash(family_aware, expected_count, static_cast<Value>(default_value)) {}
  TLayerToAtom Replicate() const { return *this; }
  Atom Data(TV7_Layer key) const { return static_cast<Atom>(GetLayerValue(key)); }
  void SetData(TV7_Layer key, Atom value) { SetLayerValue(key, static_cast<Value>(value)); }
};

// A map to truth values.
class TLayerToBoolean : public TCustomLayerHash {
 public:
  explicit TLayerToBoolean(bool family_aware = false, int expected_count = 0, bool default_value = false)
      : TCustomLayerHash(family_aware, expected_count, default_value ? 1 : 0) {}
  TLayerToBoolean Replicate() const { return *this; }
  bool GetData(TV7_Layer key) const { return GetLayerValue(key) != 0; }
  bool Data(TV7_Layer key) const { return GetData(key); }
  void SetData(TV7_Layer key, bool value) { SetLayerValue(key, value ? 1 : 0); }
  bool DefaultValue() const { return default_value_ != 0; }
  void SetDefaultValue(bool value) { default_value_ = value ? 1 : 0; }
  // Makes each layer that `keys` gives a key that is true.
  void AddKeys(const Ref<IPCB_LayerIterator>& keys);
};

}  // namespace Ketril::Tools
