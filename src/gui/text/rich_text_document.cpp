#include "gui/text/rich_text_document.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QTextBlockFormat>

#include "gui/text/rich_text_colours.h"

namespace zorvel {
namespace {

// Twips as the device-independent pixels in which documents are laid out.
double Pixels(int twips) {
    constexpr double kTwipsAnInch = 1440;
    constexpr double kPixelsAnInch = 96;
    return twips * kPixelsAnInch / kTwipsAnInch;
}

// The families to look for, best first.
QStringList Families(const RichTextFont& font) {
    QStringList families;
    if (!font.name.empty()) families << QString::fromStdString(font.name);
    if (font.family == FontFamily::kModern)
        families = {QFontDatabase::systemFont(QFontDatabase::FixedFont).family()};
    return families;
}

QFont::StyleHint Hint(FontFamily family) {
    switch (family) {
        case FontFamily::kRoman:
            return QFont::Serif;
        case FontFamily::kSwiss:
            return QFont::SansSerif;
        case FontFamily::kModern:
            return QFont::Monospace;
        case FontFamily::kUnknown:
            break;
    }
    return QFont::AnyStyle;
}

Qt::Alignment ToQt(Alignment alignment) {
    switch (alignment) {
        case Alignment::kCentre:
            return Qt::AlignHCenter;
        case Alignment::kRight:
            return Qt::AlignRight;
        case Alignment::kLeft:
            break;
    }
    return Qt::AlignLeft;
}

// A web or mail address, without the full stop, comma or bracket that follows it in a sentence.
constexpr char16_t kAddress[] = uR"((?:https?://|mailto:)[^\s<>"{}]*[^\s<>"{}.,;:!?)\]'])";

}  // namespace

RichTextDocument::RichTextDocument(QTextDocument& document, const QPalette& palette)
    : document_(document),
      palette_(palette),
      cursor_(&document),
      address_(QString::fromUtf16(kAddress)),
      tab_width_(ParagraphFormat{}.tab_width) {
    SetTabWidth();
    document_.setUndoRedoEnabled(false);
    cursor_.beginEditBlock();
}

RichTextDocument::~RichTextDocument() {
    cursor_.endEditBlock();
}

const QTextCharFormat& RichTextDocument::QtFormat(const CharacterFormat& format) {
    if (last_format_ == format) return qt_format_;
    last_format_ = format;
    qt_format_ = {};
    const QStringList families = Families(*format.font);
    if (!families.empty()) qt_format_.setFontFamilies(families);
    qt_format_.setFontStyleHint(Hint(format.font->family));
    qt_format_.setFontPointSize(format.half_points / 2.0);
    if (format.bold) qt_format_.setFontWeight(QFont::Bold);
    qt_format_.setFontItalic(format.italic);
    qt_format_.setFontUnderline(format.underline);
    qt_format_.setForeground(TextColour(format.colour, format.background, palette_));
    if (format.background) qt_format_.setBackground(ToQColor(*format.background));
    return qt_format_;
}

void RichTextDocument::SetTabWidth() {
    QTextOption option = document_.defaultTextOption();
    option.setTabStopDistance(Pixels(tab_width_));
    document_.setDefaultTextOption(option);
}

void RichTextDocument::BeginBlock() {
    if (block_ended_) cursor_.insertBlock(QTextBlockFormat(), QTextCharFormat());
    block_ended_ = false;
}

void RichTextDocument::Text(std::string_view utf8, const CharacterFormat& format) {
    BeginBlock();
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    const QTextCharFormat& plain = QtFormat(format);
    qsizetype begin = 0;
    for (auto matches = address_.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedStart() > begin)
            cursor_.insertText(text.mid(begin, match.capturedStart() - begin), plain);
        QTextCharFormat link = plain;
        link.setAnchor(true);
        link.setAnchorHref(match.captured());
        link.setForeground(palette_.link());
        link.setFontUnderline(true);
        cursor_.insertText(match.captured(), link);
        begin = match.capturedEnd();
    }
    if (begin < text.size()) cursor_.insertText(text.mid(begin), plain);
}

void RichTextDocument::EndParagraph(const ParagraphFormat& format) {
    BeginBlock();
    QTextBlockFormat block;
    block.setAlignment(ToQt(format.alignment));
    block.setLeftMargin(Pixels(format.left_indent));
    block.setTextIndent(Pixels(format.first_indent));
    block.setTopMargin(Pixels(format.space_before));
    block.setBottomMargin(Pixels(format.space_after));
    if (format.first_indent < 0)
        // The text behind a hanging bullet begins where the lines below it do.
        block.setTabPositions({QTextOption::Tab(Pixels(-format.first_indent), QTextOption::LeftTab)});
    cursor_.setBlockFormat(block);
    if (format.tab_width != tab_width_) {
        tab_width_ = format.tab_width;
        SetTabWidth();
    }
    block_ended_ = true;
}

}  // namespace zorvel
