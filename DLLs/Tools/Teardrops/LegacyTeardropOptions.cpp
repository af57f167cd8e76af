#include "DLLs/Tools/Teardrops/LegacyTeardropOptions.h"

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/RT_ParameterList.h"
#include "DLLs/Tools/Teardrops/StoredOption.h"

namespace Ketril::Tools {

namespace {

constexpr const char16_t* kSection = u"TearDropOptions";
constexpr const char16_t* kStyle = u"Style";
constexpr const char16_t* kAction = u"Action";

// Calls `visit(key, value)` for the switches in order.
template <class Options, class Visit>
void ForEachSwitch(Options& options, Visit visit) {
  visit(u"AllPads", options.AllPads);
  visit(u"AllVias", options.AllVias);
  visit(u"AllTracks", options.AllTracks);
  visit(u"Selected", options.Selected);
  visit(u"Report", options.Report);
  visit(u"Force", options.Force);
}

TTearDropStyle StyleOf(std::int32_t number) {
  return number == eArcTearDrop ? eArcTearDrop : number == eTrackTearDrop ? eTrackTearDrop : eFilletTearDrop;
}

}  // namespace

bool ReadLegacyTeardropParameters(IParameterList* parameters, TTearDropOptions& options) {
  std::u16string text;
  bool any = false;
  ForEachSwitch(options, [&](const char16_t* name, bool& value) {
    if (!GetParameterAsString(parameters, name, text)) return;
    value = Platform::EqualsIgnoringAsciiCase(text, u"True");
    any = true;
  });
  std::int32_t style = 0;
  any |= GetParameterAsString(parameters, kStyle, text);
  if (GetParameterAsInteger(parameters, kStyle, style)) options.Style = StyleOf(style);
  if (GetParameterAsString(parameters, kAction, text)) {
    options.Action = Platform::EqualsIgnoringAsciiCase(text, u"Remove") ? eRemoveTearDrop : eAddTearDrop;
    any = true;
  }
  return any;
}

void LoadLegacyTeardropOptions(TTearDropOptions& options) {
  const Ref<IClient> client = Client();
  if (!client) return;
  options = TTearDropOptions();
  options.Report = false;
  std::u16string text;
  const auto find = [&](const char16_t* key) { return FindStoredOption(client, kSection, key, text); };
  ForEachSwitch(options, [&](const char16_t* key, bool& value) {
    if (find(key)) Rt_Param::ReadBoolean(text, value);
  });
  std::int32_t number = 0;
  if (find(kStyle) && ReadNumber(text, number)) options.Style = StyleOf(number);
  if (find(kAction) && ReadNumber(text, number))
    options.Action = number == eRemoveTearDrop ? eRemoveTearDrop : eAddTearDrop;
}

void SaveLegacyTeardropOptions(const TTearDropOptions& options) {
  const Ref<IClient> client = Client();
  if (!client) return;
  ForEachSwitch(options, [&](const char16_t* key, bool value) {
    On(client).Call(&IClient::WriteOption, kSection, key, value ? u"True" : u"False");
  });
  On(client).Call(&IClient::WriteOption, kSection, kStyle, Int64ToText(options.Style));
  On(client).Call(&IClient::WriteOption, kSection, kAction, Int64ToText(options.Action));
}

}  // namespace Ketril::Tools
