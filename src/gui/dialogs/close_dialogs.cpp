#include "gui/dialogs/close_dialogs.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace zorvel {

void CloseDialogs() {
    while (QWidget* const menu = QApplication::activePopupWidget())
        menu->close();
    while (QWidget* const dialog = QApplication::activeModalWidget()) {
        auto* const box = qobject_cast<QMessageBox*>(dialog);
        if (box != nullptr && box->defaultButton() != nullptr)
            box->defaultButton()->click();
        else
            dialog->close();
        if (dialog->isVisible()) return;
    }
}

}  // namespace zorvel
