#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <iterator>
#include <optional>

#include "DLLs/Tools/Reports/FilePlacement.h"
#include "DLLs/Tools/Reports/RT_ReportOptions.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/OptionsAccess.h"
#include "Editor/Client/Workspace.h"
#include "Platform/Dialogs.h"
#include "Platform/FileLocks.h"
#include "Platform/TempFiles.h"
#include "Platform/Text.h"
#include "Tests/DLLs/Tools/Reports/ReportText.h"

namespace Ketril::Tools {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

std::u16string Wide(const fs::path& path) {
  return Platform::ToUtf16(path.string());
}

// A folder of its own, a client whose messages are listed, and style sheets in its templates.
class RT_ReportOutput : public testing::Test {
 protected:
  RT_ReportOutput() {
    fs::remove(folder);
    fs::create_directories(folder / "Templates");
    fs::create_directories(folder / "boards");
    fs::create_directories(folder / "temporary");
    ::setenv("TMPDIR", (folder / "temporary").c_str(), 1);  // where nobody else's tests are
    Platform::SetDialogProvider([this](const std::u16string& text, auto, auto) {
      messages.push_back(Platform::ToUtf8(text));
      return Platform::TDialogAnswer::Ok;
    });
    Sheet("report_html_default.xsl", "", "html");
    Sheet("csv.xsl",
          "<xsl:param name='other'>x</xsl:param><xsl:param name='file_extension'>csv</xsl:param>"
          "<xsl:param name='file_extension'>late</xsl:param>",
          "csv");
  }
  ~RT_ReportOutput() override {
    Platform::SetDialogProvider(nullptr);
    ::setenv("TMPDIR", folder.parent_path().c_str(), 1);
    fs::remove_all(folder);
  }

