#include "directory/directory.h"

#include "directory/names.h"

namespace zorvel {

std::string RootPath(std::string_view tree) {
    return JoinPath(tree, kRootName);
}

}  // namespace zorvel
