// What a dialog that lists datasets tells of the chosen one.
#pragma once

#include <QPlainTextEdit>
#include <vector>

#include "database/dataset_folder.h"
#include "gui/controls.h"

namespace zorvel::test {

// The labels of a dialog's summary, and the comments.
inline std::vector<std::string> SummaryShown(const QWidget& dialog) {
    std::vector<std::string> texts;
    for (const char* name : {"labData_0", "labData_1", "labData_2", "labData_3", "labData_4"})
        texts.push_back(Control<QLabel>(dialog, name).text().toStdString());
    texts.push_back(Control<QPlainTextEdit>(dialog, "txtComments").toPlainText().toStdString());
    return texts;
}

}  // namespace zorvel::test
