// The objects of a sample tree as LDIF records.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ldif_writer.h"
#include "sample_company.h"
#include "sample_flaws.h"
#include "sample_streams.h"
#include "sample_tree_writer.h"

namespace zorvel::tools {

// A container itself, and the people, groups and machines in it.
void WriteContainer(LdifWriter& ldif, const Company& company, std::size_t container);
void WriteMembers(LdifWriter& ldif, const Company& company, std::size_t container, std::uint64_t seed);

// Where an application stands: in which container, as the how-manieth there and in the tree (from 0).
struct ApplicationPlace {
    std::size_t container;
    std::size_t ordinal;
    std::size_t number;
};

class ApplicationWriter {
  public:
    ApplicationWriter(LdifWriter& ldif, const Company& company, const SampleTreeOptions& options);

    void Write(const ApplicationPlace& place);

  private:
    void WriteLaunchAttributes(SampleApplication& application);
    void WriteDescriptions(SampleApplication& application);
    void WriteAssociations(SampleApplication& application, std::size_t container);
    void WriteStreams(SampleApplication& application);
    void WriteNotes(SampleApplication& application);

    LdifWriter& ldif_;
    const Company& company_;
    const SampleTreeOptions& options_;
    FlawDealer flaws_;
};

}  // namespace zorvel::tools
