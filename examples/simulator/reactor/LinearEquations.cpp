// SPDX-License-Identifier: MIT
// Elimination above the diagonal as well as below it, so there is no second pass; with as many equations as a reactor
// has reactions the few more operations don't count. Pivots are compared with zero and not with a tolerance, since the
// scale of the equations is the callers'.

#include "reactor/LinearEquations.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace rekasim {

bool SolveLinear(std::vector<std::vector<double>>& rows) {
    const std::size_t count = rows.size();
    for (std::size_t column = 0; column < count; ++column) {
        const auto largest = std::max_element(rows.begin() + static_cast<std::ptrdiff_t>(column), rows.end(),
                                              [column](const std::vector<double>& a, const std::vector<double>& b) {
                                                  return std::fabs(a[column]) < std::fabs(b[column]);
                                              });
        std::swap(rows[column], *largest);
        const std::vector<double>& pivot = rows[column];
        if (!(std::fabs(pivot[column]) > 0)) return false;
        for (std::size_t row = 0; row < count; ++row) {
            if (row == column) continue;
            const double part = rows[row][column] / pivot[column];
            for (std::size_t i = column; i <= count; ++i) rows[row][i] -= part * pivot[i];
        }
    }
    for (std::size_t row = 0; row < count; ++row) rows[row][count] /= rows[row][row];
    return true;
}

}  // namespace rekasim
