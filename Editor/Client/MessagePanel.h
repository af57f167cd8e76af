// The workspace around the editor: its message panel, and the record of placements from a file.
#pragma once

#include <functional>
#include <string>

#include "Editor/HostObject.h"
#include "Interfaces/MessagePanel.h"
#include "Interfaces/Placement.h"

namespace Ketril::Editor {

struct PanelMessage {
  std::u16string message_class;  // "[Warning]"
  std::u16string text;
  std::u16string source;
  std::int32_t image = 0;
};

// What the embedder does with the messages; a null function does nothing.
struct MessagePanel {
  std::function<void(const PanelMessage& message)> add = {};
  std::function<void()> show = {};
};

// A line of a pick-and-place file, from 1, and what became of its component.
struct PlacementLine {
  std::int32_t line = 0;
  std::u16string designator;
  TPlacementOutcome outcome = ePlacement_Placed;
};
using PlacementRecord = std::function<void(const PlacementLine& line)>;

class PanelWorkspace final : public HostObject<IOrvexWorkSpace> {
 public:
  explicit PanelWorkspace(MessagePanel panel) : panel_(std::move(panel)) {}
  Status AddMessage(const std::u16string& message_class, const std::u16string& text,
                    const std::u16string& source, std::int32_t image) noexcept override;
  Status ShowMessagePanel() noexcept override;

 private:
  const MessagePanel panel_;
};

}  // namespace Ketril::Editor
