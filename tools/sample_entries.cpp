#include "sample_entries.h"

#include <algorithm>
#include <array>

#include "platform/code_page.h"

namespace zorvel::tools {
namespace {

// A folder in its short form: each part cut to what a DOS name holds.
std::string ShortFolder(const SampleApplication& application) {
    std::string folder = R"(C:\PROGRA~1)";
    for (const std::string_view part : {application.product.vendor, application.product.title}) {
        std::string name;
        for (const char character : UpperCase(part)) {
            if (character != ' ') name += character;
        }
        constexpr std::size_t kLongest = 8;
        if (name.size() > kLongest) name.replace(kLongest - 2, std::string::npos, "~1");
        folder += "\\" + name;
    }
    return folder;
}

struct NamedText {
    std::string_view name;
    std::string_view text;
};
constexpr std::array kOtherMacros = {
    NamedText{"DATA_FOLDER", R"(H:\Data)"},       NamedText{"LANGUAGE", "English"},
    NamedText{"REPORT_PRINTER", "LPT2:"},         NamedText{"LICENCE_SERVER", "licence.corp.example"},
    NamedText{"BACKUP_FOLDER", R"(H:\Backup)"},   NamedText{"WORD_LIST", "Fran\347ais; Svenska; Deutsch"},
    NamedText{"PROXY", "proxy.corp.example:8080"}};
constexpr std::array kPrompts = {
    NamedText{"INSTALL_DRIVE", "Which drive should the program be installed on?"},
    NamedText{"COST_CENTRE", "Please enter your cost centre (four digits)"},
    NamedText{"USER_LANGUAGE", "Which language (English, Fran\347ais, Deutsch)?"},
    NamedText{"PRINTER_PORT", "Which port is your label printer connected to?"}};
constexpr std::array<std::string_view, 4> kPromptValues = {"C:", "4711", "English", "COM1:"};
constexpr std::array<std::uint8_t, 4> kMinimumSpaces = {200, 0, 25, 120};

constexpr std::array<std::string_view, 8> kSettingGroups = {"Settings", "Recent", "Window",  "Printing",
                                                            "Import",   "Export", "Colours", "Toolbar"};
constexpr std::array<std::string_view, 12> kSettingNames = {"Position", "Language", "Path",     "Interval",
                                                            "Enabled",  "LastPort", "Template", "Currency",
                                                            "Decimals", "Timeout",  "Server",   "Title"};
constexpr std::array<std::string_view, 12> kSettingValues = {"120,80,1024,768",
                                                             "English",
                                                             R"(H:\Data)",
                                                             "15",
                                                             "1",
                                                             "COM1:",
                                                             "letter.dot",
                                                             "GBP",
                                                             "2",
                                                             "30",
                                                             "licence.corp.example",
                                                             "Don't ask again"};
// Keys from which nothing should be distributed, as the shipped RegExclude.dat lists them.
constexpr std::array kMachineKeys = {
    NamedText{R"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\RunMRU)", "a"},
    NamedText{R"(HKEY_LOCAL_MACHINE\SYSTEM\MountedDevices)", R"(\DosDevices\E:)"},
    NamedText{R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Enum\PCI\VEN_10EC)", "HardwareID"},
    NamedText{R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Cryptography\RNG)", "Seed"},
    NamedText{R"(HKEY_CURRENT_USER\Volatile Environment)", "LOGONSERVER"}};

class RegistryEntries {
  public:
    RegistryEntries(StreamBuilder& stream, SampleApplication& application)
        : stream_(stream), application_(application) {
        const Product& product = application.product;
        machine_ = Concat({R"(HKEY_LOCAL_MACHINE\SOFTWARE\)", product.vendor, "\\", product.title, "\\",
                           application.version});
        user_ = Concat({R"(HKEY_CURRENT_USER\Software\)", product.vendor, "\\", product.title});
        document_ = Concat({R"(HKEY_CLASSES_ROOT\)", product.exe, ".Document"});
        const std::uint64_t digits = application.random.Next();
        class_ = R"(HKEY_CLASSES_ROOT\CLSID\{)";
        for (std::size_t i = 0; i < 32; ++i) {
            if (i == 8 || i == 12 || i == 16 || i == 20) class_ += '-';
            class_ += "0123456789ABCDEF"[digits >> (i * 7 % 61) & 15U];
        }
        class_ += '}';
    }

