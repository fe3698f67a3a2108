// Error 430: the regular-expression engine is not available.
#pragma once

#include <string_view>

#include "platform/error.h"
#include "platform/user_interface.h"

namespace zorvel {

// Where a newer engine is offered.
inline constexpr std::string_view kEngineDownloadPage = "https://www.microsoft.com/download";

// Tells the user that `error` occurred during `procedure` and that the engine may be out of date, and opens
// the download page when wanted (No is the default).
void OfferEngineDownload(UserInterface& ui, const Error& error, std::string_view procedure);

}  // namespace zorvel
