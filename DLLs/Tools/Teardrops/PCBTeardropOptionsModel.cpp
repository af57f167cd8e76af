#include "DLLs/Tools/Teardrops/PCBTeardropOptionsModel.h"

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/RT_ParameterList.h"
#include "DLLs/Tools/Teardrops/StoredOption.h"

namespace Ketril::Tools {

namespace {

constexpr const char16_t* kSection = u"PCBTeardropOptionsEx";
constexpr const char16_t* kFlags = u"TeardropParam_FlagsEx";
constexpr const char16_t* kRows[] = {u"TeardropParam_PercentForVias", u"TeardropParam_PercentForPads",
                                     u"TeardropParam_PercentForTracks",
                                     u"TeardropParam_PercentForTJunctions"};

// The foot on a wider track has no limit but the track's own, whatever was read.
void ForgetTrackWidth(TTeardropOptionsEx& options) {
  options.SizePercentArray[eTeardropObject_Track].Width = -1;
}

// Calls `visit(key, value)` for the eight sizes in order.
template <class Options, class Visit>
void ForEachSize(Options& options, Visit visit) {
  for (int row = 0; row < 4; ++row) {
    const std::u16string name = kRows[row];
    visit(name + u"_Length", options.SizePercentArray[row].Length);
    visit(name + u"_Width", options.SizePercentArray[row].Width);
  }
}

template <class Number>
void ReadOption(const Ref<IClient>& client, const std::u16string& key, Number& value) {
  std::u16string text;
  if (FindStoredOption(client, kSection, key, text)) ReadNumber(text, value);
}

}  // namespace

TTeardropOptionsEx DefaultTeardropOptions() {
  TTeardropOptionsEx options;
  options.Flags = TeardropFlag_ScaleWidth | TeardropFlag_Add | TeardropFlag_Via | TeardropFlag_Pad |
                  TeardropFlag_Track | TeardropFlag_TJunction;
  options.SizePercentArray[eTeardropObject_Via] = {30, 70};
  options.SizePercentArray[eTeardropObject_Pad] = {100, 200};
  options.SizePercentArray[eTeardropObject_Track] = {100, -1};
  options.SizePercentArray[eTeardropObject_TJunction] = {100, 300};
  return options;
}

bool ReadTeardropParameters(IParameterList* parameters, TTeardropOptionsEx& options) {
  bool any = false;
  ForEachSize(options, [&](const std::u16string& key, double& value) {
    any |= GetParameterAsDouble(parameters, key, value);
  });
  any |= GetParameterAsInteger(parameters, kFlags, options.Flags);
  ForgetTrackWidth(options);
  return any;
}

void LoadTeardropOptions(TTeardropOptionsEx& options) {
  const Ref<IClient> client = Client();
  if (!client) return;
  const std::int32_t flags = options.Flags;
  options = DefaultTeardropOptions();
  options.Flags = flags;
  ForEachSize(options, [&](const std::u16string& key, double& value) { ReadOption(client, key, value); });
  ReadOption(client, kFlags, options.Flags);
  ForgetTrackWidth(options);
}

void SaveTeardropOptions(const TTeardropOptionsEx& options) {
  const Ref<IClient> client = Client();
  if (!client) return;
  ForEachSize(options, [&](const std::u16string& key, double value) {
    On(client).Call(&IClient::WriteOption, kSection, key, DoubleToText(value));
  });
  On(client).Call(&IClient::WriteOption, kSection, kFlags, Int64ToText(options.Flags));
}

}  // namespace Ketril::Tools
