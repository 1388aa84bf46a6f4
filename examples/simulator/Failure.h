// What went wrong, for the one line that a user reads.

#pragma once

#include <string>

namespace rekasim {

/// `text` is UTF-8. The other two are known when an object told its failure through the error interfaces, and then say
/// which method of which interface failed.
struct Failure {
    std::string text;
    std::string scope;
    std::string interfaceName;
};

}  // namespace rekasim
