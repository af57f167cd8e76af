// Wraps a host object by what it offers, and compares wrappers by the objects behind them.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBase.h"

namespace Ketril::Tools {

// A new wrapper of the class that fits: null for an empty reference, a plain `TPrimitive` for an object that
// offers none of the interfaces asked for.
TPrimitive* CreatePrimitiveWrapper(Ref<IPCB_Primitive> primitive);
// The same among the classes of rules; a plain `TRule` for a rule of no kind that has a class.
TPrimitive* CreateRuleWrapper(Ref<IPCB_Primitive> rule);

// True when both stand for one host object, whatever their classes; null is no object.
bool SamePrimitive(const TPrimitive* a, const TPrimitive* b);
// True when the nets that decide connectivity are one, or when both objects have none; false for null.
bool SameLogicalNet(const TPrimitive* a, const TPrimitive* b);

}  // namespace Ketril::Tools
