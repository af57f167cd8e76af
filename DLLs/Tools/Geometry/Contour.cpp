#include "DLLs/Tools/Geometry/Contour.h"

#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Geometry/ContourPoints.h"
#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

// What of the range of a coordinate a vertex reads as.
TCoord RoundVertex(double value) {
  constexpr double kEnd = 2147483647;
  const double whole = std::nearbyint(value);
  if (whole >= kLowestCoord && whole <= kEnd) return static_cast<TCoord>(whole);
  return value > kEnd ? kHighestCoord : -kHighestCoord;
}

// The form of an operation that answers with a status.
template <class Operation>
Status Answer(Operation operation) noexcept {
  try {
    operation();
    return Status::Ok;
  } catch (const EHostError& error) {
    return error.Status();
  } catch (const std::exception&) {
    return Status::Failure;
  }
}

}  // namespace

TContour::TContour(Pgpc_vertex_list A_PGPCVertexList)
    : TContour(A_PGPCVertexList ? A_PGPCVertexList : NewVertexList(0), !A_PGPCVertexList) {
  if (FOwnsVertexList) Reserve(20);
}

TContour::TContour(Pgpc_vertex_list list, bool owns_list)
    : FCapacity(list->num_vertices), FOwnsVertexList(owns_list), F_PGPCVertexList(list) {}

TContour::~TContour() {
  if (FOwnsVertexList) FreeVertexList(F_PGPCVertexList);
}

Tgpc_vertex& TContour::Vertex(std::int32_t I) const {
  const std::int32_t count = GetState_Count();
  if (count <= 0) throw EContourException("Contour is empty");
  if (I < 0 || I >= count) {
    I %= count;
    if (I < 0) I += count;
  }
  return F_PGPCVertexList->vertex[I];
}

TCoord TContour::PointX(std::int32_t I) const {
  return RoundVertex(Vertex(I).x);
}

TCoord TContour::PointY(std::int32_t I) const {
  return RoundVertex(Vertex(I).y);
}

void TContour::PutPointX(std::int32_t I, TCoord Value) {
  Vertex(I).x = Value;
  FChachedAreaValid = false;
}

void TContour::PutPointY(std::int32_t I, TCoord Value) {
  Vertex(I).y = Value;
  FChachedAreaValid = false;
}

void TContour::Reserve(std::int32_t N) {
  if (!FCapacityValueValid) {
    FCapacity = GetState_Count();
    FCapacityValueValid = true;
  }
  if (N < FCapacity) return;
  const std::int64_t grown =
      FCapacity < 65 ? std::int64_t{2} * FCapacity : std::int64_t{FCapacity} + FCapacity / 4;
  const std::int32_t capacity = std::max(SaturateToCoord(grown), N);
  Pgpc_vertex_array vertices = NewVertices(capacity);
  for (std::int32_t i = 0; i < GetState_Count(); ++i) vertices[i] = {double(PointX(i)), double(PointY(i))};
  delete[] F_PGPCVertexList->vertex;
  F_PGPCVertexList->vertex = vertices;
  FCapacity = capacity;
}

void TContour::ChangeCount(std::int32_t N) {
  if (N < 0) throw EContourException("Contour count is negative");
  Reserve(N);
  F_PGPCVertexList->num_vertices = N;
  FChachedAreaValid = false;
}

double TContour::Area() const {
  if (!FChachedAreaValid) {
    FCachedArea = static_cast<double>(ContourAbsoluteArea(*F_PGPCVertexList));
    FChachedAreaValid = true;
  }
  return FCachedArea;
}

void TContour::Append(TCoord X, TCoord Y) {
  Insert(GetState_Count(), X, Y);
}

void TContour::Insert(std::int32_t I, TCoord X, TCoord Y) {
  const std::int32_t count = GetState_Count();
  if (I < 0 || I > count) throw EContourException("Contour has no place for a vertex there");
  ChangeCount(count + 1);
  Pgpc_vertex_array vertices = F_PGPCVertexList->vertex;
  std::copy_backward(vertices + I, vertices + count, vertices + count + 1);
  vertices[I] = {double(X), double(Y)};
}

void TContour::Delete(std::int32_t I) {
  const std::int32_t count = GetState_Count();
  if (I < 0 || I >= count) return;
  Pgpc_vertex_array vertices = F_PGPCVertexList->vertex;
  std::copy(vertices + I + 1, vertices + count, vertices + I);
  ChangeCount(count - 1);
}

