#include "Editor/Model/LayerStack.h"

#include "Editor/Model/Board.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

class LayerObject final : public HostObject<IPCB_LayerObject> {
 public:
  LayerObject(Board& board, TV7_Layer id) : board_(&board), id_(id) {}
  KETRIL_HOST_READ(IPCB_LayerObject, TV7_Layer, LayerId, id_)
  KETRIL_HOST_PAIR(IPCB_LayerObject, std::u16string, Name, NameFor(Entry()),
                   board_->Write([&] { Entry().user_name = value; }))

 private:
  // A mechanical layer of ours may be any of the file's layers: those go by the name in the file when the
  // user gave none.
  static std::u16string NameFor(const BoardLayer& layer) {
    return layer.user_name.empty() && !IsCopper(layer.id) ? Platform::ToUtf16(layer.file_name)
                                                          : layer.user_name;
  }
  // Found anew each time: the board's list may have been replaced. Raises when the layer went.
  BoardLayer& Entry() const {
    const BoardLayer* layer = board_->FindLayer(id_);
    if (!layer) throw std::out_of_range("layer");
    return const_cast<BoardLayer&>(*layer);
  }

  const Ref<Board> board_;
  const TV7_Layer id_;
};

class LayerStack final : public HostObject<IPCB_LayerStack> {
 public:
  explicit LayerStack(Board& board) : board_(&board) {}
  KETRIL_HOST_READ(IPCB_LayerStack, std::int32_t, Count,
                   static_cast<std::int32_t>(board_->CopperLayers().size()))
  Status GetState_LayerAt(std::int32_t index, Ref<IPCB_LayerObject>& layer) noexcept override {
    return HostCall("IPCB_LayerStack.GetState_LayerAt", [&] {
      const std::vector<TV7_Layer> copper = board_->CopperLayers();
      if (index < 0 || static_cast<std::size_t>(index) >= copper.size()) return Status::InvalidArgument;
      layer = MakeLayerObject(*board_, copper[static_cast<std::size_t>(index)]);
      return Status::Ok;
    });
  }
  KETRIL_HOST_METHOD(IPCB_LayerStack, GetState_LayerObject, (TV7_Layer id, Ref<IPCB_LayerObject>& layer),
                     void(layer = MakeLayerObject(*board_, id)))

 private:
  const Ref<Board> board_;
};

}  // namespace

Ref<IPCB_LayerStack> MakeLayerStack(Board& board) {
  return Ref<IPCB_LayerStack>(MakeHost<LayerStack>(board));
}

Ref<IPCB_LayerObject> MakeLayerObject(Board& board, TV7_Layer id) {
  if (!board.FindLayer(id)) return {};
  return Ref<IPCB_LayerObject>(MakeHost<LayerObject>(board, id));
}

}  // namespace Ketril::Editor
