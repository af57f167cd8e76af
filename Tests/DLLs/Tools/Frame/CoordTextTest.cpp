#include "DLLs/Tools/Frame/CoordText.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>

#include "DLLs/Tools/Frame/CountedObject.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "Interfaces/Client.h"
#include "Platform/Modules.h"

namespace Ketril::Tools {
namespace {

std::u16string digits;  // the option of the editor

struct OptionClient final : CountedObject<IClient> {
  Status GetServerByName(const std::u16string&, Ref<IInterface>&) noexcept override { return {}; }
  Status GetState_DialogService(Ref<IDialogService>&) noexcept override { return {}; }
  Status GetState_InTestMode(bool&) noexcept override { return {}; }
  Status WriteLog(const std::u16string&) noexcept override { return {}; }
  Status RunProcess(const std::u16string&, const std::u16string&) noexcept override { return {}; }
  Status BeginShove() noexcept override { return {}; }
  Status EndShove() noexcept override { return {}; }
  Status WriteOption(const std::u16string&, const std::u16string&, const std::u16string&) noexcept override {
    return {};
  }
  Status ReadOption(const std::u16string& section, const std::u16string& name, std::u16string& value,
                    bool& found) noexcept override {
    found = section == u"SystemOptions" && name == u"FractionalDigits_mm";
    if (found) value = digits;
    return Status::Ok;
  }
};

class CoordText : public testing::Test {
 protected:
  CoordText() {
    Register(+[]() -> IClient* { return MakeClient().Get(); });
  }
  ~CoordText() override { Register(nullptr); }

 private:
  static const Ref<OptionClient>& MakeClient() {
    static const auto client = MakeCounted<OptionClient>();
    return client;
  }
  static void Register(ClientAPI_GetClient entry) {
    Platform::RegisterModuleEntry(kModule_Ketril, kEntry_GetClient, reinterpret_cast<void*>(entry));
  }
};

TEST_F(CoordText, WritesBothUnits) {
  const struct {
    TCoord C;
    const char16_t *Digits, *Mils, *MMs;
  } rows[] = {
      {0, u"", u"0mil", u"0mm"},
      {10000, u"", u"1mil", u"0.025mm"},
      {393701, u"", u"39.37mil", u"1mm"},
      {5, u"", u"0mil", u"0mm"},  // a half, to the even 0
      {15, u"5", u"0.002mil", u"0.00004mm"},
      {-5, u"0", u"0mil", u"0mm"},
      {-197, u"many", u"-0.02mil", u"-0.001mm"},
      {125000, u"0", u"12.5mil", u"0.318mm"},
      {125000, u"4", u"12.5mil", u"0.3175mm"},
      {INT_MIN, u"99", u"-214748.365mil", u"-5454.60847mm"},
  };
  for (const auto& row : rows) {
    digits = row.Digits;
    EXPECT_EQ(CoordUnitToString(row.C, eImperial), row.Mils) << row.C;
    EXPECT_EQ(CoordUnitToString(row.C, eMetric), row.MMs) << row.C;
  }
}

TEST_F(CoordText, ReadsBothUnits) {
  TCoord c = 0;
  TUnit unit{};
  const auto reads = [&](const char16_t* text, TUnit default_unit, TCoord wanted, TUnit wanted_unit) {
    return StringToCoordUnit(text, default_unit, c, unit) && c == wanted && unit == wanted_unit;
  };
  EXPECT_TRUE(reads(u"1mil", eMetric, 10000, eImperial));
  EXPECT_TRUE(reads(u"1", eMetric, 393701, eMetric));
  EXPECT_TRUE(reads(u" -.5 Mm ", eImperial, -196850, eMetric));
  EXPECT_TRUE(reads(u"214748.3647", eImperial, INT_MAX, eImperial));
  for (const char16_t* const text : {u"", u"mil", u"1milmm", u"214748.3648mil", u"1e999", u"1,5"})
    EXPECT_FALSE(StringToCoordUnit(text, eMetric, c, unit)) << testing::PrintToString(text);
  EXPECT_TRUE(c == INT_MAX && unit == eImperial);
}

TEST_F(CoordText, RoundsHalvesToEvenAndStaysInRange) {
  EXPECT_EQ(MilsToCoord(0.00025), 2);
  EXPECT_EQ(MMsToCoord(-25.4), -10000000);
  EXPECT_EQ(MilsToCoord(1e300), INT_MAX);
  EXPECT_EQ(MMsToCoord(-HUGE_VAL), INT_MIN);
  EXPECT_EQ(MilsToCoord(std::nan("")), 0);
  EXPECT_EQ(CoordToMils(10025), 1.002);
  EXPECT_EQ(CoordToMils(-10035), -1.004);
}

TEST_F(CoordText, TextReadsBackWithinItsDigits) {
  const std::uint32_t seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (int run = 0; run < 2000; ++run) {
    digits = Int64ToText(3 + run % 3);
    // Not at the very ends of the range, where the rounded text can lie beyond it.
    const auto c = static_cast<TCoord>(random()) / (random() % 2 ? 2 : 20000);
    for (const TUnit written : {eMetric, eImperial}) {
      const std::u16string text = CoordUnitToString(c, written);
      TCoord read = 0;
      TUnit unit{};
      ASSERT_TRUE(StringToCoordUnit(text, eMetric, read, unit) && unit == written);
      ASSERT_LE(std::abs(read - c), written == eImperial ? 5 : 0.5 * std::pow(10, 5 - run % 3) / 254 + 0.5)
          << c;
      ASSERT_EQ(CoordUnitToString(read, written), text);
    }
  }
}

}  // namespace
}  // namespace Ketril::Tools
