// The methods that all objects of the board share, over the core: one template that each class of the editor
// derives from, naming itself, its core and the end of its interface chain.
#pragma once

#include "Editor/Model/HostProperty.h"
#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

// `Self` has a `data` member that is copied by save, restore and copy, and a `kKind`.
template <class Self, class Core, class... Interfaces>
class PrimitiveObject : public HostObject<Interfaces..., Core> {
  // Written by the owner of the model: every method of IPCB_Primitive, IPCB_Primitive2 and IPCB_Primitive3.
};

}  // namespace Ketril::Editor
