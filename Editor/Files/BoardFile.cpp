#include "Editor/Files/BoardFile.h"

#include "Editor/Files/BoardPass.h"
#include "Editor/Files/CompanionFiles.h"
#include "Editor/Files/FileText.h"
#include "Editor/Rules/ClassRules.h"
#include "Editor/Vias/UnusedCopper.h"
#include "Platform/TempFiles.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

// The layers of a board that names none.
void AddCustomaryLayers(Board& board) {
  constexpr TV6_Layer kLayers[] = {eV6_TopLayer,   eV6_BottomLayer,   eV6_TopPaste,  eV6_BottomPaste,
                                   eV6_TopOverlay, eV6_BottomOverlay, eV6_TopSolder, eV6_BottomSolder};
  const bool new_numbers = FileVersion(board.file.version).HasNewLayerNumbers();
  const auto add = [&](TV7_Layer layer) {
    board.layers.push_back({layer,
                            NumberOfLayer(layer, new_numbers),
                            NameOfLayer(layer),
                            {},
                            IsSignalLayer(layer) ? "signal" : "user"});
  };
  for (const TV6_Layer layer : kLayers) add(layer);
  for (const char* name : {"Cmts.User", "Edge.Cuts", "F.CrtYd", "B.CrtYd", "F.Fab", "B.Fab"}) {
    add(LayerOfName(name));
  }
}

// The text of a board that has nothing on it; its layers get their numbers from it.
std::string EmptyBoardText(Board& board) {
  if (board.layers.empty()) AddCustomaryLayers(board);
  if (board.setup.thickness <= 0) board.setup.thickness = ToUnits(1600000);
  const FileWords words(board);
  const bool new_numbers = words.version.HasNewLayerNumbers();
  std::string layers = "(layers";
  for (const BoardLayer& layer : board.layers) {
    layers += " (" + std::to_string(NumberOfLayer(layer.id, new_numbers)) + " " +
              words.Name(layer.file_name) + " " + layer.kind;
    if (words.version.QuotesAll() && !layer.user_name.empty()) layers += " " + words.Text(layer.user_name);
    layers += ")";
  }
  const std::string origin = words.Place(board.setup.origin, {});
  const std::string parts[] = {std::string(words.version.QuotesAll() ? "(generator" : "(host") +
                                   (words.version.IsTabbed()    ? " \"ketril\")"
                                    : words.version.QuotesAll() ? " ketril)"
                                                                : " ketril 1)"),
                               "(general (thickness " + FileWords::Length(board.setup.thickness) + "))",
                               words.version.QuotesAll() ? "(paper \"A4\")" : "(page A4)",
                               layers + ")",
                               "(setup (pad_to_mask_clearance " +
                                   FileWords::Length(board.setup.solder_mask_margin) + ") (aux_axis_origin " +
                                   origin + "))",
                               "(net 0 \"\")"};
  const std::string line = words.version.IsTabbed() ? "\n\t" : "\n  ";
  std::string text = "(kicad_pcb (version " + std::to_string(board.file.version) + ")";
  for (const std::string& part : parts) text += words.LayOut(part, line);
  return text + "\n)\n";
}

}  // namespace

Ref<Board> ReadBoardText(std::string text, const std::string& path, FileWarnings* warnings) {
  Ref<Board> board = MakeHost<Board>();
  board->file.text = std::move(text);
  board->file.path = path;
  FileWarnings unheard;
  BoardPass::Read(*board, warnings ? *warnings : unheard);
  ApplyUnusedCopper(*board);
  return board;
}

Ref<Board> ReadBoard(const std::filesystem::path& path, FileWarnings* warnings) {
  FileWarnings unheard;
  FileWarnings& heard = warnings ? *warnings : unheard;
  Ref<Board> board = ReadBoardText(ReadFileText(path), path.string(), &heard);
  std::error_code error;
  const std::filesystem::path project = ProjectPath(path), extras = ExtrasPath(path);
  if (FileVersion(board->file.version).QuotesAll() && std::filesystem::exists(project, error)) {
    try {
      ReadProject(*board, ReadFileText(project));
    } catch (const std::exception& failure) {
      heard.push_back(project.string() + ": it is passed over: " + failure.what());
    }
  }
  // A save writes this one, so that nothing in it may be passed over.
  if (std::filesystem::exists(extras, error)) {
    try {
      ReadExtras(*board, ReadFileText(extras));
    } catch (const FileError&) {
      throw;
    } catch (const std::exception& failure) {
      throw FileError(extras.string(), 0, 0, failure.what(), "Mend the file, or move it away.");
    }
  }
  AddClassRules(*board);
  return board;
}

namespace {

// The first object that reaches farther than the format's lengths, "" for none.
std::string FarObject(const Board& board) {
  const auto is_far = [](TCoord at) { return at > kMaxUnits || at < -kMaxUnits; };
  std::u16string far;
  board.objects.ForEach(TObjectSet::All(), [&](const Primitive& object) {
    const TCoordRect box = object.MemberList() ? TCoordRect{} : object.Bounds();
    if (far.empty() && (is_far(box.x1) || is_far(box.y1) || is_far(box.x2) || is_far(box.y2)))
      far = object.Describe();
  });
  return Platform::ToUtf8(far);
}

void WritePieces(Board& board, const TextSink& sink) {
  if (board.file.text.empty()) board.file.text = EmptyBoardText(board);
  try {
    BoardPass::Rewrite(board, sink);
  } catch (const LengthOutOfRange&) {
    const std::string object = FarObject(board);
    throw FileError(board.file.path, 0, 0,
                    "the board cannot be written: " + (object.empty() ? "an object" : object) +
                        " is farther out than the format's 2147 mm",
                    "Move it nearer, or give the tool fewer objects.");
  }
}

}  // namespace

std::string WriteBoardText(Board& board) {
  std::string text;
  text.reserve(board.file.text.size());
  WritePieces(board, [&](std::string_view piece) { text += piece; });
  return text;
}

void SaveBoard(Board& board, const std::filesystem::path& path) {
  const std::filesystem::path extras_path = ExtrasPath(path);
  try {
    Platform::TReplacementFile file(path);
    WritePieces(board, [&](std::string_view piece) { file.Write(piece); });
    // After the board, which gives new objects their identifiers.
    const std::string extras = ExtrasText(board);
    if (extras.empty()) {
      file.Commit();
      std::error_code error;
      std::filesystem::remove(extras_path, error);
    } else {
      // Marks of objects that the old board does not have mean nothing to it: they may come first.
      Platform::TReplacementFile extras_file(extras_path);
      extras_file.Write(extras);
      extras_file.Commit();
      file.Commit();
    }
  } catch (const std::filesystem::filesystem_error& error) {
    throw FileError(error.path1().string(), 0, 0, "the board cannot be saved: " + error.code().message(), "");
  }
  board.file.path = path.string();
  board.document_changed = false;
}

}  // namespace Ketril::Editor