  void Sheet(const char* name, const std::string& parameters, const std::string& kind) {
    Put(folder / "Templates" / name,
        "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" + parameters +
            "<xsl:output method='text'/><xsl:template match='/'>" + kind +
            ":<xsl:value-of select='/report/title'/></xsl:template></xsl:stylesheet>");
  }
  static void Put(const fs::path& file, const std::string& text) { std::ofstream(file) << text; }
  static std::string Get(const fs::path& file) {
    if (!fs::is_regular_file(file)) return "no file";
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  // Called once, after the setup was changed.
  const Editor::Client& Install() {
    setup.installation_folder = folder;
    setup.open_document = [this](const fs::path& file) { shown.push_back(file.string()); };
    client = Editor::MakeHost<Editor::Client>(setup);
    installation.emplace(client);
    return *client.Get();
  }
  Ref<IReportOutputTransformation> Form(const std::u16string& style_sheet) {
    const Ref<IReportOutputOptions> options = MakeCounted<TReportOutputOptions>();
    options->SetReportName(u"Board Information");
    Ref<IReportOutputTransformation> form;
    options->AddOutputTransformation(form);
    form->SetXSLTFilename(style_sheet);
    return form;
  }
  std::u16string Csv() const { return Wide(folder / "Templates" / "csv.xsl"); }
  Lines TempFiles() const {
    Lines names;
    for (const auto& entry : fs::directory_iterator(folder / "temporary"))
      names.push_back(entry.path().filename().string());
    return names;
  }

  const fs::path folder = Platform::MakeTempFile("ketril-out-");
  const fs::path board = folder / "boards" / "one.kicad_pcb";
  Editor::ClientSetup setup;
  Ref<Editor::Client> client;
  std::optional<Editor::ClientInstallation> installation;
  Lines messages, shown;
};

TEST_F(RT_ReportOutput, ADocumentInNoProjectHasItsReportBesideIt) {
  Install();
  TGeneralReport r(u"T", u"");
  EXPECT_EQ(r.WriteToFile(Wide(board), u"Name", true), Wide(folder / "boards/one.html"));
  EXPECT_EQ(Get(folder / "boards/one.html"), "html:T");
  EXPECT_EQ(shown, Lines{(folder / "boards/one.html").string()});
  EXPECT_EQ(r.WriteToFile(Wide(board), Form(Csv()).Get()), Wide(folder / "boards/one.csv"));
  EXPECT_EQ(Get(folder / "boards/one.csv"), "csv:T");
  EXPECT_EQ(shown.size(), 1u);

  const auto none = static_cast<IReportOutputTransformation*>(nullptr);
  fs::remove(folder / "boards/one.html");
  EXPECT_EQ(r.WriteToFile(Wide(board), none), Wide(folder / "boards/one.html"));
  EXPECT_EQ(Get(folder / "boards/one.html"), "html:T");
  const auto off = Form(Csv());
  off->SetGenerate(false);
  EXPECT_EQ(r.WriteToFile(Wide(folder / "two"), off.Get()), u"");
  EXPECT_EQ(r.WriteToString(Csv()), u"csv:T");
  EXPECT_EQ(messages, Lines());
  struct ::stat mode {};
  ::stat((folder / "boards/one.csv").c_str(), &mode);
  EXPECT_NE(mode.st_mode & 0044, 0u);  // as a file that the user makes himself
  EXPECT_EQ(TempFiles(), Lines());
}

TEST_F(RT_ReportOutput, WithoutAFolderTheCurrentOneIsTaken) {
  Install();
  TGeneralReport report(u"T", u"");
  const fs::path before = fs::current_path();
  fs::current_path(folder);
  report.WriteToFile(Wide(folder / "gone" / "three.x"), u"Name", false);
  report.WriteToFile(u"four.x", u"Name", false);
  fs::current_path(before);
  EXPECT_EQ(Get(folder / "three.html"), "html:T");
  EXPECT_EQ(Get(folder / "four.html"), "html:T");
}

TEST_F(RT_ReportOutput, AllFormsAreWrittenAndTheLastNamed) {
  Install();
  TGeneralReport report(u"T", Wide(folder / "about.x"));
  const Ref<IReportOutputOptions> options = MakeCounted<TReportOutputOptions>();
  EXPECT_EQ(report.WriteToFile(Wide(board), options.Get()), u"");
  Ref<IReportOutputTransformation> form;
  options->AddOutputTransformation(form);
  form->SetXSLTFilename(Csv());
  options->AddOutputTransformation(form);  // without a style sheet: as it is, beside what it is about
  EXPECT_EQ(report.WriteToFile(Wide(board), options.Get()), Wide(folder / "about.xml"));
  EXPECT_EQ(Get(folder / "boards/one.csv"), "csv:T");
  EXPECT_EQ(Platform::IXMLDocument::Load(folder / "about.xml").DocumentElement().NodeName(), u"report");
}

TEST_F(RT_ReportOutput, InTestModeReportsStayXml) {
  setup.test_mode = true;
  Install();
  TGeneralReport report(u"T", Wide(folder / "about.x"));
  EXPECT_EQ(report.WriteToFile(Wide(board), Form(Csv()).Get()), Wide(folder / "about.xml"));
  EXPECT_EQ(report.WriteToFile(Wide(board), static_cast<IReportOutputTransformation*>(nullptr)),
            Wide(folder / "boards/one.xml"));
}

TEST_F(RT_ReportOutput, ADocumentInAProjectHasItsReportInTheOutputFolder) {
  const auto project =
      Editor::MakeHost<Editor::Project>(Wide(folder / "boards/one.pro"), Wide(folder / "out"));
  const auto homeless =
      Editor::MakeHost<Editor::Project>(Wide(folder / "gone/two.pro"), Wide(folder / "out2"));
  const fs::path unlisted = folder / "boards/three.kicad_pcb", lost = folder / "boards/lost.kicad_pcb";
  setup.workspace = Editor::MakeHost<Editor::Workspace>(std::vector<Ref<IDocument>>{
      project->AddDocument(Wide(board)), project->AddDocument(Wide(unlisted), false),
      homeless->AddDocument(Wide(lost))});
  Install();
  TGeneralReport report(u"T", u"");
  const auto form = Form(Csv());
  form->SetShow(true);
  const auto written = [&](const fs::path& document) {
    return fs::path(Platform::ToUtf8(report.WriteToFile(Wide(document), form.Get())));
  };
  EXPECT_EQ(written(board), folder / "out/Board Information - one.csv");
  EXPECT_EQ(Get(folder / "out/Board Information - one.csv"), "csv:T");
  EXPECT_EQ(project->Generated().size(), 1u);
  // A document that its project does not list is told to it all the same.
  EXPECT_EQ(written(unlisted), folder / "boards/three.csv");
  EXPECT_EQ(project->Generated().size(), 2u);
  EXPECT_EQ(written(lost), folder / "boards/Board Information - lost.csv");
  EXPECT_FALSE(fs::exists(folder / "out2"));
  EXPECT_EQ(shown.size(), 3u);
}

TEST_F(RT_ReportOutput, StyleSheetsThatAreMissingOrFailAreTold) {
  Install();
  TGeneralReport report(u"T", u"");
  EXPECT_EQ(report.WriteTransformed(u"/x/name.y", u"/nowhere.xsl"), u"/x/name.y");
  EXPECT_EQ(messages, Lines{"/nowhere.xsl does not exist"});
  messages.clear();
  const fs::path bad = folder / "bad.xsl";
  Put(bad, "<xsl:stylesheet");
  try {
    report.WriteTransformed(Wide(folder / "five"), Wide(bad));
    ADD_FAILURE();
  } catch (const EGeneralReportException& failure) {
    EXPECT_EQ(messages, Lines{"Error using " + bad.string() + "\n\n" + failure.what()});
  }
  EXPECT_FALSE(fs::exists(folder / "five.html"));
  EXPECT_THROW(report.WriteToString(Wide(bad)), EGeneralReportException);
  for (const char* loop : {"<xsl:include href='bad.xsl'/>",
                           "<xsl:template match='/' name='t'><xsl:call-template name='t'/></xsl:template>",
                           "<xsl:variable name='a' select='$b'/><xsl:variable name='b' select='$a'/>"
                           "<xsl:template match='/'><xsl:value-of select='$a'/></xsl:template>"}) {
    messages.clear();
    Put(bad, std::string("<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>") +
                 loop + "</xsl:stylesheet>");
    EXPECT_THROW(report.WriteTransformed(Wide(folder / "five"), Wide(bad)), EGeneralReportException) << loop;
    EXPECT_EQ(messages.size(), 1u) << loop;
  }
  EXPECT_FALSE(fs::exists(folder / "five.html"));
  Sheet("dotted.xsl", "<xsl:param name='file_extension'>.txt</xsl:param>", "text");
  EXPECT_EQ(report.WriteTransformed(Wide(folder / "six.a.b"), Wide(folder / "Templates/dotted.xsl")),
            Wide(folder / "six.a.txt"));
}

TEST_F(RT_ReportOutput, ALockedTargetStaysAndTheUserIsTold) {
  Put(folder / "old.xml", "old");
  Put(Platform::LockFileOf(folder / "old.xml"), "ComputerName=bench\nUserName=eve\nProcessID=1\n");
  TGeneralReport report(u"T", u"");
  const std::string told = "old.xml is used by eve on bench. You will not be able to save your changes.";
  EXPECT_EQ(report.WriteAsXML(Wide(folder / "old.xml")), Wide(folder / "old.xml"));  // with no client
  EXPECT_EQ(messages, Lines{told});
  Lines notified;
  setup.notify = [&](const std::u16string& title, const std::u16string& text, const std::u16string& process,
                     const std::u16string& parameters) {
    for (const auto& part : {title, text, process, parameters}) notified.push_back(Platform::ToUtf8(part));
  };
  Install();
  report.WriteAsXML(Wide(folder / "old.xml"));
  EXPECT_EQ(notified, (Lines{"[Locked File]", told, "WorkspaceManager:OpenObject",
                             "FileName=" + (folder / "old.xml").string()}));
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(Get(folder / "old.xml"), "old");
  EXPECT_EQ(TempFiles(), Lines());
}

TEST_F(RT_ReportOutput, ATargetThatCannotBeReplacedStaysAndNoTemporaryFileDoes) {
  TGeneralReport report(u"T", u"");
  fs::create_directories(folder / "dir.xml");
  report.WriteAsXML(Wide(folder / "dir.xml"));
  report.WriteAsXML(Wide(folder / "gone" / "x.xml"));
  EXPECT_EQ(messages, (Lines{"The report could not be written to " + (folder / "dir.xml").string(),
                             "The report could not be written to " + (folder / "gone/x.xml").string()}));
  EXPECT_TRUE(fs::is_directory(folder / "dir.xml"));
  EXPECT_EQ(TempFiles(), Lines());

  messages.clear();
  const std::string temporary = fs::temp_directory_path().string();
  ::setenv("TMPDIR", (folder / "gone").c_str(), 1);
  report.WriteAsXML(Wide(folder / "y.xml"));
  ::setenv("TMPDIR", temporary.c_str(), 1);
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_TRUE(messages[0].starts_with("GetTemporaryPath")) << messages[0];
  EXPECT_FALSE(fs::exists(folder / "y.xml"));
}

TEST_F(RT_ReportOutput, AFullDiskLeavesTheTargetAndNoTemporaryFile) {
  Install();
  TGeneralReport report(u"T", u"");
  fs::create_symlink("/dev/full", folder / "full.xml");
  report.WriteAsXML(Wide(folder / "full.xml"));
  EXPECT_EQ(messages, Lines{"The report could not be written to " + (folder / "full.xml").string()});

  // No file may grow any more, as if the folder of temporary files were full.
  messages.clear();
  Put(folder / "boards/one.html", "old");
  ::rlimit old_limit{};
  ::getrlimit(RLIMIT_FSIZE, &old_limit);
  const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
  const ::rlimit none{0, old_limit.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &none);
  EXPECT_THROW(report.WriteToFile(Wide(board), u"Name", false), EGeneralReportException);
  EXPECT_THROW(report.WriteAsXML(Wide(folder / "y.xml")), Exception);
  ::setrlimit(RLIMIT_FSIZE, &old_limit);
  std::signal(SIGXFSZ, old_handler);
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_TRUE(messages[0].starts_with("Error using ")) << messages[0];
  EXPECT_EQ(Get(folder / "boards/one.html"), "old");
  EXPECT_EQ(TempFiles(), Lines());
}

TEST_F(RT_ReportOutput, AnOpenDocumentIsToldOfItsReplacement) {
  const auto document = Editor::MakeHost<Editor::ServerDocument>(Wide(folder / "z.txt"), u"TextEdit");
  setup.open_documents = {document};
  Install();
  PlaceText("new", folder / "z.txt");
  EXPECT_EQ(document->Before() * 10 + document->After(), 11);
  EXPECT_EQ(Get(folder / "z.txt"), "new");
  EXPECT_EQ(PlaceFile(folder / "Z.txt", folder / "z.txt"), TPlacement::Placed);  // one name: nothing happens
  EXPECT_EQ(Get(folder / "z.txt"), "new");
  EXPECT_EQ(document->Before(), 1);
}

TEST_F(RT_ReportOutput, OptionsComeBackFromTheStore) {
  setup.options_folder = folder / "settings";
  Install();
  Editor::OptionsStore store(folder / "settings" / "KETRIL.INI");
  const auto writer = Editor::MakeHost<Editor::OptionsWriter>(store);
  const auto reader = Editor::MakeHost<Editor::OptionsReader>(store);
  const auto make = [](const std::u16string& sheet, bool generate, bool show) {
    const Ref<IReportOutputOptions> options = MakeCounted<TReportOutputOptions>();
    options->SetReportName(u"Board Information Report");
    Ref<IReportOutputTransformation> form;
    options->AddOutputTransformation(form);
    form->SetOutputName(u"As a table");
    form->SetXSLTFilename(sheet);
    form->SetGenerate(generate);
    form->SetShow(show);
    return std::pair(options, form);
  };
  const auto [stored, unused] = make(Csv(), false, true);
  EXPECT_EQ(stored->Export_ToOptionsWriter(writer.Get()), Status::Ok);
  EXPECT_EQ(Get(folder / "settings" / "KETRIL.INI"),
            "[ReportOptions]\nBoardInformationReport_Asatable_Generate=False\n"
            "BoardInformationReport_Asatable_Show=True\n"
            "BoardInformationReport_Asatable_XSLTFilename=%InstallationFolder%/Templates/csv.xsl\n");

  const auto [options, form] = make(u"/other.xsl", true, false);
  EXPECT_EQ(options->Import_FromOptionsReader(reader.Get()), Status::Ok);
  bool generate = true, show = false;
  std::u16string sheet;
  form->GetGenerate(generate);
  form->GetShow(show);
  form->GetXSLTFilename(sheet);
  EXPECT_FALSE(generate);
  EXPECT_TRUE(show);
  EXPECT_EQ(sheet, Csv());

  form->SetOutputName(u"unknown to the store");  // what is not there stays as it is
  EXPECT_EQ(form->Import_FromOptionsReader(reader.Get()), Status::Ok);
  form->GetShow(show);
  EXPECT_TRUE(show);
  EXPECT_EQ(form->Import_FromOptionsReader(nullptr), Status::InvalidArgument);

  std::int32_t count = 0;
  Ref<IReportOutputTransformation> found;
  EXPECT_EQ(options->GetAvailableTransformations(1, found), Status::InvalidArgument);
  EXPECT_EQ(options->GetAvailableTransformations(-1, found), Status::InvalidArgument);
  options->GetAvailableTransformationCount(count);
  EXPECT_EQ(count, 1);
  options->RemoveOutputTransformations();
  options->GetAvailableTransformationCount(count);
  EXPECT_EQ(count, 0);
}

}  // namespace
}  // namespace Ketril::Tools
