#include "gui/dialogs/frm_trees.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>

#include "gui/dialogs/chosen_file.h"
#include "gui/dialogs/frm_tree_export.h"
#include "gui/dialogs/frm_tree_server.h"
#include "gui/widgets/qt_text.h"
#include "ui_frm_trees.h"

namespace zorvel {
namespace {

constexpr double kShareOfScreen = 0.9;

}  // namespace

frmTrees::frmTrees(TreeEditor& editor, QWidget* parent)
    : QDialog(parent), editor_(editor), ui_(std::make_unique<Ui::frmTrees>()) {
    ui_->setupUi(this);
    resize(size().boundedTo(screen()->availableSize() * kShareOfScreen));
    setAcceptDrops(true);
    ui_->txtResult->setPlaceholderText("An LDIF export can be dropped here.");
    ConnectButtons();
    const std::vector<DirectoryConfig::Tree>& trees = editor.config().trees;
    ShowTrees(trees.empty() ? std::string() : trees.front().name);
}

frmTrees::~frmTrees() = default;

void frmTrees::ConnectButtons() {
    const auto on = [this](QPushButton* button, auto operation) {
        connect(button, &QPushButton::clicked, this, operation);
    };
    on(ui_->butAddExport, [this] { AddExport({}); });
    on(ui_->butAddServer, [this] { AddServer(); });
    on(ui_->butEdit, [this] { Edit(); });
    on(ui_->butRemove, [this] { Remove(); });
    on(ui_->butPrefer, [this] { Prefer(); });
    on(ui_->butTest, [this] {
        if (testing_)
            editor_.EndTest();
        else
            Test();
    });
    on(ui_->butCopy, [this] { QGuiApplication::clipboard()->setText(ui_->txtResult->toPlainText()); });
    on(ui_->butClose, [this] { reject(); });
    connect(ui_->lstTrees, &QTreeWidget::itemActivated, this, [this] { Edit(); });
    connect(ui_->lstTrees, &QTreeWidget::currentItemChanged, this, [this] { EnableControls(); });
    connect(ui_->txtResult, &QPlainTextEdit::textChanged, this, [this] { EnableControls(); });
}

void frmTrees::ShowTrees(const std::string& selected) {
    const DirectoryConfig& config = editor_.config();
    ui_->lstTrees->clear();
    for (const DirectoryConfig::Tree& tree : config.trees) {
        const bool first = config.preferred == tree.name;
        auto* item = new QTreeWidgetItem(ui_->lstTrees);
        item->setText(0, ToQString(tree.name) + (first ? " (opened first)" : ""));
        item->setText(1, ToQString(editor_.SourceOf(tree)));
        item->setToolTip(1, PlainToolTip(item->text(1)));
        if (tree.name == selected) ui_->lstTrees->setCurrentItem(item);
    }
    ui_->lstTrees->resizeColumnToContents(0);
    EnableControls();
}

void frmTrees::EnableControls() {
    const DirectoryConfig::Tree* const tree = Selected();
    const bool idle = !testing_;
    ui_->lstTrees->setEnabled(idle);
    ui_->butAddExport->setEnabled(idle);
    ui_->butAddServer->setEnabled(idle);
    ui_->butEdit->setEnabled(idle && tree != nullptr);
    ui_->butRemove->setEnabled(idle && tree != nullptr);
    ui_->butPrefer->setEnabled(idle && tree != nullptr && editor_.config().preferred != tree->name);
    ui_->butTest->setEnabled(tree != nullptr);
    ui_->butTest->setText(idle ? "&Test Connection" : "End &Test");
    ui_->butCopy->setEnabled(idle && !ui_->txtResult->document()->isEmpty());
    ui_->butClose->setEnabled(idle);
}

const DirectoryConfig::Tree* frmTrees::Selected() const {
    const int row = ui_->lstTrees->indexOfTopLevelItem(ui_->lstTrees->currentItem());
    const std::vector<DirectoryConfig::Tree>& trees = editor_.config().trees;
    return row >= 0 && static_cast<std::size_t>(row) < trees.size() ? &trees[static_cast<std::size_t>(row)]
                                                                    : nullptr;
}

void frmTrees::AddExport(const QString& path) {
    frmTreeExport form(editor_, {}, this);
    if (!path.isEmpty()) form.SetFile(path);
    if (form.exec() == Accepted) ShowTrees(form.saved_name());
}

void frmTrees::AddServer() {
    frmTreeServer form(editor_, {{}, {}, LdapSettings()}, this);
    if (form.exec() == Accepted) ShowTrees(form.saved_name());
}

void frmTrees::Edit() {
    const DirectoryConfig::Tree* const tree = Selected();
    if (tree == nullptr) return;
    const auto edit = [this](auto&& form) {
        if (form.exec() == Accepted) ShowTrees(form.saved_name());
    };
    if (tree->ldap) {
        edit(frmTreeServer(editor_, *tree, this));
    } else {
        edit(frmTreeExport(editor_, *tree, this));
    }
}

void frmTrees::Remove() {
    const std::string name = Selected()->name;
    const bool removed = editor_.Remove(name);
    ShowFailure();
    if (removed)
        ShowTrees(editor_.config().trees.empty() ? std::string() : editor_.config().trees.front().name);
}

void frmTrees::Prefer() {
    const std::string name = Selected()->name;
    editor_.Prefer(name);
    ShowFailure();
    ShowTrees(name);
}

void frmTrees::ShowFailure() {
    ui_->txtResult->setPlainText(ToQString(editor_.failure()));
}

void frmTrees::Test() {
    const DirectoryConfig::Tree tree = *Selected();
    {
        const QScopedValueRollback testing(testing_, true);
        ui_->txtResult->setPlainText("Testing '" + ToQString(tree.name) + "'... ESC ends the test.");
        EnableControls();
        ui_->txtResult->setPlainText(ToQString(editor_.Test(tree)));
    }
    EnableControls();
    ui_->butTest->setFocus();
}

void frmTrees::reject() {
    if (testing_)
        editor_.EndTest();
    else
        QDialog::reject();
}

void frmTrees::dragEnterEvent(QDragEnterEvent* event) {
    if (!testing_ && !DroppedFile(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void frmTrees::dropEvent(QDropEvent* event) {
    // The one who drags waits until this returns.
    QTimer::singleShot(0, this, [this, path = DroppedFile(event->mimeData())] { AddExport(path); });
    event->acceptProposedAction();
}

}  // namespace zorvel
