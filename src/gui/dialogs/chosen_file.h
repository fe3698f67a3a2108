// Files that the user chooses or drops.
#pragma once

#include <QString>

class QLineEdit;
class QMimeData;

namespace zorvel {

// The path of the one file that is dragged or dropped; empty when it is something else.
QString DroppedFile(const QMimeData* data);

// Lets the user choose a file, and puts its path into `field`; `filter` as QFileDialog has it.
void BrowseFor(QLineEdit& field, const QString& title, const QString& filter);

}  // namespace zorvel
