// zorvel_search_file make FILE MEGABYTES: writes streams in which no predefined search finds anything, each
// ended by a line feed, so that tools that read lines can search them, too.
// zorvel_search_file searches: prints the predefined searches, name TAB expression.
// zorvel_search_file search NAME FILE: searches the file's streams as Find does; prints how many match.
#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "find/predefined_searches.h"
#include "platform/error.h"
#include "platform/input_file.h"
#include "platform/output_file.h"
#include "platform/regex.h"
#include "search_streams.h"

namespace zorvel {
namespace {

constexpr std::size_t kStreamSize = 40'000;

void Make(const std::string& path, std::size_t megabytes) {
    constexpr std::size_t kMegabyte = 1'000'000;
    OutputFile file(path, path, OutputFile::Mode::kTruncate);
    for (std::size_t number = 0, written = 0; written < megabytes * kMegabyte; ++number) {
        const std::string stream = tools::StreamWithoutMatch(kStreamSize, number);
        file.Write(stream);
        file.Write('\n');
        written += stream.size();
    }
    file.Close();
}

void PrintSearches() {
    for (const PredefinedSearch& search : PredefinedSearches)
        std::cout << search.name << '\t' << search.expression << '\n';
}

std::size_t Search(std::string_view name, const std::string& path) {
    const auto* const search =
        std::find_if(PredefinedSearches.begin(), PredefinedSearches.end(),
                     [name](const PredefinedSearch& predefined) { return predefined.name == name; });
    if (search == PredefinedSearches.end()) throw Error(errors::kInvalidCall, "no such search");
    const Regex regex(search->expression);
    InputFile file(path, path);
    std::string stream;
    std::size_t matches = 0;
    for (std::string_view available = file.Available(); !available.empty(); available = file.Available()) {
        const std::size_t end = available.find('\n');
        stream += available.substr(0, end);
        file.Skip(std::min(end, available.size() - 1) + 1);
        if (end == std::string_view::npos) continue;
        matches += regex.Matches(stream) ? 1 : 0;
        stream.clear();
    }
    return matches;
}

int Run(const std::vector<std::string>& arguments) {
    try {
        if (arguments.size() == 3 && arguments[0] == "make") {
            Make(arguments[1], std::stoul(arguments[2]));
        } else if (arguments.size() == 1 && arguments[0] == "searches") {
            PrintSearches();
        } else if (arguments.size() == 3 && arguments[0] == "search") {
            std::cout << Search(arguments[1], arguments[2]) << '\n';
        } else {
            std::cerr << "usage: zorvel_search_file make FILE MEGABYTES | searches | search NAME FILE\n";
            return 2;
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "zorvel_search_file: " << error.what() << '\n';
        return 1;
    }
}

}  // namespace
}  // namespace zorvel

int main(int argument_count, char** arguments) {
    return zorvel::Run(std::vector<std::string>(arguments + 1, arguments + argument_count));
}
