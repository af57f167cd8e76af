// The options file: whatever is in it, it is read; an option that is written is read back, also from the
// file, and the others stay; and everybody who reads options gets a value that he can use.
#include <cstdint>
#include <optional>
#include <vector>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Reports/RT_ReportOptions.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/OptionsStore.h"
#include "Editor/Files/BoardFile.h"
#include "Fuzz/Support/Folder.h"
#include "Interfaces/Tools.h"
#include "Platform/Text.h"

namespace {

using namespace Ketril;
using Editor::OptionsStore;
using Fuzz::Check;

struct Name {
  std::u16string section, name;
};

// Those of the tools, and those of the text itself.
std::vector<Name> NamesIn(const std::string& text) {
  std::vector<Name> names = {{u"TearDropOptions", u"ViasOnly"}, {u"Client", u"HideDocumentPath"}};
  const std::u16string wide = Platform::ToUtf16(text);
  std::u16string section;
  for (std::size_t at = 0; at < wide.size() && names.size() < 40;) {
    const std::size_t end = std::min(wide.find(u'\n', at), wide.size());
    const std::u16string line = wide.substr(at, end - at);
    at = end + 1;
    if (line.starts_with(u'[')) section = line.substr(1, line.find(u']') - 1);
    names.push_back({section, line.substr(0, line.find(u'='))});
  }
  return names;
}

using Values = std::vector<std::optional<std::u16string>>;

Values Read(const OptionsStore& store, const std::vector<Name>& names) {
  Values values;
  for (const Name& name : names) values.push_back(store.Read(name.section, name.name));
  return values;
}

void CheckStore(const std::filesystem::path& file, const std::string& text) {
  OptionsStore store(file);
  const std::vector<Name> names = NamesIn(text);
  const Values before = Read(store, names);
  const Name& chosen = names[text.size() % names.size()];
  const std::u16string value = Platform::ToUtf16(text.substr(text.size() / 2, 12));
  Values after = before;
  try {
    store.Write(chosen.section, chosen.name, value);
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (Platform::EqualsIgnoringAsciiCase(names[i].section, chosen.section) &&
          Platform::EqualsIgnoringAsciiCase(names[i].name, chosen.name))
        after[i] = value;
    }
  } catch (const std::invalid_argument&) {
    // There is no place for that in the file.
  }
  Check(Read(store, names) == after, "an option is written, and no other");
  Check(Read(OptionsStore(file), names) == after, "the file has what the store has");
}

void AskReaders() {
  static const Ref<Editor::Board> board = Editor::ReadBoardText(
      "(kicad_pcb (version 20171130) (host x 1) (layers (0 F.Cu signal) (31 B.Cu signal)) (net 0 \"\"))");
  Editor::ClientSetup setup;
  setup.options_folder = Fuzz::Folder();
  setup.log = [](const std::u16string&) {};
  setup.legacy_teardrop_dialog = [](TTearDropOptions& options) {
    Check(options.Style <= eFilletTearDrop && options.Action <= eRemoveTearDrop,
          "stored options are options");
    return false;
  };
  setup.dialogs.board_report = [](TBoardReportOptionSet& options) {
    Check((options.Bits() & ~TBoardReportOptionSet::All().Bits()) == 0, "a stored choice is a choice");
    return false;
  };
  const auto client = Editor::MakeHost<Editor::Client>(std::move(setup));
  const Editor::ClientInstallation installation(client);
  (void)Tools_GetCurrentTeardropOptions(board.Get());
  Tools_LegacyTearDrops(board.Get(), nullptr);
  Tools_ReportSpecs(nullptr, board.Get(), nullptr, (Fuzz::Folder() / "report").u16string());
  Ref<IOptionsReader> reader;
  Check(!Failed(client->OpenOptionsReader(u"PCB", u"", reader)), "options are offered");
  const auto forms = Tools::MakeCounted<Tools::TReportOutputOptions>();
  Check(!Failed(forms->Import_FromOptionsReader(reader.Get())), "forms are read");
  Tools::ReleasePCBServer();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckStore(Fuzz::WriteFile("KETRIL.INI", text), text);
  Fuzz::WriteFile("KETRIL.INI", text);
  AskReaders();
  return 0;
}
