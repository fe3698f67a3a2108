// The summary frame of the dialogs that choose a dataset.
#pragma once

#include "database/dataset_list.h"
#include "gui/qt_text.h"

namespace zorvel {

// Shows a summary in the labels labData_0 to labData_4 and the box txtComments of a form.
template <typename Form>
void ShowSummaryIn(Form& form, const DatasetSummary& summary) {
    form.labData_0->setText(ToQString(summary.captured));
    form.labData_1->setText(ToQString(summary.tree));
    form.labData_2->setText(ToQString(summary.container));
    form.labData_3->setText(ToQString(summary.applications));
    form.labData_4->setText(ToQString(summary.issues));
    form.txtComments->setPlainText(ToQString(summary.comments));
}

}  // namespace zorvel
