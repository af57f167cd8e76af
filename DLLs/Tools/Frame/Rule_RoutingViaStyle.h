// Which vias routing may use; no tool reads its values.
#pragma once

#include "DLLs/Tools/Frame/Rule_Abstract.h"

namespace Ketril::Tools {

class TRoutingViaStyleRule : public TWrapper<TRoutingViaStyleRule, TRule> {
 public:
  using TWrapper::TWrapper;
};

}  // namespace Ketril::Tools
