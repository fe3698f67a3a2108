#include "gui/dialogs/frm_tree_server.h"

#include <QProcess>
#include <QScreen>
#include <chrono>
#include <vector>

#include "gui/dialogs/chosen_file.h"
#include "gui/widgets/qt_text.h"
#include "ui_frm_tree_server.h"

namespace zorvel {
namespace {

constexpr double kShareOfScreen = 0.9;

QStringList LinesOf(const QPlainTextEdit& field) {
    QStringList lines;
    for (const QString& line : field.toPlainText().split('\n')) {
        if (const QString text = line.trimmed(); !text.isEmpty()) lines << text;
    }
    return lines;
}

// Program and arguments as one line, and back: quotes hold blanks together, three of them are one.
QString CommandLine(const std::vector<std::string>& words) {
    QStringList line;
    for (const std::string& word : words) {
        QString text = ToQString(word);
        const bool plain = !text.isEmpty() && !text.contains(' ') && !text.contains('\t');
        text.replace('"', QStringLiteral("\"\"\""));
        line << (plain ? text : '"' + text + '"');
    }
    return line.join(' ');
}

std::vector<std::string> WordsOf(const QString& line) {
    std::vector<std::string> words;
    for (const QString& word : QProcess::splitCommand(line))
        words.push_back(FromQString(word));
    return words;
}

}  // namespace

frmTreeServer::frmTreeServer(TreeEditor& editor, const DirectoryConfig::Tree& tree, QWidget* parent)
    : QDialog(parent), editor_(editor), tree_(tree), ui_(std::make_unique<Ui::frmTreeServer>()) {
    ui_->setupUi(this);
    resize(size().boundedTo(screen()->availableSize() * kShareOfScreen));
    ui_->labFailure->hide();
    ShowSettings();
    connect(ui_->comPassword, &QComboBox::currentIndexChanged, this, &frmTreeServer::PasswordChosen);
    connect(ui_->butCaFile, &QPushButton::clicked, this, [this] {
        BrowseFor(*ui_->txtCaFile, "Trusted Certificates",
                  "Certificates (*.pem *.crt *.cer *.b64);;All files (*)");
    });
    connect(ui_->butOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmTreeServer::~frmTreeServer() = default;

void frmTreeServer::ShowSettings() {
    const LdapSettings& servers = *tree_.ldap;
    ui_->txtName->setText(ToQString(tree_.name));
    QStringList lines;
    for (const std::string& url : servers.urls)
        lines << ToQString(url);
    ui_->txtServers->setPlainText(lines.join('\n'));
    ui_->checkStartTls->setChecked(servers.start_tls);
    lines.clear();
    for (const std::string& base : servers.bases)
        lines << QString::fromStdString(base);
    ui_->txtBases->setPlainText(lines.join('\n'));
    ui_->txtBindDn->setText(QString::fromStdString(servers.bind_dn));
    const bool from_command = !servers.password_command.empty();
    const int source = from_command ? kFromCommand : servers.password_file.empty() ? kAsked : kFromFile;
    ui_->comPassword->setCurrentIndex(source);
    PasswordChosen(source);
    ui_->txtPassword->setText(from_command ? CommandLine(servers.password_command)
                                           : ToQString(ShownPath(editor_.files(), servers.password_file)));
    ui_->txtCaFile->setText(ToQString(ShownPath(editor_.files(), servers.ca_file)));
    ui_->txtCaFile->setPlaceholderText("What the system trusts");
    ui_->spinConnect->setValue(static_cast<int>(servers.connect_timeout.count()));
    ui_->spinAnswer->setValue(static_cast<int>(servers.answer_timeout.count()));
    ui_->spinPage->setValue(servers.page_size);
    ui_->spinAhead->setValue(servers.read_ahead);
}

void frmTreeServer::PasswordChosen(int source) {
    ui_->txtPassword->setEnabled(source != kAsked);
    ui_->txtPassword->setPlaceholderText(source == kAsked      ? "Never kept in a file"
                                         : source == kFromFile ? "Path of the file"
                                                               : "secret-tool lookup service zorvel");
}

DirectoryConfig::Tree frmTreeServer::Entered() const {
    LdapSettings servers = *tree_.ldap;  // what the form does not show stays
    servers.urls.clear();
    for (const QString& url : LinesOf(*ui_->txtServers))
        servers.urls.push_back(FromQString(url));
    servers.start_tls = ui_->checkStartTls->isChecked();
    if (ui_->txtBases->document()->isModified()) {
        servers.bases.clear();
        for (const QString& base : LinesOf(*ui_->txtBases))
            servers.bases.push_back(base.toStdString());
        if (servers.bases.empty()) servers.bases = {""};
    }
    servers.bind_dn = ui_->txtBindDn->text().trimmed().toStdString();
    const QString password = ui_->txtPassword->text();
    const int source = ui_->comPassword->currentIndex();
    servers.password_file =
        source == kFromFile ? PathOfShown(editor_.files(), FromQString(password)) : std::string();
    servers.password_command = source == kFromCommand ? WordsOf(password) : std::vector<std::string>();
    servers.ca_file = PathOfShown(editor_.files(), FromQString(ui_->txtCaFile->text()));
    servers.connect_timeout = std::chrono::seconds(ui_->spinConnect->value());
    servers.answer_timeout = std::chrono::seconds(ui_->spinAnswer->value());
    servers.page_size = ui_->spinPage->value();
    servers.read_ahead = ui_->spinAhead->value();
    return {FromQString(ui_->txtName->text()), {}, servers};
}

void frmTreeServer::accept() {
    const DirectoryConfig::Tree tree = Entered();
    if (editor_.Put(tree_.name, tree)) {
        tree_ = tree;
        QDialog::accept();
        return;
    }
    ui_->labFailure->setText(ToQString(editor_.failure()));
    ui_->labFailure->setVisible(!editor_.failure().empty());
}

}  // namespace zorvel
