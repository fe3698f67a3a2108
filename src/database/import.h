// The import: makes a dataset database of the last run's temporary data files and enters it in the master
// catalogue.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "database/catalogue.h"
#include "database/import_kinds.h"
#include "platform/error.h"
#include "platform/store.h"
#include "shell/services.h"

namespace zorvel {

// Shows an import at work: two labels, a box, a count and a bar.
class ImportDisplay {
  public:
    virtual ~ImportDisplay() = default;

    // Takes the place of the buttons; called once, before the others.
    virtual void ShowStatusFrame() {}
    // Shows the four texts at once.
    virtual void Status(std::string_view application, std::string_view section, std::string_view activity,
                        std::string_view count) = 0;
    // Sets the progress bar; `value` is 0 to `maximum`.
    virtual void Progress(int /*value*/, int /*maximum*/) {}
};

enum class ImportResult {
    kDone,
    kAbandoned,  // the user kept the dataset that is there
    kFailed,     // the error was shown and logged
};

class Import {
  public:
    Import(Services& services, Catalogue& catalogue, ImportDisplay& display);

    // Imports the last run; `details` is what the catalogue is to say of it, with its DBName still empty. No
    // error leaves it. A failure leaves the dataset with what was loaded before it, which says that its
    // import was not completed, and the catalogue row if it was added; an older dataset of the run stays set
    // aside.
    ImportResult Run(CatalogueRow details);

  private:
    bool MakeRoom(const std::string& path);
    void RequireInputs() const;
    void Complete(const std::string& path);
    void Load(const ImportKind& kind);
    template <typename Adder>
    void LoadFile(const ImportKind& kind, const DataFile& file, const Adder& add);
    void Advance();
    void Status(std::string_view application, std::string_view section, std::string_view activity,
                std::string_view count = {});
    void ReportFailure(const Error& error);
    std::string Seconds(double start) const;

    Services& services_;
    Catalogue& catalogue_;
    ImportDisplay& display_;
    std::optional<Database> dataset_;
    int step_ = 0;      // of the procedure, named in error texts
    int progress_ = 0;  // of the bar
    double file_start_ = 0;
    std::int64_t records_ = 0;  // of the kind that is being loaded
};

}  // namespace zorvel
