// The statements that the store gathers for one write.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace zorvel::store_detail {

// What a group has executed so far, each statement with the values of its execution. They are kept flat, so
// that the group takes the memory of its texts and little more.
class StatementGroup {
  public:
    void Add(std::shared_ptr<SQLite::Statement> statement, std::span<const std::string> values) {
        entries_.push_back({std::move(statement), lengths_.size(), texts_.size()});
        for (const std::string& value : values) {
            lengths_.push_back(value.size());
            texts_ += value;
        }
    }
    // Takes the statement added last out again; there must be one.
    void RemoveLast() {
        lengths_.resize(entries_.back().first_length);
        texts_.resize(entries_.back().first_text);
        entries_.pop_back();
    }
    void Clear() {
        entries_.clear();
        lengths_.clear();
        texts_.clear();
    }
    std::size_t size() const { return entries_.size(); }
    // True when the group is to be written before it grows further.
    bool IsFull() const { return entries_.size() >= kGroupStatements || texts_.size() >= kGroupBytes; }

    // The statement number `index`, from 0 to size() - 1, and its values.
    SQLite::Statement& StatementAt(std::size_t index) const { return *entries_[index].statement; }
    std::vector<std::string> ValuesAt(std::size_t index) const {
        const std::size_t end =
            index + 1 < entries_.size() ? entries_[index + 1].first_length : lengths_.size();
        std::vector<std::string> values;
        std::size_t at = entries_[index].first_text;
        for (std::size_t i = entries_[index].first_length; i < end; at += lengths_[i++]) {
            values.push_back(texts_.substr(at, lengths_[i]));
        }
        return values;
    }

  private:
    // A group is written when it has reached either size: large enough that the writes hardly count, small
    // enough that it takes little memory and that a program killed in the middle of it loses little.
    static constexpr std::size_t kGroupStatements = 50'000;
    static constexpr std::size_t kGroupBytes = 8'000'000;

    struct Entry {
        std::shared_ptr<SQLite::Statement> statement;
        std::size_t first_length;  // of its values, in lengths_
        std::size_t first_text;    // of its values, in texts_
    };

    std::vector<Entry> entries_;
    std::vector<std::size_t> lengths_;
    std::string texts_;
};

}  // namespace zorvel::store_detail
