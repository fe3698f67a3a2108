// frmDocument: a document of the program, read-only, in a modal window.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace Ui {
class frmDocument;
}

namespace zorvel {

class DocumentSearch;

class frmDocument final : public QDialog {
    Q_OBJECT

  public:
    // Opens the address of a link with the desktop's program for it.
    using OpenLink = std::function<void(std::string_view address)>;

    // Reads the rich text file `path`. Raises error 53, 70, 75 or 76.
    frmDocument(const Files& files, std::string_view path, std::string_view caption, OpenLink open_link,
                QWidget* parent = nullptr);
    ~frmDocument() override;

  private:
    std::unique_ptr<Ui::frmDocument> ui_;
    std::unique_ptr<DocumentSearch> search_;
    OpenLink open_link_;
};

}  // namespace zorvel
