// Searching a report: its values as they are displayed, the headings of its groups and the notes below them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reporting/page_canvas.h"
#include "reporting/report.h"
#include "viewers/text_search.h"

namespace zorvel {

class ReportSearch {
  public:
    struct Match {
        MarkedText text;
        bool wrapped = false;  // it was come by from the other end of the report
    };

    // The report must outlive the object.
    explicit ReportSearch(const Report& report);

    // The first match that begins at a place or behind it, else the first of all.
    std::optional<Match> Next(const TextSearch& needle, const TextPlace& from) const;
    // The last match that ends at a place or ahead of it, else the last of all.
    std::optional<Match> Previous(const TextSearch& needle, const TextPlace& before) const;
    std::size_t Count(const TextSearch& needle) const;

    // The text that is displayed at a place, from its beginning; lies in the report or in `scratch`. Empty
    // where a value is left out because it repeats the one above it.
    std::string_view TextOf(const TextPlace& place, std::string& scratch) const;

  private:
    // All texts are numbered in the order of the report: the heading and the note of each group ahead of its
    // rows, the columns of each row.
    std::size_t size() const;
    std::size_t NumberOf(const TextPlace& place) const;
    TextPlace PlaceOf(std::size_t number) const;
    std::optional<Match> FirstIn(const TextSearch& needle, std::size_t begin, std::size_t end) const;
    std::optional<Match> LastIn(const TextSearch& needle, std::size_t begin, std::size_t end) const;

    const Report& report_;
    std::size_t columns_;
    std::vector<std::size_t> headings_;  // the number of each group's heading
};

}  // namespace zorvel
