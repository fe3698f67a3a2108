// The program folder as the path texts show it: names of any spelling, and nothing outside.
#include "platform/files.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <string>

#include "platform/error.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

namespace fs = std::filesystem;
using test::RaisedBy;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_view_literals;

class ProgramFiles : public testing::Test {
  protected:
    std::string Path(std::string_view relative) const { return files_.Path(relative); }

    test::TempFolder folder_;
    Files files_{folder_.path()};
};

TEST_F(ProgramFiles, AreFoundInAnySpelling) {
    for (const char* name : {"Trees/One.dat", "Trees/ONE.dat", "Trees/\xC3\x89t\xC3\xA9.dat", "Trees/a b"})
        folder_.Write(name, name);
    using Case = std::pair<const char*, const char*>;
    // Of two spellings the exact one, or else the first; what is not there stays as given.
    for (const auto& [text, file] :
         {Case{"Trees\\One.dat", "Trees/One.dat"}, Case{"Trees\\ONE.dat", "Trees/ONE.dat"},
          Case{"TREES\\one.DAT", "Trees/ONE.dat"},
          Case{"trees\\\xE9T\xC9.dat", "Trees/\xC3\x89t\xC3\xA9.dat"},
          Case{"\\.\\Trees\\\\A B\\", "Trees/a b"}, Case{"trees\\New.dat", "Trees/New.dat"},
          Case{"None\\Trees\\...", "None/Trees/..."}}) {
        EXPECT_EQ(files_.Resolve(Path(text)), folder_.path() / file) << text;
    }
    files_.Create(Path("TREES\\A B")).Close();
    EXPECT_EQ(folder_.Read("Trees/a b"), "") << "a second spelling was made";
}

TEST_F(ProgramFiles, AreNeverOutsideTheirFolder) {
    for (const std::string_view text :
         {".."sv, "..\\x"sv, "Trees\\..\\x"sv, "Trees/x"sv, "../x"sv, "a\0b"sv}) {
        EXPECT_EQ(RaisedBy([&] { files_.Exists(Path(text)); }).Reason(), Path(text) + ": Path not found");
    }
    // A path of its own goes by either separator, and where it likes.
    const std::string folder = folder_.path();
    folder_.Write("Trees/x", "1");
    for (const std::string& text : {folder + "/Trees/x", folder + "/TREES\\X", folder + "/Trees/../Trees/x"})
        EXPECT_EQ(files_.Read(text), "1") << text;
    EXPECT_EQ(files_.Resolve(folder + "-other\\..\\x/y"), folder + "-other/../x/y") << "no folder of ours";
}

TEST_F(ProgramFiles, NamesBeyondTheCodePageAreFoundAgain) {
    fs::create_directory(folder_.path() / "\xCE\xA9");
    folder_.Write("\xCE\xA9/\xCE\xA9.dat", "omega");
    const Files inside(folder_.path() / "\xCE\xA9");
    EXPECT_EQ(inside.ProgramFolder(), Path("").substr(0, Path("").size() - 1) + "/?");
    EXPECT_THAT(inside.List(inside.ProgramFolder(), "", ".dat"), ElementsAre("?.dat"));
    EXPECT_EQ(inside.Read(inside.Path("?.dat")), "omega");
    EXPECT_EQ(files_.Read(Path("?\\?.DAT")), "omega");
}

TEST_F(ProgramFiles, ListsNameFilesAlone) {
    for (const char* name : {"T1-b.App", "t1-A.aPP", "T1-.App", "T1.App", "T1-c.Apps", "T1-\xC3\xA9.App"})
        folder_.Write(std::string("Trees/") + name, "");
    fs::create_directory(folder_.path() / "Trees/T1-folder.App");
    fs::create_symlink("nowhere", folder_.path() / "Trees/T1-lost.App");
    fs::create_symlink("T1-loop.App", folder_.path() / "Trees/T1-loop.App");
    EXPECT_THAT(files_.List(Path("TREES"), "T1-", ".APP"),
                ElementsAre("T1-.App", "T1-b.App", "T1-\xE9.App", "t1-A.aPP"));
    EXPECT_THAT(files_.List(Path("Trees"), "T1.App", "1.app"), IsEmpty()) << "they overlap";
    for (const char* folder : {"None", "Trees\\T1.App"})
        EXPECT_THAT(files_.List(Path(folder), "", ""), IsEmpty());
}

