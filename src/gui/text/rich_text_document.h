// Rich text as a document of Qt, for views of some pages.
#pragma once

#include <QPalette>
#include <QRegularExpression>
#include <QTextCursor>
#include <QTextDocument>
#include <optional>

#include "viewers/rich_text.h"

namespace zorvel {

// Appends what it reads to an empty document. Web and mail addresses become links. Colours are those that can
// be read on the base of the palette.
class RichTextDocument final : public RichTextSink {
  public:
    // The document must outlive this.
    RichTextDocument(QTextDocument& document, const QPalette& palette);
    ~RichTextDocument() override;

    RichTextDocument(const RichTextDocument&) = delete;
    RichTextDocument& operator=(const RichTextDocument&) = delete;

    void Text(std::string_view utf8, const CharacterFormat& format) override;
    void EndParagraph(const ParagraphFormat& format) override;

  private:
    const QTextCharFormat& QtFormat(const CharacterFormat& format);
    void BeginBlock();
    void SetTabWidth();

    QTextDocument& document_;
    QPalette palette_;
    QTextCursor cursor_;
    std::optional<CharacterFormat> last_format_;
    QTextCharFormat qt_format_;  // of last_format_
    bool block_ended_ = false;
    QRegularExpression address_;
    int tab_width_;
};

}  // namespace zorvel
