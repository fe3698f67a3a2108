// Which of its classes an object is known by.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "directory/schema.h"
#include "directory/text_map.h"

namespace zorvel {

// The classes that an object can be known by have ranks. Of an object's objectClass values, the one of the
// first rank names its class, or else the last of them.
class ObjectClassChoice {
  public:
    // The schema must live as long.
    explicit ObjectClassChoice(const Schema& schema) : schema_(schema) {}

    // Forgets the values of the object before.
    void Start() { best_ = nullptr; }
    // Takes one objectClass value of the object.
    void Take(std::string_view ldap_name);
    // The NDS name of the object's class; "Unknown" when it has no value.
    const std::string& Class() const;

  private:
    struct Candidate {
        std::size_t rank;
        std::string name;
    };

    const Schema& schema_;
    TextMap<Candidate> candidates_;  // by the text of an objectClass value
    const Candidate* best_ = nullptr;
};

// The class of objects that say nothing of theirs.
inline constexpr std::string_view kUnknownClass = "Unknown";

// The class of a container of the RDN type `type`, for objects that nothing else is known of.
std::string_view ContainerClass(std::string_view type);

}  // namespace zorvel
