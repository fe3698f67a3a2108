// The colours of rich text, which was written for white paper, on whatever the palette has.
#pragma once

#include <QColor>
#include <QPalette>
#include <optional>

#include "viewers/rich_text.h"

namespace zorvel {

QColor ToQColor(RichTextColour colour);

// The colour of text that has a colour, a background, both or none, on the base of `palette`. Text with both
// has its own colour; with a background alone it is black or white; on a dark base a colour that could not be
// read there becomes a light one of the same hue.
QColor TextColour(const std::optional<RichTextColour>& colour,
                  const std::optional<RichTextColour>& background, const QPalette& palette);

}  // namespace zorvel
