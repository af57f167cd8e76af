// The forms of a report, as whoever runs a report tool chooses them: nothing of them is stored.
#pragma once

#include <string>
#include <vector>

#include "Editor/HostObject.h"
#include "Editor/Model/HostProperty.h"
#include "Interfaces/Reports.h"

namespace Ketril::Editor {

struct ReportFormData {
  std::u16string name;
  std::u16string style_sheet;  // path; empty: as XML
  bool generate = true;
  bool show = false;
};

template <class Interface>
class WithoutBitmap : public HostObject<Interface> {
 public:
  KETRIL_HOST_METHOD(IAssociatedWithBitmap, GetBitmapFileMaskColor, (TColor & color), void(color = 0))
  KETRIL_HOST_METHOD(IAssociatedWithBitmap, GetBitmapFile, (std::u16string & file), file.clear())
  KETRIL_HOST_METHOD(IAssociatedWithBitmap, SetBitmapFileMaskColor, (TColor), Status::Failure)
  KETRIL_HOST_METHOD(IAssociatedWithBitmap, SetBitmapFile, (const std::u16string&), Status::Failure)
};

class ReportForm final : public WithoutBitmap<IReportOutputTransformation> {
 public:
  ReportForm(std::u16string report, ReportFormData form)
      : report_(std::move(report)), data(std::move(form)) {}

#define KETRIL_FORM(Name, Arguments, Action) \
  KETRIL_HOST_METHOD(IReportOutputTransformation, Name, Arguments, Action)
  KETRIL_FORM(Import_FromOptionsReader, (IOptionsReader*), Status::Ok)
  KETRIL_FORM(Export_ToOptionsWriter, (IOptionsWriter*), Status::Ok)
  KETRIL_FORM(GetOutputName, (std::u16string & name), void(name = data.name))
  KETRIL_FORM(GetGenerate, (bool& generate), void(generate = data.generate))
  KETRIL_FORM(GetShow, (bool& show), void(show = data.show))
  KETRIL_FORM(GetXSLTFilename, (std::u16string & file), void(file = data.style_sheet))
  KETRIL_FORM(GetReportName, (std::u16string & name), void(name = report_))
  KETRIL_FORM(SetOutputName, (const std::u16string& name), void(data.name = name))
  KETRIL_FORM(SetGenerate, (bool generate), void(data.generate = generate))
  KETRIL_FORM(SetShow, (bool show), void(data.show = show))
  KETRIL_FORM(SetXSLTFilename, (const std::u16string& file), void(data.style_sheet = file))
#undef KETRIL_FORM

 private:
  const std::u16string report_;
  ReportFormData data;
};

class ReportForms final : public WithoutBitmap<IReportOutputOptions> {
 public:
  explicit ReportForms(std::u16string report) : report_(std::move(report)) {}
  void Add(ReportFormData form) { forms_.push_back(MakeHost<ReportForm>(report_, std::move(form))); }

#define KETRIL_FORMS(Name, Arguments, Action) \
  KETRIL_HOST_METHOD(IReportOutputOptions, Name, Arguments, Action)
  KETRIL_FORMS(Import_FromOptionsReader, (IOptionsReader*), Status::Ok)
  KETRIL_FORMS(Export_ToOptionsWriter, (IOptionsWriter*), Status::Ok)
  KETRIL_FORMS(GetAvailableTransformations,
               (std::int32_t index, Ref<IReportOutputTransformation>& transformation),
               At(index, transformation))
  KETRIL_FORMS(GetAvailableTransformationCount, (std::int32_t & count),
               void(count = static_cast<std::int32_t>(forms_.size())))
  KETRIL_FORMS(GetReportName, (std::u16string & name), void(name = report_))
  KETRIL_FORMS(SetReportName, (const std::u16string& name), void(report_ = name))
  KETRIL_FORMS(RemoveOutputTransformations, (), forms_.clear())
  KETRIL_FORMS(AddOutputTransformation, (Ref<IReportOutputTransformation> & transformation),
               (Add({}), void(transformation = forms_.back())))
#undef KETRIL_FORMS

 private:
  Status At(std::int32_t index, Ref<IReportOutputTransformation>& transformation) const {
    if (index < 0 || static_cast<std::size_t>(index) >= forms_.size()) return Status::InvalidArgument;
    transformation = forms_[static_cast<std::size_t>(index)];
    return Status::Ok;
  }

  std::u16string report_;
  std::vector<Ref<IReportOutputTransformation>> forms_;
};

}  // namespace Ketril::Editor
