// Objects that can set one copy of their state aside and take it back.
#pragma once

#include <cstddef>

#include "DLLs/Tools/Frame/AbstractObject.h"
#include "Interfaces/Interface.h"
#include "Interfaces/Types.h"

namespace Ketril::Tools {

class TContainedObject : public TAbstractObject {
 public:
  // A new object like this one.
  virtual TContainedObject* Create(TCopyMode mode) const = 0;
  // Writes this object's values into `target`; what of them it takes is told by the class.
  virtual void CopyTo(TContainedObject* target, TCopyMode mode) const = 0;

  // Sets a copy of the state aside, in place of the copy set aside before: of the object alone, or with what
  // belongs to it.
  virtual void PushSelfOnly() = 0;
  virtual void PushState() { PushSelfOnly(); }
  // Takes the copy back and drops it; false when there is none.
  virtual bool PopState() = 0;
  virtual void ClearLastState() { FLastState = nullptr; }

  virtual TCoordRect GetState_BoundingRectangle() const = 0;
  virtual void Get_BoundingRectangle(TCoordRect& rectangle) const {
    rectangle = GetState_BoundingRectangle();
  }
  // Bytes of the object itself, without what the host keeps for it.
  virtual std::size_t MemoryUsed() const = 0;

 protected:
  Ref<IInterface> FLastState;  // the copy; empty when there is none
};

}  // namespace Ketril::Tools
