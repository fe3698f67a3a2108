// What a failing operation raises.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "platform/error.h"

namespace zorvel::test {

// The error that `action` raises; a test whose action raises none fails.
inline Error RaisedBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no error was raised";
    return Error(0);
}

}  // namespace zorvel::test
