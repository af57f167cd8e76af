#include "Editor/Model/ObjectFactory.h"

#include "Editor/Model/Board.h"
#include "Editor/Rules/Rule.h"

namespace Ketril::Editor {

namespace {

template <class T>
Ref<Primitive> Make() {
  return Ref<Primitive>(MakeHost<T>().Get());
}

Ref<Primitive> MakePad() {
  const Ref<Pad> pad = MakeHost<Pad>();
  pad->data.hole = 300000;
  return Ref<Primitive>(pad.Get());
}

}  // namespace

Ref<Primitive> MakeObject(TObjectId kind) {
  switch (kind) {
    case eArcObject:
      return Make<Arc>();
    case ePadObject:
      return MakePad();
    case eViaObject:
      return Make<Via>();
    case eTrackObject:
      return Make<Track>();
    case eTextObject:
      return Make<Text>();
    case eFillObject:
      return Make<Fill>();
    case eConnectionObject:
      return Make<Connection>();
    case eNetObject:
      return Make<Net>();
    case eComponentObject:
      return Make<Component>();
    case ePolyObject:
      return Make<Polygon>();
    case eRegionObject:
      return Make<Region>();
    case eComponentBodyObject:
      return Make<ComponentBody>();
    case eDimensionObject:
      return Make<Dimension>();
    case eCoordinateObject:
      return Make<Coordinate>();
    case eClassObject:
      return Make<ObjectClass>();
    case eRuleObject:
      return Ref<Primitive>(MakeRule(eRule_None).Get());
    case eBoardObject:
      return Make<Board>();
    default:
      return {};
  }
}

}  // namespace Ketril::Editor
