// Application objects of a sample tree.
#include <array>
#include <set>
#include <string>

#include "sample_objects.h"

namespace zorvel::tools {
namespace {

// The kinds of numbers drawn, as Random tells them apart.
constexpr std::uint64_t kContainerOfApplications = 31;
constexpr std::uint64_t kApplication = 32;

// Bits of the application flags and of the default association flags; no two that contradict each other.
constexpr std::array<std::int64_t, 10> kFlags = {0,        0x1000,     0x1802,   0x8180,    0x4100,
                                                 0x201040, 0x20040004, 0x820080, 0x1400801, 0x10200};
constexpr std::array<std::int64_t, 8> kAssociationFlags = {1, 5, 13, 9, 1, 32, 420, 3};

// Who applications are associated with: kinds of trustees as often as they come.
constexpr std::array kTrusteeKinds = {
    TrusteeKind::kGroup,     TrusteeKind::kUser,  TrusteeKind::kContainer,       TrusteeKind::kGroup,
    TrusteeKind::kContainer, TrusteeKind::kGroup, TrusteeKind::kWorkstation,     TrusteeKind::kGroup,
    TrusteeKind::kUser,      TrusteeKind::kGroup, TrusteeKind::kServer,          TrusteeKind::kGroup,
    TrusteeKind::kUser,      TrusteeKind::kGroup, TrusteeKind::kWorkstationGroup};

constexpr std::array<std::string_view, 6> kNotes = {
    "Packaged on a clean build, tested with the standard desktop.\r\nRestart needed after the first "
    "start.\r\n",
    "Replaces the version of last year. The old one is removed by this package.\r\n",
    "Ask the help desk before changing anything here - licences are counted.\r\n",
    "Snapshot taken on the reference machine; drivers removed by hand.\r\nKnown fault: the tool bar is lost "
    "when printing.\r\n",
    "M\366tesprotokoll 14/3: only for departments that have ordered it (cost centre needed).\r\n",
    "Needs the runtime libraries of the base image.\r\n\r\nRollback: remove the association, then "
    "uninstall.\r\n"};

std::string Guid(Random& random) {
    std::string bytes;
    for (std::size_t i = 0; i < 16; ++i)
        bytes += static_cast<char>(static_cast<unsigned char>(random.Below(256)));
    return bytes;
}

}  // namespace

ApplicationWriter::ApplicationWriter(LdifWriter& ldif, const Company& company,
                                     const SampleTreeOptions& options)
    : ldif_(ldif), company_(company), options_(options), flaws_(options.applications) {}

void ApplicationWriter::Write(const ApplicationPlace& place) {
    // Within a container no product comes twice before all have come; from then on they are numbered.
    const std::size_t first =
        Random(options_.seed, kContainerOfApplications, place.container).Below(kProducts.size());
    const Product& product = kProducts[(first + place.ordinal) % kProducts.size()];
    const std::size_t round = place.ordinal / kProducts.size();
    Random random(options_.seed, kApplication, place.number);
    SampleApplication application{
        .number = place.number,
        .product = product,
        .server = company_.ServerName(place.container),
        .version = Concat({Number(1 + random.Below(9)), ".", Number(random.Below(6))}),
        .source = {},
        .target = {},
        .captured = random.Percent(60) && options_.entries > 0,
        .addresses = options_.addresses,
        .flaws = flaws_.FlawsOf(place.number),
        .random = random};

    std::string name(product.name);
    if (round > 0) name += Concat({"-", Number(round + 1)});
    if (application.Has(Flaw::kNameWithBlanks)) name += " " + application.version;
    if (application.captured) {
        application.source = "%SOURCE_PATH%";
        application.target = "%TARGET_PATH%";
    } else {
        application.source =
            Concat({R"(\\)", application.server, R"(\PACKAGES\)", product.name, "\\", application.version});
        application.target = application.InstallFolder();
    }

    ldif_.Record(Concat({RelativeDN("cn", name), ",", company_.DN(place.container)}));
    ldif_.Text("objectClass", "appApplication");
    ldif_.Text("objectClass", "top");
    ldif_.Text("cn", name);
    WriteLaunchAttributes(application);
    WriteDescriptions(application);
    if (!application.Has(Flaw::kNoAssociations)) WriteAssociations(application, place.container);
    WriteStreams(application);
    WriteNotes(application);
}

void ApplicationWriter::WriteLaunchAttributes(SampleApplication& application) {
    const Product& product = application.product;
    ldif_.Text("appPath", application.Has(Flaw::kFixedPath)
                              ? Concat({R"(C:\WINNT\)", product.exe, ".exe"})
                              : Concat({application.target, "\\", product.exe, ".exe"}));
    if (application.number % 3 == 1)
        ldif_.Text("appParameters", Concat({"/user:%CN% /data:\"H:\\Data\\*.", product.extension, "\""}));
    if (application.Has(Flaw::kFixedWorkingDirectory)) {
        ldif_.Text("appWorkingDirectory", R"(C:\WINDOWS\Profiles)");
    } else if (application.number % 2 == 0) {
        ldif_.Text("appWorkingDirectory", application.target);
    }
    ldif_.Text("appCaption", Concat({product.title, " ", application.version}));
    constexpr std::array<std::int64_t, 3> kOddIconOrders = {1200, -5, 65535};
    constexpr std::array<std::int64_t, 7> kIconOrders = {0, -1, 10, 20, 0, 150, 999};
    ldif_.Long("appIconOrder", application.Has(Flaw::kIconOrder) ? application.random.Pick(kOddIconOrders)
                                                                 : application.random.Pick(kIconOrders));
    ldif_.Long("appFlags", kFlags[application.number % kFlags.size()]);
    ldif_.Long("appDefaultAssociationFlags",
               kAssociationFlags[application.number % kAssociationFlags.size()]);
    ldif_.Long("appPlatform", 1 + static_cast<std::int64_t>(application.random.Below(7)));
    ldif_.Text("appVersionString", application.version);
    ldif_.Long("appVersionNumber", 1 + static_cast<std::int64_t>(application.random.Below(40)));
    ldif_.Bytes("appGUID", Guid(application.random));
    if (application.captured)
        ldif_.Text("appDriveMappings", Concat({R"(Z:=\\)", application.server, R"(\PACKAGES)"}));
}

void ApplicationWriter::WriteDescriptions(SampleApplication& application) {
    const Product& product = application.product;
    if (application.Has(Flaw::kNoDescription)) {
        if (application.number % 2 == 0) ldif_.Text("appDescription", "   ");
        return;
    }
    // Packages that came from elsewhere are described by their maker only.
    const bool package = application.number % 6 == 5;
    ldif_.Text(package ? "zENAppPackageDescription" : "appDescription", product.description);
    if (package) ldif_.Text("zENAppPackageVersion", application.version);
    if (application.number % 9 == 4)
        ldif_.Text("appBlurb",
                   Concat({product.title, " by ", product.vendor, ".\r\nSee the intranet for courses."}));
}

void ApplicationWriter::WriteAssociations(SampleApplication& application, std::size_t container) {
    const std::size_t count = 1 + application.random.Below(4);
    std::set<std::string> trustees;
    for (std::size_t i = 0; i < count; ++i) {
        const bool missing = i > 0 && application.random.Percent(12);
        const TrusteeKind kind = kTrusteeKinds[(application.number + 4 * i) % kTrusteeKinds.size()];
        const std::string trustee = missing ? company_.MissingTrusteeDN(container, application.random)
                                            : company_.TrusteeDN(kind, container, application.random);
        // A trustee that is drawn again is one already: no attribute holds a value twice.
        if (trustees.insert(trustee).second)
            ldif_.Text("aCL", Concat({"2#entry#", trustee, "#[All Attributes Rights]"}));
    }
    if (application.number % 25 == 7) ldif_.Text("aCL", "1#subtree#[Public]#[Entry Rights]");
}

void ApplicationWriter::WriteStreams(SampleApplication& application) {
    const std::size_t most = options_.entries / 2;  // above or below the average
    const std::size_t entries = options_.entries - most + application.random.Below(most * 2 + 1);
    const std::array<std::size_t, kStreamCount> counts = EntryCounts(application, entries);
    for (std::size_t i = 0; i < kStreamCount; ++i) {
        if (counts[i] > 0)
            ldif_.Bytes(kStreamAttributes[i], MakeStream(static_cast<Stream>(i), application, counts[i]));
    }
}

void ApplicationWriter::WriteNotes(SampleApplication& application) {
    if (application.Has(Flaw::kNoNotes)) {
        if (application.number % 3 == 0) ldif_.Bytes("appAdministratorNotes", "  ");
        return;
    }
    const std::size_t day = 1 + application.random.Below(28);
    const std::size_t month = 1 + application.random.Below(12);
    ldif_.Bytes("appAdministratorNotes",
                Concat({Number(day, 2), "/", Number(month, 2), "/",
                        Number(2003 + application.random.Below(4)), ": ", application.product.title, " ",
                        application.version, "\r\n", application.random.Pick(kNotes)}));
}

}  // namespace zorvel::tools