TEST_F(ProgramFiles, EachActionSaysWhatIsWrongWithItsFile) {
    folder_.Write("file", "12345");
    folder_.Write("other", "");
    EXPECT_TRUE(files_.Exists(Path("FILE")));
    for (const char* name : {"Trees", "file\\x", "none"})
        EXPECT_FALSE(files_.Exists(Path(name))) << name;
    EXPECT_EQ(files_.Size(Path("File")), 5U);
    using Action = std::function<void(const std::string&)>;
    struct Case {
        Action act;
        int none, folder, no_folder;  // the errors; 0: there is none
    };
    int row = 0;
    for (const Case& c : {Case{[&](auto& path) { files_.Read(path); }, 53, 75, 76},
                          Case{[&](auto& path) { files_.Create(path); }, 0, 75, 76},
                          Case{[&](auto& path) { files_.Append(path); }, 0, 75, 76},
                          Case{[&](auto& path) { files_.Remove(path); }, 53, 75, 53},
                          Case{[&](auto& path) { files_.Size(path); }, 53, 75, 53},
                          Case{[&](auto& path) { files_.Modified(path); }, 53, 0, 53},
                          Case{[&](auto& path) { files_.Copy(path, Path("new")); }, 53, 75, 76},
                          Case{[&](auto& path) { files_.Copy(Path("other"), path); }, 0, 75, 76},
                          Case{[&](auto& path) { files_.Rename(path, Path("new")); }, 53, 0, 53},
                          Case{[&](auto& path) { files_.Replace(path, Path("other")); }, 53, 76, 53}}) {
        SCOPED_TRACE(++row);
        for (const auto& [name, number] :
             {std::pair{"file\\x", 76}, {"no\\file", c.no_folder}, {"none", c.none}, {"Trees", c.folder}}) {
            if (number == 0) continue;
            const Error error = RaisedBy([&, name = name] { c.act(Path(name)); });
            EXPECT_EQ(error.number(), number) << name;
            EXPECT_THAT(error.detail(), testing::StartsWith(Path(name) + ": "));
            EXPECT_FALSE(folder_.Has("new")) << name;
        }
    }
}

TEST_F(ProgramFiles, MoveAndCopyWithoutLosingAFile) {
    folder_.Write("Old", "old");
    folder_.Write("New", "longer than the other");
    EXPECT_EQ(RaisedBy([&] { files_.Rename(Path("old"), Path("NEW")); }).Reason(),
              Path("NEW") + ": File already exists");
    files_.Copy(Path("old"), Path("new"));
    EXPECT_EQ(folder_.Read("New"), "old");
    files_.Remove(Path("NEW"));
    files_.Rename(Path("OLD"), Path("new"));
    EXPECT_EQ(folder_.Read("new"), "old");
    folder_.Write("other", "");
    files_.Replace(Path("New"), Path("Other"));
    EXPECT_EQ(folder_.Read("other"), "old");
    EXPECT_FALSE(folder_.Has("New") || folder_.Has("new") || folder_.Has("Old"));
}

TEST_F(ProgramFiles, AFolderThatMayNotBeReadIsDenied) {
    fs::create_directory(folder_.path() / "Trees/inner");
    for (const char* name : {"Trees/file", "Trees/inner/file"})
        folder_.Write(name, "x");
    fs::permissions(folder_.path(), fs::perms::all);
    fs::permissions(folder_.path() / "Trees", fs::perms::none);
    const int status = test::InAChildWithoutRights([this] {
        for (const std::string& path : {Path("Trees\\file"), Path("Trees\\inner\\file")}) {
            for (const std::function<void()>& act : std::initializer_list<std::function<void()>>{
                     [&] { files_.Open(path); }, [&] { files_.Create(path); }, [&] { files_.Size(path); }}) {
                if (RaisedBy(act).number() != errors::kPermissionDenied) _exit(2);
            }
            if (files_.Exists(path)) _exit(3);
        }
    });
    fs::permissions(folder_.path() / "Trees", fs::perms::all);
    EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace zorvel
