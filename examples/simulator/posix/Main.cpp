// SPDX-License-Identifier: MIT
// rekasim where the command line is UTF-8 already.

#include <iostream>

#include "RunRekasim.h"

int main(int argc, char** argv) {
    return rekasim::RunRekasim({argv + 1, argv + argc}, std::cout, std::cerr);
}
