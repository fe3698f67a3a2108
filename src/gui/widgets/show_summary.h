// The list of datasets and the summary frame of the dialogs that choose one.
#pragma once

#include <QListWidget>
#include <QStyle>
#include <cstddef>
#include <string>
#include <vector>

#include "database/dataset_list.h"
#include "gui/widgets/qt_text.h"

namespace zorvel {

// Fills a list; an item of whose dataset there is something to be said has it as its tool tip, and an icon.
inline void ShowDatasetsIn(QListWidget& list, const std::vector<std::string>& items,
                           const std::vector<std::string>& notes) {
    list.clear();
    for (std::size_t i = 0; i < items.size(); ++i) {
        auto* item = new QListWidgetItem(ToQString(items[i]), &list);
        if (notes[i].empty()) continue;
        item->setIcon(list.style()->standardIcon(QStyle::SP_MessageBoxWarning));
        item->setToolTip(ToQString(notes[i]));
    }
}

// Shows a summary in the labels labData_0 to labData_4 and labNote and the box txtComments of a form.
template <typename Form>
void ShowSummaryIn(Form& form, const DatasetSummary& summary) {
    form.labData_0->setText(ToQString(summary.captured));
    form.labData_1->setText(ToQString(summary.tree));
    form.labData_2->setText(ToQString(summary.container));
    form.labData_3->setText(ToQString(summary.applications));
    form.labData_4->setText(ToQString(summary.issues));
    form.txtComments->setPlainText(ToQString(summary.comments));
    form.labNote->setText(ToQString(summary.note));
    form.labNote->setVisible(!summary.note.empty());
}

}  // namespace zorvel
