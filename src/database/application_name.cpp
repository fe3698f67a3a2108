#include "database/application_name.h"

namespace zorvel {
namespace {

constexpr std::string_view kEscapedDot = "\\.";

std::string WithoutEscapes(std::string_view name) {
    std::string plain;
    for (std::size_t at = 0; at < name.size(); ++at) {
        if (name.substr(at).starts_with(kEscapedDot)) ++at;
        plain += name[at];
    }
    return plain;
}

}  // namespace

ApplicationName SplitApp(std::string_view full_name) {
    std::size_t dot = full_name.find('.');
    while (dot != std::string_view::npos && dot > 0 && full_name[dot - 1] == '\\')
        dot = full_name.find('.', dot + 1);
    if (dot == std::string_view::npos || dot == 0) return {WithoutEscapes(full_name), std::string(full_name)};
    return {WithoutEscapes(full_name.substr(0, dot)), std::string(full_name.substr(dot + 1))};
}

std::string FullNameOf(const ApplicationName& name) {
    std::string full_name;
    for (const char character : name.application) {
        if (character == '.') full_name += '\\';
        full_name += character;
    }
    return full_name + '.' + name.container;
}

}  // namespace zorvel
