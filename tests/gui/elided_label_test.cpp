// The label for texts of any length.
#include "gui/elided_label.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>

#include "gui/controls.h"
#include "gui/tool_tip.h"

namespace zorvel {
namespace {

// The tool tip as a user reads it.
std::string TipOf(ElidedLabel& label) {
    QHelpEvent help(QEvent::ToolTip, QPoint(1, 1), label.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&label, &help);
    return test::ShownTip(QToolTip::text());
}

TEST(ElidedLabel, NeedsLittleRoomAndTellsAllInItsToolTip) {
    const QString text = "Tools & <b>toys</b>." + QString("DEPARTMENT.").repeated(20) + "SITE";
    ElidedLabel label;
    label.setText(text);
    label.setTextFormat(Qt::PlainText);
    EXPECT_LT(label.minimumSizeHint().width(), label.sizeHint().width() / 4);
    label.resize(100, label.sizeHint().height());
    test::ShowActive(label);
    EXPECT_EQ(label.text(), text);
    EXPECT_LT(label.fontMetrics().horizontalAdvance(label.ShownText()), 101);
    EXPECT_EQ(TipOf(label), text.toStdString());
    label.resize(label.sizeHint());
    EXPECT_EQ(label.ShownText(), text);
}

}  // namespace
}  // namespace zorvel
