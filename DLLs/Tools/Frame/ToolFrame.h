// The frame of the exports: what happens around every tool. In this order
//  - a reference is taken on each interface argument and a copy of each text, for the length of the call;
//  - the object scope is opened, and the board wrapped;
//  - the tool runs, with the wrapper and the remaining arguments;
//  - whatever happened, the scope is closed, which frees every wrapper, and what was taken is released.
//
// Nothing is caught: an exception of a tool, a wrapper or a host call reaches the caller of the export. An
// export that is called while a tool runs, from a message that the tool delivers, shares the open scope.
#pragma once

#include <concepts>
#include <tuple>
#include <type_traits>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"

namespace Ketril::Tools {

// Where an export departs from the standard frame; the table of exports names it.
struct TFrame {
  bool NothingWithoutBoard = false;  // with an empty board it returns at once, and opens no scope
  bool NoScope = false;              // the board's wrapper is the frame's own, and so is what the tool makes
};
inline constexpr TFrame kStandard{};
inline constexpr TFrame kNothingWithoutBoard{.NothingWithoutBoard = true};
inline constexpr TFrame kNoScope{.NoScope = true};

namespace Detail {

template <class T>
T Hold(const T& value) {
  return value;
}
template <std::derived_from<IInterface> I>
Ref<I> Hold(I* const& object) {
  return object;
}

template <class T>
const T& Pass(const T& held) {
  return held;
}
template <class I>
I* Pass(const Ref<I>& held) {
  return held.Get();
}

}  // namespace Detail

// Runs one tool in the frame and gives its result. The tool gets the board's wrapper, which belongs to the
// scope, then the arguments; without `NothingWithoutBoard` an empty board is wrapped like any other, and the
// first use of the wrapper raises.
template <TFrame frame, class Tool, class... Arguments>
auto RunTool(Tool&& tool, IPCB_Board* board, const Arguments&... arguments) {
  using Result = std::invoke_result_t<Tool, TBoard*, decltype(Detail::Pass(Detail::Hold(arguments)))...>;
  if (frame.NothingWithoutBoard && !board) return Result();
  const Ref<IPCB_Board> held_board(board);
  const std::tuple held(Detail::Hold(arguments)...);
  const auto run = [&](TBoard* wrapper) -> Result {
    return std::apply(
        [&](const auto&... argument) -> Result { return tool(wrapper, Detail::Pass(argument)...); }, held);
  };
  if constexpr (frame.NoScope) {
    const TTemporary<TBoard> wrapper(TBoard::Create(held_board));
    return run(wrapper.get());
  } else {
    const TObjectScope scope;
    return run(TBoard::Create(held_board));
  }
}

// The frame of the tools that work on the editor's interfaces and make no wrappers: the references alone. The
// tool gets the interfaces as they came.
template <class Tool, class... Interfaces>
void RunOnInterfaces(Tool&& tool, Interfaces*... interfaces) {
  const std::tuple held{Ref<Interfaces>(interfaces)...};
  tool(interfaces...);
}

}  // namespace Ketril::Tools
