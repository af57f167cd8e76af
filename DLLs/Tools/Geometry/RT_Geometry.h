// The double half of the plane geometry, all of it.
#pragma once

#include "DLLs/Tools/Geometry/RT_GeometryArcs.h"
#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/RT_GeometryLines.h"
#include "DLLs/Tools/Geometry/RT_GeometryTolerances.h"
#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"
