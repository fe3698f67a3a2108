#include "shell/text_records.h"

#include <gmock/gmock.h>

#include "platform/files.h"
#include "support/errors.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

using testing::ElementsAre;

class TextRecords : public testing::Test {
  protected:
    InputFile Open(std::string_view bytes) {
        folder_.Write("file", bytes);
        return files_.Open(files_.Path("file"));
    }

    std::vector<std::string> Fields(std::string_view bytes, FieldRules rules = {}) {
        FieldReader reader(Open(bytes), rules);
        std::vector<std::string> fields;
        while (!reader.AtEnd())
            fields.push_back(reader.Next());
        return fields;
    }

    std::vector<std::string> Lines(std::string_view bytes, LineEnd end) {
        LineReader reader(Open(bytes), end);
        std::vector<std::string> lines;
        for (std::string line; reader.Next(line);)
            lines.push_back(line);
        return lines;
    }

    test::TempFolder folder_;
    Files files_{folder_.path()};
};

TEST_F(TextRecords, FieldsEndAtCommasAndLinesUnlessTheyAreQuoted) {
    EXPECT_THAT(Fields("a,b\r\nc\rd\ne"), ElementsAre("a", "b", "c", "d", "e"));
    EXPECT_THAT(Fields("  a b ,\"x,\ny\" , 3\r\n"), ElementsAre("a b ", "x,\ny", "3"));
    EXPECT_THAT(Fields("\r\n\r\na"), ElementsAre("", "", "a"));
    EXPECT_THAT(Fields("\"open to the end"), ElementsAre("open to the end"));
    EXPECT_THAT(Fields("\"a\"b\""), ElementsAre("a", "b\""));  // quotes are not escaped here
}

TEST_F(TextRecords, DataRowsGiveBackQuotesAndLoseBlanksAroundNumbers) {
    const FieldRules rules{.doubled_quotes = true, .drop_trailing_blanks = true};
    EXPECT_THAT(Fields("\"say \"\"hi\"\"\",\"\", 12 ,x\r\n", rules),
                ElementsAre("say \"hi\"", "", "12", "x"));
    const std::string hard = "a\"b,c\nd\"";
    EXPECT_THAT(Fields(QuotedDoubling(hard) + ",1\r\n", rules), ElementsAre(hard, "1"));
}

TEST_F(TextRecords, ReadersTellWhatEndedAFieldOrALine) {
    FieldReader fields(Open("a,\"b\" \r\n\"c\"d\n,e"), {.doubled_quotes = true});
    std::vector<FieldEnd> ends;
    while (!fields.AtEnd()) {
        fields.Next();
        ends.push_back(fields.end());
    }
    EXPECT_THAT(ends, ElementsAre(FieldEnd::kComma, FieldEnd::kLine, FieldEnd::kText, FieldEnd::kLine,
                                  FieldEnd::kComma, FieldEnd::kFile));
    LineReader lines(Open("a\rb\r\nc"), LineEnd::kCarriageReturn);
    for (const bool ended : {true, true, false}) {
        std::string line;
        EXPECT_TRUE(lines.Next(line));
        EXPECT_EQ(lines.line_ended(), ended) << line;
    }
}

TEST_F(TextRecords, AShortFileIsAnErrorThatNamesItsLine) {
    FieldReader reader(Open("a\r\n\"b\nc\"\r\n12\r\n"));
    EXPECT_EQ(reader.NextLine(), "a");
    EXPECT_EQ(reader.Next(), "b\nc");
    EXPECT_EQ(reader.NextNumber(), 12);
    const Error error = test::RaisedBy([&reader] { reader.Next(); });
    EXPECT_EQ(error.number(), errors::kPastEndOfFile);
    EXPECT_THAT(error.detail(), testing::HasSubstr("file, line 4"));
}

TEST_F(TextRecords, LinesOfDataFilesKeepTheirLineFeeds) {
    EXPECT_THAT(Lines("a\nb\r\n\r\nc\rd", LineEnd::kCarriageReturn), ElementsAre("a\nb", "", "c", "d"));
    EXPECT_THAT(Lines("a\nb\r\n\r\nc\rd\n", LineEnd::kAny), ElementsAre("a", "b", "", "c", "d"));
}

TEST_F(TextRecords, LinesAreWholeWhereverTheBufferEnds) {
    const std::string first(InputFile::kBufferSize - 1,
                            'x');  // CR is the buffer's last byte, LF the next one's first
    EXPECT_THAT(Lines(first + "\r\nb\r\n", LineEnd::kCarriageReturn), ElementsAre(first, "b"));
    const std::string longer(3 * InputFile::kBufferSize + 5, 'y');
    EXPECT_THAT(Lines(longer + "\r\n" + longer, LineEnd::kAny), ElementsAre(longer, longer));
}

TEST_F(TextRecords, AValueWithCarriageReturnsStaysOneLine) {
    OutputFile out = files_.Create(files_.Path("out"));
    WriteFieldLine(out, "a\r\nb\rc\nd\r");
    WriteFieldLine(out, "\r\r\n");
    out.Close();
    EXPECT_EQ(folder_.Read("out"), "a\nb\nc\nd\n\r\n\n\n\r\n");
    LineReader reader(files_.Open(files_.Path("out")), LineEnd::kCarriageReturn);
    std::string line;
    ASSERT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "a\nb\nc\nd\n");
}

}  // namespace
}  // namespace zorvel
