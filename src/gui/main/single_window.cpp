#include "gui/main/single_window.h"

#include <QCryptographicHash>
#include <QLocalSocket>
#include <QStandardPaths>

#include "platform/error.h"
#include "platform/user_interface.h"

namespace zorvel {
namespace {

constexpr const char* kLockFile = "Zorvel.window";
constexpr int kPatience = 3000;  // milliseconds that a living window may take to answer
constexpr const char* kAnswer = "shown\n";

// Where the window of a program folder listens, for its own user alone.
QString AddressOf(const Files& files) {
    const QByteArray folder = QByteArray::fromStdString(files.Resolve(files.ProgramFolder()).string());
    const QByteArray name = QCryptographicHash::hash(folder, QCryptographicHash::Sha1).toHex();
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/zorvel-" + name;
}

}  // namespace

SingleWindow::SingleWindow(const Files& files)
    : lock_(files.Resolve(files.Path(kLockFile)), files.Path(kLockFile)), address_(AddressOf(files)) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &SingleWindow::Answer);
}

bool SingleWindow::Claim() {
    try {
        if (!lock_.TryAcquire("zorvel")) return false;
    } catch (const Error&) {
        return true;
    }
    QLocalServer::removeServer(address_);  // what a process that was killed has left
    server_.listen(address_);
    return true;
}

void SingleWindow::Answer() {
    while (QLocalSocket* const socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto show = [this, socket] {
            if (!socket->canReadLine()) return;
            Q_EMIT ShowWanted(socket->readLine().trimmed());
            socket->write(kAnswer);
            socket->disconnectFromServer();
        };
        connect(socket, &QLocalSocket::readyRead, this, show);
        show();
    }
}

bool SingleWindow::ShowOther(const QByteArray& activation_token) const {
    QLocalSocket socket;
    socket.connectToServer(address_);
    if (!socket.waitForConnected(kPatience)) return false;
    socket.write(activation_token + '\n');
    return socket.waitForReadyRead(kPatience) && socket.readLine() == kAnswer;
}

std::string SingleWindow::RunsElsewhereText() const {
    return std::string(kProductName) +
           " is running in this program folder already: " + lock_.Holder().Text() + ".";
}

}  // namespace zorvel
