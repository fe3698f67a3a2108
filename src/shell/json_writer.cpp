#include "shell/json_writer.h"

#include <cstddef>
#include <string>

#include "platform/hex.h"

namespace zorvel {

JsonWriter::JsonWriter(OutputFile& file) : file_(file) {
    spelling_.SpellControls([](std::size_t code) {
        std::string text = "\\u00";
        AppendHex(text, static_cast<unsigned char>(code));
        return text;
    });
    spelling_.Spell('"', "\\\"");
    spelling_.Spell('\\', "\\\\");
    spelling_.Spell('\t', "\\t");
    spelling_.Spell('\n', "\\n");
    spelling_.Spell('\r', "\\r");
}

void JsonWriter::Write(std::string_view text) {
    file_.Write('"');
    spelling_.Write(text, file_);
    file_.Write('"');
}

void JsonWriter::WriteKey(std::string_view name) {
    Write(name);
    file_.Write(": ");
}

}  // namespace zorvel
