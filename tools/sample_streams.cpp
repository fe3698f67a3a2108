#include "sample_streams.h"

#include <algorithm>

#include "platform/code_page.h"
#include "sample_entries.h"
#include "stream_builder.h"

namespace zorvel::tools {
namespace {

// Entries of applications that are slow to distribute: more than the thresholds of the shipped options file.
constexpr std::size_t kManyIniEntries = 57;
constexpr std::size_t kManyTextChanges = 54;
constexpr std::size_t kManyRegistryEntries = 118;

// How the entries of an application are shared out, in hundredths; what is missing are file entries.
struct Mix {
    std::size_t macros;
    std::size_t registry;
    std::size_t ini;
    std::size_t text;
    std::size_t environment;
};
constexpr std::array kMixes = {Mix{8, 34, 8, 4, 3}, Mix{10, 52, 12, 3, 4}, Mix{7, 14, 4, 2, 2},
                               Mix{9, 30, 14, 9, 5}};

constexpr std::size_t kAlwaysShare = 15;  // of a kind's entries, in hundredths

}  // namespace

bool SampleApplication::Has(Flaw flaw) const {
    return std::find(flaws.begin(), flaws.end(), flaw) != flaws.end();
}

std::vector<SampleApplication::FlawedFile> SampleApplication::FlawedFiles() const {
    std::vector<FlawedFile> files;
    for (const Flaw flaw : flaws) {
        if (flaw < Flaw::kFirstFile) continue;
        const std::size_t row = static_cast<std::size_t>(flaw) - static_cast<std::size_t>(Flaw::kFirstFile);
        const FileFlaw& kind = FileFlaws()[row];
        const std::size_t count = kind.several ? 1 + number % 4 : 1;
        for (std::size_t ordinal = 0; ordinal < count; ++ordinal)
            files.push_back({&kind, ordinal});
    }
    return files;
}

std::string SampleApplication::InstallFolder() const {
    return Concat({R"(C:\Program Files\)", product.vendor, "\\", product.title});
}

std::array<std::size_t, kStreamCount> EntryCounts(SampleApplication& application, std::size_t entries) {
    std::array<std::size_t, kStreamCount> counts{};
    const auto count = [&counts](Stream stream) -> std::size_t& {
        return counts[static_cast<std::size_t>(stream)];
    };
    // Splits a kind's entries between a stream and the one of the entries that are distributed always.
    const auto split = [&](Stream stream, Stream always, std::size_t total) {
        count(always) = total > 4 ? total * kAlwaysShare / 100 : 0;
        count(stream) = total - count(always);
    };

    const Mix& mix = application.random.Pick(kMixes);
    // The remainder is dealt with chance, so that shares below one entry still occur.
    const auto share = [&](std::size_t hundredths) {
        return (entries * hundredths + application.random.Below(100)) / 100;
    };
    std::size_t macros = share(mix.macros);
    std::size_t registry = share(mix.registry);
    std::size_t ini = share(mix.ini);
    std::size_t text = share(mix.text);
    const std::size_t environment = share(mix.environment);
    const std::size_t others = macros + registry + ini + text + environment;
    std::size_t files = entries - std::min(entries, others);

    if (application.Has(Flaw::kMacroUnc) || application.Has(Flaw::kMacroShortPath) || application.captured)
        macros = std::max(macros, kPathMacros);
    if (application.Has(Flaw::kRegistryUnc) || application.Has(Flaw::kRegistryExclude))
        registry = std::max<std::size_t>(registry, 4);
    if (application.Has(Flaw::kManyRegistryEntries)) registry = std::max(registry, kManyRegistryEntries);
    if (application.Has(Flaw::kManyIniEntries)) ini = std::max(ini, kManyIniEntries);
    if (application.Has(Flaw::kManyTextChanges)) text = std::max(text, kManyTextChanges);
    files = std::max(files, 2 * application.FlawedFiles().size());

    count(Stream::kMacros) = macros;
    split(Stream::kCopyFiles, Stream::kCopyFilesAlways, files);
    split(Stream::kRegistrySettings, Stream::kRegistrySettingsAlways, registry);
    split(Stream::kINISettings, Stream::kINISettingsAlways, ini);
    split(Stream::kTextFiles, Stream::kTextFilesAlways, text);
    count(Stream::kEnvironmentSettings) = environment;
    return counts;
}

std::string MakeStream(Stream stream, SampleApplication& application, std::size_t entries) {
    StreamBuilder builder;
    switch (stream) {
        case Stream::kMacros:
            AddMacros(builder, application, entries);
            break;
        case Stream::kCopyFiles:
        case Stream::kCopyFilesAlways:
            AddFiles(builder, application, entries, stream == Stream::kCopyFilesAlways);
            break;
        case Stream::kRegistrySettings:
        case Stream::kRegistrySettingsAlways:
            AddRegistrySettings(builder, application, entries, stream == Stream::kRegistrySettingsAlways);
            break;
        case Stream::kINISettings:
        case Stream::kINISettingsAlways:
            AddIniSettings(builder, application, entries, stream == Stream::kINISettingsAlways);
            break;
        case Stream::kTextFiles:
        case Stream::kTextFilesAlways:
            AddTextChanges(builder, application, entries, stream == Stream::kTextFilesAlways);
            break;
        case Stream::kEnvironmentSettings:
            AddEnvironmentSettings(builder, application, entries);
            break;
    }
    return builder.bytes();
}

}  // namespace zorvel::tools
