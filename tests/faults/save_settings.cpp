// Saves the options and a selection in a program folder, as the window does: save_settings FOLDER. The exit
// status tells whether both were saved.
#include <iostream>

#include "browser/selection_file.h"
#include "platform/error.h"
#include "support/fakes.h"

int main(int /*count*/, char* arguments[]) {
    using namespace zorvel;
    const Files files{std::filesystem::path(arguments[1])};
    SystemClock clock;
    test::FakeUserInterface ui;
    Log log{files, clock};
    WriterLock writers{files, clock, ui, log};
    Options options{files, ui, log, writers};
    options.controls.txtCache = "77";
    bool saved = options.WriteOptions() && ui.boxes.empty();
    TreeLists lists;
    for (const char* name : {"Word", "Excel"}) {
        lists.AddApp("NDS:\\\\T\\T\\APPS", name);
        lists.Select(lists.AppList.back(), true);
    }
    try {
        WriteSelection(files, SelectionPath(files, "T", 1), clock.Now(), "both", lists);
    } catch (const Error& error) {
        std::cerr << error.description() << '\n';
        saved = false;
    }
    for (const MessageBox& box : ui.boxes)
        std::cerr << box.text << '\n';
    return saved ? 0 : 1;
}
