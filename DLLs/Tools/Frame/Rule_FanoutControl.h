// How components are fanned out; no tool reads its values.
#pragma once

#include "DLLs/Tools/Frame/Rule_Abstract.h"

namespace Ketril::Tools {

class TFanoutControlRule : public TWrapper<TFanoutControlRule, TRule> {
 public:
  using TWrapper::TWrapper;
};

}  // namespace Ketril::Tools
