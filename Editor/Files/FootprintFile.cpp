#include "Editor/Files/FootprintFile.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "Editor/Files/BoardFile.h"
#include "Editor/Files/FileStyle.h"
#include "Editor/Files/FileText.h"
#include "Editor/Files/LayerNames.h"
#include "Editor/Files/SExpression.h"

namespace Ketril::Editor {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLayers[] = {"F.Cu",      "B.Cu",      "F.Adhes",   "B.Adhes",   "F.Paste",
                                   "B.Paste",   "F.SilkS",   "B.SilkS",   "F.Mask",    "B.Mask",
                                   "Dwgs.User", "Cmts.User", "Eco1.User", "Eco2.User", "Edge.Cuts",
                                   "Margin",    "F.CrtYd",   "B.CrtYd",   "F.Fab",     "B.Fab"};

// What stands in a board file ahead of its footprints, on one line.
std::string BoardHead(std::int32_t version) {
  const bool new_numbers = FileVersion(version).HasNewLayerNumbers();
  std::string head = "(kicad_pcb (version " + std::to_string(version) + ") (layers";
  for (const char* name : kLayers) {
    const TV7_Layer layer = LayerOfName(name);
    head += " (" + std::to_string(NumberOfLayer(layer, new_numbers)) + " " + name +
            (IsSignalLayer(layer) ? " signal)" : " user)");
  }
  return head + ") ";
}

// Where a footprint's list ends in the text, and its version: the oldest one writes none.
struct FootprintFrame {
  std::int32_t version = kOldestVersion;
  std::uint32_t end = 0;  // behind the closing parenthesis
};

FootprintFrame FindFrame(const std::string& text, const std::string& path) {
  CheckText(text, path);
  SExpressionCursor in(text, path);
  SExpressionItem root;
  if (in.AtEnd()) in.Fail(in.Position(), "the file is empty");
  if (!in.Next(root) || !root.is_list || (root.word.text != "footprint" && root.word.text != "module"))
    in.Fail(root.begin, "this is no footprint: a footprint begins with '(footprint' or '(module'");
  FootprintFrame frame;
  in.ForEach([&](const SExpressionItem& item) {
    if (!item.is_list || item.word.text != "version") return;
    const SExpressionWord word = in.Word("a version");
    std::int32_t version = 0;
    std::from_chars(word.text.data(), word.text.data() + word.text.size(), version);
    if (version > kNewestVersion)
      in.Fail(word.begin,
              "the footprint has version " + std::string(word.text) + ", which is newer than this program");
    frame.version = std::max(version, kOldestVersion);
  });
  frame.end = in.Position();
  if (!in.AtEnd()) in.Fail(in.Position(), "there is something behind the footprint's end");
  return frame;
}

bool IsFootprintFile(const fs::directory_entry& entry) {
  return entry.path().extension() == ".kicad_mod" && !entry.is_directory();
}

}  // namespace

// It is read as the only footprint of a board: where it lies there is what the file does not say.
Ref<LibComponent> ReadFootprintText(const std::string& text, const std::string& path) {
  const FootprintFrame frame = FindFrame(text, path);
  const std::string head = BoardHead(frame.version);
  try {
    const Ref<Board> board = ReadBoardText(head + text.substr(0, frame.end - 1) + "\n(at 0 0)))", path);
    Ref<LibComponent> footprint;
    board->objects.ForEach({eComponentObject}, [&](const Primitive& component) {
      footprint = FootprintOf(static_cast<const Component&>(component));
    });
    if (!footprint) throw FileError(path, 0, 0, "this is a single pad, no footprint", "");
    return footprint;
  } catch (const FileError& error) {
    const std::size_t ahead = error.line == 1 ? head.size() : 0;
    throw FileError(error.file, error.line, error.column - std::min(ahead, error.column), error.message,
                    error.mend);
  }
}

Ref<Library> ReadFootprints(const fs::path& path) {
  const Ref<Library> library = MakeHost<Library>();
  library->file_name = path.u16string();
  std::vector<fs::path> files;
  std::error_code error;
  if (fs::is_directory(path, error)) {
    for (const fs::directory_entry& entry : fs::directory_iterator(path, error))
      if (IsFootprintFile(entry)) files.push_back(entry.path());
    std::ranges::sort(files);
    if (error) throw FileError(path.string(), 0, 0, "the folder cannot be read: " + error.message(), "");
    if (files.empty())
      throw FileError(path.string(), 0, 0, "the folder holds no footprint",
                      "A library's files end in .kicad_mod.");
  } else {
    files.push_back(path);
  }
  for (const fs::path& file : files)
    library->components.push_back(ReadFootprintText(ReadFileText(file), file.string()));
  library->current = files.size() == 1 ? 0 : files.size();
  return library;
}

Ref<LibComponent> FootprintOf(const Component& component) {
  const Ref<LibComponent> footprint = MakeHost<LibComponent>();
  footprint->data = {component.data.pattern, component.data.reference};
  for (const Ref<Primitive>& member : component.Members()) footprint->AddMember(member->Copy().Get());
  return footprint;
}

Ref<Board> MakeFootprintBoard() {
  return ReadBoardText(BoardHead(kNewestVersion) + ")");
}

}  // namespace Ketril::Editor
