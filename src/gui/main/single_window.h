// One window a program folder: a second start shows the one that is there.
#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QObject>
#include <string>

#include "platform/files.h"
#include "platform/folder_lock.h"

namespace zorvel {

class SingleWindow final : public QObject {
    Q_OBJECT

  public:
    explicit SingleWindow(const Files& files);

    // Makes this process the one that shows the folder's window, until it ends; false when another one does.
    // In a folder that cannot be written nobody can tell, and this process goes on: its start says what is
    // wrong.
    bool Claim();
    // After Claim gave false: asks the other process to show its window, and hands `activation_token` on, by
    // which the desktop lets it come to the front. False when there is no answer: it runs for another user or
    // on another host, or hangs.
    bool ShowOther(const QByteArray& activation_token) const;
    // After Claim gave false: what to tell the user when the other one cannot be shown.
    std::string RunsElsewhereText() const;

  Q_SIGNALS:
    // Somebody has started the program once more.
    void ShowWanted(const QByteArray& activation_token);

  private:
    void Answer();

    FolderLock lock_;
    QString address_;
    QLocalServer server_;
};

}  // namespace zorvel
