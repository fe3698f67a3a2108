#include "gui/report/report_copy.h"

#include <string>

#include "gui/widgets/qt_text.h"
#include "reporting/report_values.h"

namespace zorvel {
namespace {

QString CellText(const Report& report, std::size_t row, std::size_t column) {
    std::string scratch;
    return ToQString(DisplayValue(report.rows().ColumnValue(row, column),
                                  report.definition().columns[column].format, scratch));
}

}  // namespace

QString ValueText(const Report& report, const TextPlace& place) {
    switch (place.kind) {
        case TextPlace::Kind::kCell:
            return CellText(report, place.index, place.column);
        case TextPlace::Kind::kHeading:
            return ToQString(report.Heading(place.index));
        case TextPlace::Kind::kNote:
            return ToQString(report.Note(place.index));
        case TextPlace::Kind::kFurniture:
            break;
    }
    return {};
}

QString RowText(const Report& report, std::size_t row) {
    QString text;
    for (std::size_t column = 0; column < report.definition().columns.size(); ++column) {
        if (column > 0) text += '\t';
        text += CellText(report, row, column).replace('\n', ' ');
    }
    return text;
}

}  // namespace zorvel
