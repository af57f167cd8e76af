#include "DLLs/Tools/Reports/ReportsTool.h"

#include "DLLs/Tools/Reports/Reports.h"

namespace Ketril::Tools {

void ReportSpecs(TBoard* board, IParameterList* parameters, IReportOutputOptions* options,
                 const std::u16string& file_name) {
  TBoardReporter(parameters, board, file_name, options).Execute();
}

}  // namespace Ketril::Tools
