// The wrappers of the board's objects, all of them.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesAreas.h"
#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Frame/PrimitivesLibrary.h"
#include "DLLs/Tools/Frame/PrimitivesLines.h"
#include "DLLs/Tools/Frame/PrimitivesStack.h"
