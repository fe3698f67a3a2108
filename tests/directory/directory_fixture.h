// A program folder with one LDIF tree, TREE, and the bundled schema.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/open_directory.h"
#include "support/errors.h"
#include "support/fakes.h"
#include "support/program_folder.h"

namespace zorvel::test {

struct DirectoryFixture {
    TestShell shell;
    std::unique_ptr<TreeDirectory> opened = OpenDirectory(shell.files, shell.log);
    TreeDirectory& directory = *opened;

    // Lets the session see TREE with this LDIF; the root is the current object.
    explicit DirectoryFixture(std::string_view ldif) {
        AddSchema(shell.folder);
        shell.folder.Write("Directory.toml",
                           "preferred = \"TREE\"\n[[tree]]\nname = \"TREE\"\n"
                           "ldif = \"Trees/TREE.ldif\"\n");
        Write(ldif);
        EXPECT_EQ(directory.NWCallsInit(), 0);
        directory.SetCurrentObject(RootPath("TREE"));
    }

    void Write(std::string_view ldif) const { shell.folder.Write("Trees/TREE.ldif", ldif); }
    std::string LdifPath() const { return shell.files.Path(R"(Trees\TREE.ldif)"); }

    // The values of an attribute, joined with "|".
    std::string Values(std::string_view name, std::string_view attribute) {
        std::string joined;
        for (const std::string& value : directory.AttributeValues(directory.LookUp(name), attribute)) {
            joined += (joined.empty() ? "" : "|") + value;
        }
        return joined;
    }

    // The paths of all objects below one, depth first, each as "path (class)".
    std::vector<std::string> Walk(const std::string& path = RootPath("TREE")) {
        std::vector<std::string> found;
        for (const Entry& entry : directory.Entries(path, {})) {
            found.push_back(entry.path + " (" + entry.class_name + ")");
            for (std::string& below : Walk(entry.path))
                found.push_back(std::move(below));
        }
        return found;
    }
};

// The number of the error that `operation` raises.
inline std::int32_t ErrorOf(const std::function<void()>& operation) {
    return RaisedBy(operation).number();
}

}  // namespace zorvel::test
