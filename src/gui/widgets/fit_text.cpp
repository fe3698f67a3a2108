#include "gui/widgets/fit_text.h"

#include <QLayout>
#include <QWidget>
#include <algorithm>

namespace zorvel {

void FitText(QWidget& window, int characters) {
    window.ensurePolished();
    QLayout& layout = *window.layout();
    layout.activate();
    const int width =
        std::max(characters * window.fontMetrics().averageCharWidth(), layout.minimumSize().width());
    window.setMinimumSize(width, layout.totalHeightForWidth(width));
    window.resize(window.minimumSize());
}

}  // namespace zorvel
