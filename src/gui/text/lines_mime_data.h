// A part of rich text lines on its way to another program.
#pragma once

#include <QMimeData>
#include <cstddef>
#include <memory>

#include "viewers/rich_lines.h"

namespace zorvel {

// Plain text, HTML and RTF of the part [begin, end). Each is made when somebody asks for it, so copying a
// long text costs nothing; until then the lines are kept.
class LinesMimeData final : public QMimeData {
    Q_OBJECT

  public:
    LinesMimeData(std::shared_ptr<const RichLines> lines, std::size_t begin, std::size_t end);

    QStringList formats() const override;
    bool hasFormat(const QString& type) const override;

  protected:
    QVariant retrieveData(const QString& type, QMetaType meta_type) const override;

  private:
    std::shared_ptr<const RichLines> lines_;
    std::size_t begin_;
    std::size_t end_;
};

}  // namespace zorvel
