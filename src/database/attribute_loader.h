// Loads the records of the attribute file: the applications themselves, and their attributes.
#pragma once

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "database/key_allocator.h"
#include "database/row_insert.h"
#include "platform/store.h"

namespace zorvel {

class AttributeLoader {
  public:
    // `dataset` must outlive the object.
    explicit AttributeLoader(const Database& dataset);

    // Loads one record: full name, attribute, value. An application that has no row yet gets one; the
    // attributes of one that is met again go to its row. Raises 0x80004005 when a statement fails, error 6
    // for a flags value outside 32 bits.
    void Add(const std::vector<std::string>& record);

  private:
    void EnterApplication(const std::string& full_name);
    Command& UpdateOf(const std::string& assignments);

    const Database& dataset_;
    KeyAllocator keys_;
    Command find_;
    Command insert_;
    RowInsert insert_detail_;
    std::unordered_map<std::string, Command> updates_;  // by their assignments
    std::string full_name_;
    std::array<std::string, 2> row_;  // the texts that find the application's row
    std::string key_;
};

}  // namespace zorvel
