// One INSERT statement of the import, executed once a record.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "database/sql_text.h"
#include "platform/store.h"

namespace zorvel {

// How a field of a record becomes a value of its statement.
enum class ValueForm {
    kEscaped,  // a text literal, apostrophes doubled before the cut
    kAsIs,     // a text literal around the text as it stands; a single apostrophe makes the statement fail
    kBare,     // the text as it stands, which has to be a number
    kInteger,  // the number that the text begins with, rounded
};

struct ValueRule {
    ValueForm form;
    std::size_t cut = kUncut;    // characters kept
    std::string_view name = {};  // of the field, for errors: of those that an apostrophe makes fail
};

class RowInsert {
  public:
    // `prefix` is the statement up to and including "VALUES ("; the key comes first, then one value a rule,
    // made from the record's fields from the second on. Both must outlive the object.
    RowInsert(const Database& dataset, std::string_view prefix, std::span<const ValueRule> rules);

    // Executes the statement. Raises 0x80004005 when it fails, or when a value does not stay within its place
    // in it.
    void Insert(const std::string& key, const std::vector<std::string>& record);

  private:
    std::string StatementText(const std::string& key, const std::vector<std::string>& record) const;

    const Database& dataset_;
    std::string_view prefix_;
    std::span<const ValueRule> rules_;
    Command command_;
    std::vector<std::string> values_;
};

}  // namespace zorvel
