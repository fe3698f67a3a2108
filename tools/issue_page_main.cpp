// Prints docs/issues.md.
#include <iostream>

#include "issue_page.h"

int main() {
    std::cout << zorvel::tools::IssuePage();
}
