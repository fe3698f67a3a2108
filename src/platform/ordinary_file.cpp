#include "platform/ordinary_file.h"

#include <sys/stat.h>

namespace zorvel {

bool IsOrdinaryFile(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

Error NoOrdinaryFile(const std::string& name) {
    return Error(errors::kPathFileAccess).With(name + ": not an ordinary file");
}

}  // namespace zorvel
