// Reads the records of an LDIF file (RFC 2849) front to back; never more than one attribute value is held in
// memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "directory/byte_buffer.h"
#include "platform/input_file.h"

namespace zorvel {

// One line of a record: a value of an attribute. The texts are valid until the reader moves on.
struct LdifAttribute {
    std::string_view name;  // as spelled, without options
    std::string_view value;
    std::int64_t line = 0;  // the physical line on which it begins
};

// Every operation raises error 600 for what is not LDIF, with the detail "file, line N: " and the reason; N
// counts physical lines from 1. A read error raises error 75.
class LdifReader {
  public:
    // The files that its URLs name must lie in the folder of `path`, where the file itself lies, or below it.
    explicit LdifReader(InputFile file, std::filesystem::path path = {});

    // Moves to the next record, past what is left of the current one; false at the end of the file.
    bool NextRecord();
    // The DN of the current record, decoded but not parsed, and the line on which it begins.
    const std::string& dn() const { return dn_; }
    std::int64_t dn_line() const { return dn_line_; }
    // Reads the next value of the current record; false when there is none left.
    bool NextAttribute(LdifAttribute& attribute);
    // The value that NextAttribute just gave, in its buffer instead of a copy. The texts of `attribute` are
    // gone then.
    ByteBuffer TakeValue(const LdifAttribute& attribute);

    // Raises error 600 for something wrong on `line` of the file.
    [[noreturn]] void Fail(std::int64_t line, std::string_view reason) const;

    const std::string& name() const { return file_.name(); }

  private:
    enum class Line { kText, kBlank, kEnd };
    enum class ValueForm { kPlain, kBase64, kUrl };

    Line ReadLine();
    void TakePhysicalLine(bool keep);
    void ParseLine();
    std::string_view Value();
    std::string_view UrlValue(std::size_t at);
    std::filesystem::path FileOfUrl(std::string_view url) const;
    std::int64_t LineAt(std::size_t offset) const;

    InputFile file_;
    std::filesystem::path path_;
    std::int64_t next_line_ = 1;  // the number of the physical line to be read next

    // The current line, unfolded, and where in it each continuation began: numbers, each the distance from
    // the one before.
    ByteBuffer line_;
    ByteBuffer folds_;
    std::int64_t first_line_ = 0;
    std::string_view field_;  // its name without options
    ValueForm form_ = ValueForm::kPlain;
    std::size_t value_at_ = 0;
    ByteBuffer url_value_;

    bool in_record_ = false;
    bool has_attributes_ = false;
    std::string dn_;
    std::int64_t dn_line_ = 0;
};

}  // namespace zorvel
