// What the user is told of an error: its number, its description and where it struck.
#include "platform/error.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <new>

namespace zorvel {
namespace {

TEST(Errors, SayWhereTheyStruckAndWhatTheyAre) {
    const Error plain(errors::kOverflow);
    EXPECT_EQ(plain.detail(), "");
    EXPECT_EQ(plain.Reason(), "Overflow");
    EXPECT_EQ(plain.Within("o=A").Reason(), "o=A: Overflow");
    const Error detailed = plain.With("line 3: too long");
    EXPECT_EQ(detailed.Reason(), "line 3: too long");
    EXPECT_EQ(detailed.At("a\\b").Reason(), "a\\b: Overflow");
    EXPECT_EQ(detailed.Within("o=A").Within("T1").Reason(), "T1: o=A: line 3: too long");
    EXPECT_EQ(detailed.number(), errors::kOverflow);
    EXPECT_EQ(detailed.description(), "Overflow");
    EXPECT_EQ(Error(7, "a text of its own").At("x").Reason(), "x: a text of its own");
    EXPECT_TRUE(OutputError(plain).Within("x").IsOutputError());
    EXPECT_FALSE(plain.IsOutputError());
    EXPECT_EQ(CutForMessage(std::string(200, 'x')), std::string(200, 'x'));
    EXPECT_EQ(CutForMessage(std::string(201, 'x')), std::string(197, 'x') + "...");
}

TEST(Errors, NumbersHaveTheirTexts) {
    using Text = std::pair<std::int32_t, const char*>;
    for (const auto& [number, text] :
         {Text{5, "Invalid procedure call or argument"}, Text{6, "Overflow"}, Text{7, "Out of memory"},
          Text{9, "Subscript out of range"}, Text{13, "Type mismatch"}, Text{51, "Internal error"},
          Text{53, "File not found"}, Text{58, "File already exists"}, Text{61, "Disk full"},
          Text{62, "Input past end of file"}, Text{70, "Permission denied"},
          Text{75, "Path/File access error"}, Text{76, "Path not found"},
          Text{430, "Class does not support Automation or does not support expected interface"},
          Text{600, "The directory could not be read"}, Text{601, "The object does not exist"},
          Text{603, "The attribute has no value"}, Text{0, "Application-defined or object-defined error"}}) {
        EXPECT_EQ(Error(number).description(), text);
    }
    using Code = std::pair<int, std::int32_t>;
    for (const auto& [code, number] :
         {Code{ENOENT, 53}, Code{ENOTDIR, 76}, Code{ENOSPC, 61}, Code{EDQUOT, 61}, Code{EFBIG, 61},
          Code{EACCES, 70}, Code{EPERM, 70}, Code{EISDIR, 75}, Code{EIO, 75}, Code{EROFS, 75}}) {
        EXPECT_EQ(FileError(code, "a\\b").number(), number) << code;
        EXPECT_EQ(FileError(code, "a\\b").detail(), "a\\b: " + DescriptionOf(number));
    }
}

TEST(Errors, AnyExceptionBecomesOne) {
    const auto caught = [](const auto& exception) {
        try {
            throw exception;
        } catch (...) {
            return CurrentError();
        }
    };
    EXPECT_EQ(caught(Error(53).At("x")).Reason(), "x: File not found");
    EXPECT_TRUE(caught(OutputError(Error(61))).IsOutputError());
    EXPECT_EQ(caught(std::bad_alloc()).number(), errors::kOutOfMemory);
    EXPECT_EQ(caught(std::length_error("what")).number(), errors::kInternal);
    EXPECT_EQ(caught(std::length_error("what")).Reason(), "what");
}

}  // namespace
}  // namespace zorvel
