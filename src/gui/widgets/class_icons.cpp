#include "gui/widgets/class_icons.h"

#include <array>
#include <utility>

#include "directory/directory.h"

namespace zorvel {
namespace {

// Class name and resource.
constexpr std::array<std::pair<std::string_view, const char*>, 6> kIcons = {{
    {kRootName, ":/icons/class_root.svg"},
    {"Organization", ":/icons/class_organization.svg"},
    {"Organizational Unit", ":/icons/class_organizational_unit.svg"},
    {"Country", ":/icons/class_country.svg"},
    {"Locality", ":/icons/class_locality.svg"},
    {kApplicationClass, ":/icons/class_application.svg"},
}};

}  // namespace

ClassIcons::ClassIcons() : default_(QStringLiteral(":/icons/class_default.svg")) {
    for (const auto& [name, file] : kIcons)
        icons_.emplace(name, QIcon(QLatin1String(file)));
}

const QIcon& ClassIcons::Of(std::string_view class_name) const {
    const auto icon = icons_.find(class_name);
    return icon == icons_.end() ? default_ : icon->second;
}

}  // namespace zorvel
