// Reports as files: by style sheets or as they are.
//
// Where a report goes. The document that it is on counts as in a project when the project that it names lists
// it. Then the report goes to the project's output folder, which is made when missing, as long as the
// project's own folder is there, else beside the document; it is named after report and document. Otherwise
// it goes beside the document that was named, under that name. Where there is no such folder, the current one
// is taken. The extension is the style sheet's.
#include <system_error>

#include "DLLs/Tools/Frame/ConfirmNoYes.h"
#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/MessageDialogs.h"
#include "DLLs/Tools/Reports/FilePlacement.h"
#include "DLLs/Tools/Reports/RT_Report.h"
#include "DLLs/Tools/Reports/RT_ReportOptions.h"
#include "DLLs/Tools/Reports/ReportClient.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

namespace fs = std::filesystem;

bool Exists(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

bool IsFolder(const fs::path& path) {
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

// ".html", or what the first parameter "file_extension" of the style sheet says.
std::u16string ExtensionOf(const IXMLDocument& style_sheet) {
  std::u16string extension = u".html";
  if (const IXMLNode root = style_sheet.DocumentElement()) {
    for (const IXMLNode child : root.ChildNodes()) {
      if (child.NodeName() != u"xsl:param" || child.Attribute(u"name") != u"file_extension") continue;
      extension = child.Text();
      break;
    }
  }
  return extension.starts_with(u'.') ? extension : u"." + extension;
}

// A document as the workspace knows it.
struct TKnownDocument {
  Ref<IDocument> Document;  // empty when it is not known
  Ref<IProject> Project;    // that it names; may be empty
  bool InProject = false;
};

bool Lists(const Ref<IProject>& project, const std::u16string& path) {
  const std::int32_t count = On(project).Read(&IProject::GetState_DocumentCount);
  for (std::int32_t i = 0; i < count; ++i) {
    const Ref<IDocument> listed = On(project).Read(&IProject::GetState_DocumentAt, i);
    if (listed && On(listed).Read(&IDocument::GetState_FullPath) == path) return true;
  }
  return false;
}

TKnownDocument FindDocument(const std::u16string& path) {
  TKnownDocument known;
  const Ref<IClient2> client = Client2();
  const Ref<IWorkspace> workspace = client ? On(client).Read(&IClient2::GetState_Workspace) : nullptr;
  if (workspace) known.Document = On(workspace).Read(&IWorkspace::GetDocumentFromPath, path);
  if (known.Document) known.Project = On(known.Document).Read(&IDocument::GetState_Project);
  known.InProject =
      known.Project && Lists(known.Project, On(known.Document).Read(&IDocument::GetState_FullPath));
  return known;
}

fs::path OutputFolder(const TKnownDocument& known, const std::u16string& generating_document) {
  fs::path folder;
  if (!known.InProject) {
    folder = PathOf(generating_document).parent_path();
  } else if (IsFolder(PathOf(On(known.Project).Read(&IProject::GetState_FullPath)).parent_path())) {
    folder = PathOf(On(known.Project).Read(&IProject::GetState_OutputFolder)) / "";
    std::error_code ignored;
    fs::create_directories(folder, ignored);
  } else {
    folder = PathOf(On(known.Document).Read(&IDocument::GetState_FullPath)).parent_path();
  }
  return IsFolder(folder) ? folder : fs::current_path();
}

std::u16string BaseName(const TKnownDocument& known, const std::u16string& generating_document,
                        const Ref<IReportOutputTransformation>& transformation) {
  if (!known.InProject) return FileNameOf(generating_document);
  const std::u16string path = On(known.Document).Read(&IDocument::GetState_FullPath);
  return On(transformation).Read(&IReportOutputTransformation::GetReportName) + u" - " +
         TextOf(PathOf(path).stem());
}

void Show(const TKnownDocument& known, const std::u16string& file) {
  if (known.Project) On(known.Project).Call(&IProject::AddGeneratedDocument, file);
  if (const Ref<IClient2> client = Client2())
    On(client).Call(&IClient::RunProcess, u"WorkspaceManager:OpenObject", u"Filename=" + file);
}

}  // namespace

std::u16string TBaseReport::WriteToFile(const std::u16string& generating_document,
                                        const std::u16string& report_name, bool show) {
  const Ref<IReportOutputOptions> options = MakeCounted<TReportOutputOptions>();
  On(options).Call(&IReportOutputOptions::SetReportName, report_name);
  const auto transformation = On(options).Read(&IReportOutputOptions::AddOutputTransformation);
  On(transformation).Call(&IReportOutputTransformation::SetXSLTFilename, DefaultStyleSheet());
  On(transformation).Call(&IReportOutputTransformation::SetShow, show);
  return WriteToFile(generating_document, options.Get());
}

std::u16string TBaseReport::WriteToFile(const std::u16string& generating_document,
                                        IReportOutputOptions* options) {
  if (!options) return WriteToFile(generating_document, static_cast<IReportOutputTransformation*>(nullptr));
  const Ref<IReportOutputOptions> held(options);
  const std::int32_t count = On(held).Read(&IReportOutputOptions::GetAvailableTransformationCount);
  std::u16string written;
  for (std::int32_t i = 0; i < count; ++i) {
    const auto transformation = On(held).Read(&IReportOutputOptions::GetAvailableTransformations, i);
    written = WriteToFile(generating_document, transformation.Get());
  }
  return written;
}

std::u16string TBaseReport::WriteToFile(const std::u16string& generating_document,
                                        IReportOutputTransformation* transformation) {
  if (!transformation)
    return ClientIsInTestMode() ? WriteAsXML(generating_document)
                                : WriteTransformed(generating_document, DefaultStyleSheet());
  const Ref<IReportOutputTransformation> form(transformation);
  if (!On(form).Read(&IReportOutputTransformation::GetGenerate)) return {};
  const TKnownDocument known = FindDocument(generating_document);
  const fs::path folder = OutputFolder(known, generating_document);
  const std::u16string base_name = BaseName(known, generating_document, form);
  const std::u16string style_sheet = On(form).Read(&IReportOutputTransformation::GetXSLTFilename);
  const bool plain = ClientIsInTestMode() || style_sheet.empty();
  const std::u16string written =
      plain ? WriteAsXML(FFilename) : WriteTransformed(TextOf(folder / PathOf(base_name)), style_sheet);
  if (On(form).Read(&IReportOutputTransformation::GetShow)) Show(known, written);
  return written;
}

std::u16string TBaseReport::WriteToString(const std::u16string& style_sheet) const {
  try {
    return Platform::ToUtf16(FXMLDocument.Transform(IXMLDocument::Load(PathOf(style_sheet))));
  } catch (const Platform::EXMLError& failure) {
    throw EGeneralReportException(failure.what());
  }
}

std::u16string TBaseReport::WriteTransformed(const std::u16string& output_file,
                                             const std::u16string& style_sheet) const {
  if (!Exists(PathOf(style_sheet))) {
    ShowErrorDialog(style_sheet + u" does not exist");
    return output_file;
  }
  try {
    const IXMLDocument sheet = IXMLDocument::Load(PathOf(style_sheet));
    const fs::path target = PathOf(output_file).replace_extension(Platform::ToUtf8(ExtensionOf(sheet)));
    PlaceText(FXMLDocument.Transform(sheet), target);
    return TextOf(target);
  } catch (const std::exception& failure) {
    ShowErrorDialog(u"Error using " + style_sheet + u"\n\n" + Platform::ToUtf16(failure.what()));
    throw EGeneralReportException(failure.what());
  }
}

std::u16string TBaseReport::WriteAsXML(const std::u16string& output_file) const {
  const fs::path target = PathOf(output_file).replace_extension(".xml");
  PlaceText(FXMLDocument.Save(true), target);
  return TextOf(target);
}

}  // namespace Ketril::Tools
