#include "DLLs/Tools/Frame/PCB_LayerHash.h"

#include <gtest/gtest.h>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "DLLs/Tools/Frame/PCB_LayerFactory.h"

namespace Ketril::Tools {
namespace {

TEST(PCB_LayerHash, FamilyAwareLookUp) {
  const TV7_Layer signals(0, 257), copper(0, 256), films(0, 2048);
  TLayerToAtom map(true);
  map.SetData(eV6_TopLayer, 1);
  map.SetData(signals, 2);
  map.SetData(copper, -3);
  map.SetData(films, 4);
  const struct {
    TV7_Layer Layer;
    std::intptr_t Value;
  } rows[] = {{eV6_TopLayer, 1},       {eV6_BottomLayer, 2},           {MidLayer(3), 2},
              {MidLayer(40), 2},       {InternalPlaneLayer(1), -3},    {InternalPlaneLayer(17), -3},
              {DielectricLayer(1), 4}, {TopCoverlayOutlineLayer(1), 4}};
  for (const auto& row : rows) EXPECT_EQ(map.Data(row.Layer), row.Value) << row.Layer.ID;
  EXPECT_FALSE(map.Exists(eV6_BottomLayer));
  try {
    map.Data(MechanicalLayer(1));
    ADD_FAILURE();
  } catch (const EListError& e) {
    EXPECT_STREQ(e.what(), "Could not find value for Layer=Mechanical Layer 1");
  }
  EXPECT_EQ(TLayerToAtom(true, 8, 9).Data(eV6_TopOverlay), 9);
  TLayerToAtom plain(false, 0, 9);
  plain.SetData(signals, 2);
  EXPECT_EQ(plain.Data(eV6_TopLayer), 9);
  EXPECT_FALSE(TLayerToBoolean().Data(eV6_TopLayer));
}

TEST(PCB_LayerHash, EntriesAndCopies) {
  TLayerToBoolean map;
  for (const TV7_Layer layer : {MidLayer(40), MechanicalLayer(1), MidLayer(1), TV7_Layer(eV6_TopLayer)})
    map.SetData(layer, true);
  map.SetData(MidLayer(1), false);
  const std::vector<TV7_Layer> keys{eV6_TopLayer, MidLayer(1), MechanicalLayer(1), MidLayer(40)};
  EXPECT_EQ(map.Keys(), keys);

  TLayerToBoolean part;
  part.SetData(eV6_BottomLayer, true);
  part.SetData(eV6_MultiLayer, true);
  TLayerToBoolean replica = part.Replicate();
  const Ref<IPCB_LayerSet> signals = TPCBFactory::SignalLayers();
  map.CopyTo(part, signals.Get());
  EXPECT_EQ(part.Keys(), (std::vector<TV7_Layer>{eV6_TopLayer, MidLayer(1), eV6_BottomLayer, eV6_MultiLayer,
                                                 MidLayer(40)}));
  map.ReplicateTo(replica, signals.Get());
  EXPECT_FALSE(replica.Exists(eV6_BottomLayer));
  EXPECT_TRUE(replica.Exists(eV6_MultiLayer));
  map.ReplicateTo(replica);
  EXPECT_TRUE(replica.EqualTo(map));
  replica.SetData(MidLayer(1), true);
  EXPECT_FALSE(replica.EqualTo(map));
  EXPECT_TRUE(replica.ContainsAll(map));
  replica.Remove(MidLayer(40));
  EXPECT_FALSE(replica.ContainsAll(map));

  TLayerToBoolean walked;
  walked.AddKeys(map.LayerIterator());
  EXPECT_EQ(walked.Keys(), keys);
  EXPECT_TRUE(walked.Data(MidLayer(1)));
  TCustomLayerHash::Value freed = 0;
  walked.FreeAllValues([&](TCustomLayerHash::Value value) { freed += value; });
  EXPECT_EQ(freed, 4u);
  EXPECT_FALSE(walked.Exists(eV6_TopLayer));
}

}  // namespace
}  // namespace Ketril::Tools
