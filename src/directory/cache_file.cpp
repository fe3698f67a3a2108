#include "directory/cache_file.h"

#include <cstdint>

#include "platform/error.h"
#include "shell/formats.h"
#include "shell/text_records.h"

namespace zorvel {

void WriteCacheFile(const Files& files, const std::string& path, std::string_view heading,
                    const DateTime& today, std::size_t count,
                    const std::function<void(OutputFile&)>& write_records) {
    OutputFile file = files.Create(path);
    try {
        file.Write(heading);
        file.Write("\r\n" + ShortDate(today) + "," + PlainNumber(static_cast<std::int64_t>(count)) + "\r\n");
        write_records(file);
        file.Close();
    } catch (const OutputError&) {
        files.Remove(path);
        throw;
    }
}

void WriteApplication(OutputFile& file, const AppRecord& application) {
    file.Write(Quoted(application.Name) + ',' + Quoted(application.Container) + "\r\n");
}

}  // namespace zorvel
