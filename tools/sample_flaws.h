// What is wrong with the applications of a sample tree, so that an analysis finds every issue that there is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace zorvel::tools {

enum class Flaw : std::uint8_t {
    kNameWithBlanks,         // INVALIDAN
    kIconOrder,              // INVALIDRO
    kFixedPath,              // FILEPORTABLE, App:Path
    kFixedWorkingDirectory,  // FILEPORTABLE, App:Working Directory
    kNoDescription,          // APPNODESC
    kNoNotes,                // APPNOADMIN
    kNoAssociations,         // APPNOASSOC
    kManyIniEntries,         // APPCOMPLEXINI
    kManyTextChanges,        // APPCOMPLEXTEXT
    kManyRegistryEntries,    // APPCOMPLEXREG
    kRegistryUnc,            // REGISTRYUNC
    kRegistryExclude,        // REGISTRYEXCLUDE
    kMacroUnc,               // MACROUNC
    kMacroShortPath,         // MACROSTP
    kFirstFile               // this and the following: the rows of FileFlaws
};

// A file that should not be distributed.
struct FileFlaw {
    std::string_view code;    // of the issue it raises
    std::string_view folder;  // of the target; empty for the application's own
    std::string_view name;
    std::uint16_t mode;  // how it is copied
    bool several;        // whether an application can have several of the kind
};

// The files, each raising the issue of its row; the first is FILEPORTABLE's, the last is listed in the
// shipped FileIssue.dat.
std::span<const FileFlaw> FileFlaws();

// How many kinds of flaws there are.
std::size_t FlawCount();

// Deals the flaws out to the applications of a tree: four of four in turn get two, one, one and none. 60
// applications get every flaw; after that the common ones come much more often than the rare.
class FlawDealer {
  public:
    explicit FlawDealer(std::size_t applications);

    // The flaws of application number `application`, counted from 0.
    std::vector<Flaw> FlawsOf(std::size_t application) const;

  private:
    std::size_t applications_;
    std::size_t step_;
};

}  // namespace zorvel::tools
