// `TContour`: a vertex list as the editor sees it.
#pragma once

#include "DLLs/Tools/Frame/CountedObject.h"
#include "DLLs/Tools/Frame/Exceptions.h"
#include "DLLs/Tools/Geometry/VertexList.h"
#include "Interfaces/Primitives.h"

namespace Ketril::Tools {

class EContourException : public Exception {
 public:
  using Exception::Exception;
};

// Of neither half, and without tolerance. Vertices are kept in doubles and read as whole numbers, a half to
// the even one; beyond the range they read as 2147483647 or -2147483647. Growing rounds all of them in place.
// An index is cyclic: Count is vertex 0 again, -1 the last one.
//
// Each operation has two forms: that of the interface, which answers with a failing status, and one that
// raises: EContourException "Contour is empty" for a vertex of an empty contour, Exception
// "memory allocation in GPC_MALLOC", EHostError for a contour of the editor that fails.
class TContour final : public CountedObject<IPCB_Contour> {
 public:
  // Wraps a list without owning it, its vertex array though is replaced when the contour grows; with nil the
  // contour has an own empty list, with room for 20 vertices or more.
  explicit TContour(Pgpc_vertex_list A_PGPCVertexList = nullptr);
  ~TContour() override;

  std::int32_t GetState_Count() const { return F_PGPCVertexList->num_vertices; }
  // Vertices beyond the old count are undefined.
  void ChangeCount(std::int32_t N);
  // Without a sign, rounded to a whole number, a half to the even one; 0 below 3 vertices.
  double Area() const;
  TCoord PointX(std::int32_t I) const;
  TCoord PointY(std::int32_t I) const;
  TCoordPoint CoordVertex(std::int32_t I) const { return {PointX(I), PointY(I)}; }
  void PutPointX(std::int32_t I, TCoord Value);
  void PutPointY(std::int32_t I, TCoord Value);
  void Append(TCoord X, TCoord Y);
  void Insert(std::int32_t I, TCoord X, TCoord Y);  // moves the vertices from I on up by one; I up to Count
  void Delete(std::int32_t I);                      // nothing for an index that is not there
  void AppendContour(IPCB_Contour* Contour, std::int32_t First, std::int32_t Last);
  void Move(TCoord DeltaX, TCoord DeltaY);  // wraps to 32 bits
  void Turn(double Angle);                  // about the origin
  Ref<TContour> Replica() const;
  // The list itself. Since the caller may change it, the area and the capacity are worked out anew.
  Pgpc_vertex_list VertexList() const;
  void Reserve(std::int32_t N);

  Status GetState_Count(std::int32_t& value) noexcept override;
  Status SetState_Count(InArg<std::int32_t> value) noexcept override;
  Status GetState_Area(double& value) noexcept override;
  Status GetState_PointX(std::int32_t index, TCoord& x) noexcept override;
  Status GetState_PointY(std::int32_t index, TCoord& y) noexcept override;
  Status SetState_PointX(std::int32_t index, TCoord x) noexcept override;
  Status SetState_PointY(std::int32_t index, TCoord y) noexcept override;
  Status Rotate(double angle) noexcept override;
  Status Translate(TCoord dx, TCoord dy) noexcept override;
  Status RotateAboutPoint(double angle, TCoord x, TCoord y) noexcept override;
  Status Clear() noexcept override;
  Status AddPoint(TCoord x, TCoord y) noexcept override;
  Status InsertPoint(std::int32_t index, TCoord x, TCoord y) noexcept override;
  Status DeletePoint(std::int32_t index) noexcept override;
  Status AddContourRange(IPCB_Contour* contour, std::int32_t first, std::int32_t last) noexcept override;
  Status AddContour(IPCB_Contour* contour) noexcept override;
  Status Replicate(Ref<IPCB_Contour>& replica) noexcept override;
  Status GetState_VertexList(Pgpc_vertex_list& list) noexcept override;
  Status EnsureCapacity(std::int32_t count) noexcept override;

 private:
  TContour(Pgpc_vertex_list list, bool owns_list);
  Tgpc_vertex& Vertex(std::int32_t I) const;

  std::int32_t FCapacity = 0;  // how many vertices the list has room for
  mutable bool FCapacityValueValid = true;
  bool FOwnsVertexList;
  Pgpc_vertex_list F_PGPCVertexList;
  mutable bool FChachedAreaValid = false;
  mutable double FCachedArea = 0;
};

}  // namespace Ketril::Tools
