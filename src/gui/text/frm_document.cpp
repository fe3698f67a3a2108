#include "gui/text/frm_document.h"

#include <utility>

#include "gui/text/document_search.h"
#include "gui/text/rich_text_document.h"
#include "gui/widgets/qt_text.h"
#include "ui_frm_document.h"

namespace zorvel {

frmDocument::frmDocument(const Files& files, std::string_view path, std::string_view caption,
                         OpenLink open_link, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmDocument>()), open_link_(std::move(open_link)) {
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(ToQString(caption));
    QTextBrowser& browser = *ui_->txtDocument;
    browser.setAccessibleName(windowTitle());
    constexpr double kPageMargin = 16;
    browser.document()->setDocumentMargin(kPageMargin);
    {
        RichTextDocument document(*browser.document(), browser.palette());
        ReadRichTextFile(files, path, document);
    }
    browser.moveCursor(QTextCursor::Start);  // the text before which it stood has moved it on
    search_ = std::make_unique<DocumentSearch>(browser);
    ui_->barSearch->Serve(*search_, browser, *this);
    connect(&browser, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& url) { open_link_(FromQString(url.toString(QUrl::FullyEncoded))); });
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::accept);
    constexpr int kCharacters = 110;
    constexpr int kLines = 34;
    resize(kCharacters * fontMetrics().averageCharWidth(), kLines * fontMetrics().lineSpacing());
}

frmDocument::~frmDocument() = default;

}  // namespace zorvel
