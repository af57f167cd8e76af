// Layer sets, their iterators and factories, and the layers of a board's stack.
#pragma once

#include "Interfaces/Interface.h"
#include "Interfaces/LayerTypes.h"

namespace Ketril {

class IPCB_LayerSet;

// Walks layers in ascending order of their kind and number: while `Next` says that there is a layer, `Layer`
// gives it.
class IPCB_LayerIterator : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_LayerIterator"};
  // `found` is false when there is no further layer.
  virtual Status Next(bool& found) noexcept = 0;
  virtual Status Layer(TV7_Layer& layer) noexcept = 0;
};

// A set of layers. It is a value of its own, changed in place; an implementation keeps one bound or unbounded
// part for each family of layers, so that a set can hold all signal layers however many there are.
//
// The library's own implementation adds forms that hand the set back for chaining; the boundary has the plain
// ones, which a host needs to filter by.
class IPCB_LayerSet : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_LayerSet"};
  virtual Status IncludeLayer(TV7_Layer layer) noexcept = 0;
  virtual Status ExcludeLayer(TV7_Layer layer) noexcept = 0;
  virtual Status IncludePartitions(TLayerPartitionSet partitions) noexcept = 0;
  virtual Status ExcludePartitions(TLayerPartitionSet partitions) noexcept = 0;
  virtual Status ContainsLayer(TV7_Layer layer, bool& contained) noexcept = 0;
  virtual Status GetState_IsEmpty(bool& empty) noexcept = 0;
  virtual Status GetState_IsAllLayers(bool& all) noexcept = 0;
  // False when a part holds all layers of a family that has no bound.
  virtual Status GetState_IsFinite(bool& finite) noexcept = 0;
  // Fails for a set that is not finite.
  virtual Status CreateLayerIterator(Ref<IPCB_LayerIterator>& iterator) noexcept = 0;
};

// One layer of a board's stack.
class IPCB_LayerObject : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_LayerObject"};
  KETRIL_PROPERTY(std::u16string, Name);  // the name that the user gave the layer
  KETRIL_READ(TV7_Layer, LayerId);
};

// Called back once for each layer of a stack.
class IPCB_LayerProcessInterface : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_LayerProcessInterface"};
  // May throw: it is the library's code, called by the host, which passes the failure on as it comes.
  virtual void ProcessLayer(IPCB_LayerObject* layer) = 0;
};

// The copper layers of a board from top to bottom.
class IPCB_LayerStack : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_LayerStack"};
  KETRIL_READ(std::int32_t, Count);
  virtual Status GetState_LayerAt(std::int32_t index, Ref<IPCB_LayerObject>& layer) noexcept = 0;
  // Empty for a layer that the stack does not have; the layers that are no copper are given as well.
  virtual Status GetState_LayerObject(TV7_Layer id, Ref<IPCB_LayerObject>& layer) noexcept = 0;
};

}  // namespace Ketril
