// File entries of sample applications.
#include <array>
#include <utility>

#include "sample_entries.h"

namespace zorvel::tools {
namespace {

// A file of a product. Its name is `stem`, with the program's name before it when `own` is set.
struct ProductFile {
    std::string_view folder;  // below the application's, or a folder macro
    bool own;
    std::string_view stem;
    std::string_view extension;
    bool common = false;   // `folder` stands by itself
    bool library = false;  // must not overwrite a newer one
};
constexpr std::array kProductFiles = {
    ProductFile{"", true, "", ".exe"},
    ProductFile{"", true, "core", ".dll"},
    ProductFile{"", true, "", ".hlp"},
    ProductFile{"", true, "", ".cnt"},
    ProductFile{"", false, "readme", ".txt"},
    ProductFile{"", false, "licence", ".rtf"},
    ProductFile{"%*WinSysDir%", true, "ui", ".dll", true, true},
    ProductFile{R"(\bin)", true, "print", ".dll"},
    ProductFile{R"(\bin)", true, "conv", ".exe"},
    ProductFile{R"(\bin)", true, "setup", ".ini"},
    ProductFile{R"(\templates)", false, "letter", ".dot"},
    ProductFile{R"(\templates)", false, "invoice", ".dot"},
    ProductFile{R"(\templates)", false, "report", ".xlt"},
    ProductFile{R"(\help)", false, "contents", ".htm"},
    ProductFile{R"(\help)", false, "topic", ".htm"},
    ProductFile{R"(\help\images)", false, "toolbar", ".gif"},
    ProductFile{"\\lang\\fran\347ais", true, "aide", ".hlp"},
    ProductFile{R"(\lang\deutsch)", false, "Men\374s", ".lng"},
    ProductFile{R"(\lang\svenska)", false, "meddelanden", ".lng"},
    ProductFile{"%*Fonts%", true, "sans", ".ttf", true},
    ProductFile{"%*CommonPrograms%", true, "", ".lnk", true},
    ProductFile{"%*WinSysDir%", true, "grid", ".ocx", true, true},
    ProductFile{R"(\data)", false, "codes", ".dat"},
    ProductFile{R"(\data)", false, "tariff", ".dbf"},
    ProductFile{R"(\data)", false, "tariff", ".ndx"},
    ProductFile{R"(\samples)", false, "tutorial", ".doc"},
    ProductFile{R"(\samples)", false, "example", ".xls"},
    ProductFile{"%*ProgramFilesCommon%", true, "shared", ".dll", true, true},
    ProductFile{R"(\drivers)", true, "port", ".sys"},
    ProductFile{R"(\scripts)", false, "nightly", ".cmd"},
    ProductFile{R"(\scripts)", false, "import", ".vbs"},
    ProductFile{"%*AppData%", true, "user", ".cfg", true},
    ProductFile{R"(\images)", false, "splash", ".bmp"},
    ProductFile{R"(\images)", false, "logo", ".jpg"},
    ProductFile{"%*WinDir%", true, "", ".ini", true},
};

// Copy modes: the usual ones, and now and then one that says nothing. 512 marks a shared file.
constexpr std::uint16_t kCopyIfNewer = 8;
constexpr std::uint16_t kCopyIfNewerShared = 520;
constexpr std::array<std::uint16_t, 29> kModes = {1,   8, 4,    8, 513, 1,   8,     16,    8,   1024,
                                                  520, 1, 4,    8, 2,   32,  516,   8,     514, 1,
                                                  528, 8, 1536, 4, 8,   544, 32768, 33280, 8};
constexpr std::array<std::uint16_t, 8> kUnknownModes = {64, 128, 256, 512, 2048, 4096, 8192, 16384};
constexpr std::size_t kUnknownModeEvery = 127;

std::uint16_t ModeOf(std::size_t number) {
    if (number % kUnknownModeEvery == kUnknownModeEvery - 1)
        return kUnknownModes[number / kUnknownModeEvery % kUnknownModes.size()];
    return kModes[number % kModes.size()];
}

class FileEntries {
  public:
    FileEntries(StreamBuilder& stream, SampleApplication& application)
        : stream_(stream), application_(application) {}

    // Entry number `index` of the stream.
    void Add(std::size_t index) {
        // Captures number the files that they collect; other packages keep their names.
        const std::size_t turn = index % 12;
        const std::size_t number = application_.number + index / 12;
        if (index == 0 && application_.number % 2 == 0) {
            stream_.DirectoryCreate(application_.target);
        } else if (turn == 9) {
            stream_.FileDelete(
                Concat({application_.target, "\\", application_.product.exe, "old", Number(index), ".exe"}));
        } else if (turn == 10 && number % 3 == 0) {
            stream_.DirectoryCreate(Concat({application_.target, R"(\data\)", Number(index, 3)}));
        } else if (turn == 11 && number % 4 == 0) {
            stream_.NoEntry();
        } else if (turn == 11 && number % 4 == 1) {
            stream_.DirectoryDelete(application_.target + R"(\cache)");
        } else {
            AddProductFile(index);
        }
    }
    void AddFlawed(const SampleApplication::FlawedFile& file, std::size_t index) {
        const FileFlaw& kind = *file.kind;
        std::string name(kind.name);
        if (file.ordinal > 0) name.insert(name.rfind('.'), Number(file.ordinal + 1));
        const std::string_view folder = kind.folder.empty() ? application_.target : kind.folder;
        stream_.FileCopy(Source("", name, index), Concat({folder, "\\", name}), kind.mode);
    }

  private:
    void AddProductFile(std::size_t index) {
        const ProductFile& file = kProductFiles[index % kProductFiles.size()];
        const std::size_t round = index / kProductFiles.size();
        std::string name = Concat({file.own ? application_.product.exe : "", file.stem});
        if (round > 0) name += Number(round + 1);
        name += file.extension;
        const std::string folder(file.common ? "" : file.folder);
        std::uint16_t mode = ModeOf(application_.number * 5 + index);
        if (file.library) mode = mode > 512 ? kCopyIfNewerShared : kCopyIfNewer;
        stream_.FileCopy(
            Source(folder, name, index),
            Concat({file.common ? std::string_view(file.folder) : application_.target, folder, "\\", name}),
            mode);
    }
    std::string Source(std::string_view folder, std::string_view name, std::size_t index) const {
        if (application_.captured) return Concat({application_.source, "\\", Number(index + 1), ".fil"});
        return Concat({application_.source, folder, "\\", name});
    }

    StreamBuilder& stream_;
    SampleApplication& application_;
};

}  // namespace

void AddFiles(StreamBuilder& stream, SampleApplication& application, std::size_t entries, bool always) {
    std::vector<SampleApplication::FlawedFile> flawed;
    if (!always) flawed = application.FlawedFiles();
    FileEntries files(stream, application);
    for (std::size_t i = 0; i < entries; ++i) {
        const std::size_t index = FirstIndex(always) + i;
        // Flawed files stand together near the end, where nobody looks.
        const std::size_t left = entries - i;
        if (left <= flawed.size()) {
            files.AddFlawed(flawed[flawed.size() - left], index);
        } else {
            files.Add(index);
        }
    }
}

}  // namespace zorvel::tools
