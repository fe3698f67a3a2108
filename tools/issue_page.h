// docs/issues.md, made from the catalogue of issues.
#pragma once

#include <string>

namespace zorvel::tools {

// The page as Markdown.
std::string IssuePage();

}  // namespace zorvel::tools
