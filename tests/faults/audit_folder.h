// A program folder that faults are tried on, seen from outside: through zorvel-batch and its files' bytes.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "faults/program_run.h"

namespace zorvel::test {

// What a dataset's import came to, instead of a digest.
inline const std::string kNotCompleted = "not completed";

// What a user can see of a program folder.
struct FolderState {
    std::string tree;                             // as it is listed, and its caches
    std::map<std::string, std::string> datasets;  // by file name: a digest of the rows, or kNotCompleted
    std::map<std::string, std::string> files;     // those that are written as a whole, by name
    bool operator==(const FolderState&) const = default;
};

class AuditFolder {
  public:
    // A folder `name` of `parent` without any trees, datasets or caches; or a copy of another.
    AuditFolder(const std::filesystem::path& parent, const std::string& name);
    AuditFolder(const std::filesystem::path& parent, const std::string& name, const AuditFolder& other);

    const std::filesystem::path& path() const { return path_; }
    // Gives the folder its only tree: a made-up one of `applications` with a seed of its own.
    void SetTree(unsigned seed, std::size_t applications) const;
    // Renames an application of the tree, and adds an empty container: all counts of applications stay.
    void ChangeTree() const;
    // Gives it the tree of an LDIF export.
    void SetTree(const std::filesystem::path& ldif) const;

    // The arguments that zorvel-batch gets for `arguments` in this folder. "{D}" stands for its first
    // dataset, and "save_settings" at the beginning for that program.
    std::vector<std::string> Command(const std::vector<std::string>& arguments) const;
    Outcome Run(const std::vector<std::string>& arguments, const std::string& fault = {}) const;
    // Runs a command that has to succeed. Raises std::runtime_error with what it said when it does not.
    std::string Need(const std::vector<std::string>& arguments) const;
    // A second process on the folder, with scratch files of its own.
    ProgramRun Start(const std::vector<std::string>& arguments, const std::string& scratch) const;

    // The files of Databases, without the master catalogue.
    std::vector<std::string> DatasetFiles() const;
    // All files, relative to the folder.
    std::vector<std::string> AllFiles() const;
    FolderState State() const;

  private:
    std::string Records(const std::string& cache) const;
    std::string Digest(const std::string& dataset) const;

    std::filesystem::path path_;
    std::filesystem::path scratch_;
};

}  // namespace zorvel::test
