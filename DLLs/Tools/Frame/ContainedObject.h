// Objects that a container can hold, and that can set one copy of their state aside and take it back.
#pragma once

#include <cstddef>

#include "DLLs/Tools/Frame/AbstractObject.h"
#include "Interfaces/Interface.h"
#include "Interfaces/Types.h"

namespace Ketril::Tools {

class TContainedObject : public TAbstractObject {
 public:
  // A new object of the same class. What it has of this one's values is told by the class.
  virtual TContainedObject* Create(TCopyMode mode) const = 0;
  // Writes this object's values into `target`; what of them it takes is told by the class: here nothing.
  virtual void CopyTo(TContainedObject*, TCopyMode) const {}

  // Sets a copy of the state aside, in place of the copy set aside before: of the object alone, or with what
  // belongs to it.
  virtual void PushSelfOnly() { PushState(); }
  virtual void PushState() {
    if (!LastState) LastState = Create(eFullCopy);
    CopyTo(LastState, eFullCopy);
  }
  // Takes the copy back and drops it; false when there is none.
  virtual bool PopState() {
    if (!LastState) return false;
    LastState->CopyTo(this, eFullCopy);
    ClearLastState();
    return true;
  }
  virtual void ClearLastState() {
    if (LastState) LastState->Free();
    LastState = nullptr;
  }

  // All zero for an object without a place.
  virtual TCoordRect GetState_BoundingRectangle() const { return {}; }
  virtual void Get_BoundingRectangle(TCoordRect& rectangle) const {
    rectangle = GetState_BoundingRectangle();
  }
  // Bytes of the object itself, without what the host keeps for it.
  virtual std::size_t MemoryUsed() const { return 0; }

  TContainedObject* LastState = nullptr;  // the copy, owned; null when there is none
  void* vQuadTreeNode = nullptr;          // for a spatial index, which owns it

 protected:
  ~TContainedObject() override {
    if (LastState) LastState->Free();
  }
};

}  // namespace Ketril::Tools
