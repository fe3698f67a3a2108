// Turns the flag attributes of an application into assignments to the columns of Zorvel_Apps.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

// The assignment list of the flags that are set ("AFRunOnce=1,AFRebootType='Never'"), for an UPDATE of
// Zorvel_Apps; empty when none is. `flags` is a number in decimal, or in hexadecimal after "&h"; a text that
// begins with neither is 0. Raises error 6 when it does not fit into 32 bits.
std::string ParseAppFlags(std::string_view flags);

// The same for the default association flags.
std::string ParseDAFlags(std::string_view flags);

}  // namespace zorvel
