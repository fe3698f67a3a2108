// The objects of a sample tree as LDIF records.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ldif_writer.h"
#include "sample_company.h"
#include "sample_flaws.h"
#include "sample_streams.h"

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
    // `entries` is the average number of stream entries of the `applications` applications.
    ApplicationWriter(LdifWriter& ldif, const Company& company, std::uint64_t seed, std::size_t applications,
                      std::size_t entries);

    void Write(const ApplicationPlace& place);

  private:
    void WriteLaunchAttributes(SampleApplication& application);
    void WriteDescriptions(SampleApplication& application);
    void WriteAssociations(SampleApplication& application, std::size_t container);
    void WriteStreams(SampleApplication& application);
    void WriteNotes(SampleApplication& application);

    LdifWriter& ldif_;
    const Company& company_;
    std::uint64_t seed_;
    std::size_t entries_;
    FlawDealer flaws_;
};

}  // namespace zorvel::tools
