#include "gui/text/lines_mime_data.h"

#include <string>
#include <utility>

#include "viewers/rich_lines_export.h"

namespace zorvel {
namespace {

constexpr char kPlain[] = "text/plain";
constexpr char kHtml[] = "text/html";
constexpr char kRtf[] = "text/rtf";
constexpr char kApplicationRtf[] = "application/rtf";  // the name that some word processors look for

QByteArray Bytes(const std::string& text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

}  // namespace

LinesMimeData::LinesMimeData(std::shared_ptr<const RichLines> lines, std::size_t begin, std::size_t end)
    : lines_(std::move(lines)), begin_(begin), end_(end) {}

QStringList LinesMimeData::formats() const {
    return {kPlain, kHtml, kRtf, kApplicationRtf};
}

bool LinesMimeData::hasFormat(const QString& type) const {
    return formats().contains(type);
}

QVariant LinesMimeData::retrieveData(const QString& type, QMetaType meta_type) const {
    if (type == kPlain) return QString::fromStdString(LinesAsText(*lines_, begin_, end_));
    if (type == kHtml) return QString::fromStdString(LinesAsHtml(*lines_, begin_, end_));
    if (type == kRtf || type == kApplicationRtf) return Bytes(LinesAsRtf(*lines_, begin_, end_));
    return QMimeData::retrieveData(type, meta_type);
}

}  // namespace zorvel
