#include "gui/dialogs/password_dialog.h"

#include <QInputDialog>

#include "gui/widgets/qt_text.h"

namespace zorvel {

std::optional<std::string> AskForPassword(QWidget* parent, std::string_view tree, std::string_view identity) {
    QInputDialog dialog(parent);
    dialog.setWindowTitle(QStringLiteral("Password for the Tree '%1'").arg(ToQString(tree)));
    dialog.setLabelText(QStringLiteral("Password of %1 (kept until Zorvel ends):").arg(ToQString(identity)));
    dialog.setTextEchoMode(QLineEdit::Password);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue().toStdString();
}

}  // namespace zorvel
