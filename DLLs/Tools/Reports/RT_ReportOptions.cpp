#include "DLLs/Tools/Reports/RT_ReportOptions.h"

#include <algorithm>
#include <new>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Reports/ReportClient.h"

namespace Ketril::Tools {

namespace {

constexpr const char16_t* kSection = u"ReportOptions";

// Runs what may raise and gives its outcome as a status, for nothing throws across the boundary.
template <class Body>
Status Guarded(Body&& body) noexcept {
  try {
    body();
    return Status::Ok;
  } catch (const EHostError& failure) {
    return failure.Status();
  } catch (const std::bad_alloc&) {
    return Status::OutOfMemory;
  } catch (...) {
    return Status::Failure;
  }
}

}  // namespace

TReportOutputTransformation::TReportOutputTransformation(IReportOutputOptions* options)
    : FReportName(On(Ref(options)).Read(&IReportOutputOptions::GetReportName)) {}

std::u16string TReportOutputTransformation::Key(std::u16string_view suffix) const {
  std::u16string key = FReportName + u"_" + FOutputName + u"_";
  key += suffix;
  std::erase(key, u' ');
  return key;
}

Status TReportOutputTransformation::Import_FromOptionsReader(IOptionsReader* reader) noexcept {
  if (!reader) return Status::InvalidArgument;
  return Guarded([&] {
    const Ref<IOptionsReader> held(reader);
    FGenerate = On(held).Read(&IOptionsReader::ReadBoolean, kSection, Key(u"Generate"), FGenerate);
    FShow = On(held).Read(&IOptionsReader::ReadBoolean, kSection, Key(u"Show"), FShow);
    FXSLTFilename = TSpecialFoldersList::GetExpandedEnvironmentPath(
        On(held).Read(&IOptionsReader::ReadString, kSection, Key(u"XSLTFilename"), FXSLTFilename));
  });
}

Status TReportOutputTransformation::Export_ToOptionsWriter(IOptionsWriter* writer) noexcept {
  if (!writer) return Status::InvalidArgument;
  return Guarded([&] {
    const Ref<IOptionsWriter> held(writer);
    On(held).Call(&IOptionsWriter::WriteBoolean, kSection, Key(u"Generate"), FGenerate);
    On(held).Call(&IOptionsWriter::WriteBoolean, kSection, Key(u"Show"), FShow);
    On(held).Call(&IOptionsWriter::WriteString, kSection, Key(u"XSLTFilename"),
                  TSpecialFoldersList::GetContractedEnvironmentPath(FXSLTFilename));
  });
}

Status TReportOutputTransformation::GetOutputName(std::u16string& name) noexcept {
  return Guarded([&] { name = FOutputName; });
}
Status TReportOutputTransformation::GetGenerate(bool& generate) noexcept {
  generate = FGenerate;
  return Status::Ok;
}
Status TReportOutputTransformation::GetShow(bool& show) noexcept {
  show = FShow;
  return Status::Ok;
}
Status TReportOutputTransformation::GetXSLTFilename(std::u16string& file) noexcept {
  return Guarded([&] { file = FXSLTFilename; });
}
Status TReportOutputTransformation::GetReportName(std::u16string& name) noexcept {
  return Guarded([&] { name = FReportName; });
}
Status TReportOutputTransformation::SetOutputName(const std::u16string& name) noexcept {
  return Guarded([&] { FOutputName = name; });
}
Status TReportOutputTransformation::SetGenerate(bool generate) noexcept {
  FGenerate = generate;
  return Status::Ok;
}
Status TReportOutputTransformation::SetShow(bool show) noexcept {
  FShow = show;
  return Status::Ok;
}
Status TReportOutputTransformation::SetXSLTFilename(const std::u16string& file) noexcept {
  return Guarded([&] { FXSLTFilename = file; });
}

Status TReportOutputOptions::Import_FromOptionsReader(IOptionsReader* reader) noexcept {
  for (const auto& transformation : FAvailableTransformations) {
    const Status status = transformation->Import_FromOptionsReader(reader);
    if (Failed(status)) return status;
  }
  return Status::Ok;
}

Status TReportOutputOptions::Export_ToOptionsWriter(IOptionsWriter* writer) noexcept {
  for (const auto& transformation : FAvailableTransformations) {
    const Status status = transformation->Export_ToOptionsWriter(writer);
    if (Failed(status)) return status;
  }
  return Status::Ok;
}

Status TReportOutputOptions::GetAvailableTransformations(
    std::int32_t index, Ref<IReportOutputTransformation>& transformation) noexcept {
  if (index < 0 || static_cast<std::size_t>(index) >= FAvailableTransformations.size())
    return Status::InvalidArgument;
  transformation = FAvailableTransformations[static_cast<std::size_t>(index)];
  return Status::Ok;
}

Status TReportOutputOptions::GetAvailableTransformationCount(std::int32_t& count) noexcept {
  count = static_cast<std::int32_t>(FAvailableTransformations.size());
  return Status::Ok;
}

Status TReportOutputOptions::GetReportName(std::u16string& name) noexcept {
  return Guarded([&] { name = FReportName; });
}
Status TReportOutputOptions::SetReportName(const std::u16string& name) noexcept {
  return Guarded([&] { FReportName = name; });
}

Status TReportOutputOptions::RemoveOutputTransformations() noexcept {
  FAvailableTransformations.clear();
  return Status::Ok;
}

Status TReportOutputOptions::AddOutputTransformation(
    Ref<IReportOutputTransformation>& transformation) noexcept {
  return Guarded([&] {
    const auto added = MakeCounted<TReportOutputTransformation>(this);
    added->SetGenerate(true);
    FAvailableTransformations.push_back(added);
    transformation = added;
  });
}

}  // namespace Ketril::Tools
