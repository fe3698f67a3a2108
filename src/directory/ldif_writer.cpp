#include "directory/ldif_writer.h"

#include <lber.h>
#include <ldif.h>

#include <memory>
#include <new>
#include <string>

namespace zorvel {

LdifWriter::LdifWriter(OutputFile& file) : file_(file) {
    file_.Write("version: 1\n");
}

void LdifWriter::Comment(std::string_view utf8_text) {
    std::string line(utf8_text);
    for (char& character : line) {
        if (character == '\n' || character == '\r') character = ' ';
    }
    file_.Write("# " + line + '\n');
}

void LdifWriter::BeginRecord(std::string_view dn) {
    file_.Write('\n');
    Value("dn", dn);
}

void LdifWriter::Value(std::string_view attribute, std::string_view value) {
    const std::unique_ptr<char, decltype(&ber_memfree)> line(
        ldif_put(LDIF_PUT_VALUE, std::string(attribute).c_str(), value.data(),
                 static_cast<ber_len_t>(value.size())),
        ber_memfree);
    if (!line) throw std::bad_alloc();
    file_.Write(line.get());
}

}  // namespace zorvel
