// The forms in which a report is written, as objects that the editor and its options files know.
//
// What is stored lies in the section "ReportOptions", under the key report name_output name_ and "Generate",
// "Show" or "XSLTFilename", with all blanks taken out. Reading keeps the current value of what is not stored.
#pragma once

#include <string>
#include <vector>

#include "DLLs/Tools/Frame/CountedObject.h"
#include "Interfaces/Reports.h"

namespace Ketril::Tools {

// What has a picture. `Interface` derives from IAssociatedWithBitmap.
template <class Interface>
class TAssociatedWithBitmap : public CountedObject<Interface> {
 public:
  Status GetBitmapFileMaskColor(TColor& color) noexcept override {
    color = FBitmapFileMaskColor;
    return Status::Ok;
  }
  Status GetBitmapFile(std::u16string& file) noexcept override {
    file = FBitmapFile;
    return Status::Ok;
  }
  Status SetBitmapFileMaskColor(TColor color) noexcept override {
    FBitmapFileMaskColor = color;
    return Status::Ok;
  }
  Status SetBitmapFile(const std::u16string& file) noexcept override {
    FBitmapFile = file;
    return Status::Ok;
  }

 private:
  std::u16string FBitmapFile;
  TColor FBitmapFileMaskColor = 0;
};

class TReportOutputTransformation final : public TAssociatedWithBitmap<IReportOutputTransformation> {
 public:
  // Takes the report name from the options. Raises EHostError when they fail.
  explicit TReportOutputTransformation(IReportOutputOptions* options);

  Status Import_FromOptionsReader(IOptionsReader* reader) noexcept override;
  Status Export_ToOptionsWriter(IOptionsWriter* writer) noexcept override;
  Status GetOutputName(std::u16string& name) noexcept override;
  Status GetGenerate(bool& generate) noexcept override;
  Status GetShow(bool& show) noexcept override;
  Status GetXSLTFilename(std::u16string& file) noexcept override;
  Status GetReportName(std::u16string& name) noexcept override;
  Status SetOutputName(const std::u16string& name) noexcept override;
  Status SetGenerate(bool generate) noexcept override;
  Status SetShow(bool show) noexcept override;
  Status SetXSLTFilename(const std::u16string& file) noexcept override;

 private:
  std::u16string Key(std::u16string_view suffix) const;

  std::u16string FOutputName;
  bool FGenerate = false;
  bool FShow = false;
  std::u16string FXSLTFilename;
  std::u16string FReportName;
};

class TReportOutputOptions final : public TAssociatedWithBitmap<IReportOutputOptions> {
 public:
  // Each transformation in order, until one fails.
  Status Import_FromOptionsReader(IOptionsReader* reader) noexcept override;
  Status Export_ToOptionsWriter(IOptionsWriter* writer) noexcept override;
  Status GetAvailableTransformations(std::int32_t index,
                                     Ref<IReportOutputTransformation>& transformation) noexcept override;
  Status GetAvailableTransformationCount(std::int32_t& count) noexcept override;
  Status GetReportName(std::u16string& name) noexcept override;
  Status SetReportName(const std::u16string& name) noexcept override;
  Status RemoveOutputTransformations() noexcept override;
  // The new one is generated; it has the report name of now.
  Status AddOutputTransformation(Ref<IReportOutputTransformation>& transformation) noexcept override;

 private:
  std::u16string FReportName;
  std::vector<Ref<IReportOutputTransformation>> FAvailableTransformations;
};

}  // namespace Ketril::Tools
