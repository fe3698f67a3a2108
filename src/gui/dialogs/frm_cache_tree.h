// The progress window of a tree that is read from the directory.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <string_view>

#include "gui/widgets/paced_update.h"

namespace Ui {
class frmCacheTree;
}

namespace zorvel {

// The user cannot close it; it stays until CloseCacheTree.
class frmCacheTree final : public QDialog {
    Q_OBJECT

  public:
    explicit frmCacheTree(QWidget* parent = nullptr);
    ~frmCacheTree() override;

    // Shows the window, without blocking, with its first texts.
    void ShowCacheTree(std::string_view title);
    // The value labels. They may be set for every container of a large tree: what is shown follows at most 20
    // times a second.
    void SetLabOU(std::string_view text);
    void SetLabOUCount(std::string_view text);
    void SetLabApps(std::string_view text);
    void SetLabElapsed(std::string_view text);
    // Shows the values as they were last set.
    void Flush() { labels_.Flush(); }
    void CloseCacheTree();

    void reject() override {}

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void Set(std::string& value, std::string_view text);
    void ShowLabels();

    std::unique_ptr<Ui::frmCacheTree> ui_;
    std::string first_ou_;  // before the first container is read
    std::string ou_;
    std::string ou_count_;
    std::string apps_;
    std::string elapsed_;
    PacedUpdate labels_;
};

}  // namespace zorvel
