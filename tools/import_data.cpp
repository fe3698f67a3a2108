#include "import_data.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/data_files.h"

namespace zorvel::tools {
namespace {

constexpr std::int64_t kApplicationsAContainer = 50;

// How the rows are shared out among the files, in percent; the rest is registry settings.
constexpr std::int64_t kFilesShare = 25;
constexpr std::int64_t kINIShare = 6;
constexpr std::int64_t kMacrosShare = 3;
constexpr std::int64_t kIssuesShare = 5;

std::string FullName(std::int64_t application) {
    return "Application " + std::to_string(application) + ".APPS.SITE" +
           std::to_string(application / kApplicationsAContainer) + ".CORP";
}

// One data file; the records of an application stand together, as a run writes them.
class Writer {
  public:
    Writer(const Files& files, const DataFile& layout)
        : file_(files.Create(files.Path(layout.name))), style_(layout.style) {}

    void Write(const std::vector<std::string>& record) {
        if (style_ == RecordStyle::kLines) {
            for (const std::string& field : record)
                WriteFieldLine(file_, field);
            return;
        }
        for (std::size_t i = 0; i < record.size(); ++i) {
            if (i > 0) file_.Write(',');
            file_.Write(QuotedDoubling(record[i]));
        }
        file_.Write("\r\n");
    }
    void Close() { file_.Close(); }

  private:
    OutputFile file_;
    RecordStyle style_;
};

using Record = std::vector<std::string> (*)(const std::string& application, std::int64_t row);

void WriteRows(const Files& files, const DataFile& layout, std::int64_t rows, std::int64_t applications,
               Record record) {
    Writer writer(files, layout);
    for (std::int64_t row = 0; row < rows; ++row)
        writer.Write(record(FullName(row * applications / rows), row));
    writer.Close();
}

void WriteAttributes(const Files& files, std::int64_t applications) {
    Writer writer(files, data_files::kAppDetails);
    for (std::int64_t i = 0; i < applications; ++i) {
        const std::string name = FullName(i);
        const std::string number = std::to_string(i);
        writer.Write({name, "App:Caption", "User's application " + number});
        writer.Write({name, "App:Icon Order", std::to_string(i % 1000)});
        writer.Write({name, "App:Flags", std::to_string(i % 7 * 0x1100)});
        writer.Write({name, "App:Path", R"(\\SERVER\APPS\)" + number + R"(\RUN.EXE)"});
    }
    writer.Close();
}

std::vector<std::string> Macro(const std::string& name, std::int64_t row) {
    return {name, "MACRO" + std::to_string(row), R"(C:\Program Files\Application )" + std::to_string(row), "",
            ""};
}

std::vector<std::string> Issue(const std::string& name, std::int64_t row) {
    constexpr std::array<std::string_view, 4> kCodes = {"FILEPORTABLE", "REGISTRYUNC", "FILEOLD", "FILETEMP"};
    return {name, "File", R"(C:\WINDOWS\SYSTEM32\LIB)" + std::to_string(row) + ".DLL",
            R"(\\SERVER\APPS\LIB.DLL)", std::string(kCodes[static_cast<std::size_t>(row) % kCodes.size()])};
}

std::vector<std::string> CopiedFile(const std::string& name, std::int64_t row) {
    const std::string file = "FILE" + std::to_string(row) + ".DLL";
    return {name, R"(C:\PROGRAM FILES\APPLICATION\BIN\)" + file, R"(\\SERVER\APPS\APPLICATION\)" + file,
            "Copy If Newer"};
}

std::vector<std::string> INISetting(const std::string& name, std::int64_t row) {
    return {name,         "Directory" + std::to_string(row), "Settings",
            R"(C:\Data)", R"(%*WinDir%\APPLICATION.INI)",    ""};
}

std::vector<std::string> RegistrySetting(const std::string& name, std::int64_t row) {
    const std::string number = std::to_string(row);
    return {name, R"(HKEY_LOCAL_MACHINE\SOFTWARE\Company\Application\Settings)" + number, "Value" + number,
            R"(C:\Program Files\Application\data\)" + number, "Create If Does Not Exist"};
}

std::vector<std::string> AppAssociation(const std::string& name, std::int64_t row) {
    return {name,
            "STAFF.CORP",
            "SITE.CORP",
            "",
            ' ' + std::to_string(row % 100),
            "00000001-00000002-00000003-00000004-00000005-00000006"};
}

std::vector<std::string> Association(const std::string& name, std::int64_t row) {
    return {name, "USER" + std::to_string(row) + ".SITE.CORP", "STAFF.CORP", "Group"};
}

}  // namespace

void WriteImportData(const Files& files, ImportSize size) {
    using namespace data_files;
    const auto share = [&](std::int64_t percent) { return size.rows * percent / 100; };
    // The association files hold a row for each application.
    const std::int64_t registry =
        size.rows - share(kFilesShare) - share(kINIShare) - share(kMacrosShare) - share(kIssuesShare);
    const auto write = [&](const DataFile& layout, std::int64_t rows, Record record) {
        WriteRows(files, layout, rows, size.applications, record);
    };
    WriteAttributes(files, size.applications);
    write(kMacros, share(kMacrosShare), Macro);
    write(kIssues, share(kIssuesShare), Issue);
    write(kCopyFiles, share(kFilesShare), CopiedFile);
    write(kCopyFilesAlways, 0, CopiedFile);
    write(kINISettings, share(kINIShare), INISetting);
    write(kINISettingsAlways, 0, INISetting);
    write(kRegistrySettings, registry, RegistrySetting);
    write(kRegistrySettingsAlways, 0, RegistrySetting);
    write(kAppAssociations, size.applications, AppAssociation);
    write(kAssociations, size.applications, Association);
    WriteCaptureRecord(files, {.captured = "16/11/2026 17:28:05",
                               .tree = "CORP_TREE",
                               .container = "[Multiple OUs]",
                               .app_count = std::to_string(size.applications),
                               .totals = {},
                               .mode = "Zorvelrun"});
}

}  // namespace zorvel::tools
