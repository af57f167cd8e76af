// The flanks of a teardrop: straight, or a quadratic curve towards a control point.
#pragma once

#include "DLLs/Tools/Geometry/Contour.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"
#include "Interfaces/Teardrops.h"

namespace Ketril::Tools {

// Appends a vertex, rounded.
void AddVertex(TContour& Contour, GeoPointType P);
// Appends a flank: From and To, or with a control point and curved flanks the curve between them.
void AddEdge(TContour& Contour, const TTeardropOptionsEx& Options, GeoPointType From, GeoPointType To,
             GeoPointType Ctrl);
// Appends a quadratic Bezier curve in steps of Step of its parameter, leaving out the places at which it has
// turned by less than 3 degrees since the last one that it took.
void CurveToContour(TContour& Contour, GeoPointType From, GeoPointType Ctrl, GeoPointType To, double Step);

// Where the flank's two tangents meet: that of the track's edge at Tail with that of the circle about O at
// Foot. Halfway between Tail and Foot, where they do not meet, or farther from Tail than Foot is.
GeoPointType CurveControlPoint(const LineType& Line, GeoPointType Tail, GeoPointType Foot, GeoPointType O);
GeoPointType ArcCurveControlPoint(const ThinArcType& Arc, GeoPointType Tail, GeoPointType Foot,
                                  GeoPointType O);

}  // namespace Ketril::Tools
