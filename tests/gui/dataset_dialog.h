// Datasets for the dialogs that list them, and what such a dialog tells of the chosen one.
#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QWidget>
#include <string>
#include <vector>

#include "database/dataset_folder.h"
#include "gui/controls.h"

namespace zorvel::test {

// The dataset of a run on the `day`th November.
inline CatalogueRow DatasetOfDay(int day, const std::string& comment) {
    CatalogueRow row;
    row.Captured = std::to_string(day) + "/11/2026 08:00:00";
    row.Tree = "TREE_" + std::to_string(day);
    row.OU = "APPS & all.SITE";
    row.Description = comment;
    row.AppCount = 1234;
    row.DBName = DatasetName(row.Captured);
    return row;
}

// The labels of a dialog's summary, and the comments.
inline std::vector<std::string> SummaryShown(const QWidget& dialog) {
    std::vector<std::string> texts;
    for (const char* name : {"labData_0", "labData_1", "labData_2", "labData_3", "labData_4"})
        texts.push_back(Control<QLabel>(dialog, name).text().toStdString());
    texts.push_back(Control<QPlainTextEdit>(dialog, "txtComments").toPlainText().toStdString());
    return texts;
}

}  // namespace zorvel::test
