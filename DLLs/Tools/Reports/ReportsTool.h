// The report commands.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "Interfaces/ParameterList.h"
#include "Interfaces/Reports.h"

namespace Ketril::Tools {

void ReportSpecs(TBoard* board, IParameterList* parameters, IReportOutputOptions* options,
                 const std::u16string& file_name);

}  // namespace Ketril::Tools
