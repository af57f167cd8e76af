#include "DLLs/Tools/Frame/LayerObj.h"

#include <gtest/gtest.h>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesLayerObject.h"

namespace Ketril::Tools {
namespace {

class Layer final : public CountedObject<IPCB_LayerObject> {
 public:
  Status GetState_Name(std::u16string& value) noexcept override { return value = u"Ground", Status::Ok; }
  Status SetState_Name(const std::u16string&) noexcept override { return Status::Failure; }
  Status GetState_LayerId(TV7_Layer& value) noexcept override { return value = eV6_TopLayer, Status::Ok; }
};

TEST(LayerObj, WrapsEachLayerInTheScopeAndLeavesNoneEmpty) {
  const TObjectScope scope;
  std::vector<std::u16string> names;
  const auto callback = MakeCounted<TDelegatedPCBLayerProcessCallback>(
      [&](TLayerObject* layer) { names.push_back(layer ? layer->Name() : u"none"); });
  const auto layer = MakeCounted<Layer>();
  callback->ProcessLayer(layer.Get());
  callback->ProcessLayer(nullptr);
  EXPECT_EQ(names, (std::vector<std::u16string>{u"Ground", u"none"}));
  EXPECT_EQ(LayerObjectRegistry->size(), 1u);

  ProcessLayers(nullptr, [](TLayerObject*) { FAIL(); });
  TBoard* const without_host = TBoard::Create(nullptr);
  ProcessLayers(without_host, [](TLayerObject*) { FAIL(); });
}

}  // namespace
}  // namespace Ketril::Tools
