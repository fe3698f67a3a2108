// frmReport: a prepared report as it prints, to be read, searched, printed and saved.
#pragma once

#include <QMainWindow>
#include <QPrinter>
#include <filesystem>
#include <functional>
#include <memory>

#include "gui/report/group_tree_model.h"
#include "paper/report_fonts.h"
#include "paper/report_pdf.h"
#include "reporting/page_layout.h"
#include "reporting/report.h"
#include "reporting/report_export.h"
#include "shell/services.h"

class QLabel;
class QSpinBox;

namespace Ui {
class frmReport;
}

namespace zorvel {

class frmReport final : public QMainWindow {
    Q_OBJECT

  public:
    // Has the user choose printer, pages and copies; false when he does not want to print.
    using AskPrinter = std::function<bool(QPrinter& printer, std::size_t pages, QWidget* window)>;

    // Lays the report out. Make it with `new`: the window deletes itself when it is closed. The services must
    // outlive it. Raises Interrupted when `ask` says so.
    frmReport(Services& services, std::shared_ptr<const Report> report, const AskInterrupted& ask = {});
    ~frmReport() override;

    // What is asked ahead of printing, instead of the print dialog.
    void SetAskPrinter(AskPrinter ask) { ask_printer_ = std::move(ask); }

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ConnectActions();
    void AddPageBox();
    void FillTree();
    void JumpTo(const QModelIndex& index);
    void ShowPage();
    void ShowZoom();
    // Selects the group that is on the page in the tree, as far as the tree is open.
    void FollowPage();
    // Offers to copy what stands at a point of the view.
    void ShowCopyMenu(QPoint point);
    // Copies the value that the search found last.
    void CopyFound();
    void Save();
    void Write(const std::filesystem::path& path, const ReportFormat& format);
    void Print();
    // Does what can fail; the user is told. Not while another of these is under way.
    void Handle(const std::function<void()>& operation);
    // Runs `work` on pages, with a window that says how far it is and can stop it. False when it was stopped.
    bool WithProgress(const QString& text, const std::function<bool(const PageProgress&)>& work);

    Services& services_;
    std::shared_ptr<const Report> report_;
    PaperFonts fonts_;
    PageLayout layout_;
    std::unique_ptr<Ui::frmReport> ui_;
    GroupTreeModel* groups_ = nullptr;
    QSpinBox* page_box_ = nullptr;
    QLabel* zoom_label_ = nullptr;
    AskPrinter ask_printer_;
    bool following_ = false;
    bool pressed_current_ = false;  // the mouse went down on the group that was current
    bool operating_ = false;
};

}  // namespace zorvel
