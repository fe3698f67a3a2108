#include "report_data.h"

#include <string>

namespace zorvel::tools {
namespace {

// One row for each number below `count`, as "n".
std::string Numbers(std::int64_t count) {
    return "WITH RECURSIVE numbers (n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM numbers WHERE n + 1 < " +
           std::to_string(count) + ") ";
}

void FillApplications(Database& dataset, const ReportSize& size) {
    dataset.Execute("INSERT INTO Zorvel_Apps (AppUniqueRef, AppName, AppOU, AppCaption) " +
                    Numbers(size.applications) + "SELECT n + 1, 'APP' || n, 'APPS.SITE' || (n % " +
                    std::to_string(size.containers) +
                    ") || '.CORP', 'Accounts and Invoices, Edition ' || n FROM numbers");
}

}  // namespace

void FillRegistry(Database& dataset, const ReportSize& size) {
    const std::string rows = std::to_string(size.rows);
    const std::string applications = std::to_string(size.applications);
    dataset.Begin();
    FillApplications(dataset, size);
    // Applications stand together, as an import leaves them; the keys of an application do not come sorted.
    dataset.Execute("INSERT INTO Zorvel_RegistrySettings (AppUniqueRef, Key, Data, Value, Mode) " +
                    Numbers(size.rows) + "SELECT n * " + applications + " / " + rows + R"( + 1,
    CASE n / 3 % 4
        WHEN 0 THEN 'HKEY_LOCAL_MACHINE\SOFTWARE\Company\Invoices\Settings\'
        WHEN 1 THEN 'HKEY_CURRENT_USER\Software\Company\Invoices\Windows\Main Window\Layout\'
        WHEN 2 THEN 'HKEY_CLASSES_ROOT\CLSID\{6B29FC40-CA47-1067-B31D-00DD010662DA}\'
        ELSE 'HKEY_LOCAL_MACHINE\SOFTWARE\Company\'
    END || 'Section ' || (n / 3 * 7919 % 1000003),
    CASE n % 3 WHEN 0 THEN 'Path' WHEN 1 THEN 'InstallDate' ELSE 'LastUsedTemplate' END || (n % 11),
    CASE n % 5
        WHEN 0 THEN 'C:\Program Files\Company\Invoices\Templates\Letter, ' || n || '.dot'
        WHEN 1 THEN n
        WHEN 2 THEN '0x0000' || (n % 10)
        WHEN 3 THEN 'Rechnung f' || char(252) || 'r Kunde ' || (n % 97)
        ELSE '%*ProgramFiles%\Company\"Shared"'
    END,
    CASE n % 7 WHEN 0 THEN 'Delete Value' ELSE 'Create If Does Not Exist' END FROM numbers)");
    dataset.Complete();
}

void FillFindings(Database& dataset, const ReportSize& size) {
    constexpr std::int64_t kUsersOfEach = 20;
    const std::string applications = std::to_string(size.applications);
    dataset.Begin();
    FillApplications(dataset, size);
    dataset.Execute("INSERT INTO Zorvel_Associations " + Numbers(size.applications * kUsersOfEach) +
                    "SELECT n % " + applications +
                    " + 1, 'USER' || (n * 7919 % 10007) || '.STAFF.CORP', 'GROUP' || (n % " + applications +
                    ") || '.CORP', 'Group' FROM numbers ORDER BY n % " + applications);
    dataset.Execute(
        "INSERT INTO Zorvel_Issues (AppUniqueRef, EntryType, TargetFile, SourceFile, IssueCode) " +
        Numbers(size.rows) + "SELECT n * " + applications + " / " + std::to_string(size.rows) + R"( + 1,
    CASE n % 2 WHEN 0 THEN 'File' ELSE 'Registry' END,
    CASE n % 2
        WHEN 0 THEN 'C:\PROGRAM FILES\COMPANY\APP' || (n * )" +
        applications + " / " + std::to_string(size.rows) +
        R"() || '\PART' || (n % 40) || '\'
        ELSE 'HKEY_LOCAL_MACHINE\SOFTWARE\COMPANY\Section ' || (n * 7919 % 10007) || '\'
    END || CASE n % 3 WHEN 0 THEN 'NAME' || n ELSE 'README' || (n % 1009) END ||
    CASE n % 2 WHEN 0 THEN '.OLD' ELSE '' END,
    CASE n % 2 WHEN 0 THEN '%SOURCE_PATH%\' || (n % 10007) || '.fil' ELSE '\\SERVER' || (n % 97) || '\SHARE' END,
    CASE n % 20 WHEN 0 THEN 'FILEPWL' WHEN 2 THEN 'FILESYSDLLFLAG' WHEN 4 THEN 'FILEPORTABLE' WHEN 1 THEN 'REGISTRYEXCLUDE'
        ELSE CASE n % 2 WHEN 0 THEN 'FILEOLD' ELSE 'REGISTRYUNC' END END FROM numbers)");
    dataset.Complete();
}

}  // namespace zorvel::tools
