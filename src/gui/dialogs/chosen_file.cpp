#include "gui/dialogs/chosen_file.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>

namespace zorvel {

QString DroppedFile(const QMimeData* data) {
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.front().toLocalFile() : QString();
}

void BrowseFor(QLineEdit& field, const QString& title, const QString& filter) {
    const QString file = QFileDialog::getOpenFileName(field.window(), title, {}, filter);
    if (!file.isEmpty()) field.setText(file);
}

}  // namespace zorvel
