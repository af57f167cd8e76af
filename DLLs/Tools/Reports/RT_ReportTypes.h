// What the report writer is made of and what it raises.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "Platform/Dates.h"
#include "Platform/Xml.h"

namespace Ketril::Tools {

using Platform::IXMLDocument;
using Platform::IXMLNode;
using Platform::TDate;
using Platform::TTime;

class EGeneralReportException : public Exception {
 public:
  using Exception::Exception;
};

enum TColumnDataType : std::uint8_t { ctNone, ctNumber };

enum TTableOption : std::uint8_t {
  ctSpanTitleAcrossHeader = 1,  // the columns stand under the title
  ctSuppressTitle = 2,
  ctWriteNumericTotals = 4,  // the reader sees sums under columns of numbers
};
using TTableOptions = std::uint32_t;  // a sum of TTableOption

// Texts of which each may carry a type; of a column's header, that of the column.
struct TStringListItem {
  std::u16string Text;
  TColumnDataType Object = ctNone;
};
using TStringList = std::vector<TStringListItem>;

}  // namespace Ketril::Tools
