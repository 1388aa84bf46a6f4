// SPDX-License-Identifier: MIT
// The command line of the reactors: what it misses, what it warns of, its table and its plot.

#include <gtest/gtest.h>

#include "ReactorFixture.h"

namespace rekasim {

namespace {

TEST(ReactorCommand, SaysWhatIsMissing) {
    EXPECT_NE(FailureOf({}, {"--pfr"}).find("--volume gives it in m3"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--equilibrium"}).find("no equilibrium reaction"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "1", "--catalyst", "1"}).find("--catalyst has no use"),
              std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "1", "--key", "nobody"}).find("the feed has no nobody"),
              std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "-1"}).find("is not a number above 0"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "1", "--points", "1"}).find("from 2 to 100000"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--cstr", "--volume", "1", "--plot", "x.svg"}).find("--pfr"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--cstr", "--pfr", "--volume", "1"}).find("rekasim: "), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--volume", "1"}).find("rekasim: "), std::string::npos);
    GasDocument cold;
    cold.feed = R"([{"id": "one", "moleFraction": 1}, {"id": "two", "moleFraction": 0}])";
    cold.heat = "-1";
    EXPECT_NE(FailureOf(cold, {"--pfr", "--volume", "1", "--adiabatic"}).find("heatCapacity of one"),
              std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "1", "--adiabatic"}).find("rekasim: "), std::string::npos);
}

TEST(ReactorCommand, NoticesReactionsThatLoseElements) {
    GasDocument document;
    document.feed =
        R"([{"id": "one", "moleFraction": 1, "formula": "H2"}, {"id": "two", "moleFraction": 0, "formula": "H3"}])";
    EXPECT_NE(FailureOf(document, {"--pfr", "--volume", "1"}).find("don't conserve H"), std::string::npos);
}

TEST(ReactorCommand, EndsWhereTheProfileIsTooSteep) {
    GasDocument document;
    document.rate = "1E12*(C(one)-C(two))";  // at equilibrium after a nanolitre
    EXPECT_NE(FailureOf(document, {"--pfr", "--volume", "1"}).find("too steep"), std::string::npos);
}

TEST(ReactorCommand, PrintsATable) {
    const CTemporaryFile file("gas.json", GasDocument().Text());
    const RunResult result =
        RunProgram({"reactor", "--document", file.Path(), "--pfr", "--volume", "0.1", "--points", "2"});
    EXPECT_EQ(result.out,
              "  volume        T  conversion       one       two\n"
              "      m3        K         one     mol/s     mol/s\n"
              "  ------  -------  ----------  --------  --------\n"
              "       0  500.000           0   1.00000         0\n"
              "     0.1  500.000    0.699625  0.300375  0.699625\n");
    // exp(-0.5 * 0.1 / 0.04157231) = 0.300375
}

TEST(ReactorCommand, DrawsWithGnuplotOrSaysThatItIsNotThere) {
    const CTemporaryFile file("gas.json", GasDocument().Text());
    const CTemporaryFile plot("profile.svg", "");
    const RunResult result =
        RunProgram({"reactor", "--document", file.Path(), "--pfr", "--volume", "0.1", "--plot", plot.Path()});
    if (result.status == 0) {
        EXPECT_NE(plot.Content().find("</svg>"), std::string::npos);
    } else {
        EXPECT_NE(result.err.find("gnuplot, which draws the plot, isn't there"), std::string::npos);
        EXPECT_EQ(result.out, "");
    }
}

}  // namespace

}  // namespace rekasim
