// The two parts of an application's full name, which together are its key in the application table.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

struct ApplicationName {
    std::string application;
    std::string container;
};

// The full name split at its first "." that no "\" escapes; the application's own name loses its escapes
// ("Reader 7\.0" becomes "Reader 7.0"). Without such a ".", or with one as the first character, both parts
// are the whole name.
ApplicationName SplitApp(std::string_view full_name);

// The full name of an application of the application table: its own name, with its escapes, and its
// container's.
std::string FullNameOf(const ApplicationName& name);

}  // namespace zorvel
