// Makes new objects.
#pragma once

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

// A new object of the kind, on no board: a pad is round, simple, through all layers, with a hole; a via is
// simple, from top to bottom. Empty for kinds that the editor does not have, and for a board's outline, which
// its board makes.
Ref<Primitive> MakeObject(TObjectId kind);

}  // namespace Ketril::Editor