    // Entry number `index` of the stream.
    void Add(std::size_t index) {
        const Product& product = application_.product;
        const std::string_view group = kSettingGroups[index / kKinds % kSettingGroups.size()];
        const std::string round = Number(index / kKinds);
        switch (index % kKinds) {
            case 0:
                stream_.RegistryKeyCreate(Concat({machine_, "\\", group}));
                break;
            case 1:
                Value(machine_, "InstallPath" + round, application_.target, kText);
                break;
            case 2:
                Value(Concat({machine_, "\\", group}), "Serial" + round, std::string_view("\x2a\0\1\0", 4),
                      kNumber);
                break;
            case 3:
                Value(Concat({user_, "\\", group}),
                      Concat({kSettingNames[index / 3 % kSettingNames.size()], round}),
                      kSettingValues[index / 3 % kSettingValues.size()], kText);
                break;
            case 4:
                if (application_.addresses) {
                    AddNetworkSetting(application_.number + index / kKinds);
                } else {
                    Value(machine_, "DataFolder" + round, R"(H:\Data)", kText);
                }
                break;
            case 5:
                Value(Concat({R"(HKEY_CLASSES_ROOT\.)", product.extension}), "",
                      document_.substr(document_.rfind('\\') + 1), kText);
                break;
            case 6:
                Value(document_ + R"(\shell\open\command)", round,
                      Concat({"\"", application_.target, "\\", product.exe, ".exe\" \"%1\""}), kText);
                break;
            case 7:
                Value(class_ + R"(\InprocServer32)", round,
                      Concat({application_.target, "\\", product.exe, "core.dll"}), kText);
                break;
            case 8:
                Value(Concat({user_, R"(\Recent)"}), "Files" + round,
                      std::string_view("first.doc\0second.doc\0\0", 22), kTexts);
                break;
            case 9:
                Value(machine_, "Owner" + round, "Society for B\374rger & Caf\351s, the founders' office",
                      kText);
                break;
            case 10:
                Value(Concat({user_, R"(\Window)"}), "Placement" + round,
                      std::string_view("\x2c\0\0\0\2\0\0\0\x1b\x7f", 10), kBinary);
                break;
            case 11:
                stream_.RegistryValueDelete(Concat({user_, "\\", group}), "Obsolete" + round);
                break;
            default:
                stream_.RegistryKeyDelete(Concat({user_, R"(\Version )", round}));
                break;
        }
    }
    void AddUnc() {
        Value(machine_, "TemplateShare",
              Concat({R"(\\)", application_.server, R"(\TEMPLATES\)", application_.product.exe}), kText);
    }
    void AddExcluded() {
        const NamedText& key = kMachineKeys[application_.number % kMachineKeys.size()];
        Value(key.name, key.text, application_.product.exe, kText);
    }

  private:
    static constexpr std::size_t kKinds = 13;
    // Data types, as the registry numbers them.
    static constexpr std::uint8_t kText = 1;
    static constexpr std::uint8_t kBinary = 3;
    static constexpr std::uint8_t kNumber = 4;
    static constexpr std::uint8_t kTexts = 7;

    // A setting that holds an address, of the ranges and domains that are set aside for examples; which one
    // follows from `number`.
    void AddNetworkSetting(std::size_t number) {
        const Product& product = application_.product;
        const std::string host = Number(10 + application_.number % 40);
        switch (number % 8) {
            case 0:
                Value(machine_ + R"(\Licensing)", "ServerAddress", "192.0.2." + host, kText);
                break;
            case 1:
                Value(machine_ + R"(\Update)", "Url",
                      Concat({"http://updates.example.com/", product.exe, "/", application_.version, "/"}),
                      kText);
                break;
            case 2:
                Value(R"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Internet Settings)",
                      "ProxyServer", "198.51.100.8:8080", kText);
                break;
            case 3:
                Value(R"(HKEY_CURRENT_USER\Software\Microsoft\Internet Explorer\Main)", "Start Page",
                      "http://intranet.example.com/", kText);
                break;
            case 4:
                Value(machine_ + R"(\Database)", "Server", Concat({"203.0.113.", host, ",1433"}), kText);
                break;
            case 5:
                Value(user_ + R"(\Export)", "DropFolder",
                      Concat({"ftp://drop.example.org/incoming/", product.exe}), kText);
                break;
            case 6:
                Value(machine_ + R"(\Help)", "SupportPage",
                      Concat({"https://support.example.org/", product.exe}), kText);
                break;
            default:
                Value(machine_, "HomePage", Concat({"www.example.com/products/", product.exe}), kText);
                break;
        }
    }

    void Value(std::string_view key, std::string_view name, std::string_view data, std::uint8_t data_type) {
        constexpr std::array<std::uint8_t, 7> kModes = {1, 1, 4, 1,
                                                        2, 1, 4};  // always, if not there, if there
        stream_.RegistryValue(key, name, data, kModes[values_++ % kModes.size()], data_type);
    }

