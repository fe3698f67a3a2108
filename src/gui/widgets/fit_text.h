// The size of windows with word-wrapped text.
#pragma once

class QWidget;

namespace zorvel {

// Makes a window so many average characters wide and as high as its wrapped labels then need, and no smaller:
// left to itself a window would cut them off where the font is large.
void FitText(QWidget& window, int characters);

}  // namespace zorvel