void TContour::AppendContour(IPCB_Contour* Contour, std::int32_t First, std::int32_t Last) {
  const HostLink<IPCB_Contour> other = On(Ref<IPCB_Contour>(Contour));
  std::int64_t last = Last;
  if (Last < First) last += other.Read(&IPCB_Contour::GetState_Count);
  std::int64_t i = First;
  do {
    const TCoord x = other.Read(&IPCB_Contour::GetState_PointX, static_cast<std::int32_t>(i));
    const TCoord y = other.Read(&IPCB_Contour::GetState_PointY, static_cast<std::int32_t>(i));
    Append(x, y);
  } while (++i <= last);
}

void TContour::Move(TCoord DeltaX, TCoord DeltaY) {
  for (std::int32_t i = 0; i < GetState_Count(); ++i) {
    PutPointX(i, WrapToCoord(std::int64_t{PointX(i)} + DeltaX));
    PutPointY(i, WrapToCoord(std::int64_t{PointY(i)} + DeltaY));
  }
}

void TContour::Turn(double Angle) {
  for (std::int32_t i = 0; i < GetState_Count(); ++i) {
    double x = 0, y = 0;
    RotateVector(Angle, PointX(i), PointY(i), x, y);
    PutPointX(i, Round(x));
    PutPointY(i, Round(y));
  }
}

Ref<TContour> TContour::Replica() const {
  TVertexListOwner copy(CopyVertexList(F_PGPCVertexList));
  if (!copy) return MakeCounted<TContour>();
  Ref<TContour> replica(new TContour(copy.get(), true));
  copy.release();
  return replica;
}

Pgpc_vertex_list TContour::VertexList() const {
  FCapacityValueValid = false;
  FChachedAreaValid = false;
  return F_PGPCVertexList;
}

Status TContour::GetState_Count(std::int32_t& value) noexcept {
  value = GetState_Count();
  return Status::Ok;
}
Status TContour::SetState_Count(InArg<std::int32_t> value) noexcept {
  return Answer([&] { ChangeCount(value); });
}
Status TContour::GetState_Area(double& value) noexcept {
  return Answer([&] { value = Area(); });
}
Status TContour::GetState_PointX(std::int32_t index, TCoord& x) noexcept {
  return Answer([&] { x = PointX(index); });
}
Status TContour::GetState_PointY(std::int32_t index, TCoord& y) noexcept {
  return Answer([&] { y = PointY(index); });
}
Status TContour::SetState_PointX(std::int32_t index, TCoord x) noexcept {
  return Answer([&] { PutPointX(index, x); });
}
Status TContour::SetState_PointY(std::int32_t index, TCoord y) noexcept {
  return Answer([&] { PutPointY(index, y); });
}
Status TContour::Rotate(double angle) noexcept {
  return Answer([&] { Turn(angle); });
}
Status TContour::Translate(TCoord dx, TCoord dy) noexcept {
  return Answer([&] { Move(dx, dy); });
}
Status TContour::RotateAboutPoint(double angle, TCoord x, TCoord y) noexcept {
  return Answer([&] {
    Move(WrapToCoord(-std::int64_t{x}), WrapToCoord(-std::int64_t{y}));
    Turn(angle);
    Move(x, y);
  });
}
Status TContour::Clear() noexcept {
  F_PGPCVertexList->num_vertices = 0;
  FChachedAreaValid = false;
  return Status::Ok;
}
Status TContour::AddPoint(TCoord x, TCoord y) noexcept {
  return Answer([&] { Append(x, y); });
}
Status TContour::InsertPoint(std::int32_t index, TCoord x, TCoord y) noexcept {
  return Answer([&] { Insert(index, x, y); });
}
Status TContour::DeletePoint(std::int32_t index) noexcept {
  return Answer([&] { Delete(index); });
}
Status TContour::AddContourRange(IPCB_Contour* contour, std::int32_t first, std::int32_t last) noexcept {
  return Answer([&] { AppendContour(contour, first, last); });
}
Status TContour::AddContour(IPCB_Contour* contour) noexcept {
  return Answer([&] {
    AppendContour(contour, 0, On(Ref<IPCB_Contour>(contour)).Read(&IPCB_Contour::GetState_Count) - 1);
  });
}
Status TContour::Replicate(Ref<IPCB_Contour>& replica) noexcept {
  return Answer([&] { replica = Replica(); });
}
Status TContour::GetState_VertexList(Pgpc_vertex_list& list) noexcept {
  list = VertexList();
  return Status::Ok;
}
Status TContour::EnsureCapacity(std::int32_t count) noexcept {
  return Answer([&] { Reserve(count); });
}

}  // namespace Ketril::Tools