    StreamBuilder& stream_;
    SampleApplication& application_;
    std::string machine_;
    std::string user_;
    std::string document_;
    std::string class_;
    std::size_t values_ = 0;
};

}  // namespace

void AddMacros(StreamBuilder& stream, SampleApplication& application, std::size_t entries) {
    for (std::size_t index = 0; index < entries; ++index) {
        if (index == 0) {
            stream.Macro("TARGET_PATH", application.InstallFolder());
        } else if (index == 1) {
            stream.Macro("SOURCE_PATH", application.Has(Flaw::kMacroUnc)
                                            ? Concat({R"(\\)", application.server, R"(\PACKAGES\)",
                                                      application.product.name})
                                            : Concat({R"(Z:\Packages\)", application.product.name}));
        } else if (index == 2) {
            stream.Macro("SHORT_TARGET_PATH", application.Has(Flaw::kMacroShortPath)
                                                  ? application.InstallFolder()
                                                  : ShortFolder(application));
        } else if (index % 3 == 0) {
            const std::size_t chosen = (application.number + index / 3) % kPrompts.size();
            stream.PromptedMacro(kPrompts[chosen].name, kPromptValues[chosen], kMinimumSpaces[chosen],
                                 kPrompts[chosen].text);
        } else {
            const NamedText& macro = kOtherMacros[(application.number + index) % kOtherMacros.size()];
            const std::size_t round = index / (2 * kOtherMacros.size());
            stream.Macro(round == 0 ? std::string(macro.name) : Concat({macro.name, "_", Number(round + 1)}),
                         macro.text);
        }
    }
}

void AddRegistrySettings(StreamBuilder& stream, SampleApplication& application, std::size_t entries,
                         bool always) {
    RegistryEntries registry(stream, application);
    for (std::size_t i = 0; i < entries; ++i) {
        if (!always && i == 1 && application.Has(Flaw::kRegistryUnc)) {
            registry.AddUnc();
        } else if (!always && i == 2 && application.Has(Flaw::kRegistryExclude)) {
            registry.AddExcluded();
        } else {
            registry.Add(FirstIndex(always) + i);
        }
    }
}

void AddIniSettings(StreamBuilder& stream, SampleApplication& application, std::size_t entries, bool always) {
    const Product& product = application.product;
    const std::array<std::string, 3> files = {Concat({"%*WinDir%\\", product.exe, ".ini"}),
                                              Concat({application.target, "\\", product.exe, ".ini"}),
                                              R"(%*WinDir%\win.ini)"};
    for (std::size_t index = FirstIndex(always); index < FirstIndex(always) + entries; ++index) {
        const std::string& file = files[(application.number + index / 8) % files.size()];
        const std::size_t setting = application.number + index;
        const std::string_view section = kSettingGroups[index / 4 % kSettingGroups.size()];
        const std::string item =
            Concat({kSettingNames[setting % kSettingNames.size()], Number(index / kSettingNames.size())});
        const std::string_view value = kSettingValues[setting % kSettingValues.size()];
        if (setting % 9 == 4) {
            stream.IniItemDelete(file, section, item, "");
        } else if (setting % 13 == 6) {
            stream.IniSectionDelete(file, Concat({product.title, " ", Number(index)}));
        } else {
            stream.IniValue(file, section, item, value);
        }
    }
}

void AddTextChanges(StreamBuilder& stream, SampleApplication& application, std::size_t entries, bool always) {
    const Product& product = application.product;
    const std::array<std::string, 4> files = {
        R"(%*WinDisk%\AUTOEXEC.BAT)", R"(%*WinSysDir%\drivers\etc\services)",
        R"(%*WinSysDir%\drivers\etc\hosts)", Concat({application.target, "\\", product.exe, ".cfg"})};
    for (std::size_t index = FirstIndex(always); index < FirstIndex(always) + entries; ++index) {
        const std::size_t number = application.number + index;
        const std::string& file = files[number / 2 % files.size()];
        const auto kind = static_cast<std::uint8_t>(number % 4 + 1);
        const std::string port = Number(5000 + number % 900);
        if (file == files[0]) {
            stream.TextFileChange(kind, file,
                                  Concat({"SET ", UpperCase(product.exe), "=", application.target}),
                                  Concat({"SET ", UpperCase(product.exe), R"(=D:\)", product.title}));
        } else if (file == files[1]) {
            stream.TextFileChange(kind, file, Concat({product.exe, "\t", port, "/tcp\t# ", product.title}),
                                  Concat({product.exe, "\t", port, "/udp\t# ", product.title}));
        } else if (file == files[2]) {
            const std::string host =
                application.addresses ? Concat({"192.0.2.", Number(number % 250 + 1), "\t"}) : "# ";
            stream.TextFileChange(kind, file, host + std::string(product.exe),
                                  application.addresses ? "198.51.100.1" : "#");
        } else {
            stream.TextFileChange(kind, file, Concat({"caption=", product.title, " (M\374nster)"}),
                                  "caption=");
        }
    }
}

void AddEnvironmentSettings(StreamBuilder& stream, SampleApplication& application, std::size_t entries) {
    const std::string prefix = UpperCase(application.product.exe);
    constexpr std::array kVariables = {NamedText{"_HOME", ""}, NamedText{"_LANG", "en_GB"},
                                       NamedText{"_DATA", R"(H:\Data)"},
                                       NamedText{"_LICENCE", "7770@licence.corp.example"}};
    for (std::size_t index = 0; index < entries; ++index) {
        const NamedText& variable = kVariables[index % kVariables.size()];
        const std::size_t round = index / kVariables.size();
        const char code = index % 3 == 2 ? 'A' : 'R';  // appended to what is there, or put in its place
        if (index == 1) {
            stream.EnvironmentSetting("PATH", ";" + application.target, 'A');
        } else {
            stream.EnvironmentSetting(Concat({prefix, variable.name, round == 0 ? "" : Number(round + 1)}),
                                      variable.text.empty() ? application.target : variable.text, code);
        }
    }
}

}  // namespace zorvel::tools
