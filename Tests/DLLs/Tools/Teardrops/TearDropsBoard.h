// The teardrop exports on boards of text, and the user before them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Interfaces/Tools.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril {

using Tests::BoardFromText;

class TearDropsBoard : public testing::Test {
 protected:
  ~TearDropsBoard() override { Tools::ReleasePCBServer(); }

  static void Run(Editor::Board& board, std::int32_t flags,
                  std::initializer_list<std::pair<const char16_t*, const char16_t*>> sizes = {}) {
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    const std::string text = std::to_string(flags);
    parameters->AddParameter(u"TeardropParam_FlagsEx", std::u16string(text.begin(), text.end()));
    for (const auto& [name, value] : sizes) parameters->AddParameter(name, value);
    Tools_TearDrops(&board, parameters.Get());
  }
  static int Count(const Editor::Board& board) {
    int count = 0;
    board.objects.ForEach({eRegionObject}, [&](const Editor::Primitive& region) {
      if (region.Has(Editor::kFlag_TearDrop)) ++count;
    });
    return count;
  }

  // What the report says, without the line of its date; empty without one.
  std::string Report() const {
    std::string text = Tests::TextOf(opened_);
    const std::size_t date = text.find("On ");
    return date == text.npos ? text : text.erase(date, text.find('\n', date) + 1 - date);
  }

  static constexpr std::int32_t kDefault = 1000;
  bool accept_ = false;
  bool confirms_ = false;
  std::string opened_;
  TTeardropOptionsEx shown_;
  TTearDropOptions legacy_shown_;
  Editor::ClientSetup ClientOfThis() {
    Editor::ClientSetup setup;
    setup.teardrop_dialog = [this](TTeardropOptionsEx& options) {
      shown_ = options;
      options.SizePercentArray[eTeardropObject_Via].Length = 44;
      return accept_;
    };
    setup.legacy_teardrop_dialog = [this](TTearDropOptions& options) {
      legacy_shown_ = options;
      options.Style = eTrackTearDrop;
      options.Selected = true;
      return accept_;
    };
    setup.confirm = [this](const std::u16string& text) {
      EXPECT_EQ(text, u"Confirm Abort Process");
      return std::optional(confirms_);
    };
    setup.open_document = [this](const std::filesystem::path& file) { opened_ = file.string(); };
    return setup;
  }
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(ClientOfThis())};
};

}  // namespace Ketril
