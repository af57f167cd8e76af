// A board of the headless editor, filled through its model, and its wrapper in an open object scope.
#pragma once

#include <gtest/gtest.h>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/Primitives.h"
#include "Editor/Model/Board.h"
#include "Editor/Rules/Rule.h"

namespace Ketril::Tools {

class ScopedBoard : public testing::Test {
 protected:
  ~ScopedBoard() override { Editor::HostGate::Disarm(); }

  // A new object on the board, filled by `fill(object)` first.
  template <class T, class Fill>
  T* Put(Fill fill) {
    const Ref<T> object = Editor::MakeHost<T>();
    fill(*object);
    host->Load(object.Get());
    return object.Get();
  }
  template <class T>
  T* Put() {
    return Put<T>([](T&) {});
  }
  Editor::Rule* PutRule(TRuleKind kind, const char16_t* name) {
    const Ref<Editor::Rule> rule = Editor::MakeRule(kind);
    rule->data.name = name;
    host->Load(rule.Get());
    return rule.Get();
  }
  Editor::Component* PutComponent(TCoordPoint reference, const char16_t* designator) {
    return Put<Editor::Component>([&](Editor::Component& component) {
      component.data.reference = reference;
      if (!designator) return;
      const auto text = Editor::MakeHost<Editor::Text>();
      text->data.string = designator;
      text->data.role = Editor::TextRole::Designator;
      component.AddMember(text.Get());
    });
  }

  const Ref<Editor::Board> host = Editor::MakeHost<Editor::Board>();
  const TObjectScope scope;
  TBoard* const board = TBoard::Create(host);
};

}  // namespace Ketril::Tools
