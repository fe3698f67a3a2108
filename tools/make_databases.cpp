// zorvel_make_databases SCHEMA.sql OUTPUT_TEMPLATE OUTPUT_MASTER: makes the databases that the program is
// delivered with.
#include "database/make_databases.h"

#include <cstdio>

#include "platform/error.h"

int main(int argument_count, char** arguments) {
    if (argument_count != 4) {
        std::fputs("usage: zorvel_make_databases SCHEMA.sql OUTPUT_TEMPLATE OUTPUT_MASTER\n", stderr);
        return 2;
    }
    try {
        zorvel::MakeDatabases(arguments[1], arguments[2], arguments[3]);
        return 0;
    } catch (...) {
        const zorvel::Error error = zorvel::CurrentError();
        std::fprintf(stderr, "zorvel_make_databases: %s (%s)\n", error.what(), error.detail().c_str());
        return 1;
    }
}
