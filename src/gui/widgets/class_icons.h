// The icons of directory objects, by their class.
#pragma once

#include <QIcon>
#include <map>
#include <string_view>

namespace zorvel {

class ClassIcons {
  public:
    ClassIcons();

    // The icon of a class by its directory name ("Organizational Unit"); one of its own for all that have
    // none.
    const QIcon& Of(std::string_view class_name) const;

  private:
    std::map<std::string_view, QIcon> icons_;
    QIcon default_;
};

}  // namespace zorvel
