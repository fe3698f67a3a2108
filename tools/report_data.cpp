#include "report_data.h"

#include <string>

namespace zorvel::tools {
namespace {

// One row for each number below `count`, as "n".
std::string Numbers(std::int64_t count) {
    return "WITH RECURSIVE numbers (n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM numbers WHERE n + 1 < " +
           std::to_string(count) + ") ";
}

}  // namespace

void FillRegistry(Database& dataset, const ReportSize& size) {
    const std::string rows = std::to_string(size.rows);
    const std::string applications = std::to_string(size.applications);
    const std::string containers = std::to_string(size.containers);
    dataset.Begin();
    dataset.Execute("INSERT INTO Zorvel_Apps (AppUniqueRef, AppName, AppOU, AppCaption) " +
                    Numbers(size.applications) + "SELECT n + 1, 'APP' || n, 'APPS.SITE' || (n % " +
                    containers + ") || '.CORP', 'Accounts and Invoices, Edition ' || n FROM numbers");
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

}  // namespace zorvel::tools
