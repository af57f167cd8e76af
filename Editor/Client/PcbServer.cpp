#include "Editor/Client/PcbServer.h"

#include "Editor/Copper/ContourMaker.h"
#include "Editor/HostCall.h"
#include "Editor/Model/GeometricPolygon.h"
#include "Editor/Model/ObjectFactory.h"

namespace Ketril::Editor {

Status PcbServer::PCBObjectFactory(TObjectId kind, std::int32_t, std::int32_t,
                                   Ref<IPCB_Primitive>& primitive) noexcept {
  return HostCall("IPCB_ServerInterface.PCBObjectFactory", [&] {
    const Ref<Primitive> object = MakeObject(kind);
    primitive = object ? object->AsInterface() : nullptr;
  });
}

Status PcbServer::GetState_LayerSetUtils(Ref<IPCB_LayerSetUtils>& value) noexcept {
  return HostCall("IPCB_ServerInterface.GetState_LayerSetUtils", [&] { value = nullptr; });
}

Status PcbServer::CreateGeometricPolygon(Ref<IPCB_GeometricPolygon>& area) noexcept {
  return HostCall("IPCB_ServerInterface.CreateGeometricPolygon",
                  [&] { area = MakeHost<GeometricPolygon>(); });
}

Status PcbServer::CreateContourMaker(Ref<IPCB_ContourMaker>& maker) noexcept {
  return HostCall("IPCB_ServerInterface.CreateContourMaker", [&] { maker = MakeHost<ContourMaker>(); });
}

Status PcbServer::EditTeardropOptions(TTeardropOptionsEx& options, bool& accepted) noexcept {
  return HostCall("IPCB_ServerInterface.EditTeardropOptions",
                  [&] { accepted = teardrop_dialog_ && teardrop_dialog_(options); });
}

Status PcbServer::EditLegacyTeardropOptions(TTearDropOptions& options, bool& accepted) noexcept {
  return HostCall("IPCB_ServerInterface.EditLegacyTeardropOptions",
                  [&] { accepted = legacy_dialog_ && legacy_dialog_(options); });
}

}  // namespace Ketril::Editor
