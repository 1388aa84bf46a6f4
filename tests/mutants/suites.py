# SPDX-License-Identifier: MIT
# Which test programs and which of their suites look at a source, so that those run first: the test of its name, those that
# its row in tests/README.md names, and those of the folder that mirrors its own.
import glob
import os
import re

# The first folder that a source lies in decides; the programs are asked one after the other.
PROGRAMS = (
    ("tools/rekatool/", ("rekatool_tests",)),
    ("tools/packagetext/", ("packagetext_tests", "rekatool_tests", "rekasim_tests")),
    ("tools/rekadoctor/", ("rekadoctor_tests",)),
    ("examples/simulator/", ("rekasim_tests",)),
    ("src/checking/", ("reka_tests", "rekatool_tests")),
    ("src/", ("reka_tests",)),
)
# What is compiled everywhere, but runs only under Wine or in the programs themselves.
NOT_RUN = ("src/capeopen/DualInterface.cpp", "src/capeopen/MergedDispatch.cpp", "src/platform/posix/TypeLibrary.cpp",
           "examples/simulator/posix/Main.cpp", "tools/rekatool/posix/Main.cpp")


def programs_of(source):
    """The programs that test `source`; none where no test runs it."""
    if source in NOT_RUN:
        return ()
    return next((programs for folder, programs in PROGRAMS if source.startswith(folder)), ())


def filter_for(source, root):
    """A filter of GoogleTest for the suites that are nearest to `source`; empty when there are none."""
    mirrored = source[len("src/"):] if source.startswith("src/") else source
    tests = set(glob.glob(os.path.join(root, "tests", os.path.dirname(mirrored), "*_test.cpp")))
    tests.update(os.path.join(root, test) for test in named_in_readme(source, root))
    suites = set()
    for test in tests:
        with open(test) as file:
            suites.update(re.findall(r"^(?:TEST|TEST_F|TEST_P)\((\w+),", file.read(), re.MULTILINE))
    return ":".join(pattern for suite in sorted(suites) for pattern in (f"{suite}.*", f"*/{suite}.*"))


def named_in_readme(source, root):
    with open(os.path.join(root, "tests", "README.md")) as file:
        rows = [line.split("|") for line in file if line.startswith("|") and f"`{source}`" in line.split("|")[1]]
    return {test for row in rows for test in re.findall(r"`(tests/[\w/]+_test\.cpp)`", row[2])}
