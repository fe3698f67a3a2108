// Program folders with sample trees in them, and the program run over them.
#pragma once

#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "batch/batch_run.h"
#include "platform/output_file.h"
#include "sample_tree_writer.h"
#include "support/databases.h"

namespace zorvel::test {

// A file of the program as it ships.
inline std::filesystem::path Shipped(const std::string& name) {
    return std::filesystem::path(ZORVEL_SOURCE_DIR) / "program" / name;
}

// A program folder of what ships, in which the program runs.
class SampleFolder {
  public:
    SampleFolder() {
        for (const char* name : {"Zorvel.ini", "RegExclude.dat", "FileIssue.dat", "Directory.toml",
                                 "Trees/nds-schema.ldif", "Trees/CORP_TREE.ldif", "Trees/LAB_TREE.ldif"}) {
            std::filesystem::copy_file(Shipped(name), folder.path() / name);
        }
        AddDatabases(folder);
    }

    // Runs zorvel-batch; its output is left in `out`. Returns the exit status.
    int Run(const std::vector<std::string>& arguments) {
        BatchResult result = RunBatch(folder, arguments);
        out = std::move(result.out);
        return result.status;
    }
    // The lines that the program wrote to standard output.
    std::vector<std::string> OutputLines() const {
        std::vector<std::string> lines;
        std::istringstream text(out);
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }

    TempFolder folder;
    std::string out;
};

// The text of the tree that the tool writes.
inline std::string SampleTree(const tools::SampleTreeOptions& options) {
    const TempFolder folder;
    OutputFile file(folder.path() / "tree.ldif", "tree.ldif", OutputFile::Mode::kTruncate);
    tools::WriteSampleTree(options, file);
    file.Close();
    return folder.Read("tree.ldif");
}

}  // namespace zorvel::test
