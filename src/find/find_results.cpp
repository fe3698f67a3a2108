#include "find/find_results.h"

#include <array>

namespace zorvel {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
// Font 2 is the Courier and colour 1 the dark red of these tables.
constexpr std::array<std::string_view, 8> kHeader = {
    R"({\rtf1\ansi\deff0\deftab720)",
    R"({\fonttbl)",
    R"({\f0\fswiss MS Sans Serif;})",
    R"({\f1\froman\fcharset2 Symbol;})",
    R"({\f2\fmodern\fprq1 Courier;})",
    R"({\f3\froman Times New Roman;}})",
    R"({\colortbl\red0\green0\blue0;\red128\green0\blue0;\red255\green0\blue0;})",
    R"(\deflang2057\pard)",
};
constexpr std::string_view kHeadingStyle = R"(\plain\f2\fs20)";
constexpr std::string_view kEntryStyle = R"(\plain\f2\fs20\cf1\b  )";
constexpr std::string_view kParagraphEnd = R"(\par)";

// True when `text` behind a control word's number would be taken for a part of it: a digit continues the
// number, a blank ends the word and is not shown.
bool RunsIntoNumber(std::string_view text) {
    return !text.empty() && (text.front() == ' ' || (text.front() >= '0' && text.front() <= '9'));
}

}  // namespace

FindResults::FindResults(const Files& files) : files_(files), path_(files.Path("TempData\\Zorvel.$$$")) {}

void FindResults::Create() {
    file_.reset();
    OutputFile file = files_.Create(path_);
    for (const std::string_view line : kHeader) {
        file.Write(line);
        file.Write(kLineEnd);
    }
    file.Close();
}

void FindResults::BeginStream(std::string_view application_name, std::string_view stream_label) {
    EndStream();
    application_name_ = application_name;
    stream_label_ = stream_label;
}

void FindResults::AddEntry(std::string_view entry_text) {
    if (!file_) {
        file_ = files_.Append(path_);
        WriteHeading();
    }
    line_ = kEntryStyle;
    for (const char character : entry_text) {
        if (character == '\\') line_ += '\\';
        line_ += character;
    }
    line_ += kParagraphEnd;
    line_ += kLineEnd;
    file_->Write(line_);
}

void FindResults::WriteHeading() {
    line_ = kHeadingStyle;
    if (RunsIntoNumber(application_name_)) line_ += ' ';
    line_ += application_name_;
    line_ += " - ";
    line_ += stream_label_;
    line_ += kParagraphEnd;
    line_ += kLineEnd;
    file_->Write(line_);
}

void FindResults::EndStream() {
    if (!file_) return;
    OutputFile file = *std::move(file_);
    file_.reset();
    file.Close();
}

void FindResults::Finish() {
    EndStream();
    OutputFile file = files_.Append(path_);
    file.Write("}");
    file.Write(kLineEnd);
    file.Close();
}

}  // namespace zorvel
