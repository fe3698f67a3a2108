// Bytes and objects per second of loading an LDIF export.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "directory/ldif_tree.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

constexpr std::string_view kSchema =
    "dn: cn=schema\n"
    "objectClasses: ( 1.2 NAME 'appApplication' X-NDS_NAME 'App:Application' )\n\n";

// `name` with `size` bytes as folded base64.
std::string FoldedValue(const std::string& name, std::size_t size) {
    constexpr std::size_t kLine = 76;
    std::string base64(size / 3 * 4, 'A');
    for (std::size_t at = 0; at < base64.size(); ++at)
        base64[at] = static_cast<char>('A' + at * 7 % 26);
    std::string text = name + "::";
    for (std::size_t at = 0; at < base64.size(); at += kLine)
        text += "\n " + base64.substr(at, kLine);
    return text + "\n";
}

void Load(benchmark::State& state, const std::string& ldif, int applications) {
    const test::TempFolder folder;
    folder.Write("x.ldif", ldif);
    const Files files(folder.path());
    const std::string path = files.Path("x.ldif");
    for ([[maybe_unused]] const auto round : state)
        benchmark::DoNotOptimize(LoadLdifTree(files, path));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(ldif.size()));
    state.SetItemsProcessed(state.iterations() * applications);
}

// Applications as exports hold them: a few short attributes and streams of some hundred kilobytes.
void LoadStreams(benchmark::State& state) {
    constexpr int kApplications = 200;
    std::string ldif(kSchema);
    for (int number = 0; number < kApplications; ++number) {
        const std::string name = "App" + std::to_string(number);
        ldif += "dn: cn=" + name + ",ou=APPS,o=SITE\nobjectClass: appApplication\ncn: " + name + "\n";
        ldif += FoldedValue("appCopyFiles", 60'000);
        ldif += FoldedValue("appRegistrySettings", 120'000);
        ldif += '\n';
    }
    Load(state, ldif, kApplications);
}
BENCHMARK(LoadStreams)->Unit(benchmark::kMillisecond);

// As many objects as bytes allow, in many containers.
void LoadSmallObjects(benchmark::State& state) {
    constexpr int kContainers = 20'000;
    constexpr int kApplicationsEach = 5;
    std::string ldif(kSchema);
    for (int container = 0; container < kContainers; ++container) {
        const std::string parent = "ou=OU" + std::to_string(container) + ",o=SITE";
        ldif += "dn: " + parent + "\nobjectClass: organizationalUnit\n\n";
        for (int number = 0; number < kApplicationsEach; ++number) {
            ldif +=
                "dn: cn=App" + std::to_string(number) + "," + parent + "\nobjectClass: appApplication\n\n";
        }
    }
    Load(state, ldif, kContainers * (kApplicationsEach + 1));
}
BENCHMARK(LoadSmallObjects)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorvel

BENCHMARK_MAIN();
