// SPDX-License-Identifier: MIT
// rekatool where the command line is UTF-8 already.

#include <iostream>

#include "RunRekatool.h"

int main(int argc, char** argv) {
    return rekatool::RunRekatool({argv + 1, argv + argc}, std::cout, std::cerr);
}
