// The welcome window and the icons.
#include <QDir>
#include <QImage>
#include <set>

#include "gui/controls.h"
#include "gui/dialogs/frm_welcome.h"
#include "gui/widgets/class_icons.h"

namespace zorvel {
namespace {

TEST(Welcome, IsSuppressedWhenTheUserTicksSo) {
    const struct {
        bool ticked;
        Qt::Key closing;
    } cases[] = {{false, Qt::Key_Return}, {true, Qt::Key_Return}, {true, Qt::Key_Escape}};
    for (const auto& c : cases) {
        frmWelcome window;
        test::ShowActive(window);
        if (c.ticked) {
            QTest::mouseClick(window.findChild<QCheckBox*>("checkSuppress"), Qt::LeftButton, {}, {8, 8});
        }
        test::PressKey(c.closing);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(window.suppress(), c.ticked);
    }
}

TEST(Welcome, CutsNoTextOffHoweverSmallItIsMade) {
    frmWelcome window;
    window.show();
    window.resize(1, 1);
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (!label->wordWrap()) continue;
        EXPECT_GE(label->height(), label->heightForWidth(label->width()))
            << label->objectName().toStdString();
    }
}

// The pixels of an icon at the size of a tree's or a tool button's.
QImage Pixels(const QIcon& icon) {
    return icon.pixmap(QSize(16, 16)).toImage().convertToFormat(QImage::Format_ARGB32);
}

TEST(ClassIcons, EveryContainerClassHasItsOwn) {
    const ClassIcons icons;
    std::vector<QImage> seen;
    for (const char* name : {"[Root]", "Organization", "Organizational Unit", "Country", "Locality",
                             "App:Application", "User"}) {
        const QImage pixels = Pixels(icons.Of(name));
        for (const QImage& other : seen)
            EXPECT_NE(pixels, other) << name;
        seen.push_back(pixels);
    }
    EXPECT_EQ(Pixels(icons.Of("Group")), seen.back());
}

// Enough of each drawing must stand out from light and dark grounds alike.
TEST(Icons, AreSeenOnLightAndDarkGrounds) {
    const QStringList names = QDir(":/icons").entryList();
    ASSERT_FALSE(names.isEmpty()) << "the icons are not linked in";
    for (const QString& name : names) {
        const QImage pixels = Pixels(QIcon(":/icons/" + name));
        for (const int ground : {239, 42}) {
            int seen = 0;
            for (int y = 0; y < pixels.height(); ++y) {
                for (int x = 0; x < pixels.width(); ++x) {
                    const QRgb pixel = pixels.pixel(x, y);
                    const int contrast = std::abs(qGray(pixel) - ground) * qAlpha(pixel) / 255;
                    seen += contrast > 40 ? 1 : 0;
                }
            }
            EXPECT_GE(seen, 30) << name.toStdString() << " on " << ground;
        }
    }
}

}  // namespace
}  // namespace zorvel
