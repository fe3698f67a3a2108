// Lets an arbitrary text be a report's query: it is refused, or reads rows and changes nothing. A text behind
// a NUL is the sort that is imposed on it, a second one the filter.
#include <cstddef>
#include <string>
#include <string_view>

#include "fuzz_input.h"
#include "report_dataset.h"
#include "reporting/report_query.h"

namespace zorvel::fuzz {
namespace {

constexpr std::size_t kMostRows = 100;

void ReadRows(const Database& database, const std::string& query) {
    Rows rows = database.Query(query);
    Require(!rows.Columns().empty());
    std::string text;
    for (std::size_t row = 0; row < kMostRows && rows.Next(); ++row)
        rows.Read(rows.Columns().size() - 1, text);
}

}  // namespace

void TestOneInput(std::string_view input) {
    static const ReportDataset dataset;
    const std::string query(TakePart(input, '\0'));
    const std::string_view sort = TakePart(input, '\0');
    const std::string sorted = ImposeSort(query, sort);
    Require(sorted == query || sorted.ends_with(sort));
    const std::string filtered = ImposeFilter(sorted, input);
    Require(filtered.size() == sorted.size() || filtered.size() == sorted.size() + input.size() + 2);
    try {
        Readable({errors::kStore, errors::kDiskFull}, [&] {
            ReadRows(dataset.Open(), filtered);
            return true;
        });
    } catch (const Interrupted&) {
    }
    Require(dataset.IsUnchanged());
}

}  // namespace zorvel::fuzz
